#include "platform/open_file.h"

FilePtr OpenFile(const std::string& utf8_name, const char* mode) {
    return FilePtr(std::fopen(utf8_name.c_str(), mode));
}
