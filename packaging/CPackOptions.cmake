# Read by CPack before it makes a package: the same commit gives the same bytes, whenever and
# wherever it is packed.

if(NOT DEFINED ENV{SOURCE_DATE_EPOCH})
  execute_process(COMMAND git log -1 --format=%ct
                  WORKING_DIRECTORY ${CPACK_VELLUMTIDE_SOURCE_FOLDER}
                  OUTPUT_VARIABLE commit_date OUTPUT_STRIP_TRAILING_WHITESPACE
                  RESULT_VARIABLE no_commit ERROR_QUIET)
  if(no_commit)
    message(STATUS "No commit is known here; the package carries the date of its files.")
  else()
    set(ENV{SOURCE_DATE_EPOCH} ${commit_date})
  endif()
endif()
set(ENV{TZ} UTC)
