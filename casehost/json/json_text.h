#pragma once

// JsonText: JSON text as case files write it, indented by two, numbers in their shortest exact
// form.

#include <string>
#include <string_view>

namespace casehost::json {

class JsonText {
 public:
    // Starts a line for a member or element; `first` ones stand without a comma before them.
    void Line(int depth, bool& first);
    void Key(std::string_view name);
    void Text(std::string_view text);
    // Empty and endless numbers are null.
    void Number(double number);
    void Integer(long number) { out_ += std::to_string(number); }
    void Flag(bool flag) { out_ += flag ? "true" : "false"; }
    // As it stands.
    void Raw(std::string_view text) { out_ += text; }

 protected:
    std::string out_;
};

}  // namespace casehost::json
