# SPDX-License-Identifier: Apache-2.0
# Runs the program that writes a header of classes: PROGRAM under EMULATOR, with LIBRARIES at hand,
# writes HEADER in the form FORM; MORE are its further arguments. What it says goes into a file: a server that the
# emulator leaves behind would keep the pipes of the build open.
get_filename_component(folder ${HEADER} DIRECTORY)
file(MAKE_DIRECTORY ${folder})
set(said ${HEADER}.log)
# default(name text): an environment variable that is not set.
macro(default name text)
  if("$ENV{${name}}" STREQUAL "")
    set(ENV{${name}} "${text}")
  endif()
endmacro()
if(EMULATOR)
  default(WINEPREFIX "${PREFIX}")
  default(WINEDEBUG -all)
  default(WINEARCH win64)
  default(WINEDLLOVERRIDES "winedbg.exe=d\\;mscoree=d\\;mshtml=d")
  set(ENV{WINEPATH} "Z:${LIBRARIES}")
  unset(ENV{DISPLAY})
  file(MAKE_DIRECTORY $ENV{WINEPREFIX})
endif()
execute_process(COMMAND ${EMULATOR} ${PROGRAM} ${FORM} ${HEADER} ${MORE}
  WORKING_DIRECTORY ${folder} INPUT_FILE /dev/null OUTPUT_FILE ${said} ERROR_FILE ${said}
  RESULT_VARIABLE failed)
if(failed OR NOT EXISTS ${HEADER})
  file(READ ${said} text)
  message(FATAL_ERROR "${PROGRAM}: ${failed}\n${text}")
endif()
file(REMOVE ${said})
