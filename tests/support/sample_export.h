// SPDX-License-Identifier: Apache-2.0
#pragma once

namespace fixtop {

// Marks a function that a test exports by its plain name.
#ifdef _WIN32
#define SAMPLE_EXPORT extern "C" __declspec(dllexport)
#else
#define SAMPLE_EXPORT extern "C" __attribute__((visibility("default")))
#endif

}  // namespace fixtop
