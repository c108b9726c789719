// SPDX-License-Identifier: Apache-2.0
// Another program with the clipboard: empties it and, with a file, puts the bytes of that there in
// the format "QSI Format", or in the one that is named.

#include <windows.h>

#include <cstring>
#include <fstream>
#include <iterator>
#include <string>

namespace {

bool Put(const std::string& bytes, const char* format) {
    const HGLOBAL block = GlobalAlloc(GMEM_MOVEABLE, bytes.size());
    void* const inside = block ? GlobalLock(block) : nullptr;
    if (!inside) return false;
    std::memcpy(inside, bytes.data(), bytes.size());
    GlobalUnlock(block);
    return SetClipboardData(RegisterClipboardFormatA(format), block) != nullptr;
}

}  // namespace

int main(int count, char** arguments) {
    if (!OpenClipboard(nullptr) || !EmptyClipboard()) return 2;
    bool is_put = true;
    if (count > 1) {
        std::ifstream file(arguments[1], std::ios::binary);
        is_put = Put({std::istreambuf_iterator<char>(file), {}},
                     count > 2 ? arguments[2] : "QSI Format");
    }
    CloseClipboard();
    return is_put ? 0 : 3;
}
