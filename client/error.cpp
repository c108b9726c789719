// SPDX-License-Identifier: Apache-2.0
#include "fixtop/client/error.h"

namespace fixtop::client {

namespace {

std::string Joined(const std::vector<std::string>& texts, const char* between) {
    std::string joined;
    for (const std::string& text : texts) joined += (joined.empty() ? "" : between) + text;
    return joined;
}

std::string Missing(const std::string& path, const std::string& found,
                    const std::vector<std::string>& near) {
    std::string text = "no such node: " + path;
    text += found.empty() ? "\n  nothing of it was found" : "\n  found: " + found;
    if (!near.empty()) text += "\n  near: " + Joined(near, ", ");
    return text;
}

std::string Unknown(const std::string& class_name, const std::string& member,
                    const std::vector<std::string>& near) {
    const std::string text = class_name + " has no member " + member;
    return near.empty() ? text : text + "\n  near: " + Joined(near, ", ");
}

}  // namespace

CaseError::CaseError(std::vector<std::string> problems)
    : Error(Joined(problems, "\n")), problems_(std::move(problems)) {}

NotFound::NotFound(std::string path, std::string found, std::vector<std::string> near)
    : Error(Missing(path, found, near)),
      path_(std::move(path)),
      found_(std::move(found)),
      near_(std::move(near)) {}

NoMember::NoMember(const std::string& class_name, std::string member, std::vector<std::string> near)
    : Error(Unknown(class_name, member, near)),
      member_(std::move(member)),
      near_(std::move(near)) {}

Refused::Refused(std::string path, std::string text)
    : Error(path + ": " + text), path_(std::move(path)), text_(std::move(text)) {}

}  // namespace fixtop::client
