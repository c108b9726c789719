// SPDX-License-Identifier: Apache-2.0
#pragma once

// The specification view of a case's basis: the property package, one sub-specification with the
// compounds, a table of their constants, and the elements that the case gives.

#include <memory>
#include <vector>

#include "casehost/case_data.h"
#include "fixtop/host/array_set.h"
#include "fixtop/host/specification.h"
#include "live/holder_list.h"

namespace fixtop::casehost {

// A specification info with its elements, which it owns.
class SpecInfo final : public host::CSpecInfo {
 public:
    void SetOwner(host::Viewable* owner) override { owner_ = owner; }
    // Whatever is wanted of it, the view is always filled whole.
    void SetReaderOptions(const host::CaseReaderOptions*) override {}
    const host::LinkedList* Elements() const override { return &list_; }
    std::size_t CollectionCount() const override { return elements_.size(); }

    host::Viewable* OwnerView() const { return owner_; }
    void Clear();
    host::CSpecElement& Add(std::string tag);
    void AddNumber(std::string tag, double number) { Add(std::move(tag)).number = number; }
    void AddText(std::string tag, std::string text) {
        Add(std::move(tag)).value_text = host::Text(std::move(text));
    }
    SpecInfo& AddChild(std::string tag);
    host::ArraySetBlock& AddArraySet(std::string tag);

 private:
    host::Viewable* owner_ = nullptr;
    std::vector<std::unique_ptr<host::CSpecElement>> elements_;
    std::vector<std::unique_ptr<SpecInfo>> children_;
    std::vector<std::unique_ptr<host::ArraySetBlock>> blocks_;
    HolderList list_;
};

class BasisTree;

class BasisSpecSource final : public host::CSpecSource {
 public:
    BasisSpecSource(const CaseBasics& basics, BasisTree& tree) : basics_(basics), tree_(tree) {}
    bool FillSpecInfo(host::CSpecInfo* info) override;

 private:
    void AddCompounds(SpecInfo& info) const;

    const CaseBasics& basics_;
    BasisTree& tree_;
};

}  // namespace fixtop::casehost
