// SPDX-License-Identifier: Apache-2.0
#include "fixtop/client/reference.h"

#include "case_state.h"
#include "fixtop/client/error.h"
#include "texts.h"

namespace fixtop::client {

Reference::Reference(const Node& node)
    : case_(node.OpenCase()),
      reference_(Ref<FIReferenceBase>::Adopt(Given(node.Iterator().MakeReference()))) {}

std::string Reference::WhyGone() const {
    FIValue type;
    reference_->GetAttribute(FIValue("type"), type);
    const std::string text = type.ToText();
    return IsGoneText(text) ? text : "";
}

bool Reference::IsLive() const {
    return WhyGone().empty();
}

std::string Reference::Path() const {
    return IsLive() ? Get().Path() : "";
}

Node Reference::Get() const {
    const std::string why = WhyGone();
    if (!why.empty()) throw Gone("", why);
    return Node(case_, Ref<FIIteratorBase>::Adopt(Given(reference_->Copy())));
}

FIValue Reference::Attribute(const std::string& name) const {
    FIValue value;
    reference_->GetAttribute(FIValue(name.c_str()), value);
    if (value.IsText() && IsGoneText(value.ToText())) throw Gone("", value.ToText());
    return value;
}

}  // namespace fixtop::client
