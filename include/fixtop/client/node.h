// SPDX-License-Identifier: Apache-2.0
#pragma once

// Node: a place in the tree of a case. A value: copies are places of their own. It keeps the case
// open, and answers NULL, or throws Gone, when its object is no longer there.

#include <functional>
#include <memory>
#include <optional>
#include <string>
#include <utility>
#include <vector>

#include "fixtop/iterator.h"
#include "fixtop/ref.h"
#include "fixtop/value.h"

namespace fixtop::client {

class CaseState;
class Pattern;
struct Child;
struct Place;

// A value as it is shown.
struct Reading {
    FIValue value;       // NULL for none
    std::string unit;    // in which a number is told; empty for none
    std::string status;  // "Specified", "Calculated", "Missing" ...; empty where none is shown
    bool stale = false;  // older than a change of the case
};

class Node {
 public:
    // Of an iterator of one's own, which is taken over.
    Node(std::shared_ptr<CaseState> open_case, Ref<FIIteratorBase> place);
    Node(const Node& other);
    Node(Node&&) noexcept = default;
    Node& operator=(const Node& other);
    Node& operator=(Node&&) noexcept = default;

    std::string Name() const;
    // What tells it from siblings of its name; empty when nothing does.
    std::string Key() const;
    // The path from the top that leads to this node and no other; empty for the top.
    std::string Path() const;
    // The attribute "type": "Real", "Array", "Object(QSIMaterialStream)" ...
    std::string Type() const;
    // It shows a value of its own: it is no list and no object.
    bool IsVariable() const;
    // It is an array, or a level of one.
    bool IsArray() const;
    bool operator==(const Node& other) const;

    // ---- The tree ----

    // Null for the top.
    std::optional<Node> Parent() const;
    // In their order.
    std::vector<Node> Children() const;
    // Without keeping them: stops when `visit` answers false.
    void ForEachChild(const std::function<bool(const Child& child)>& visit) const;
    // The node that a path leads to; throws PathError and NotFound. A path in the host's notation,
    // which begins with "/", is taken too.
    Node At(const std::string& path) const;
    // The same, with the attribute in which the path ends; null when it leads nowhere.
    std::optional<Place> Find(const std::string& path) const;
    std::optional<Place> Find(const Pattern& path) const;
    // All nodes that a path leads to.
    std::vector<Node> Matches(const std::string& pattern) const;

    // ---- Values ----

    // NULL for an attribute that it does not have.
    FIValue Attribute(const std::string& name) const;
    std::vector<std::pair<std::string, FIValue>> Attributes() const;
    // The value, or another attribute, in a unit, as ShowIn takes it, or as it is. Throws Refused
    // when the unit is not taken; Reading::unit is the one in which the number is told.
    Reading Read(const std::string& unit = "", const std::string& attribute = "value") const;
    // The value as a number; throws Refused when it is none, or can't be told in the unit.
    double Number(const std::string& unit = "") const;
    // The value as text; empty for none.
    std::string Text() const;
    // Stores a value, given in a unit or in the one that is shown; NULL takes the value away. The
    // solver runs where stores start it. Throws Refused; what was stored is looked at again, and a
    // fraction may stand there as its share of all.
    void Store(const FIValue& value, const std::string& unit = "") const;
    void Store(double number, const std::string& unit = "") const;
    // As typed: a number in a node of numbers, with or without a unit behind it ("30 C", "30C"),
    // and nothing at all is NULL.
    void Store(const std::string& text, const std::string& unit = "") const;
    // The value is older than a change of the case.
    bool IsStale() const;
    // Its object is no longer there.
    bool IsGone() const;
    // Has values told in a unit from now on. Answers what the node calls it: names that are typed
    // elsewhere are taken too, such as "degC", "kmol/hr", "kg/cm2" and "m^3". Throws Refused, with
    // the units that there are.
    std::string ShowIn(const std::string& unit, const std::string& attribute = "value") const;
    // The unit in which an attribute of this node is told; empty for none.
    std::string UnitOf(const std::string& attribute) const;
    void SetAttribute(const std::string& name, const FIValue& value) const;

    // ---- The two views ----

    // The node of the case that a node of the neutral view is mapped to, its calculated or its
    // specified side; null when there is none.
    enum class Side { kCalculated = 1, kSpecified = 2 };
    std::optional<Node> Raw(Side side = Side::kCalculated) const;
    // The object of the neutral view that is mapped to this node of the case; null when there is
    // none.
    std::optional<Node> Neutral() const;

    // ---- For what this face does not have ----

    // Lent; whoever moves it moves this node.
    FIIteratorBase& Iterator() const { return *place_; }
    const std::shared_ptr<CaseState>& OpenCase() const { return case_; }

 private:
    std::shared_ptr<CaseState> case_;
    Ref<FIIteratorBase> place_;
};

struct Child {
    Node node;
    std::string name;  // by which it is sought: its own name may show characters as entities
    std::string step;  // of a path, to this child and no other
    int index = 0;     // count of the siblings before it
};

// A node that a path leads to.
struct Place {
    Node node;
    std::string attribute;  // in which the path ends; empty without one
    std::string path;       // from the top, to this node and no other
};

// What is to be said when a number that was wanted in a unit is told in another; empty when it is
// not, and when nothing was wanted.
std::string OtherUnit(const std::string& attribute, const Reading& reading,
                      const std::string& wanted);

// A name, or a key in parentheses, as it is written in a path; `step` behind `path`.
std::string WrittenName(const std::string& name);
std::string WrittenKey(const std::string& key);
std::string JoinPath(const std::string& path, const std::string& step);

}  // namespace fixtop::client
