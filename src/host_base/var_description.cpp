// SPDX-License-Identifier: Apache-2.0
#include "fixtop/host/var_description.h"

#include <cstdlib>
#include <utility>
#include <vector>

#include "fixtop/host/local_services.h"

namespace fixtop::host {

namespace {

HostServices* g_services = nullptr;

constexpr char kUnfilled[] = "[]";

std::vector<std::string> SplitParts(const std::string& moniker) {
    std::vector<std::string> parts;
    std::size_t from = 0;
    for (;;) {
        const std::size_t cut = moniker.find('/', from);
        parts.push_back(moniker.substr(from, cut == std::string::npos ? cut : cut - from));
        if (cut == std::string::npos) return parts;
        from = cut + 1;
    }
}

bool IsDimension(int number) {
    return 0 <= number && number <= 2;
}

}  // namespace

HostServices* LocalServices() {
    return g_services;
}
void SetLocalServices(HostServices* services) {
    g_services = services;
}

struct VarDescription::Body {
    Facts facts;
    int holders = 0;
    bool from_moniker = false;
    bool described = false;
    VarDescription next;

    Body(const Facts& given, const VarDescription& rest) : facts(given), next(rest) {}
    // A body of its own, which nobody holds yet.
    Body(const Body& other)
        : facts(other.facts),
          from_moniker(other.from_moniker),
          described(other.described),
          next(other.next) {}

    // The host's facts for an address known by its text alone, asked once.
    const Facts& Described(const VarDescription& self) {
        if (from_moniker && !described && g_services) {
            Facts known = facts;
            if (g_services->DescribeMoniker(self.GetMoniker(), known)) {
                facts.type = known.type;
                facts.unit_type = known.unit_type;
                facts.minimum = known.minimum;
                facts.maximum = known.maximum;
            }
            described = true;
        }
        return facts;
    }
};

VarDescription::BodyRef::BodyRef(Body* body) noexcept : body_(body), holders_(&body->holders) {
    ++*holders_;
}
void VarDescription::BodyRef::Destroy(Body* body) {
    delete body;
}

VarDescription::VarDescription(const char* moniker, VarDescType) {
    const std::string text = moniker ? moniker : "";
    if (text.empty()) return;
    VarDescription chain;
    const std::vector<std::string> parts = SplitParts(text);
    for (auto part = parts.rbegin(); part != parts.rend(); ++part) {
        Facts facts;
        facts.moniker = Text(*part);
        const std::size_t dot = part->find('.');
        if (dot != std::string::npos) facts.number = std::atoi(part->c_str() + dot + 1);
        VarDescription link(facts, chain);
        link.body_->from_moniker = true;
        chain = link;
    }
    *this = chain;
}

VarDescription::VarDescription(const Facts& facts, const VarDescription& next)
    : body_(new Body(facts, next)) {}

std::int32_t VarDescription::Kind() const {
    return body_ ? body_->facts.kind : kPartNone;
}
std::int32_t VarDescription::Number() const {
    return body_ ? body_->facts.number : 0;
}
bool VarDescription::NextNotFollowed() const {
    return body_ && body_->facts.next_not_followed;
}
bool VarDescription::ChainEnds() const {
    return body_ && body_->facts.chain_ends;
}
std::uintptr_t VarDescription::HostWord() const {
    return body_ ? body_->facts.host_word : 0;
}

const VarDescription* VarDescription::NextPart() const {
    return body_ && body_->next.body_ ? &body_->next : nullptr;
}

const VarDescription* VarDescription::GetVariablePart() const {
    const VarDescription* part = this;
    while (const VarDescription* next = part->NextPart()) part = next;
    return part;
}

VariableType VarDescription::Type() const {
    return body_ ? body_->Described(*this).type : 0;
}

VarType VarDescription::UnitType() const {
    return body_ ? body_->Described(*this).unit_type : kVariableUnitType;
}

double VarDescription::MaxValue() const {
    return body_ ? body_->Described(*this).maximum : kEmptyReal;
}

double VarDescription::MinValue() const {
    return body_ ? body_->Described(*this).minimum : kEmptyReal;
}

bool VarDescription::IsEqual(const VarDescription& other, bool ignore_offsets) const {
    if (!ignore_offsets && offsets_ != other.offsets_) return false;
    if (body_ == other.body_) return true;
    if (!body_ || !other.body_) return false;
    if (body_->facts.moniker.Str() != other.body_->facts.moniker.Str()) return false;
    return body_->next.IsEqual(other.body_->next, ignore_offsets);
}

Text VarDescription::GetMoniker() const {
    if (!body_) return {};
    const VarDescription* part = NextPart();
    if (!part) return body_->facts.moniker;
    std::string text = body_->facts.moniker.Str();
    for (; part; part = part->NextPart()) {
        if (!text.empty()) text += '/';
        text += part->body_->facts.moniker.Str();
    }
    return Text(std::move(text));
}

Text VarDescription::GetFilledMoniker() const {
    std::string text;
    for (const VarDescription* part = this; part && part->body_; part = part->NextPart()) {
        if (!text.empty()) text += '/';
        std::string own = part->body_->facts.moniker.Str();
        std::size_t at = 0;
        for (int offset : part->offsets_) {
            at = own.find(kUnfilled, at);
            if (at == std::string::npos) break;
            if (offset == kNoOffset) {
                at += 2;
                continue;
            }
            const std::string digits = std::to_string(offset);
            own.replace(at, 2, digits);
            at += digits.size();
        }
        text += own;
    }
    return Text(std::move(text));
}

VarDescription::Body& VarDescription::Own() {
    if (body_.IsShared()) body_ = BodyRef(new Body(*body_));
    return *body_;
}

VarDescription& VarDescription::LastPart() {
    VarDescription* part = this;
    while (part->NextPart()) part = &part->Own().next;
    return *part;
}

void VarDescription::SetOffset(int dimension, int offset, bool relative) {
    if (IsEmpty() || !IsDimension(dimension)) return;
    VarDescription& part = LastPart();
    int& place = part.offsets_[dimension];
    part.replaced_[dimension] = place;
    place = relative && place != kNoOffset ? place + offset : offset;
}

void VarDescription::FillRunning(const int* indices, unsigned count) {
    for (unsigned i = 0; i < count && i < 3; ++i) SetOffset(static_cast<int>(i), indices[i], false);
}

int VarDescription::Offset(int dimension) const {
    return IsDimension(dimension) ? offsets_[dimension] : kNoOffset;
}

int VarDescription::ReplacedOffset(int dimension) const {
    return IsDimension(dimension) ? replaced_[dimension] : kNoOffset;
}

void VarDescription::GetPathDimensions(Viewable* object, DimInfo& out, int) const {
    out = DimInfo();
    if (!object) return;
    Viewable* holder = object->ResolveVariableOwner(*this);
    if (holder) {
        holder->GetVariableDimensions(*GetVariablePart(), out);
    } else {
        object->GetVariableDimensions(*this, out);
    }
}

}  // namespace fixtop::host
