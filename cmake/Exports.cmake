# The exported names of the module stand in one list. From it come the linker's version script
# (Linux) and the module definition file (Windows), so that both files export the same names.

# fixtop_exports(target list): a list has one name a line; `#` begins a comment.
function(fixtop_exports target list)
  set_property(DIRECTORY APPEND PROPERTY CMAKE_CONFIGURE_DEPENDS ${list})
  file(STRINGS ${list} lines)
  set(names)
  foreach(line IN LISTS lines)
    string(REGEX REPLACE "#.*" "" name "${line}")
    string(STRIP "${name}" name)
    if(name)
      list(APPEND names ${name})
    endif()
  endforeach()

  if(WIN32)
    list(JOIN names "\n    " body)
    set(script ${CMAKE_CURRENT_BINARY_DIR}/${target}.def)
    file(CONFIGURE OUTPUT ${script} CONTENT "LIBRARY ${target}.dll\nEXPORTS\n    ${body}\n" @ONLY)
    target_sources(${target} PRIVATE ${script})
  else()
    list(JOIN names ";\n        " body)
    set(script ${CMAKE_CURRENT_BINARY_DIR}/${target}.map)
    file(CONFIGURE OUTPUT ${script}
         CONTENT "{\n    global:\n        ${body};\n    local:\n        *;\n};\n" @ONLY)
    target_link_options(${target} PRIVATE "LINKER:--version-script=${script}")
  endif()
  set_property(TARGET ${target} APPEND PROPERTY LINK_DEPENDS ${script})
endfunction()
