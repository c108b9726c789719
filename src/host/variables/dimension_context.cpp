// SPDX-License-Identifier: Apache-2.0
#include "host/variables/dimension_context.h"

#include <algorithm>
#include <charconv>
#include <cstring>
#include <string>
#include <string_view>

#include "framework/nodes/empties.h"
#include "framework/nodes/shield.h"
#include "host/variables/dimension_node.h"

namespace fixtop {

namespace {

constexpr std::string_view kNameOfElement = ":Name.0";

// The decimal index that a text begins with, and the end of its digits; null when there is none.
const char* ReadIndex(const char* text, int& index) {
    const char* end = text + std::strlen(text);
    const auto [stop, error] = std::from_chars(text, end, index);
    return error == std::errc() ? stop : nullptr;
}

}  // namespace

HVarDimsContext::HVarDimsContext(HVarsEntry* variable, int dimension,
                                 const host::VarDescription& address, NodeAbove above)
    : variable_(Ref<HVarsEntry>::Share(variable)),
      dimension_(dimension),
      address_(address),
      above_(std::move(above)),
      names_(variable->EffectiveObject(), variable->OffsetDescription(dimension)) {
    host::DimInfo bounds;
    host::Viewable* object = variable->EffectiveOwner();
    if (object) address.GetPathDimensions(object, bounds, host::kEmptyDimensionMarker);
    if (static_cast<unsigned>(dimension) >= std::min(bounds.count, 3u)) return;
    low_ = bounds.low[dimension];
    end_ = std::max<long long>(bounds.high[dimension] + 1LL, low_);
}

FICursorBase* HVarDimsContext::MakeCursor(int kind) {
    if (kind == kKeyCursor || IsGone()) return EmptyCursor();
    return HandOut(new Shielded<HVarDimsCursorBase>(this));
}

FIEntry* HVarDimsContext::MakeEntry(int index) {
    return new Shielded<HVarDimsEntry>(this, index);
}

bool HVarDimsContext::IsSameList(const HVarDimsContext& other) const {
    return variable_->OwnerNumber() == other.variable_->OwnerNumber() &&
           &variable_->Row() == &other.variable_->Row() && dimension_ == other.dimension_ &&
           address_.IsEqual(other.address_, false);
}

void HVarDimsContext::GetKeyValue(const char* path, FIValue& out, const char** rest) {
    out.Clear();
    *rest = path;
    if (!path || IsGone()) return;
    if (*path == '(') {
        ReadKeyOfName(path, out, rest);
    } else {
        ReadKeyOfIndex(path, out, rest);
    }
}

void HVarDimsContext::ReadKeyOfName(const char* path, FIValue& out, const char** rest) {
    const char* close = std::strchr(path, ')');
    if (!close) return;
    const std::string name(path + 1, close);
    auto cursor = Ref<FICursorBase>::Adopt(MakeCursor(kChildCursor));
    if (!cursor->SeekName(kFromFirst, name.c_str())) return;
    cursor->GetKey(out);
    if (!out.IsNull()) *rest = close[1] == '/' ? close + 2 : close + 1;
}

void HVarDimsContext::ReadKeyOfIndex(const char* path, FIValue& out, const char** rest) {
    int index = 0;
    const char* behind = ReadIndex(path, index);
    const std::string moniker = address_.GetMoniker().Str();
    if (!behind || std::count(moniker.begin(), moniker.end(), '[') < dimension_ + 1) return;
    if (*behind == '.' || *behind == '/') ++behind;
    const char* end = behind + std::strlen(behind);
    if (*behind == '#' || std::string_view(behind).starts_with(kNameOfElement)) behind = end;
    if (behind == end && address_.GetVariablePart()->Kind() == host::kPartAttachment) {
        HElementNames::SetCounted(index, out);
    } else if (index >= low_ && index < end_) {
        names_.Read(index, out);
        FIValue counted;
        HElementNames::SetCounted(index, counted);
        // A name that only tells the place is no key: another element may have it.
        if (out.IsText() && out.Compare(counted) == 0) {
            out.SetText(std::string("*#").append(std::to_string(index)));
        }
    }
    if (!out.IsNull()) *rest = behind;
}

HVarDimsCursorBase::HVarDimsCursorBase(HVarDimsContext* context)
    : HVarDimsCursorBase(context, context->Low()) {}

HVarDimsCursorBase::HVarDimsCursorBase(HVarDimsContext* context, long long position)
    : context_(Ref<HVarDimsContext>::Share(context)), position_(position) {}

const void* HVarDimsCursorBase::TypeId() const {
    static const char type_id = 0;
    return &type_id;
}

FICursorBase* HVarDimsCursorBase::Clone(bool deep) {
    return HandOut(deep ? new Shielded<HVarDimsCursorBase>(context_.Get(), position_) : this);
}

bool HVarDimsCursorBase::GoTo(long long position) {
    if (context_->IsGone()) return false;
    position_ = std::clamp(position, context_->Low(), context_->End());
    return position_ == position && IsOnElement();
}

bool HVarDimsCursorBase::Seek(int origin, int delta) {
    long long from = position_;
    if (origin == kFromFirst) from = context_->Low();
    if (origin == kFromEnd) from = context_->End();
    return GoTo(from + delta);
}

bool HVarDimsCursorBase::SeekName(int origin, const char* name) {
    if (!name || context_->IsGone()) return false;
    if (origin != kFromPresent) position_ = context_->Low();
    if (context_->Names().AreCounted()) {
        position_ = context_->End();
    } else if (WalkToName(name)) {
        return true;
    }
    constexpr std::size_t length = sizeof HElementNames::kCounted - 1;
    int index = 0;
    const bool counted = std::strncmp(name, HElementNames::kCounted, length) == 0;
    if (!counted || !ReadIndex(name + length, index)) return false;
    if (index < context_->Low() || index >= context_->End()) return false;
    return GoTo(index);
}

bool HVarDimsCursorBase::WalkToName(const char* name) {
    FIValue own_name;
    for (; IsOnElement(); ++position_) {
        GetKey(own_name);
        if (own_name.IsText() && std::strcmp(own_name.CStr(), name) == 0) return true;
    }
    return false;
}

bool HVarDimsCursorBase::SeekValue(int origin, FIEntry& entry) {
    const auto* element = dynamic_cast<HVarDimsEntry*>(&entry);
    return element ? GoTo(element->Index()) : FICursorBase::SeekValue(origin, entry);
}

int HVarDimsCursorBase::Compare(FICursorPosition& other) {
    if (other.TypeId() != TypeId()) return kNotComparable;
    auto& same = static_cast<HVarDimsCursorBase&>(other);
    if (!context_->IsSameList(*same.context_)) return kNotComparable;
    if (context_->IsGone() || same.context_->IsGone()) {
        return position_ == same.position_ ? 0 : kNotComparable;
    }
    return (position_ > same.position_) - (position_ < same.position_);
}

void HVarDimsCursorBase::GetKey(FIValue& out) {
    out.Clear();
    if (IsOnElement()) context_->Names().Read(static_cast<int>(position_), out);
}

FIEntry* HVarDimsCursorBase::GetEntry() {
    FIEntry* entry =
        IsOnElement() ? context_->MakeEntry(static_cast<int>(position_)) : EmptyEntry();
    return HandOut(entry);
}

}  // namespace fixtop
