# Fails unless LIBRARY calls jxDllDialog through its dynamic symbol table, as READELF tells. Runs after each link: what
# reached the compiler or the linker in other ways than the flags that JxRefuseFlags.cmake knows shows here.

execute_process(COMMAND ${READELF} -rW ${LIBRARY} OUTPUT_VARIABLE relocations COMMAND_ERROR_IS_FATAL ANY)
if(NOT relocations MATCHES "(JUMP_SLO|GLOB_DAT)[^\n]* jxDllDialog")
  message(FATAL_ERROR "${LIBRARY} binds its calls of jxDllDialog: programs could not replace jxDllDialog")
endif()
