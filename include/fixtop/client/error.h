// SPDX-License-Identifier: Apache-2.0
#pragma once

// What the client library throws, beside std::bad_alloc when memory runs out.

#include <stdexcept>
#include <string>
#include <vector>

namespace fixtop::client {

class Error : public std::runtime_error {
 public:
    using std::runtime_error::runtime_error;
};

// A case, or a neutral view of it, can't be opened or saved. The texts name the file and the place.
class CaseError : public Error {
 public:
    explicit CaseError(std::vector<std::string> problems);
    const std::vector<std::string>& Problems() const { return problems_; }

 private:
    std::vector<std::string> problems_;
};

// A path expression that does not parse; the text is the module's own.
class PathError : public Error {
 public:
    PathError(std::string path, const std::string& text) : Error(text), path_(std::move(path)) {}
    const std::string& Path() const { return path_; }

 private:
    std::string path_;
};

// A path that leads nowhere: how far it leads, and what may have been meant there.
class NotFound : public Error {
 public:
    NotFound(std::string path, std::string found, std::vector<std::string> near);
    const std::string& Path() const { return path_; }
    // The part of the path that leads somewhere; empty for none of it.
    const std::string& Found() const { return found_; }
    // Steps that are there in place of the next one, nearest first; at most three.
    const std::vector<std::string>& Near() const { return near_; }

 private:
    std::string path_;
    std::string found_;
    std::vector<std::string> near_;
};

// A member that a class does not have, and what may have been meant.
class NoMember : public Error {
 public:
    NoMember(const std::string& class_name, std::string member, std::vector<std::string> near);
    const std::string& Member() const { return member_; }
    // Names of members, nearest first; at most three.
    const std::vector<std::string>& Near() const { return near_; }

 private:
    std::string member_;
    std::vector<std::string> near_;
};

// A node that is no object of the class, or a member that is not of the kind, that is asked for.
class WrongType : public Error {
 public:
    using Error::Error;
};

// A read or a store that the node does not take: the module's text, and the node's path.
class Refused : public Error {
 public:
    Refused(std::string path, std::string text);
    const std::string& Path() const { return path_; }
    // "Node deleted", "Node invalid", "Value not stored" and so on.
    const std::string& Text() const { return text_; }

 private:
    std::string path_;
    std::string text_;
};

// A node whose object the host has deleted, or can't find again.
class Gone : public Refused {
 public:
    using Refused::Refused;
};

}  // namespace fixtop::client
