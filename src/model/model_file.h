#pragma once

// The way that class library, map and unit files are read: a file of the name in the search
// folders, else the resource of that name, through the element handlers of the reader.

#include <string>

#include "model/sax_element_handler.h"

// Formats of the messages, each with one text argument.
struct ModelFileMessages {
    const char* no_reader;
    const char* no_handlers;
    const char* using_local;  // at level 7, with the full path
    const char* not_located;
    const char* failed_file;
    const char* failed_resource;
    const char* no_resource;
    const char* no_file_or_resource;  // where there is no module to take resources from
};

enum class ModelFileOrigin {
    kCaller,   // any name
    kInclude,  // out of a file: the name must stay in the search folders
};

// False when the document could not be found or parsed; why is logged.
bool ReadModelFile(const ModelFileMessages& messages, const std::string& name,
                   ModelFileOrigin origin, bool has_resources, SaxElementHandler& document);
