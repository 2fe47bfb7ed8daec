# Options of the build and the four kinds of target of this project.

option(QUILLET_TESTS "Build tests, fuzz targets, benchmarks and tools" ON)
option(QUILLET_WERROR "Treat warnings as errors" OFF)
option(QUILLET_FUZZ "Build the libFuzzer targets (clang) instead of their replay programs" OFF)
option(QUILLET_PRECOMPILE "Precompile standard headers: quicker, but a compiler cache has little use of it" OFF)
set(QUILLET_SANITIZE "" CACHE STRING "Value of -fsanitize= for all code, empty for none")

set(CMAKE_CXX_STANDARD 20)
set(CMAKE_CXX_STANDARD_REQUIRED ON)
set(CMAKE_CXX_EXTENSIONS OFF)
set(CMAKE_C_STANDARD 11)
set(CMAKE_POSITION_INDEPENDENT_CODE ON)
set(CMAKE_CXX_VISIBILITY_PRESET hidden)
set(CMAKE_C_VISIBILITY_PRESET hidden)
set(CMAKE_VISIBILITY_INLINES_HIDDEN ON)
set(CMAKE_EXPORT_COMPILE_COMMANDS ON)
set(CMAKE_INCLUDE_CURRENT_DIR OFF)

if(NOT CMAKE_BUILD_TYPE)
  set(CMAKE_BUILD_TYPE Release CACHE STRING "Build type" FORCE)
endif()

# Looked for once: with a compiler cache that is installed later every command differs, and all is built anew.
if(NOT DEFINED CCACHE_PROGRAM)
  find_program(CCACHE_PROGRAM ccache)
endif()
if(CCACHE_PROGRAM AND NOT CMAKE_CXX_COMPILER_LAUNCHER)
  set(CMAKE_C_COMPILER_LAUNCHER ${CCACHE_PROGRAM})
  set(CMAKE_CXX_COMPILER_LAUNCHER ${CCACHE_PROGRAM})
endif()

find_package(Threads REQUIRED)

# One name for the library, whichever its package gives to its target.
find_package(utf8cpp REQUIRED)
if(NOT TARGET utf8cpp)
  add_library(utf8cpp INTERFACE)
  target_link_libraries(utf8cpp INTERFACE utf8::cpp)
endif()

# What every hand-written target is compiled with.
add_library(quillet_build INTERFACE)
target_include_directories(quillet_build INTERFACE ${PROJECT_SOURCE_DIR})
target_compile_options(quillet_build INTERFACE -Wall -Wextra -Wshadow $<$<COMPILE_LANGUAGE:CXX>:-Wnon-virtual-dtor>
                                               $<$<COMPILE_LANGUAGE:CXX>:-Wconversion>)
if(QUILLET_WERROR)
  target_compile_options(quillet_build INTERFACE -Werror)
endif()

if(QUILLET_SANITIZE)
  add_compile_options(-fsanitize=${QUILLET_SANITIZE} -fno-sanitize-recover=all -fno-omit-frame-pointer)
  add_link_options(-fsanitize=${QUILLET_SANITIZE})
endif()
if(QUILLET_FUZZ)
  add_compile_options(-fsanitize=fuzzer-no-link)
endif()

# Standard headers that most sources of libraries use, compiled once. A source includes what it uses all the same: builds
# without this, and the sanitizers' is one, would not compile otherwise. Tests go without: gcc 12 takes strings that it
# sees through a precompiled header for its user's code, and warns of what is none of their doing.
if(QUILLET_PRECOMPILE)
  add_library(quillet_std STATIC ${CMAKE_CURRENT_LIST_DIR}/empty.cpp)
  target_precompile_headers(quillet_std PRIVATE ${CMAKE_CURRENT_LIST_DIR}/std.h)
  target_link_libraries(quillet_std PRIVATE quillet_build)
endif()

