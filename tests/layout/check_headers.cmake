# SPDX-License-Identifier: Apache-2.0
# Every header compiles alone: one source a header, which includes it twice so that a missing guard
# shows too. A header that its own source includes first is compiled alone there. Optimisation says
# nothing here, and one build of them is enough.
if(NOT (FIXTOP_SANITIZE OR FIXTOP_COVERAGE))
  # fixtop_check_headers(target root): the headers below a folder.
  function(fixtop_check_headers target root)
    file(GLOB_RECURSE headers CONFIGURE_DEPENDS RELATIVE ${PROJECT_SOURCE_DIR}/${root}
         ${PROJECT_SOURCE_DIR}/${root}/*.h)
    list(FILTER headers EXCLUDE REGEX "^platform/windows/|_windows\\.h$")
    set(sources)
    foreach(header IN LISTS headers)
      string(REGEX REPLACE "\\.h$" ".cpp" own ${PROJECT_SOURCE_DIR}/${root}/${header})
      if(EXISTS ${own})
        file(STRINGS ${own} includes REGEX "^#include" LIMIT_COUNT 1)
        if(includes STREQUAL "#include \"${header}\"")
          continue()
        endif()
      endif()
      set(source ${CMAKE_CURRENT_BINARY_DIR}/headers/${root}/${header}.cpp)
      file(CONFIGURE OUTPUT ${source} CONTENT "#include \"${header}\"\n#include \"${header}\"\n")
      list(APPEND sources ${source})
    endforeach()
    add_library(${target} OBJECT ${sources})
    target_include_directories(${target} PRIVATE ${PROJECT_SOURCE_DIR}/include)
    target_compile_options(${target} PRIVATE -O0)
  endfunction()

  # Consumers have the public headers and nothing beside them.
  fixtop_check_headers(check_public_headers include)
  fixtop_check_headers(check_casehost_headers casehost/include)
  target_include_directories(check_casehost_headers PRIVATE ${PROJECT_SOURCE_DIR}/casehost/include)
  fixtop_check_headers(check_headers src)
  target_link_libraries(check_headers PRIVATE fixtop_core fixtop_expat)
endif()
