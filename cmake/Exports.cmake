# SPDX-License-Identifier: Apache-2.0
# What a module exports is listed once. From the lists come the linker's version script (Linux) and
# the module definition file (Windows), so that both files export the same names.

# fixtop_exports(target lists...): a text has one name a line, `#` begins a comment; of a header the
# names are those of its lines FIXTOP_STEP(name), FIXTOP_ASKED_STEP(name), FIXTOP_LIST(name),
# FIXTOP_CHILD_LIST(name) and FIXTOP_LATE_LIST(name, ...). All names together are written to the file
# that the target's property FIXTOP_EXPORTS names, for whoever checks them.
function(fixtop_exports target)
  set(names)
  foreach(list IN LISTS ARGN)
    set_property(DIRECTORY APPEND PROPERTY CMAKE_CONFIGURE_DEPENDS ${list})
    file(STRINGS ${list} lines)
    foreach(line IN LISTS lines)
      if(list MATCHES "\\.h$")
        string(REGEX MATCH "^FIXTOP_(STEP|ASKED_STEP|LIST|CHILD_LIST|LATE_LIST)\\(([A-Za-z0-9_]+)[,)]" name "${line}")
        set(name "${CMAKE_MATCH_2}")
      else()
        string(REGEX REPLACE "#.*" "" name "${line}")
        string(STRIP "${name}" name)
      endif()
      if(name)
        list(APPEND names ${name})
      endif()
    endforeach()
  endforeach()
  set(together ${CMAKE_CURRENT_BINARY_DIR}/${target}_exports.txt)
  list(JOIN names "\n" text)
  file(CONFIGURE OUTPUT ${together} CONTENT "${text}\n" @ONLY)
  set_target_properties(${target} PROPERTIES FIXTOP_EXPORTS ${together})

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
