// SPDX-License-Identifier: Apache-2.0
#include "automation/com/typed_faces.h"

#include <algorithm>

#include "automation/com/active_facade_windows.h"
#include "automation/com/type_library.h"
#include "platform/windows/wide_text.h"

namespace fixtop {

namespace {

constexpr std::size_t kLongestClass = 199;
constexpr std::string_view kOfModel = "QSI";
constexpr std::wstring_view kInterfaceOfModel = L"IQSI";

// The class of the node; empty when it has none with a face.
std::string ClassAt(FIIteratorBase& place) {
    FIValue type;
    place.GetAttribute(FIValue("type"), type);
    const std::string text = type.ToText();
    const std::string_view name = ClassOfTypeText(text);
    const bool has_face = name.starts_with(kOfModel) && name.size() <= kLongestClass;
    return has_face ? std::string(name) : std::string();
}

// Whether the library has a typed interface of this id.
bool HasInterface(ITypeLib& library, const InterfaceId& id) {
    const auto info = TakeFromSystem<ITypeInfo>(
        [&](ITypeInfo** out) { return library.GetTypeInfoOfGuid(AsGuid(id), out); });
    return info && NameOf(*info).starts_with(kInterfaceOfModel);
}

// The interface of the class of a node that is asked for an id; null when there is none.
Ref<ITypeInfo> FindInterface(FIIteratorBase& place, const InterfaceId& id) {
    const std::string name = ClassAt(place);
    if (name.empty()) return {};
    const auto library = Ref<ITypeLib>::Adopt(static_cast<ITypeLib*>(
        LoadTypeLibrary(TypeLibraryFile(nullptr, kModelMajor, kModelMinor))));
    if (!library) return {};
    if (id != DispatchMembers::kId && !HasInterface(*library, id)) return {};
    return FindType(*library, L"I" + Widen(name).value_or(std::wstring()));
}

}  // namespace

// The face of the node's class, then those of the bases that were asked for.
class FaceList {
 public:
    FaceList(IUnknown& node, FIIteratorBase& place, Ref<ITypeInfo> type)
        : node_(node), place_(Ref<FIIteratorBase>::Adopt(place.Copy())) {
        Add(std::move(type));
    }

    DispatchMembers* Find(const InterfaceId& id) {
        if (id == DispatchMembers::kId) return faces_.front().get();
        const auto known = std::ranges::find(
            faces_, id, [](const auto& each) -> const InterfaceId& { return each->Id(); });
        if (known != faces_.end()) return known->get();
        const auto base = std::ranges::find(
            interfaces_, id, [](const auto& each) { return AsInterfaceId(IdOf(*each)); });
        return base == interfaces_.end() ? nullptr : Add(*base);
    }

 private:
    ActiveFacade* Add(Ref<ITypeInfo> type) {
        if (interfaces_.empty()) interfaces_ = WithBases(*type);
        faces_.push_back(std::make_unique<ActiveFacade>(node_, place_, std::move(type)));
        return faces_.back().get();
    }

    IUnknown& node_;
    const Ref<FIIteratorBase> place_;
    std::vector<Ref<ITypeInfo>> interfaces_;
    std::vector<std::unique_ptr<ActiveFacade>> faces_;
};

TypedFaces::TypedFaces() = default;
TypedFaces::~TypedFaces() = default;

void* TypedFaces::Find(IUnknown& node, FIIteratorBase& place, const InterfaceId& id) {
    return memory::Or(nullptr, [&]() -> void* {
        if (!faces_) {
            Ref<ITypeInfo> type = FindInterface(place, id);
            if (type) faces_ = std::make_unique<FaceList>(node, place, std::move(type));
        }
        return faces_ ? faces_->Find(id) : nullptr;
    });
}

}  // namespace fixtop
