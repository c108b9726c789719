// SPDX-License-Identifier: Apache-2.0
#include "json.h"

#include <algorithm>

#include <nlohmann/json.hpp>

namespace fixtop {

namespace {

// A plain value of the library, which takes memory to drop its lists and records.
template <class Plain>
std::string Written(const Plain& plain) {
    using Library = nlohmann::json;
    return Library(plain).dump(-1, ' ', false, Library::error_handler_t::replace);
}

void Break(std::string& out, int indent, int depth) {
    if (indent < 0) return;
    out += '\n';
    out.append(static_cast<std::size_t>(indent) * static_cast<std::size_t>(depth), ' ');
}

}  // namespace

Json::Json(double number) : text_(Written(number)) {}

Json::Json(const std::string& text) : text_(Written(text)) {}

Json& Json::operator[](const std::string& name) {
    kind_ = Kind::kRecord;
    std::string written = Written(name);
    const auto found = std::find(names_.begin(), names_.end(), written);
    if (found != names_.end()) return values_[static_cast<std::size_t>(found - names_.begin())];
    values_.reserve(values_.size() + 1);
    names_.push_back(std::move(written));
    return values_.emplace_back();
}

void Json::push_back(Json value) {
    kind_ = Kind::kList;
    values_.push_back(std::move(value));
}

std::string Json::Text(int indent) const {
    std::string out;
    Write(out, indent, 0);
    return out;
}

void Json::Write(std::string& out, int indent, int depth) const {
    if (kind_ == Kind::kPlain) {
        out += text_;
        return;
    }
    const bool is_record = kind_ == Kind::kRecord;
    out += is_record ? '{' : '[';
    for (std::size_t i = 0; i < values_.size(); ++i) {
        if (i > 0) out += ',';
        Break(out, indent, depth + 1);
        if (is_record) out += names_[i] + (indent < 0 ? ":" : ": ");
        values_[i].Write(out, indent, depth + 1);
    }
    if (!values_.empty()) Break(out, indent, depth);
    out += is_record ? '}' : ']';
}

}  // namespace fixtop
