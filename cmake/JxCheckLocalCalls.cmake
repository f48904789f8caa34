# Fails when LIBRARY looks up a function of its own by name, as READELF tells: another library in the process that exports the
# same names could then capture the call. Runs after each link.

execute_process(COMMAND ${READELF} -rW ${LIBRARY} OUTPUT_VARIABLE relocations COMMAND_ERROR_IS_FATAL ANY)
if(relocations MATCHES "(JUMP_SLO|GLOB_DAT|R_X86_64_64|R_386_32)[^\n]* (SQL[A-Za-z]+)")
  message(FATAL_ERROR "${LIBRARY} looks up its own ${CMAKE_MATCH_2}: another library in the process could capture the call")
endif()
