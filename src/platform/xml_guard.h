#pragma once

// What is looked at before a document reaches the parser.

#include <string_view>

// Why the document is not to be parsed, or a null pointer when it may be: it declares entities,
// with which a short text can grow without bound, or it is in an encoding in which this look would
// not see them.
const char* RefusalOfXml(std::string_view bytes);
