# SPDX-License-Identifier: Apache-2.0
# What every target of the project shares: language level, warnings, instrumentation, and the
# functions with which a folder declares itself a room of the module or a test program.

set(CMAKE_CXX_STANDARD 20)
set(CMAKE_CXX_STANDARD_REQUIRED ON)
set(CMAKE_CXX_EXTENSIONS OFF)
set(CMAKE_POSITION_INDEPENDENT_CODE ON)
set(CMAKE_VISIBILITY_INLINES_HIDDEN ON)
set(CMAKE_EXPORT_COMPILE_COMMANDS ON)

if(NOT CMAKE_BUILD_TYPE)
  set(CMAKE_BUILD_TYPE Release)
endif()

# Compilations are remembered across build folders where ccache is at hand.
find_program(FIXTOP_CCACHE ccache)
mark_as_advanced(FIXTOP_CCACHE)
foreach(language C CXX)
  if(FIXTOP_CCACHE AND NOT CMAKE_${language}_COMPILER_LAUNCHER)
    # Precompiled headers are told apart by their content.
    set(CMAKE_${language}_COMPILER_LAUNCHER
        ${CMAKE_COMMAND} -E env CCACHE_SLOPPINESS=pch_defines,time_macros ${FIXTOP_CCACHE})
  endif()
endforeach()

add_compile_options(-Wall -Wextra -Wnon-virtual-dtor -Wshadow)
if(NOT WIN32)
  # What the module exports is said by the list in src/front alone, so functions carry no visibility
  # mark; within the module they still bind directly.
  add_compile_options(-fno-semantic-interposition)
endif()
if(FIXTOP_SANITIZE)
  # Numbers that an integer cannot hold are not among the undefined things that g++ looks for itself.
  add_compile_options(-fsanitize=address,undefined,float-cast-overflow -fno-sanitize-recover=all
                      -fno-omit-frame-pointer)
  add_link_options(-fsanitize=address,undefined)
endif()
if(FIXTOP_FUZZ)
  add_compile_options(-fsanitize=fuzzer-no-link,address,undefined -fno-sanitize-recover=all
                      -fno-omit-frame-pointer)
  add_link_options(-fsanitize=address,undefined)
endif()
if(FIXTOP_ODR)
  # Objects hold what the linker's compiler needs to compare types and functions, and no code.
  add_compile_options(-flto -fno-fat-lto-objects)
  set(CMAKE_AR ${CMAKE_CXX_COMPILER_AR})
  set(CMAKE_RANLIB ${CMAKE_CXX_COMPILER_RANLIB})
  add_link_options(-flto=auto -Wodr -Wlto-type-mismatch -Werror=odr -Werror=lto-type-mismatch)
endif()
if(FIXTOP_COVERAGE)
  add_compile_options(--coverage -O0)
  add_link_options(--coverage)
endif()
# fixtop_standard_headers(target): the standard headers of a library, precompiled once for all of
# them. The plain Linux build goes without, so that a source which forgets one fails there.
function(fixtop_standard_headers target)
  if(NOT (FIXTOP_SANITIZE OR WIN32))
    return()
  endif()
  if(NOT TARGET fixtop_standard_headers)
    file(GENERATE OUTPUT ${PROJECT_BINARY_DIR}/standard_headers.cpp CONTENT "")
    add_library(fixtop_standard_headers OBJECT EXCLUDE_FROM_ALL
                ${PROJECT_BINARY_DIR}/standard_headers.cpp)
    target_precompile_headers(fixtop_standard_headers PRIVATE
      <algorithm> <array> <charconv> <cmath> <cstring> <functional> <map> <memory> <optional> <span>
      <string> <string_view> <unordered_map> <utility> <vector>)
  endif()
  target_precompile_headers(${target} REUSE_FROM fixtop_standard_headers)
endfunction()

# fixtop_room(name SOURCES ... LIBS ...): a room of the module. Its objects go into fixtop_core, the
# static library from which the shared module and the test programs are linked.
function(fixtop_room name)
  cmake_parse_arguments(ARG "" "" "SOURCES;LIBS" ${ARGN})
  add_library(room_${name} OBJECT ${ARG_SOURCES})
  fixtop_standard_headers(room_${name})
  target_include_directories(room_${name} PUBLIC ${PROJECT_SOURCE_DIR}/src ${PROJECT_SOURCE_DIR}/include)
  target_link_libraries(room_${name} PUBLIC ${ARG_LIBS})
  target_link_libraries(fixtop_core PUBLIC ${ARG_LIBS})
  target_sources(fixtop_core PRIVATE $<TARGET_OBJECTS:room_${name}>)
endfunction()

# Sample cases from outside the project; tests that want them skip themselves where there are none.
set(FIXTOP_CASES ${PROJECT_SOURCE_DIR}/../shared/cases CACHE PATH
    "Sample cases from outside the project")
if(DEFINED ENV{FIXTOP_CASES})
  set_property(CACHE FIXTOP_CASES PROPERTY VALUE $ENV{FIXTOP_CASES})
endif()

# Tests are compiled far more often than they run, and what they run is compiled elsewhere.
set(FIXTOP_TEST_OPTIONS -O0)

