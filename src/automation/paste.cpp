// SPDX-License-Identifier: Apache-2.0
#include "automation/paste.h"

#include <limits>
#include <optional>
#include <string>
#include <utility>

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

HRESULT ReadClipboard(std::string& text) {
    static constinit ClipboardFormat format("QSI Format");
    if (!ClipboardFormat::IsThere()) return kResultNotImplemented;
    return RunMember([&] {
        std::optional<std::string> read = format.Read();
        if (!read || read->empty() || read->size() > kLongestText) return kResultFalse;
        text = std::move(*read);
        return kResultOk;
    });
}

HRESULT PasteFromClipboard(IUnknown* node, IQSICollection** out) {
    if (!out) return kResultPointer;
    *out = nullptr;
    std::string text;
    const HRESULT result = ReadClipboard(text);
    if (result != kResultOk) return result;
    return PasteText(node, text.data(), static_cast<std::int32_t>(text.size()), out);
}

HRESULT LoadCollection(IUnknown* node, const char* text, std::int32_t size, IQSICollection** out) {
    return MakeOf(ReadAnyForm, node, text, size, out);
}

}  // namespace fixtop
