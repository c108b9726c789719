// SPDX-License-Identifier: Apache-2.0
#include "front/documents.h"

#include <algorithm>

#include "automation/q_node.h"
#include "automation/v_node.h"
#include "framework/iterator/shielded_iterator.h"
#include "front/document_object.h"

namespace fixtop {

IQSIDocument* Documents::Find(void* session, const void* identity) const {
    const auto found = std::ranges::find_if(
        alive_, [&](const CQSIDocument* each) { return each->IsOf(session, identity); });
    return found == alive_.end() ? nullptr : HandOut<IQSIDocument>(*found);
}

IQSIDocument* Documents::Make(FIEntry& top, void* session, const void* identity) {
    const auto place = Ref<FIIteratorBase>::Adopt(new Shielded<FIIterator>(&top, false));
    const NodeMaker make_node = family_ == DocumentFamily::kQ ? CQSINode::Make : CQSVNode::Make;
    auto made = Ref<CQSIDocument>::Adopt(
        new CQSIDocument(Ref<IQSINode>::Adopt(make_node(place)), session, identity, *this));
    alive_.push_back(made.Get());
    return made.Detach();
}

void Documents::Forget(const CQSIDocument& document) {
    std::erase(alive_, &document);
}

Documents& TheDocuments(DocumentFamily family) {
    // Never destroyed: documents may outlive what is.
    static Documents& q = *new Documents(DocumentFamily::kQ);
    static Documents& v = *new Documents(DocumentFamily::kV);
    return family == DocumentFamily::kQ ? q : v;
}

}  // namespace fixtop
