#include "path_text.h"

#include <charconv>

#include "fixtop/value.h"

namespace fixtop {

namespace {

constexpr std::string_view kSpecial = "%#'&!|()[].=\"";
// Names are compared up to this length when a path is walked.
constexpr std::size_t kComparedLength = 199;

class Cutter {
 public:
    explicit Cutter(std::string_view text) : text_(text) {}

    StepText Step() {
        const std::size_t start = at_;
        StepText step;
        Skip('\'');
        step.is_variable = Skip('%');
        step.name = String();
        if (Skip('#')) {
            const bool variable = Skip('%');
            step.count = variable ? "%" : "";
            *step.count += String();
        }
        const std::size_t filters = at_;
        while (at_ < text_.size() &&
               std::string_view("[|&!").find(text_[at_]) != std::string::npos) {
            SkipClause();
        }
        step.filters = text_.substr(filters, at_ - filters);
        step.text = step.bare = text_.substr(start, at_ - start);
        if (Skip('(')) Parentheses(start, step);
        return step;
    }
    bool NextStep() { return Skip('.') || Stands('('); }

 private:
    bool Stands(char c) const { return at_ < text_.size() && text_[at_] == c; }
    bool Skip(char c) {
        if (!Stands(c)) return false;
        ++at_;
        return true;
    }
    std::string String() {
        if (Skip('"')) return Quoted();
        const std::size_t end = std::min(text_.find_first_of(kSpecial, at_), text_.size());
        std::string name(text_.substr(at_, end - at_));
        at_ = end;
        return name;
    }
    void Parentheses(std::size_t start, StepText& step) {
        std::string text = String();
        const bool goes_on = Skip(')') && at_ + 1 < text_.size() && (Stands('.') || Stands('('));
        (goes_on ? step.key : step.attribute) = std::move(text);
        if (!goes_on) at_ = text_.size();
        if (goes_on) step.text = text_.substr(start, at_ - start);
    }
    // Behind the opening quote; a doubled quote stands for one.
    std::string Quoted() {
        std::string name;
        while (at_ < text_.size()) {
            const char c = text_[at_++];
            if (c == '"' && !Skip('"')) break;
            name += c;
        }
        return name;
    }
    // One filter with what joins it to the one before.
    void SkipClause() {
        int depth = 0;
        while (at_ < text_.size()) {
            const char c = text_[at_++];
            if (c == '"') {
                Quoted();
            } else if (c == '[') {
                ++depth;
            } else if (c == ']' && --depth == 0) {
                return;
            }
        }
    }

    std::string_view text_;
    std::size_t at_ = 0;
};

// The number in a name of the form "#12", in which array elements are named.
std::optional<int> ElementNumber(const std::string& name) {
    if (name.size() < 2 || name[0] != '#') return std::nullopt;
    int number = 0;
    const char* end = name.data() + name.size();
    const auto [stop, error] = std::from_chars(name.data() + 1, end, number);
    if (error != std::errc() || stop != end || number < 0) return std::nullopt;
    return number;
}

}  // namespace

std::vector<StepText> SplitPath(std::string_view expression) {
    Cutter cutter(expression);
    std::vector<StepText> steps;
    do {
        steps.push_back(cutter.Step());
    } while (cutter.NextStep());
    return steps;
}

std::string QuotedName(const std::string& name) {
    FIValue quoted("");
    quoted.AppendText(name.c_str(), true);
    return quoted.ToText();
}

// A name that begins with "#" is read plainly, a key is not.
std::string QuotedKey(const std::string& key) {
    std::string quoted = QuotedName(key);
    return quoted.front() == '#' ? '"' + quoted + '"' : quoted;
}

std::string WithoutQuotes(std::string_view text) {
    std::string plain;
    bool inside = false;
    for (std::size_t at = 0; at < text.size(); ++at) {
        const bool doubled = inside && text.substr(at, 2) == "\"\"";
        if (text[at] != '"' || doubled) plain += text[at];
        if (doubled) ++at;
        if (text[at] == '"' && !doubled) inside = !inside;
    }
    return plain;
}

std::string StepFor(const ChildPlace& place) {
    const std::optional<int> number = ElementNumber(place.name);
    const bool unusable = place.by_index || place.name.empty() || place.name == "*" ||
                          place.name.size() > kComparedLength || (number && place.repeat > 0);
    if (unusable) return "*#" + std::to_string(place.index);
    // Unquoted, "#3" is a count of siblings and not a name.
    if (number && *number != place.index) return '"' + place.name + '"';
    const std::string name = QuotedName(place.name);
    if (!place.key.empty()) return name + '(' + QuotedKey(place.key) + ')';
    return place.repeat == 0 ? name : name + '#' + std::to_string(place.repeat);
}

std::string JoinPath(const std::string& path, const std::string& step) {
    return path.empty() || step.empty() ? path + step : path + '.' + step;
}

}  // namespace fixtop
