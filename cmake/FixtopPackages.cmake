# SPDX-License-Identifier: Apache-2.0
# The libraries that come from outside, under one target name each on both platforms. Linux takes
# the system's; Windows takes the static ones that cmake/build-windows-deps.sh made, the header-only
# ones from the build machine, and GoogleTest from its sources.

set(FIXTOP_WINDOWS_DEPS ${PROJECT_SOURCE_DIR}/build/windows-deps CACHE PATH
    "Where cmake/build-windows-deps.sh put the Windows libraries")

# fixtop_header_only(target folder): headers of /usr/include/<folder>. A cross build must not see
# /usr/include as a whole, so the one folder is linked into the build tree.
function(fixtop_header_only target folder)
  find_path(${target}_INCLUDE ${folder} PATHS /usr/include NO_CMAKE_FIND_ROOT_PATH)
  mark_as_advanced(${target}_INCLUDE)
  add_library(${target} INTERFACE)
  if(NOT ${target}_INCLUDE)
    message(STATUS "${folder}: headers not found, ${target} is empty")
    return()
  endif()
  if(CMAKE_CROSSCOMPILING)
    set(linked ${PROJECT_BINARY_DIR}/header-only)
    file(MAKE_DIRECTORY ${linked})
    file(CREATE_LINK ${${target}_INCLUDE}/${folder} ${linked}/${folder} SYMBOLIC)
    target_include_directories(${target} SYSTEM INTERFACE ${linked})
  else()
    target_include_directories(${target} SYSTEM INTERFACE ${${target}_INCLUDE})
  endif()
endfunction()

fixtop_header_only(fixtop_cli11 CLI)
fixtop_header_only(fixtop_json nlohmann)

# fixtop_expat, fixtop_minizip, fixtop_zlib, fixtop_pugixml
if(WIN32)
  if(NOT EXISTS ${FIXTOP_WINDOWS_DEPS}/stamp)
    message(FATAL_ERROR "The Windows libraries are missing: run cmake/build-windows-deps.sh first")
  endif()
  foreach(name expat minizip pugixml)
    add_library(fixtop_${name} INTERFACE)
    target_include_directories(fixtop_${name} SYSTEM INTERFACE ${FIXTOP_WINDOWS_DEPS}/include)
    target_link_libraries(fixtop_${name} INTERFACE ${FIXTOP_WINDOWS_DEPS}/lib/lib${name}.a)
  endforeach()
  target_compile_definitions(fixtop_expat INTERFACE XML_STATIC)
  target_include_directories(fixtop_minizip SYSTEM INTERFACE ${FIXTOP_WINDOWS_DEPS}/include/minizip)
  find_library(FIXTOP_WINDOWS_ZLIB libz.a REQUIRED)
  mark_as_advanced(FIXTOP_WINDOWS_ZLIB)
  add_library(fixtop_zlib INTERFACE)
  target_link_libraries(fixtop_zlib INTERFACE ${FIXTOP_WINDOWS_ZLIB})
  target_link_libraries(fixtop_minizip INTERFACE fixtop_zlib)
else()
  find_package(PkgConfig REQUIRED)
  foreach(name expat minizip zlib pugixml)
    pkg_check_modules(${name} REQUIRED IMPORTED_TARGET GLOBAL ${name})
    add_library(fixtop_${name} INTERFACE)
    target_link_libraries(fixtop_${name} INTERFACE PkgConfig::${name})
  endforeach()
endif()

# GTest::gtest, GTest::gmock, GTest::gmock_main
if(FIXTOP_TESTS AND WIN32)
  set(CMAKE_POLICY_DEFAULT_CMP0077 NEW)  # its options take what is set here
  set(INSTALL_GTEST OFF)
  add_subdirectory(/usr/src/googletest ${PROJECT_BINARY_DIR}/gtest EXCLUDE_FROM_ALL)
  foreach(name gtest gtest_main gmock gmock_main)
    set_target_properties(${name} PROPERTIES CXX_STANDARD 20)
    if(NOT TARGET GTest::${name})
      add_library(GTest::${name} ALIAS ${name})
    endif()
  endforeach()
elseif(FIXTOP_TESTS)
  find_package(GTest REQUIRED)
endif()