# quillet_sources(VARIABLE folder...)
#   The sources of folders of the calling directory: a new file needs no line here. A source that a file named
#   "..._instances.cpp" includes is a piece of that one, which compiles a class template once for each form of it.
function(quillet_sources variable)
  set(found)
  foreach(folder IN LISTS ARGN)
    file(GLOB sources CONFIGURE_DEPENDS ${CMAKE_CURRENT_SOURCE_DIR}/${folder}/*.cpp)
    file(GLOB instances CONFIGURE_DEPENDS ${CMAKE_CURRENT_SOURCE_DIR}/${folder}/*_instances.cpp)
    foreach(instance IN LISTS instances)
      set_property(DIRECTORY APPEND PROPERTY CMAKE_CONFIGURE_DEPENDS ${instance})
      file(STRINGS ${instance} pieces REGEX "^#include \".*\\.cpp\"")
      foreach(piece IN LISTS pieces)
        string(REGEX REPLACE "^#include \"(.*)\"" "${PROJECT_SOURCE_DIR}/\\1" piece ${piece})
        list(REMOVE_ITEM sources ${piece})
      endforeach()
    endforeach()
    list(APPEND found ${sources})
  endforeach()
  set(${variable} ${found} PARENT_SCOPE)
endfunction()

# quillet_library(NAME SOURCES file... DEPENDS target...)
#   A static library of one floor. DEPENDS are public: who links the floor sees what it is made of.
function(quillet_library name)
  cmake_parse_arguments(arg "" "" "SOURCES;DEPENDS" ${ARGN})
  add_library(${name} STATIC ${arg_SOURCES})
  target_link_libraries(${name} PUBLIC ${arg_DEPENDS} PRIVATE quillet_build)
  target_include_directories(${name} PUBLIC ${PROJECT_SOURCE_DIR})
  if(QUILLET_PRECOMPILE)
    target_precompile_headers(${name} REUSE_FROM quillet_std)
  endif()
endfunction()

# quillet_test(NAME SOURCES file... DEPENDS target... [ENVIRONMENT var=value...])
#   A GoogleTest program, each of whose cases is a test of its own under the name NAME.Suite.Case.
#   Files that name the macro QUILLET_SOURCE_DIR find the project's folder in it.
function(quillet_test name)
  cmake_parse_arguments(arg "" "" "SOURCES;DEPENDS;ENVIRONMENT" ${ARGN})
  if(QUILLET_FUZZ)
    return()
  endif()
  find_package(GTest REQUIRED)
  include(GoogleTest)
  add_executable(${name} ${arg_SOURCES} ${PROJECT_SOURCE_DIR}/tests/support/temp_folder.cpp)
  foreach(source IN LISTS arg_SOURCES)
    get_filename_component(source ${source} ABSOLUTE)
    file(STRINGS ${source} uses REGEX QUILLET_SOURCE_DIR LIMIT_COUNT 1)
    if(uses)
      set_source_files_properties(${source} PROPERTIES COMPILE_DEFINITIONS QUILLET_SOURCE_DIR="${PROJECT_SOURCE_DIR}")
    endif()
    # gcc 12 sees values without a start inside <regex> when the sanitizers' checks stand between.
    file(STRINGS ${source} uses REGEX "include <regex>" LIMIT_COUNT 1)
    if(uses AND QUILLET_SANITIZE AND CMAKE_CXX_COMPILER_ID STREQUAL GNU)
      set_source_files_properties(${source} PROPERTIES COMPILE_OPTIONS -Wno-maybe-uninitialized)
    endif()
  endforeach()
  target_link_libraries(${name} PRIVATE quillet_build ${arg_DEPENDS} GTest::gmock GTest::gtest_main Threads::Threads)
  target_compile_options(${name} PRIVATE -Wno-conversion)
  gtest_discover_tests(${name} TEST_PREFIX ${name}. DISCOVERY_TIMEOUT 120
                       PROPERTIES TIMEOUT 300 ENVIRONMENT "${arg_ENVIRONMENT}")
endfunction()

# quillet_fuzz_target(NAME SOURCES file... DEPENDS target...)
#   Under the fuzz preset a libFuzzer program; otherwise a program that runs every file of
#   fuzz/corpus/NAME through the same entry, as the test fuzz.NAME.
function(quillet_fuzz_target name)
  cmake_parse_arguments(arg "" "" "SOURCES;DEPENDS" ${ARGN})
  add_executable(fuzz_${name} ${arg_SOURCES})
  target_link_libraries(fuzz_${name} PRIVATE quillet_build ${arg_DEPENDS})
  if(QUILLET_FUZZ)
    target_link_options(fuzz_${name} PRIVATE -fsanitize=fuzzer)
  else()
    target_sources(fuzz_${name} PRIVATE ${PROJECT_SOURCE_DIR}/fuzz/replay_main.cpp)
    add_test(NAME fuzz.${name} COMMAND fuzz_${name} ${PROJECT_SOURCE_DIR}/fuzz/corpus/${name})
    set_tests_properties(fuzz.${name} PROPERTIES TIMEOUT 300)
  endif()
endfunction()

# quillet_bench(NAME SOURCES file... DEPENDS target...)
#   A Google Benchmark program; built on request only: cmake --build DIR --target benches.
if(NOT TARGET benches)
  add_custom_target(benches)
endif()
function(quillet_bench name)
  cmake_parse_arguments(arg "" "" "SOURCES;DEPENDS" ${ARGN})
  if(QUILLET_FUZZ)
    return()
  endif()
  find_package(benchmark REQUIRED)
  add_executable(${name} EXCLUDE_FROM_ALL ${arg_SOURCES})
  target_link_libraries(${name} PRIVATE quillet_build ${arg_DEPENDS} benchmark::benchmark_main)
  add_dependencies(benches ${name})
endfunction()
