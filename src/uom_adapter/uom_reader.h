#pragma once

#include <string>

class UomDefinitions;

// Adds what a file or resource defines; false when there is none or it is no XML.
bool ReadUomDefinitions(const std::string& name, UomDefinitions& definitions);
