#pragma once

// The resources that the system's linker put into the module, behind platform/resources.h.

#include <string>
#include <string_view>

std::string_view FindSystemResource(const std::string& name);
