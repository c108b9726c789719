// SPDX-License-Identifier: Apache-2.0
#pragma once

// BasisTree: the elements that a case gives to the specification of its basis, with the process
// variables and the objects that they stand for. Specifications are filled from it as often as
// clients ask; what clients store stays here and goes into the case's data.
//
// Every element has an address of its own on the basis, ":Spec.n", under which its unit is asked.
// Clients are told numbers in the default unit that stands when a specification is filled.

#include <memory>
#include <string_view>
#include <vector>

#include "casehost/case_data.h"
#include "casehost/store_watch.h"
#include "fixtop/host/specification.h"

namespace fixtop::casehost {

class Node;
class SpecInfo;

class BasisTree {
 public:
    BasisTree(Node& basis, StoreWatch& watch);
    ~BasisTree();

    // The objects of the case must be there; paths that name none are told.
    void Build(const std::vector<BasisElement>& elements, std::vector<CaseProblem>& problems);
    std::vector<BasisElement> ToData() const { return DataOf(elements_); }
    bool IsEmpty() const { return elements_.empty(); }
    // Appends all elements. They refer to this tree.
    void AddTo(SpecInfo& info) { Add(elements_, info); }
    // Objects that were deleted are pointed at no more.
    void ForgetDeleted();
    // The unit of the element behind "Spec.n"; false for other texts and for elements without one.
    bool Describe(std::string_view stem, host::VarDescription::Facts& out) const;

 private:
    struct Element;
    class Variable;
    using Elements = std::vector<std::unique_ptr<Element>>;

    Elements Make(const std::vector<BasisElement>& data, std::vector<CaseProblem>& problems);
    static std::vector<BasisElement> DataOf(const Elements& elements);
    static void Add(const Elements& elements, SpecInfo& info);
    static void AddTable(const Element& element, SpecInfo& info);

    Node& basis_;
    StoreWatch& watch_;
    Elements elements_;
    // By the number in their address.
    std::vector<Element*> all_;
};

}  // namespace fixtop::casehost
