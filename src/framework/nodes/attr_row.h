// SPDX-License-Identifier: Apache-2.0
#pragma once

// AttrRow<T>: one attribute of a class of entries. A table of rows is static; AttrRowIndex finds
// the rows of a name in it.

#include <array>
#include <cstddef>
#include <cstdint>
#include <cstring>
#include <span>

#include "fixtop/value.h"

namespace fixtop {

// A name that is looked for or listed: its text, and the first eight bytes of it as one number,
// with zeros behind its end, so that most rows are told apart by one comparison.
struct AttrName {
    constexpr AttrName(const char* name) : text(name ? name : "") {
        for (int i = 0; i < kHead && text[i] != '\0'; ++i) {
            head |= std::uint64_t{static_cast<unsigned char>(text[i])} << (8 * i);
        }
    }
    constexpr AttrName(const char* name, std::uint64_t name_head) : text(name), head(name_head) {}
    // What is no text is nobody's name.
    AttrName(const FIValue& name) : text(name.IsText() ? name.CStr() : ""), head(name.Head()) {}
    bool operator==(const AttrName& other) const {
        return head == other.head && (IsWholeInHead() || std::strcmp(text, other.text) == 0);
    }

    static constexpr int kHead = 8;
    constexpr bool IsWholeInHead() const { return head >> (8 * (kHead - 1)) == 0; }

    const char* text;
    std::uint64_t head = 0;
};

template <class T>
struct AttrRow {
    using Available = bool (*)(T& owner, std::intptr_t extra);
    using Plain = void (*)(T& owner, FIValue& out);
    using WithExtra = void (*)(T& owner, FIValue& out, std::intptr_t extra);
    // Takes a write, `out` being NULL or the message then. False: it is refused as any other name.
    using Writer = bool (*)(T& owner, const FIValue& value, int mode, FIValue& out);

    // Kind 0: no handler, reads give NULL. Kind 1: handler(owner, out). Kind 2: with `extra`.
    constexpr AttrRow(const char* row_name, Available is_available = nullptr)
        : name(row_name), kind(0), available(is_available), plain(nullptr) {}
    constexpr AttrRow(const char* row_name, Plain handler, Available is_available = nullptr,
                      std::intptr_t row_extra = 0)
        : name(row_name), kind(1), available(is_available), plain(handler), extra(row_extra) {}
    constexpr AttrRow(const char* row_name, WithExtra handler, std::intptr_t row_extra,
                      Available is_available = nullptr)
        : name(row_name), kind(2), available(is_available), with_extra(handler), extra(row_extra) {}
    // Kind 1 that can be written, whether it is available or not.
    constexpr AttrRow(const char* row_name, Plain handler, Writer writer)
        : name(row_name), kind(1), available(nullptr), plain(handler), write(writer) {}
    constexpr AttrRow(const char* row_name, Plain handler, Available is_available, Writer writer)
        : name(row_name), kind(1), available(is_available), plain(handler), write(writer) {}

    bool IsNamed(const AttrName& wanted) const { return AttrName(name, head) == wanted; }
    bool IsAvailable(T& owner) const { return !available || available(owner, extra); }
    void Read(T& owner, FIValue& out) const {
        switch (kind) {
            case 1:
                plain(owner, out);
                break;
            case 2:
                with_extra(owner, out, extra);
                break;
            default:
                out.Clear();
                break;
        }
    }

    const char* name;
    std::uint64_t head = AttrName(name).head;
    int kind;
    Available available;
    union {
        Plain plain;
        WithExtra with_extra;
    };
    std::intptr_t extra = 0;
    Writer write = nullptr;
};

// Where in a table the rows of a name begin to be looked for: one look finds most names.
template <class T>
class AttrRowIndex {
 public:
    explicit AttrRowIndex(std::span<const AttrRow<T>> rows) : rows_(rows) {
        starts_.fill(static_cast<Start>(rows.size()));
        for (std::size_t i = rows.size(); i-- > 0;) starts_[Slot(rows[i].head)] = Start(i);
    }
    // The first row of the name; null when there is none.
    const AttrRow<T>* Find(const AttrName& name) const {
        for (std::size_t i = starts_[Slot(name.head)]; i < rows_.size(); ++i) {
            if (rows_[i].IsNamed(name)) return &rows_[i];
        }
        return nullptr;
    }

 private:
    using Start = std::uint16_t;
    static constexpr int kBits = 7;

    // The golden ratio's multiples spread what differs in few bits (multiplicative hashing).
    static constexpr std::size_t Slot(std::uint64_t head) {
        return (head * 0x9E3779B97F4A7C15U) >> (64 - kBits);
    }

    std::span<const AttrRow<T>> rows_;
    std::array<Start, std::size_t{1} << kBits> starts_;
};

// The row of a name, available or not; null when there is none.
template <class T>
inline const AttrRow<T>* FindAnyAttrRow(const AttrName& name) {
    static const AttrRowIndex<T> index(T::AttributeRows());
    return index.Find(name);
}

}  // namespace fixtop
