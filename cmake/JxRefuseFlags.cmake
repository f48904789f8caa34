# Refuses compiler and linker flags that would bind the library's calls of jxDllDialog to its own function: a program could
# then no longer replace it. Runs as a script too (cmake -P).

set(jx_binding_flags
  "Bsymbolic|--dynamic-list|-flto|-fwhole-program|-fno-semantic-interposition|-fvisibility=protected")

foreach(variable IN ITEMS CMAKE_C_FLAGS CMAKE_CXX_FLAGS CMAKE_SHARED_LINKER_FLAGS)
  foreach(suffix IN ITEMS "" _DEBUG _RELEASE _RELWITHDEBINFO _MINSIZEREL)
    if("${${variable}${suffix}}" MATCHES "${jx_binding_flags}")
      message(FATAL_ERROR "${variable}${suffix} holds \"${CMAKE_MATCH_0}\": programs could not replace jxDllDialog")
    endif()
  endforeach()
endforeach()

foreach(suffix IN ITEMS "" _DEBUG _RELEASE _RELWITHDEBINFO _MINSIZEREL)
  if(CMAKE_INTERPROCEDURAL_OPTIMIZATION${suffix})
    message(FATAL_ERROR "Link-time optimization is on: programs could not replace jxDllDialog")
  endif()
endforeach()
