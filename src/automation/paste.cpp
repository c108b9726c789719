// SPDX-License-Identifier: Apache-2.0
#include "automation/paste.h"

#include <limits>
#include <optional>
#include <string>

#include "automation/collection.h"
#include "automation/held_node.h"
#include "automation/member.h"
#include "collection/make_collection.h"
#include "platform/clipboard.h"

namespace fixtop {

namespace {

constexpr std::size_t kLongestText = std::numeric_limits<std::int32_t>::max();

using Reader = Ref<FICollectionBase> (*)(const char* text, FIIteratorBase& from);

Ref<FICollectionBase> ReadAnyForm(const char* text, FIIteratorBase& from) {
    Ref<FICollectionBase> made = MakeCollection();
    return made->Load(text, from) ? std::move(made) : Ref<FICollectionBase>();
}

HRESULT MakeOf(Reader read, IUnknown* node, const char* text, std::int32_t size,
               IQSICollection** out) {
    if (!out) return kResultPointer;
    *out = nullptr;
    Ref<FIIteratorBase> place;
    const HRESULT found = FindHeldNode(node, kHeldNodeId, place);
    if (found != kResultOk) return found;
    if (!text || size <= 0) return kResultFalse;
    const HRESULT result = HandOutObject(out, [&]() -> IQSICollection* {
        const std::string terminated(text, static_cast<std::size_t>(size));
        Ref<FICollectionBase> made = read(terminated.c_str(), *place);
        return made ? new CQSICollection(std::move(made)) : nullptr;
    });
    return result == kResultFalse ? kResultFail : result;
}

}  // namespace

HRESULT PasteText(IUnknown* node, const char* text, std::int32_t size, IQSICollection** out) {
    return MakeOf(MakeCollectionOf, node, text, size, out);
}

HRESULT PasteFromClipboard(IUnknown* node, IQSICollection** out) {
    static constinit ClipboardFormat format("QSI Format");
    if (!out) return kResultPointer;
    *out = nullptr;
    if (!ClipboardFormat::IsThere()) return kResultNotImplemented;
    std::optional<std::string> read;
    const HRESULT result = RunMember([&] {
        read = format.Read();
        return read && read->size() <= kLongestText ? kResultOk : kResultFalse;
    });
    if (result != kResultOk) return result;
    return PasteText(node, read->data(), static_cast<std::int32_t>(read->size()), out);
}

HRESULT LoadCollection(IUnknown* node, const char* text, std::int32_t size, IQSICollection** out) {
    return MakeOf(ReadAnyForm, node, text, size, out);
}

}  // namespace fixtop
