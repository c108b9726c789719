// SPDX-License-Identifier: Apache-2.0
#include "host/specifications/spec_context.h"

#include "framework/nodes/shield.h"
#include "host/specifications/spec_node.h"

namespace fixtop {

// Counted with the elements that are not shown now.
int SpecWalk::PlaceOf(const host::CSpecElement& element) const {
    host::LinkedListIterator elements(list_);
    int place = 0;
    for (void* each = elements.Reset(); each && each != &element; each = elements.Next()) ++place;
    return place;
}

int SpecWalk::NamesakesBefore(const host::CSpecElement& element) const {
    host::LinkedListIterator elements(list_);
    int namesakes = 0;
    for (void* each = elements.Reset(); each && each != &element; each = elements.Next()) {
        if (static_cast<const host::CSpecElement*>(each)->tag == element.tag) ++namesakes;
    }
    return namesakes;
}

int SpecWalk::CompareElements(const host::CSpecElement& own, const SpecWalk& other,
                              const host::CSpecElement& others) const {
    const int place = PlaceOf(own);
    const int other_place = other.PlaceOf(others);
    if (place != other_place) return place < other_place ? -1 : 1;
    return own.tag == others.tag ? 0 : kNotComparable;
}

int SpecWalk::Compare(SpecWalk& other) {
    if (IsSameList(other)) return ListPosition::Compare(other);
    if (HasLost() || other.HasLost()) return IsOnSame(other) ? 0 : kNotComparable;
    const host::CSpecElement* own = Current();
    const host::CSpecElement* others = other.Current();
    if (!own || !others) return (own == nullptr) - (others == nullptr);
    return CompareElements(*own, other, *others);
}

HSpecContext::HSpecContext(const host::CSpecInfo* info, host::Viewable* owner, NodeAbove above,
                           Ref<HSpecFill> fill)
    : info_(info),
      owner_(owner, LifeFor(nullptr, above.Options())),
      above_(std::move(above)),
      fill_(std::move(fill)) {}

bool HSpecContext::IsSameList(const HSpecContext& other) const {
    if (owner_.Number() != other.owner_.Number()) return false;
    if (info_ == other.info_) return true;
    const bool is_root = !dynamic_cast<HSpecEntry*>(above_.Entry());
    const bool is_other_root = !dynamic_cast<HSpecEntry*>(other.above_.Entry());
    if (is_root || is_other_root) return is_root && is_other_root;
    return IsSameElement(*above_.Entry(), *other.above_.Entry());
}

FICursorBase* HSpecContext::MakeCursor(int kind) {
    if (kind == kKeyCursor || IsGone()) return EmptyCursor();
    return HandOut(new Shielded<HSpecCursorBase>(this, Elements()));
}

FIEntry* HSpecContext::MakeEntry(host::CSpecElement& element) {
    return new Shielded<HSpecEntry>(this, element);
}

bool HSpecCursorBase::SeekValue(int origin, FIEntry& entry) {
    const auto* wanted = dynamic_cast<HSpecEntry*>(&entry);
    return wanted && walk_.FindIf(origin == kFromPresent, [wanted](const auto& element) {
        return &element == &wanted->Element();
    });
}

bool IsSameElement(FIEntry& one, FIEntry& other) {
    auto* const own = dynamic_cast<HSpecEntry*>(&one);
    auto* const others = dynamic_cast<HSpecEntry*>(&other);
    return own && others && own->IsSameElement(*others);
}

}  // namespace fixtop
