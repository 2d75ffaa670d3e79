# Puts what the program says of its own commands into the manual page.
#   cmake -DPROGRAM=... -DVERSION=... -DTEMPLATE=vellumtide.1.in -DOUTPUT=vellumtide.1 -P manual.cmake

execute_process(COMMAND ${PROGRAM} manual OUTPUT_VARIABLE COMMANDS COMMAND_ERROR_IS_FATAL ANY)
string(STRIP "${COMMANDS}" COMMANDS)
# The date of the commit, so that the same commit gives the same page.
execute_process(COMMAND git log -1 --format=%cs
                OUTPUT_VARIABLE MANUAL_DATE OUTPUT_STRIP_TRAILING_WHITESPACE
                RESULT_VARIABLE no_commit ERROR_QUIET)
if(no_commit)
  string(TIMESTAMP MANUAL_DATE "%Y-%m-%d" UTC)
endif()
configure_file(${TEMPLATE} ${OUTPUT} @ONLY)
