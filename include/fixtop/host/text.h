// SPDX-License-Identifier: Apache-2.0
#pragma once

// Text and FileName: the host's string classes.

#include <string>
#include <utility>

namespace fixtop::host {

// A NUL-terminated 8-bit string, copied freely. The bytes are the host's own, normally UTF-8.
class Text {
 public:
    Text() = default;
    Text(const char* bytes) : bytes_(bytes ? bytes : "") {}
    Text(std::string bytes) : bytes_(std::move(bytes)) {}

    const char* CStr() const { return bytes_.c_str(); }
    const std::string& Str() const { return bytes_; }
    std::size_t Length() const { return bytes_.size(); }
    bool IsEmpty() const { return bytes_.empty(); }

    // Index of the first occurrence of `c`, or the length when it is absent.
    std::size_t Search(char c) const {
        const std::size_t at = bytes_.find(c);
        return at == std::string::npos ? bytes_.size() : at;
    }

    friend bool operator==(const Text& a, const Text& b) { return a.bytes_ == b.bytes_; }
    friend bool operator==(const Text& a, const char* b) { return a.bytes_ == b; }
    friend Text operator+(const Text& a, const Text& b) { return Text(a.bytes_ + b.bytes_); }
    friend Text operator+(const Text& a, const char* b) { return Text(a.bytes_ + b); }

 private:
    std::string bytes_;
};

inline const Text TheEmptyText;

// A document's place: folder, name, extension.
class FileName {
 public:
    FileName() = default;
    // A path and an extension; the last separator splits the path into folder and name. An empty
    // extension keeps the one that the path's name carries.
    FileName(const Text& name, const Text& extension) {
        const std::string& path = name.Str();
        const std::size_t cut = path.find_last_of("/\\");
        if (cut != std::string::npos) folder_ = Text(path.substr(0, cut + 1));
        std::string rest = cut == std::string::npos ? path : path.substr(cut + 1);
        const std::size_t dot = rest.find_last_of('.');
        if (extension.IsEmpty() && dot != std::string::npos && dot > 0) {
            extension_ = Text(rest.substr(dot));
            rest.erase(dot);
        } else {
            extension_ = extension;
        }
        name_ = Text(rest);
    }

    const Text& Name() const { return name_; }
    // The folder with its closing separator; empty when the document has none.
    const Text& DriveAndPath() const { return folder_; }
    const Text& Extension() const { return extension_; }
    Text FullPath() const { return folder_ + name_ + extension_; }
    // The file beside a document in which variables of its case are published.
    Text PublishedFile() const { return folder_ + name_ + Text(".atpub"); }

 private:
    Text folder_;
    Text name_;
    Text extension_;
};

}  // namespace fixtop::host
