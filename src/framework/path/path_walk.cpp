// SPDX-License-Identifier: Apache-2.0
// What a parsed path does to an iterator: steps go down the tree by name, filters choose among
// siblings, variables and counts are looked up at the position where they are used.

#include <cstring>

#include "framework/iterator/iterator.h"
#include "framework/nodes/standard_attributes.h"
#include "framework/path/path_names.h"
#include "path/prepared_path.h"
#include "path/recent_paths.h"

namespace fixtop {

namespace {

constexpr char kVariableMark = '%';

// Answers one stretch after the other.
auto EachOf(const PreparedPath& path) {
    return [stretch = path.Stretches().begin()]() mutable { return &*stretch++; };
}

bool IsNegated(const PathFilter& filter) {
    return (filter.flags & PathFilter::kNot) != 0;
}

}  // namespace

void PathStep::ResolveName(FIIteratorBase& it, FIValue& out) const {
    if (!isVariable) {
        out.SetText(name);
        return;
    }
    if (it.GetVarText(name.c_str(), out) && !out.IsNull()) out.ConvertTo(FIValue::kShortText);
}

int PathStep::ResolveCount(FIIteratorBase& it) const {
    if (count.Kind() == FIValue::kInt) return count.AsInt();
    if (!count.IsText()) return -1;
    FIValue value;
    return it.GetVar(count, value) ? value.AsInt() : -1;
}

// A variable that does not exist is no name, but no unnamed step either: it enters the children.
bool PathStep::StaysInPlace(const FIValue& resolved, int resolved_count) const {
    return resolved.IsText() && *resolved.CStr() == '\0' && resolved_count == -1;
}

bool FIIterator::SeekPath(const FIValue& path) {
    return FollowPath(path, &FIIterator::HasName, *this);
}

bool FIIterator::SeekPath(const PreparedPath& path, FIValue& attribute) {
    return FollowStretches(EachOf(path), &FIIterator::HasName, *this, attribute);
}

bool FIIterator::FollowPath(const FIValue& path, Matcher matches, FIIterator& variables) {
    const std::shared_ptr<const PreparedPath> prepared = RecentPath(path);
    FIValue attribute;
    return FollowStretches(EachOf(*prepared), matches, variables, attribute);
}

// A path as GetPath writes it has the key of a node behind its name, `Stream(Feed).Temperature`,
// where the grammar has the attribute that ends a path. Behind a node that has a key the rest is
// read on; `Stream(Feed)(type)` ends in an attribute of that node.
template <class Stretches>
bool FIIterator::FollowStretches(Stretches next, Matcher matches, FIIterator& variables,
                                 FIValue& attribute) {
    const int depth = Depth();
    for (bool goes_on = true; goes_on;) {
        const PathStretch& stretch = *next();
        goes_on = stretch.goes_on;
        attribute.Clear();
        if (!stretch.error.IsNull() || !WalkBy(*stretch.steps, matches, variables) ||
            !EnterParentheses(stretch.steps->Last(), matches, variables, goes_on, attribute)) {
            ReturnTo(depth);
            return false;
        }
    }
    return true;
}

// What stands in the parentheses of a step is a key, and this goes to the sibling that has it, or
// an attribute of the node, with which a path ends.
bool FIIterator::EnterParentheses(const PathStep& step, Matcher matches, FIIterator& variables,
                                  bool& goes_on, FIValue& attribute) {
    if (step.attribute.IsNull()) {
        goes_on = false;
        return true;
    }
    FIValue key;
    GetKeyText(Depth(), key);
    if (!key.IsNull() && SeekKeyed(step, matches, variables)) return true;
    if (!key.IsNull() && goes_on) return false;
    goes_on = false;
    attribute = step.attribute;
    return HasAttribute(step.attribute);
}

// From the present node on; false when none that the step may mean has the key.
bool FIIterator::SeekKeyed(const PathStep& step, Matcher matches, FIIterator& variables) {
    FIValue name;
    step.ResolveName(variables, name);
    const bool stays = step.StaysInPlace(name, step.ResolveCount(variables));
    const std::string wanted = step.attribute.ToText();
    const Ref<FIIterator> found = Ref<FIIterator>::Adopt(Copy());
    for (bool is_meant = true;;) {
        FIValue key;
        if (is_meant) found->GetKeyText(found->Depth(), key);
        if (!key.IsNull() && PlainText(key) == wanted) {
            TakePosition(*found);
            return true;
        }
        if (stays || !found->Next()) return false;
        is_meant = (IsAnyName(name) || ((*found).*matches)(name)) && found->Filter(step);
    }
}

bool FIIterator::HasAttribute(const FIValue& name) {
    if (IsStandardAttribute(name.CStr())) return true;
    FIValue value;
    GetAttribute(name, value);
    if (!value.IsNull()) return true;
    const auto source = Ref<FIAttributeSource>::Adopt(GetAttributeSource());
    const auto cursor = source ? Ref<FIAttributeCursorBase>::Adopt(source->MakeCursor())
                               : Ref<FIAttributeCursorBase>();
    return cursor && cursor->SeekName(kFromFirst, name.CStr());
}

bool FIIterator::Walk(const PathStep& step, FIValue& attribute) {
    if (!WalkSteps(step)) return false;
    attribute = step.Last().attribute;
    return true;
}

bool FIIterator::WalkFrom(const PathStep& step) {
    return WalkSteps(step);
}

bool FIIterator::WalkSteps(const PathStep& step) {
    return WalkBy(step, &FIIterator::HasName, *this);
}

bool FIIterator::Step(const PathStep& step) {
    return StepBy(step, &FIIterator::HasName, *this);
}

// Steps that succeeded are not tried again on other siblings when a later one fails.
bool FIIterator::WalkBy(const PathStep& step, Matcher matches, FIIterator& variables) {
    const int depth = Depth();
    for (const PathStep* each = &step; each; each = each->Next()) {
        if (!StepBy(*each, matches, variables)) {
            ReturnTo(depth);
            return false;
        }
    }
    return true;
}

// Until a child has passed, names are not compared: a seek by key may land on a node whose
// displayed name is another. Most steps end there, and their name is not made a value.
bool FIIterator::StepBy(const PathStep& step, Matcher matches, FIIterator& variables) {
    FIValue name;
    const bool is_plain = !step.isVariable && !step.name.empty();
    if (!is_plain) step.ResolveName(variables, name);
    const int count = step.count.IsNull() ? -1 : step.ResolveCount(variables);
    const auto passes = [&] { return step.filters.empty() || Filter(step); };
    if (!is_plain && step.StaysInPlace(name, count)) return passes();

    const char* text = is_plain ? step.name.c_str() : name.CStr();
    const bool any = IsAnyName(text);
    // Where every child passes, the place among them is the count.
    if (any && count > 0 && step.filters.empty()) return Down(count);
    if (!(any ? DownFirst() : SeekChild(text))) return false;
    int left = count;
    do {
        const bool is_first = left == count;
        if (!any && !is_first && name.IsNull()) name.SetText(text);
        const bool candidate = any || is_first || (this->*matches)(name);
        if (candidate && passes()) {
            if (left <= 0) return true;
            --left;
        }
    } while (Next());
    Up();
    return false;
}

bool FIIterator::HasName(const FIValue& name) const {
    FIValue own;
    entry_->GetName(own);
    if (own.IsText()) return std::strncmp(own.CStr(), name.CStr(), kComparedNameLength) == 0;
    char text[kComparedNameLength + 1];
    own.CopyText(text, sizeof text);
    return std::strncmp(text, name.CStr(), kComparedNameLength) == 0;
}

bool FIIterator::NextMatch(const PathStep& step) {
    FIValue name;
    step.ResolveName(*this, name);
    if (*name.CStr() == '\0' || step.ResolveCount(*this) != -1) return false;
    const bool any = IsAnyName(name);
    while (Next()) {
        if ((any || HasName(name)) && Filter(step)) return true;
    }
    return false;
}

// From left to right without precedence; a true clause before `|` ends the list.
bool FIIterator::Filter(const PathStep& step) {
    bool result = true;
    bool first = true;
    for (const PathFilter& filter : step.filters) {
        if (!first && (filter.flags & PathFilter::kOr)) {
            if (result) return true;
        } else if (!first && !result && (filter.flags & PathFilter::kAnd)) {
            continue;
        }
        result = EvalClause(*filter.clause) != IsNegated(filter);
        first = false;
    }
    return result;
}

bool FIIterator::EvalClause(const PathClause& clause) {
    const int depth = Depth();
    const bool result = PassesOne(clause);
    ReturnTo(depth);
    return result;
}

// Leaves the iterator on the node that the clause's path names.
bool FIIterator::PassesOne(const PathClause& clause) {
    static const FIValue value_name("value");
    FIValue attribute;
    if (!Walk(*clause.step, attribute)) return false;
    if (attribute.IsNull() && !clause.value) return true;

    FIValue found;
    GetAttribute(attribute.IsNull() ? value_name : attribute, found);
    if (found.IsNull()) return false;
    if (!clause.value) return true;

    const char* wanted = clause.value->CStr();
    if (*wanted != kVariableMark) {
        const bool is_real = found.Kind() == FIValue::kReal;
        return found.Compare(is_real ? clause.number : *clause.value) == 0;
    }
    const FIValue* variable = FindVar(FIValue(wanted + 1));
    return variable && found.Compare(*variable) == 0;
}

}  // namespace fixtop
