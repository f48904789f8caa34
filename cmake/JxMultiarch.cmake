# Where the system's own packages put database drivers: JX_SYSTEM_DRIVER_DIRECTORY, by the compiler's word on the
# architecture that it compiles for.

separate_arguments(jx_flags UNIX_COMMAND "${CMAKE_C_FLAGS}")
execute_process(COMMAND ${CMAKE_C_COMPILER} ${jx_flags} -print-multiarch OUTPUT_VARIABLE jx_multiarch
  OUTPUT_STRIP_TRAILING_WHITESPACE ERROR_QUIET)
if(NOT jx_multiarch)
  set(jx_multiarch ${CMAKE_LIBRARY_ARCHITECTURE})
endif()
set(JX_SYSTEM_DRIVER_DIRECTORY /usr/lib/${jx_multiarch}/odbc)
cmake_path(NORMAL_PATH JX_SYSTEM_DRIVER_DIRECTORY)
