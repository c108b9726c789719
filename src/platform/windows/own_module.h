#pragma once

#include <windows.h>

// The module that this code is linked into: the library, or a program that links it statically.
HMODULE OwnModule();
