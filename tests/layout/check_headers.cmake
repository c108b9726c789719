# Every header compiles alone: one source a header, which includes it twice so that a missing guard
# shows too. A header that its own source includes first is compiled alone there. Optimisation says
# nothing here, and one build of them is enough.
if(NOT (FIXTOP_SANITIZE OR FIXTOP_COVERAGE))
  set(sources)
  foreach(root src casehost/include)
    file(GLOB_RECURSE headers CONFIGURE_DEPENDS RELATIVE ${PROJECT_SOURCE_DIR}/${root}
         ${PROJECT_SOURCE_DIR}/${root}/*.h)
    list(FILTER headers EXCLUDE REGEX "^platform/windows/")
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
  endforeach()
  add_library(check_headers OBJECT ${sources})
  target_include_directories(check_headers PRIVATE ${PROJECT_SOURCE_DIR}/src
                             ${PROJECT_SOURCE_DIR}/casehost/include)
  target_link_libraries(check_headers PRIVATE fixtop_core fixtop_expat fixtop_zip fixtop_json)
  target_compile_options(check_headers PRIVATE -O0)
endif()
