// SPDX-License-Identifier: Apache-2.0
#include "framework/path/child_steps.h"

#include <charconv>
#include <map>
#include <optional>
#include <set>
#include <utility>

#include "framework/path/path_names.h"

namespace fixtop {

namespace {

using Copied = Ref<FIIterator>;

Copied CopyOf(FIIterator& node) {
    return Copied::Adopt(node.Copy());
}

std::string NameOf(FIIterator& node) {
    FIValue name;
    node.GetName(name);
    return name.ToText();
}

// The number in a name of the form "#12", in which array elements are named.
std::optional<int> ElementNumber(const std::string& name) {
    if (name.size() < 2 || name[0] != '#') return std::nullopt;
    int number = 0;
    const char* end = name.data() + name.size();
    const auto [stop, error] = std::from_chars(name.data() + 1, end, number);
    if (error != std::errc() || stop != end || number < 0) return std::nullopt;
    return number;
}

bool HasChild(FIIterator& parent, const std::string& name) {
    return CopyOf(parent)->SeekChild(name.c_str());
}

// Turns the name of a child into the one under which it is sought, since names may be shown with
// entities but are sought as they are listed. False when it is found under neither.
bool FindSought(FIIterator& parent, FIIterator& child, std::string& name) {
    if (name.find('&') == std::string::npos || HasChild(parent, name)) return true;
    FIValue listed;
    child.GetListedKey(listed);
    if (!listed.IsText() || !HasChild(parent, listed.CStr())) return false;
    name = listed.CStr();
    return true;
}

// Makes the steps to children that are given one after the other.
class StepMaker {
 public:
    explicit StepMaker(FIIterator& parent) : parent_(parent) {}

    ChildStep Next(FIIterator& child) {
        ChildStep made{NameOf(child), "", index_++};
        const bool is_sought = FindSought(parent_, child, made.name);
        const int repeat = seen_[made.name]++;
        made.step = is_sought ? Written(made, repeat, KeyOf(child)) : AnyAt(made.index);
        return made;
    }

 private:
    static std::string AnyAt(int index) { return kAnyName + ('#' + std::to_string(index)); }

    std::string Written(const ChildStep& child, int repeat, const std::string& key) {
        const std::optional<int> number = ElementNumber(child.name);
        const bool leads_elsewhere = child.name.empty() || child.name == kAnyName ||
                                     child.name.size() > std::size_t{kComparedNameLength} ||
                                     (number && repeat > 0);
        if (leads_elsewhere) return AnyAt(child.index);
        // Unquoted, "#3" is a count of siblings and not a name.
        if (number && *number != child.index) return '"' + child.name + '"';
        const std::string name = WrittenName(child.name);
        if (!key.empty() && keys_.emplace(child.name, key).second) {
            return name + '(' + WrittenKey(key) + ')';
        }
        return repeat == 0 ? name : name + '#' + std::to_string(repeat);
    }

    FIIterator& parent_;
    int index_ = 0;
    std::map<std::string, int> seen_;
    std::set<std::pair<std::string, std::string>> keys_;
};

}  // namespace

std::string KeyOf(FIIterator& node) {
    FIValue key;
    node.GetKeyText(node.Depth(), key);
    return PlainText(key);
}

void ForEachChild(FIIterator& node, const ChildVisitor& visit) {
    const Copied child = CopyOf(node);
    if (!child->DownFirst()) return;
    StepMaker steps(node);
    do {
        if (!visit(*child, steps.Next(*child))) return;
    } while (child->Next());
}

std::vector<std::string> NamesOfChildren(FIIterator& node) {
    std::vector<std::string> names;
    const Copied child = CopyOf(node);
    for (bool on = child->DownFirst(); on; on = child->Next()) {
        names.push_back(NameOf(*child));
        FindSought(node, *child, names.back());
    }
    return names;
}

namespace {

// The step as most children have it, without a look at their siblings; empty when it does not lead
// to the child.
std::string LikelyStep(FIIterator& parent, FIIterator& child) {
    const std::string name = NameOf(child);
    const bool is_plain = !name.empty() && name != kAnyName && name[0] != '#' &&
                          name.size() <= std::size_t{kComparedNameLength} &&
                          name.find('&') == std::string::npos;
    if (!is_plain) return "";
    const std::string key = KeyOf(child);
    const std::string step = WrittenName(name) + (key.empty() ? "" : '(' + WrittenKey(key) + ')');
    const Copied found = CopyOf(parent);
    const bool leads_there = found->SeekPath(FIValue(step.c_str())) &&
                             found->Depth() == child.Depth() && found->Equal(child);
    return leads_there ? step : "";
}

}  // namespace

std::string PathTo(FIIterator& node) {
    const Copied parent = CopyOf(node);
    std::string path;
    while (parent->Depth() > 0) {
        const Copied child = CopyOf(*parent);
        parent->Up();
        if (const std::string step = LikelyStep(*parent, *child); !step.empty()) {
            path = JoinPath(step, path);
            continue;
        }
        const std::uint64_t number = child->ObjectNumber();
        ForEachChild(*parent, [&](FIIterator& sibling, const ChildStep& step) {
            // Where objects have numbers these tell at once; a cursor may count its way.
            const std::uint64_t other = number != 0 ? sibling.ObjectNumber() : 0;
            if ((other != 0 && other != number) || !sibling.Equal(*child)) return true;
            path = JoinPath(step.step, path);
            return false;
        });
    }
    return path;
}

}  // namespace fixtop
