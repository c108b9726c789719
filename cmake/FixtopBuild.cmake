# What every target of the project shares: language level, warnings, instrumentation, and the
# functions with which a folder declares itself a room of the module or a test program.

set(CMAKE_CXX_STANDARD 20)
set(CMAKE_CXX_STANDARD_REQUIRED ON)
set(CMAKE_CXX_EXTENSIONS OFF)
set(CMAKE_POSITION_INDEPENDENT_CODE ON)
set(CMAKE_CXX_VISIBILITY_PRESET hidden)
set(CMAKE_VISIBILITY_INLINES_HIDDEN ON)
set(CMAKE_EXPORT_COMPILE_COMMANDS ON)

if(NOT CMAKE_BUILD_TYPE)
  set(CMAKE_BUILD_TYPE Release)
endif()

add_compile_options(-Wall -Wextra -Wnon-virtual-dtor -Wshadow)
if(FIXTOP_SANITIZE)
  add_compile_options(-fsanitize=address,undefined -fno-sanitize-recover=all -fno-omit-frame-pointer)
  add_link_options(-fsanitize=address,undefined)
endif()
if(FIXTOP_COVERAGE)
  add_compile_options(--coverage -O0)
  add_link_options(--coverage)
endif()
if(WIN32)
  add_link_options(-static -static-libgcc -static-libstdc++)
endif()

# fixtop_room(name SOURCES ... LIBS ...): a room of the module. Its objects go into fixtop_core, the
# static library from which the shared module and the test programs are linked.
function(fixtop_room name)
  cmake_parse_arguments(ARG "" "" "SOURCES;LIBS" ${ARGN})
  add_library(room_${name} OBJECT ${ARG_SOURCES})
  target_include_directories(room_${name} PUBLIC ${PROJECT_SOURCE_DIR}/src)
  target_link_libraries(room_${name} PUBLIC ${ARG_LIBS})
  target_link_libraries(fixtop_core PUBLIC ${ARG_LIBS})
  target_sources(fixtop_core PRIVATE $<TARGET_OBJECTS:room_${name}>)
endfunction()

# fixtop_test(name SOURCES ... LIBS ...): one test program, run by ctest under its own name.
function(fixtop_test name)
  cmake_parse_arguments(ARG "" "" "SOURCES;LIBS" ${ARGN})
  add_executable(${name}_test ${ARG_SOURCES})
  target_include_directories(${name}_test PRIVATE ${PROJECT_SOURCE_DIR}/src ${PROJECT_SOURCE_DIR}/tests)
  target_link_libraries(${name}_test PRIVATE ${ARG_LIBS} fixtop_core GTest::gmock_main)
  add_test(NAME ${name} COMMAND ${name}_test)
  set_tests_properties(${name} PROPERTIES TIMEOUT 600)
endfunction()
