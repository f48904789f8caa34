# How all code is compiled: language, warnings, visibility, refused functions.

set(CMAKE_CXX_STANDARD 20)
set(CMAKE_CXX_STANDARD_REQUIRED ON)
set(CMAKE_CXX_EXTENSIONS OFF)
set(CMAKE_C_STANDARD 11)
set(CMAKE_C_EXTENSIONS OFF)
set(CMAKE_POSITION_INDEPENDENT_CODE ON)
set(CMAKE_CXX_VISIBILITY_PRESET hidden)
set(CMAKE_C_VISIBILITY_PRESET hidden)
set(CMAKE_VISIBILITY_INLINES_HIDDEN ON)
set(CMAKE_EXPORT_COMPILE_COMMANDS ON)
set(CMAKE_INSTALL_RPATH "$ORIGIN")

if(NOT CMAKE_BUILD_TYPE)
  set(CMAKE_BUILD_TYPE RelWithDebInfo)
endif()

include(${CMAKE_CURRENT_LIST_DIR}/JxRefuseFlags.cmake)

# The preset i386 passes -m32 to both compilers.
if("$CACHE{JX_32BIT}" AND NOT CMAKE_SIZEOF_VOID_P EQUAL 4)
  message(FATAL_ERROR "Make this folder anew with the preset i386: -m32 comes in CMAKE_C_FLAGS and CMAKE_CXX_FLAGS now")
endif()
if(CMAKE_SIZEOF_VOID_P EQUAL 4)
  set(JX_32BIT ON)
else()
  set(JX_32BIT OFF)
endif()
if(JX_SANITIZE)
  add_compile_options(-fsanitize=${JX_SANITIZE} -fno-omit-frame-pointer -fno-sanitize-recover=all)
  add_link_options(-fsanitize=${JX_SANITIZE})
endif()
if(JX_FUZZ)
  add_compile_options(-fsanitize=fuzzer-no-link)
endif()
add_compile_definitions(_FILE_OFFSET_BITS=64)
if(JX_32BIT)
  add_compile_definitions(_TIME_BITS=64)
endif()

# Compiling a source takes most of its time for headers. Several sources of a folder compiled at a time need a third of
# it; other test programs share one precompiled header. The libraries do neither: reads would take a few hundredths
# longer. The presets debug and clang compile each source for itself, so that a missing include is found.
option(JX_UNITY "Compile several sources at a time" ON)
option(JX_PRECOMPILE "Compile what all tests include once" ON)
set(CMAKE_UNITY_BUILD_BATCH_SIZE 10)

# Warnings for our own code, as errors.
add_library(jx_warnings INTERFACE)
target_compile_options(jx_warnings INTERFACE -Wall -Wextra -Wconversion -Wshadow -Werror
  $<$<COMPILE_LANGUAGE:CXX>:-Wnon-virtual-dtor -Woverloaded-virtual>
  $<$<NOT:$<BOOL:$<TARGET_PROPERTY:JX_PRECOMPILED>>>:SHELL:-include ${PROJECT_SOURCE_DIR}/scripts/banned.h>)
