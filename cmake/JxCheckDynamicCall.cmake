# Fails unless READELF shows that LIBRARY calls jxDllDialog through its dynamic symbol table, and nothing else of its own except
# dialog procedures. Runs after each link, and so also finds flags that JxRefuseFlags.cmake does not see.

execute_process(COMMAND ${READELF} -rW ${LIBRARY} OUTPUT_VARIABLE relocations COMMAND_ERROR_IS_FATAL ANY)
if(NOT relocations MATCHES "(JUMP_SLO|GLOB_DAT)[^\n]* jxDllDialog")
  message(FATAL_ERROR "${LIBRARY} binds its calls of jxDllDialog: programs could not replace jxDllDialog")
endif()
if(relocations MATCHES "JUMP_SLO[^\n]* (SQL[A-Za-z]+|Decompress|winGetString|_ZN7OdbcIns[A-Za-z0-9_]+)")
  message(FATAL_ERROR "${LIBRARY} looks up its own ${CMAKE_MATCH_1}: another library in the process could capture the call")
endif()
