#pragma once

// The element with which a model file says where and how much of it is logged.

#include <cstdlib>
#include <string>

#include "diagnostics/error_log.h"
#include "model/named_elements.h"

class LogElement final : public NamedElement {
 public:
    LogElement() : NamedElement("Log") {}

 protected:
    void Begin(const XmlLocator*, const XmlAttributes& attributes) override {
        std::string text;
        if (GetAttribute("File", attributes, text)) SetLogFile(text.c_str());
        if (GetAttribute("Level", attributes, text)) SetLogLevel(std::atoi(text.c_str()));
    }
};
