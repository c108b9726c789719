# SPDX-License-Identifier: Apache-2.0
# What `cmake --install` puts where: the module and the unit adapter beside it, the static libraries,
# the headers, the program with its pages and completion, and the files by which CMake and pkg-config
# find them.
include(CMakePackageConfigHelpers)

set(config_folder ${CMAKE_INSTALL_LIBDIR}/cmake/Fixtop)

foreach(name fixtop fixtop_client fixtop_host fixtop_casehost)
  string(REGEX REPLACE "^fixtop_" "" short ${name})
  set_target_properties(${name} PROPERTIES EXPORT_NAME ${short})
  target_compile_features(${name} INTERFACE cxx_std_20)
endforeach()
install(TARGETS fixtop fixtop_client fixtop_host fixtop_casehost EXPORT FixtopTargets
  LIBRARY ARCHIVE RUNTIME INCLUDES DESTINATION ${CMAKE_INSTALL_INCLUDEDIR})
# The module seeks it beside itself.
install(TARGETS QSIUOMAdapter2004_2 LIBRARY RUNTIME)
if(WIN32)
  install(TARGETS qsicom RUNTIME)
endif()
install(DIRECTORY ${PROJECT_SOURCE_DIR}/include/ ${PROJECT_SOURCE_DIR}/casehost/include/
  TYPE INCLUDE FILES_MATCHING PATTERN "*.h")
if(TARGET fixtop_classes)
  install(FILES $<TARGET_PROPERTY:fixtop_classes,FIXTOP_HEADER> DESTINATION ${CMAKE_INSTALL_INCLUDEDIR}/fixtop/client)
  if(WIN32)
    install(FILES $<TARGET_PROPERTY:fixtop_classes,FIXTOP_INTERFACES>
      DESTINATION ${CMAKE_INSTALL_INCLUDEDIR}/fixtop/automation)
  endif()
endif()

# The libraries behind the case host: those of the system by pkg-config, on Windows our own copies.
get_target_property(outside fixtop_casehost FIXTOP_OUTSIDE)
set(outside_packages)
foreach(name IN LISTS outside)
  if(WIN32 AND name STREQUAL "zlib")
    install(FILES ${FIXTOP_WINDOWS_ZLIB} DESTINATION ${CMAKE_INSTALL_LIBDIR}/fixtop)
    target_link_libraries(fixtop_casehost
      INTERFACE "$<INSTALL_INTERFACE:$<INSTALL_PREFIX>/${CMAKE_INSTALL_LIBDIR}/fixtop/libz.a>")
  elseif(WIN32)
    install(FILES ${FIXTOP_WINDOWS_DEPS}/lib/lib${name}.a
      DESTINATION ${CMAKE_INSTALL_LIBDIR}/fixtop)
    target_link_libraries(fixtop_casehost
      INTERFACE "$<INSTALL_INTERFACE:$<INSTALL_PREFIX>/${CMAKE_INSTALL_LIBDIR}/fixtop/lib${name}.a>")
  else()
    list(APPEND outside_packages ${name})
    target_link_libraries(fixtop_casehost
      INTERFACE $<INSTALL_INTERFACE:PkgConfig::Fixtop_${name}>)
  endif()
endforeach()

install(EXPORT FixtopTargets NAMESPACE Fixtop:: DESTINATION ${config_folder})
configure_package_config_file(${PROJECT_SOURCE_DIR}/cmake/install/FixtopConfig.cmake.in
  ${PROJECT_BINARY_DIR}/install/FixtopConfig.cmake INSTALL_DESTINATION ${config_folder})
write_basic_package_version_file(${PROJECT_BINARY_DIR}/install/FixtopConfigVersion.cmake
  COMPATIBILITY SameMinorVersion)
install(FILES ${PROJECT_BINARY_DIR}/install/FixtopConfig.cmake
  ${PROJECT_BINARY_DIR}/install/FixtopConfigVersion.cmake DESTINATION ${config_folder})

# fixtop_pc(name description libraries requires...)
function(fixtop_pc name description libraries)
  list(JOIN ARGN " " requires)
  configure_file(${PROJECT_SOURCE_DIR}/cmake/install/fixtop.pc.in
    ${PROJECT_BINARY_DIR}/install/${name}.pc @ONLY)
  install(FILES ${PROJECT_BINARY_DIR}/install/${name}.pc
    DESTINATION ${CMAKE_INSTALL_LIBDIR}/pkgconfig)
endfunction()

# The files stand in <prefix>/<libdir>/pkgconfig and find the prefix from there, wherever it lies.
file(RELATIVE_PATH to_prefix ${CMAKE_INSTALL_FULL_LIBDIR}/pkgconfig ${CMAKE_INSTALL_PREFIX})
string(REGEX REPLACE "/$" "" to_prefix "${to_prefix}")
if(NOT WIN32)
  fixtop_pc(fixtop "A process-simulation case as one browsable, typed tree" "-lfixtop")
  fixtop_pc(fixtop-host "What a simulator's side compiles to be shown by Fixtop" "-lfixtop_host")
  fixtop_pc(fixtop-casehost "Case files and a solver in memory, as a host of Fixtop"
    "-lfixtop_casehost" fixtop-host ${outside_packages})
  fixtop_pc(fixtop-client "The tree of Fixtop as plain C++ values" "-lfixtop_client"
    "fixtop = ${PROJECT_VERSION}," fixtop-casehost)
endif()

if(FIXTOP_PROGRAM)
  if(NOT WIN32 AND NOT CMAKE_INSTALL_PREFIX STREQUAL "/usr")
    file(RELATIVE_PATH to_libraries ${CMAKE_INSTALL_FULL_BINDIR} ${CMAKE_INSTALL_FULL_LIBDIR})
    set_target_properties(fixtop_cli PROPERTIES INSTALL_RPATH "$ORIGIN/${to_libraries}")
  endif()
  install(TARGETS fixtop_cli RUNTIME)
