# SPDX-License-Identifier: Apache-2.0
# fixtop_resources(target file...): puts files into a module under their own names, on Windows as
# resources of type XML_FILE, elsewhere as a table registered with platform/resources.h.
function(fixtop_resources target)
  set(script)
  set(rows)
  set(labels)
  set(declarations)
  set(number 0)
  foreach(file IN LISTS ARGN)
    get_filename_component(name ${file} NAME)
    string(APPEND script "${name} XML_FILE \"${file}\"\n")
    set(label ${target}_resource_${number})
    string(APPEND labels "    ${label}:\\n    .incbin \\\"${file}\\\"\\n    ${label}_end:\\n")
    string(APPEND declarations
           "extern const char g_begin_${number}[] __asm__(\"${label}\") HIDDEN;\n"
           "extern const char g_end_${number}[] __asm__(\"${label}_end\") HIDDEN;\n")
    string(APPEND rows
           "        {\"${name}\", {g_begin_${number}, std::size_t(g_end_${number} - g_begin_${number})}},\n")
    math(EXPR number "${number} + 1")
  endforeach()

  if(WIN32)
    enable_language(RC)
    set(generated ${CMAKE_CURRENT_BINARY_DIR}/${target}_resources.rc)
    file(CONFIGURE OUTPUT ${generated} CONTENT "${script}" @ONLY)
  else()
    set(generated ${CMAKE_CURRENT_BINARY_DIR}/${target}_resources.cpp)
    file(CONFIGURE OUTPUT ${generated} @ONLY CONTENT "#include <span>
#include \"platform/resources.h\"

#define HIDDEN __attribute__((visibility(\"hidden\")))

__asm__(\".section .rodata\\n${labels}    .byte 0\\n    .previous\\n\");

extern \"C\" {
${declarations}}

namespace {
[[maybe_unused]] const bool g_registered = [] {
    static const fixtop::CompiledResource rows[] = {
${rows}    };
    static constinit fixtop::CompiledResources table(rows);
    fixtop::RegisterResources(table);
    return true;
}();
}  // namespace
")
    if(FIXTOP_ODR)
      # The labels stand in assembler text, which the linker's compiler may part from their users.
      set_source_files_properties(${generated} PROPERTIES COMPILE_OPTIONS -fno-lto)
    endif()
  endif()
  set_source_files_properties(${generated} PROPERTIES OBJECT_DEPENDS "${ARGN}")
  target_sources(${target} PRIVATE ${generated})
endfunction()
