// SPDX-License-Identifier: Apache-2.0
#pragma once

// Short words for tests of host nodes: attributes as text, children by name, a test's var set.

#include <gtest/gtest.h>

#include <initializer_list>
#include <iterator>
#include <map>
#include <sstream>
#include <string>
#include <vector>

#include "fixtop/ref.h"
#include "fixtop/var_set.h"
#include "framework/nodes/attr_map.h"

namespace fixtop {

using Names = std::vector<std::string>;

// The names of a text in which blanks stand between them.
inline Names SplitNames(const std::string& text) {
    std::istringstream words(text);
    return {std::istream_iterator<std::string>(words), {}};
}

// "(NULL)" for NULL; a kind other than text is told: "INT 1", "REAL 2.5".
inline std::string Shown(const FIValue& value) {
    if (value.IsNull()) return "(NULL)";
    if (value.IsText()) return value.ToText();
    return std::string(FIValue::KindName(value.Kind())) + " " + value.ToText();
}

template <class Source>
std::string Read(Source& source, const char* name) {
    FIValue value("left over");
    source.GetAttribute(FIValue(name), value);
    return Shown(value);
}

inline std::string Write(FIEntry& entry, const char* name, const FIValue& value) {
    FIValue out("left over");
    entry.SetAttribute(FIValue(name), value, 0, out);
    return Shown(out);
}

inline std::string NameOf(FIEntry& entry) {
    FIValue name;
    entry.GetName(name);
    return Shown(name);
}

inline Ref<FICursorBase> ChildrenOf(FIContext& context) {
    return Ref<FICursorBase>::Adopt(context.MakeCursor(kChildCursor));
}

inline Ref<FICursorBase> ChildrenOf(FIEntry& entry) {
    auto context = Ref<FIContext>::Adopt(entry.GetContext());
    return ChildrenOf(*context);
}

// Empty when there is no child of this name.
template <class Parent>
Ref<FIEntry> Child(Parent& parent, const char* name) {
    Ref<FICursorBase> cursor = ChildrenOf(parent);
    return cursor->SeekName(kFromFirst, name) ? Ref<FIEntry>::Adopt(cursor->GetEntry())
                                              : Ref<FIEntry>();
}

template <class Parent>
Names ChildNames(Parent& parent) {
    Names names;
    Ref<FICursorBase> cursor = ChildrenOf(parent);
    for (bool on = cursor->Seek(kFromFirst, 0); on; on = cursor->Seek(kFromPresent, 1)) {
        names.push_back(NameOf(*Ref<FIEntry>::Adopt(cursor->GetEntry())));
    }
    return names;
}

// The attributes that an entry shows, in order.
inline Names ShownRows(FIAttributeSource& source) {
    Names names;
    auto cursor = Ref<FIAttributeCursorBase>::Adopt(source.MakeCursor());
    for (bool on = cursor->Seek(kFromFirst, 0); on; on = cursor->Seek(kFromPresent, 1)) {
        FIValue name;
        cursor->GetKey(name);
        names.push_back(name.ToText());
    }
    return names;
}

inline Names ShownRows(FIEntry& entry) {
    auto source = Ref<FIAttributeSource>::Adopt(entry.GetAttributeSource());
    return ShownRows(*source);
}

// All rows of a family's table, shown or not.
template <class T>
Names AllRows() {
    Names names;
    for (const AttrRow<T>& row : T::AttributeRows()) names.push_back(row.name);
    return names;
}

// The 27 standard names and the given ones behind them.
inline Names StandardRowsAnd(Names more) {
    Names names = SplitNames(
        "id value dimension uom spec_value spec_uom can_enter option_list "
        "uom_options browser_name type container container_category "
        "container_type display_name isleaf has_children path upper_limit "
        "lower_limit description status enabled history_enabled is_container "
        "no_containers_below is_hierarchy");
    names.insert(names.end(), more.begin(), more.end());
    return names;
}

// What a number with a unit shows, be it a variable or an element of an array.
inline const Names kNumberRows = SplitNames(
    "id value dimension uom can_enter uom_options browser_name type container "
    "container_category container_type display_name isleaf has_children "
    "upper_limit lower_limit status is_container moniker attachments "
    "skipcorrelations skipattachments");

// What GetKeyValue answers: "key|rest", or "(NULL)|path".
inline std::string KeyAndRest(FIContext& context, const char* path) {
    FIValue key("left over");
    const char* rest = nullptr;
    context.GetKeyValue(path, key, &rest);
    return Shown(key) + "|" + (rest ? rest : "(null)");
}

// What paths in the host's notation answer to GetKeyValue.
struct HostPath {
    const char* path;
    const char* answer;
};

inline void ExpectKeys(FIContext& context, std::initializer_list<HostPath> paths) {
    for (const HostPath& each : paths) {
        EXPECT_EQ(each.answer, KeyAndRest(context, each.path)) << (each.path ? each.path : "null");
    }
}

class TestVarSet final : public FIVarSet {
 public:
    void SetUnit(const FIValue& quantity, const FIValue& unit, FIValue& old) override {
        FIValue& kept = units_[quantity.ToText()];
        old = kept;
        kept = unit;
    }
    void GetUnit(const FIValue& quantity, FIValue& out) override {
        out = units_[quantity.ToText()];
    }
    void SetSpecUnit(const FIValue&, const FIValue&, FIValue&) override {}
    void GetSpecUnit(const FIValue&, FIValue& out) override { out.Clear(); }
    void GetPath(FIValue& out) override { out.SetText("Top.here"); }
    void SetVar(const FIValue& name, const FIValue& value) override {
        vars_[name.ToText()] = value;
    }
    bool GetVar(const FIValue& name, FIValue& out) override {
        const auto found = vars_.find(name.ToText());
        out.Clear();
        if (found != vars_.end()) out = found->second;
        return found != vars_.end();
    }

 private:
    // By quantity; that of the node itself by "".
    std::map<std::string, FIValue> units_;
    std::map<std::string, FIValue> vars_;
};

}  // namespace fixtop