endif()
# What a Windows user unpacks: the programs, how scripts hold them, and samples. `./go package windows`.
if(FIXTOP_PROGRAM AND WIN32)
  install(TARGETS hovex RUNTIME)
  install(TARGETS fixtop QSIUOMAdapter2004_2 qsicom fixtop_cli hovex
    RUNTIME DESTINATION . COMPONENT windows_zip EXCLUDE_FROM_ALL)
  install(FILES ${PROJECT_SOURCE_DIR}/LICENSE ${PROJECT_SOURCE_DIR}/docs/windows.md
    DESTINATION . COMPONENT windows_zip EXCLUDE_FROM_ALL)
  install(DIRECTORY ${PROJECT_SOURCE_DIR}/examples/windows/
    DESTINATION samples COMPONENT windows_zip EXCLUDE_FROM_ALL)
endif()
install(FILES ${PROJECT_SOURCE_DIR}/LICENSE TYPE DOC RENAME copyright)
install(FILES ${PROJECT_SOURCE_DIR}/README.md ${PROJECT_SOURCE_DIR}/CHANGELOG.md TYPE DOC)
install(DIRECTORY ${PROJECT_SOURCE_DIR}/docs/ TYPE DOC FILES_MATCHING PATTERN "*.md")
install(DIRECTORY ${PROJECT_SOURCE_DIR}/examples TYPE DOC)
if(FIXTOP_PROGRAM AND NOT WIN32)
  foreach(page fixtop.1 fixtop-path.7)
    string(REGEX REPLACE ".*\\." "" section ${page})
    configure_file(${PROJECT_SOURCE_DIR}/man/${page} ${PROJECT_BINARY_DIR}/install/${page} @ONLY)
    install(FILES ${PROJECT_BINARY_DIR}/install/${page}
      DESTINATION ${CMAKE_INSTALL_MANDIR}/man${section})
  endforeach()
  set(completion ${PROJECT_SOURCE_DIR}/tools/completion)
  install(FILES ${completion}/fixtop.bash
    DESTINATION ${CMAKE_INSTALL_DATADIR}/bash-completion/completions RENAME fixtop)
  install(FILES ${completion}/_fixtop DESTINATION ${CMAKE_INSTALL_DATADIR}/zsh/site-functions)
endif()

# Debian packages, by `./go package`: library, development files and program in one, the Python package
# in another that takes the library of the first.
set(CPACK_GENERATOR DEB)
set(CPACK_PACKAGE_NAME fixtop)
set(CPACK_PACKAGE_CONTACT "The Fixtop developers <fixtop@localhost>")
set(CPACK_PACKAGE_DESCRIPTION_SUMMARY "A process-simulation case as one browsable, typed tree")
set(CPACK_DEBIAN_PACKAGE_DESCRIPTION "Fixtop shows an open process-simulation case to other programs
as one browsable, typed tree: flowsheets, streams, unit operations, variables and solver state, read
and written by path. The package holds the library, what programs are built with, and the program.")
set(CPACK_DEBIAN_FILE_NAME DEB-DEFAULT)
set(CPACK_DEBIAN_PACKAGE_SECTION science)
set(CPACK_DEBIAN_PACKAGE_SHLIBDEPS ON)
# What a program that links the static libraries needs of them.
set(debian_expat libexpat1-dev)
set(debian_minizip libminizip-dev)
set(debian_zlib zlib1g-dev)
set(debian_pugixml libpugixml-dev)
set(development pkg-config)
foreach(package IN LISTS outside_packages)
  list(APPEND development ${debian_${package}})
endforeach()
list(JOIN development ", " CPACK_DEBIAN_PACKAGE_SUGGESTS)
set(CPACK_PACKAGING_INSTALL_PREFIX ${CMAKE_INSTALL_PREFIX})
set(CPACK_STRIP_FILES ON)
if(FIXTOP_PYTHON)
  set(CPACK_DEB_COMPONENT_INSTALL ON)
  set(CPACK_COMPONENTS_ALL Unspecified python)
  set(CPACK_DEBIAN_UNSPECIFIED_PACKAGE_NAME fixtop)
  set(CPACK_DEBIAN_PYTHON_PACKAGE_NAME python3-fixtop)
  set(CPACK_DEBIAN_PYTHON_PACKAGE_SECTION python)
  set(CPACK_DEBIAN_PYTHON_DESCRIPTION "Process-simulation cases in Python
Opens a process-simulation case, reads and changes it in units, solves it, and shows its streams, unit
operations and columns as data frames.")
  # What the binding needs of the system, the library's package needs too.
  set(CPACK_DEBIAN_PYTHON_PACKAGE_SHLIBDEPS OFF)
  set(CPACK_DEBIAN_PYTHON_PACKAGE_DEPENDS
      "fixtop (= ${PROJECT_VERSION}), python3 (>= 3.11), python3 (<< 3.12), python3-numpy, python3-pandas")
  set(CPACK_DEBIAN_PYTHON_PACKAGE_SUGGESTS
      "python3-pint, python3-tqdm, python3-graphviz, python3-jinja2, python3-matplotlib, python3-distributed")
endif()
if(FIXTOP_PROGRAM AND WIN32)
  set(CPACK_GENERATOR ZIP)
  set(CPACK_PACKAGE_FILE_NAME fixtop-${PROJECT_VERSION}-windows)
  set(CPACK_PACKAGING_INSTALL_PREFIX /)
  set(CPACK_INSTALL_CMAKE_PROJECTS "${PROJECT_BINARY_DIR};${PROJECT_NAME};windows_zip;/")
endif()
include(CPack)