# The headers that every test source begins with, precompiled once for all of them.
function(fixtop_test_headers)
  if(TARGET fixtop_test_headers)
    return()
  endif()
  # A program, so that it is compiled with the options of programs.
  file(GENERATE OUTPUT ${PROJECT_BINARY_DIR}/test_headers.cpp CONTENT "int main() {}\n")
  add_executable(fixtop_test_headers EXCLUDE_FROM_ALL ${PROJECT_BINARY_DIR}/test_headers.cpp)
  target_link_libraries(fixtop_test_headers PRIVATE GTest::gmock_main)
  target_compile_options(fixtop_test_headers PRIVATE ${FIXTOP_TEST_OPTIONS})
  target_precompile_headers(fixtop_test_headers PRIVATE
    <gmock/gmock.h> <gtest/gtest.h> <map> <string> <vector>)
endfunction()

# fixtop_test(name SOURCES ... LIBS ...): one test program, run by ctest under its own name.
# Under the emulator names of files go through the code page of the locale.
function(fixtop_test name)
  cmake_parse_arguments(ARG "" "" "SOURCES;LIBS" ${ARGN})
  add_executable(${name}_test ${ARG_SOURCES})
  target_include_directories(${name}_test PRIVATE ${PROJECT_SOURCE_DIR}/src ${PROJECT_SOURCE_DIR}/tests)
  target_link_libraries(${name}_test PRIVATE ${ARG_LIBS} fixtop_core GTest::gmock_main)
  target_compile_options(${name}_test PRIVATE ${FIXTOP_TEST_OPTIONS})
  fixtop_test_headers()
  target_precompile_headers(${name}_test REUSE_FROM fixtop_test_headers)
  add_test(NAME ${name} COMMAND ${name}_test)
  set_tests_properties(${name} PROPERTIES TIMEOUT 600 ENVIRONMENT
    "FIXTOP_CASES=${FIXTOP_CASES};WINEPATH=Z:${PROJECT_BINARY_DIR}/lib;LC_ALL=C.UTF-8")
endfunction()

# fixtop_python_test(name script arguments...): a test that the build machine's Python runs. Not by the
# target of FindPython: that would be run by the emulator, which answers 0 whatever becomes of a
# program that is none of its system.
if(FIXTOP_TESTS)
  find_package(Python3 REQUIRED COMPONENTS Interpreter)
endif()
function(fixtop_python_test name script)
  add_test(NAME ${name} COMMAND ${Python3_EXECUTABLE} -B ${CMAKE_CURRENT_SOURCE_DIR}/${script} ${ARGN})
  set_tests_properties(${name} PROPERTIES
    ENVIRONMENT_MODIFICATION PYTHONPATH=path_list_prepend:${PROJECT_SOURCE_DIR}/tests)
endfunction()

# fixtop_started_as(out target): what starts a built program, its parts with a bar between them: the
# emulator, where the build has one, and the program. One argument that is never empty.
function(fixtop_started_as out target)
  set(parts ${CMAKE_CROSSCOMPILING_EMULATOR} $<TARGET_FILE:${target}>)
  list(JOIN parts "|" joined)
  set(${out} ${joined} PARENT_SCOPE)
endfunction()

# fixtop_run_windows_tests(folder): has ctest run the programs of a folder, and of those below, by
# the emulator with their output in files.
function(fixtop_run_windows_tests folder)
  get_property(targets DIRECTORY ${folder} PROPERTY BUILDSYSTEM_TARGETS)
  foreach(target IN LISTS targets)
    get_target_property(type ${target} TYPE)
    if(type STREQUAL "EXECUTABLE")
      set_target_properties(${target} PROPERTIES
        CROSSCOMPILING_EMULATOR ${PROJECT_SOURCE_DIR}/cmake/run-windows-test.sh)
    endif()
  endforeach()
  get_property(below DIRECTORY ${folder} PROPERTY SUBDIRECTORIES)
  foreach(each IN LISTS below)
    fixtop_run_windows_tests(${each})
  endforeach()
endfunction()

# fixtop_fuzz(name SOURCES ... LIBS ...): one libFuzzer program. Its seeds stand in
# fuzz/corpus/<name>/ and its dictionary, if it has one, in fuzz/<name>.dict.
function(fixtop_fuzz name)
  cmake_parse_arguments(ARG "" "" "SOURCES;LIBS" ${ARGN})
  add_executable(${name}_fuzz ${ARG_SOURCES})
  target_link_libraries(${name}_fuzz PRIVATE ${ARG_LIBS} fixtop_core)
  target_link_options(${name}_fuzz PRIVATE -fsanitize=fuzzer)
  set_target_properties(${name}_fuzz PROPERTIES
    RUNTIME_OUTPUT_DIRECTORY ${PROJECT_BINARY_DIR}/fuzz)
endfunction()

# fixtop_bench(name SOURCES ... LIBS ...): one benchmark program, with a main of its own.
function(fixtop_bench name)
  cmake_parse_arguments(ARG "" "" "SOURCES;LIBS" ${ARGN})
  add_executable(${name}_bench ${ARG_SOURCES})
  target_link_libraries(${name}_bench PRIVATE Fixtop::client ${ARG_LIBS} benchmark::benchmark)
  add_dependencies(${name}_bench QSIUOMAdapter2004_2)
  set_target_properties(${name}_bench PROPERTIES
    RUNTIME_OUTPUT_DIRECTORY ${PROJECT_BINARY_DIR}/bench)
endfunction()
