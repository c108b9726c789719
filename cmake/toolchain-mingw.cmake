# SPDX-License-Identifier: Apache-2.0
# Windows x64 programs built on Linux. The posix thread model is wanted: the other one has no
# std::mutex. Programs carry their runtime with them and run here through Wine.
set(CMAKE_SYSTEM_NAME Windows)
set(CMAKE_SYSTEM_PROCESSOR x86_64)

set(FIXTOP_MINGW x86_64-w64-mingw32)
set(CMAKE_C_COMPILER ${FIXTOP_MINGW}-gcc-posix)
set(CMAKE_CXX_COMPILER ${FIXTOP_MINGW}-g++-posix)
set(CMAKE_RC_COMPILER ${FIXTOP_MINGW}-windres)
set(CMAKE_CROSSCOMPILING_EMULATOR wine)

set(CMAKE_FIND_ROOT_PATH /usr/${FIXTOP_MINGW})
set(CMAKE_FIND_ROOT_PATH_MODE_PROGRAM NEVER)
set(CMAKE_FIND_ROOT_PATH_MODE_LIBRARY ONLY)
set(CMAKE_FIND_ROOT_PATH_MODE_INCLUDE ONLY)
set(CMAKE_FIND_ROOT_PATH_MODE_PACKAGE ONLY)

foreach(kind EXE SHARED MODULE)
  set(CMAKE_${kind}_LINKER_FLAGS_INIT "-static -static-libgcc -static-libstdc++")
endforeach()
