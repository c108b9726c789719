// SPDX-License-Identifier: Apache-2.0
#include "platform/clipboard.h"

#include <windows.h>
// The component services follow the base header.
#include <ole2.h>

namespace fixtop {

namespace {

using Bytes = std::optional<std::string>;

// What the system lends or gives, until this ends.
template <class Give>
struct Finally {
    explicit Finally(Give at_end) : give(at_end) {}
    Finally(const Finally&) = delete;
    Finally& operator=(const Finally&) = delete;
    ~Finally() { give(); }
    const Give give;
};

Bytes Copy(HGLOBAL block) {
    const SIZE_T size = block ? GlobalSize(block) : 0;
    const auto* const bytes = size > 0 ? static_cast<const char*>(GlobalLock(block)) : nullptr;
    if (!bytes) return std::nullopt;
    const Finally unlock([=] { GlobalUnlock(block); });
    return std::string(bytes, size);
}

Bytes ReadObject(IDataObject& object, CLIPFORMAT format) {
    FORMATETC asked = {format, nullptr, DVASPECT_CONTENT, -1, TYMED_HGLOBAL};
    STGMEDIUM given = {};
    if (FAILED(object.GetData(&asked, &given))) return std::nullopt;
    const Finally release([&] { ReleaseStgMedium(&given); });
    return given.tymed == TYMED_HGLOBAL ? Copy(given.hGlobal) : Bytes();
}

Bytes ReadPlainly(UINT format) {
    if (!OpenClipboard(nullptr)) return std::nullopt;
    const Finally close([] { CloseClipboard(); });
    return Copy(GetClipboardData(format));
}

}  // namespace

bool ClipboardFormat::IsThere() noexcept {
    return true;
}

Bytes ClipboardFormat::Read() {
    if (number_ == 0) number_ = RegisterClipboardFormatA(name_);
    if (number_ == 0) return std::nullopt;
    IDataObject* object = nullptr;
    if (FAILED(OleGetClipboard(&object))) return ReadPlainly(number_);
    const Finally release([=] { object->Release(); });
    return ReadObject(*object, static_cast<CLIPFORMAT>(number_));
}

}  // namespace fixtop
