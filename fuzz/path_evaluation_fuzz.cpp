// SPDX-License-Identifier: Apache-2.0
// Walks a path from the bytes on a tree from the bytes: a graph with shared and repeated nodes. A
// walk that fails must leave the iterator where it was, one that succeeds must leave it below.

#include <cstddef>
#include <cstdint>
#include <cstdlib>
#include <deque>
#include <string>

#include "support/scripted_tree.h"

namespace fixtop {

namespace {

constexpr int kNodeLimit = 24;

class Bytes {
 public:
    Bytes(const std::uint8_t* data, std::size_t size) : data_(data), size_(size) {}
    int Next() {
        if (size_ == 0) return 0;
        --size_;
        return *data_++;
    }
    std::string Rest() const { return {reinterpret_cast<const char*>(data_), size_}; }

 private:
    const std::uint8_t* data_;
    std::size_t size_;
};

void Require(bool condition) {
    if (!condition) std::abort();
}

std::string PathOf(FIIterator& it) {
    FIValue path;
    it.GetPath(path);
    return path.ToText();
}

void Fill(ScriptNode& node, Bytes& bytes) {
    switch (bytes.Next() % 5) {
        case 0:
            node.Set("value", bytes.Next());
            break;
        case 1:
            node.Set("value", 0.5 * bytes.Next());
            break;
        case 2:
            node.Set("value", "a");
            break;
        case 3:
            node.Set("value", FIValue());
            break;
        default:
            break;
    }
    if (bytes.Next() % 4 == 0) node.key = FIValue::OfInt(bytes.Next());
    node.null_at_end = bytes.Next() % 2 == 0;
}

}  // namespace

extern "C" int LLVMFuzzerTestOneInput(const std::uint8_t* data, std::size_t size) {
    if (size > 400) return 0;
    Bytes bytes(data, size);
    std::deque<ScriptNode> nodes;
    const int count = 1 + bytes.Next() % kNodeLimit;
    for (int i = 0; i < count; ++i) {
        ScriptNode& node = nodes.emplace_back(std::string(1, static_cast<char>('a' + i % 3)));
        Fill(node, bytes);
        if (i > 0) nodes[bytes.Next() % i].Link(node);
    }
    // A few more edges, which may close cycles.
    for (int i = bytes.Next() % 4; i > 0; --i) {
        nodes[bytes.Next() % count].Link(nodes[bytes.Next() % count]);
    }

    const Ref<FIIterator> it = nodes[0].Iterate();
    it->SetVarText("v", "a");
    it->SetVarText("n", FIValue::OfInt(bytes.Next() % 3));
    for (int i = bytes.Next() % 3; i > 0; --i) it->Down(bytes.Next() % 2);
    const std::string start = PathOf(*it);
    const int depth = it->Depth();
    const FIValue path = Text(bytes.Rest());
    const Ref<FIIterator> copy = Ref<FIIterator>::Adopt(it->Copy());
    if (it->SeekPath(path)) {
        Require(it->Depth() >= depth);
        it->Freeze();
        it->Thaw();
    } else {
        Require(it->Depth() == depth && PathOf(*it) == start);
    }
    Require(PathOf(*copy) == start);
    if (!copy->Locate(path)) Require(PathOf(*copy) == start);
    return 0;
}

}  // namespace fixtop
