# Writes the zip archive once more with its files in the order of their names and the time of the
# commit alone: CPack takes them in the order of the file system.

find_program(zip zip)
if(NOT CPACK_GENERATOR STREQUAL "ZIP" OR NOT zip)
  return()
endif()
string(TIMESTAMP date "%Y-%m-%d %H:%M:%S UTC" UTC)  # of SOURCE_DATE_EPOCH, where that is set
foreach(archive ${CPACK_PACKAGE_FILES})
  set(folder ${archive}.unpacked)
  file(REMOVE_RECURSE ${folder})
  file(ARCHIVE_EXTRACT INPUT ${archive} DESTINATION ${folder})
  file(REMOVE ${archive})
  file(GLOB_RECURSE files LIST_DIRECTORIES false RELATIVE ${folder} ${folder}/*)
  list(SORT files)
  file(CHMOD_RECURSE ${folder} FILE_PERMISSIONS OWNER_READ OWNER_WRITE GROUP_READ WORLD_READ
       DIRECTORY_PERMISSIONS OWNER_READ OWNER_WRITE OWNER_EXECUTE)
  execute_process(COMMAND touch -d ${date} ${files} WORKING_DIRECTORY ${folder}
                  COMMAND_ERROR_IS_FATAL ANY)
  execute_process(COMMAND ${zip} -q -9 -X ${archive} ${files} WORKING_DIRECTORY ${folder}
                  COMMAND_ERROR_IS_FATAL ANY)
  file(REMOVE_RECURSE ${folder})
endforeach()
