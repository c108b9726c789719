// SPDX-License-Identifier: Apache-2.0
#pragma once

// Names in C++ of what a class library calls as it likes.
//
// A name that is an identifier stays as it is. In others each character that an identifier can't
// have is an underscore, of several in a row one is kept, and an `x` stands ahead of what would
// begin with none of the letters. A name that C++ or the library's own header needs has an
// underscore behind it, and one that is taken a number, from 2.

#include <set>
#include <string>

namespace fixtop::tools {

// The names of one scope.
class CppNames {
 public:
    CppNames() = default;
    // A scope in which the names of another one are taken as well.
    explicit CppNames(const CppNames* outer, std::set<std::string> reserved)
        : outer_(outer), reserved_(std::move(reserved)) {}

    // A name of its own each time.
    std::string Take(const std::string& name);

 private:
    bool IsReserved(const std::string& name) const;
    bool IsTaken(const std::string& name) const;

    const CppNames* outer_ = nullptr;
    std::set<std::string> reserved_;
    std::set<std::string> taken_;
};

// A literal in C++ of a text.
std::string Literal(const std::string& text);
// A text on one line of a comment, behind which more stands.
std::string InComment(const std::string& text);

}  // namespace fixtop::tools
