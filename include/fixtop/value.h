// SPDX-License-Identifier: Apache-2.0
#pragma once

// FIValue: the one value type that crosses every interface of the module. A small tagged value that
// owns its text: attribute reads and writes, cursor keys, path literals, variables, error texts.
//
// Ownership: values are copied deeply, two values never share a buffer. A long text lives in a
// buffer from malloc, so that a value made in one module may be cleared in another.
// Errors: no operation reports one. Text that does not scan as a number yields 0.
// Threads: not synchronised; a value has one owner at a time.

#include <cstddef>
#include <cstdint>
#include <cstring>
#include <string>
#include <string_view>

namespace fixtop {

class FIValue {
 public:
    // The numbers are fixed: they stand in switches and dumps of clients.
    enum KindNumber : int { kNull = 0, kInt = 1, kReal = 2, kShortText = 3, kLongText = 4 };

    // The longest text that SetText keeps inside the value, in bytes without the NUL.
    static constexpr int kShortLimit = 18;
    // AppendChar may fill the inline form by one character more.
    static constexpr int kShortCapacity = 19;
    // Capacity of a new long buffer; it only doubles from there.
    static constexpr std::int32_t kFirstCapacity = 32;

    FIValue() noexcept = default;
    FIValue(const FIValue& other) { CopyFrom(other); }
    FIValue(FIValue&& other) noexcept { StealFrom(other); }
    explicit FIValue(const char* text) { SetText(text); }
    ~FIValue() { FreeBuffer(); }

    FIValue& operator=(const FIValue& other) {
        Assign(other);
        return *this;
    }
    FIValue& operator=(FIValue&& other) noexcept;

    static FIValue OfInt(std::int32_t number);
    static FIValue OfReal(double number);

    // Deep copy; assigning a value to itself does nothing.
    void Assign(const FIValue& other) {
        if (kind_ == kLongText || !other.IsPlain()) return AssignUncommon(other);
        kind_ = other.kind_;
        payload_ = other.payload_;
    }
    // A text below 19 bytes stays inline unless the value already has a long buffer, which is kept.
    // A null pointer is taken as the empty text. An inline text ends at its first NUL; a long one
    // keeps the bytes behind it. The text may be a part of this value's own.
    void SetText(const char* text);
    void SetText(const std::string& text);
    void SetText(const char* text, std::size_t length);
    void SetInt(std::int32_t number) noexcept;
    void SetReal(double number) noexcept {
        FreeBuffer();
        kind_ = kReal;
        payload_.real = number;
    }
    void Clear() noexcept {
        FreeBuffer();
        kind_ = kNull;
    }

    int Kind() const noexcept { return kind_; }
    bool IsNull() const noexcept { return kind_ == kNull; }
    bool IsText() const noexcept { return kind_ == kShortText || kind_ == kLongText; }
    bool IsNumber() const noexcept { return kind_ == kInt || kind_ == kReal; }

    // Converts in place. Numbers are formatted with "%d" and "%.12lg", texts scanned with "%d" and
    // "%lg". Converting a number to kLongText gives the two characters "&d" or "&g", whatever the
    // number was: stored dumps and map files rely on it. Unknown targets change nothing, and
    // neither does kShortText on any text.
    void ConvertTo(int target);

    // A real is cut toward zero; one that no integer can hold gives the least integer. Text beyond
    // the range of an integer keeps its low 32 bits.
    std::int32_t AsInt() const noexcept {
        return kind_ == kInt ? payload_.number : IntFromOtherKind();
    }
    double AsDouble() const noexcept {
        return kind_ == kReal ? payload_.real : RealFromOtherKind();
    }

    // The text; "" for NULL, a null pointer for numbers.
    const char* CStr() const noexcept {
        if (kind_ == kShortText) return payload_.text;
        if (kind_ == kLongText) return payload_.buffer.bytes;
        return kind_ == kNull ? "" : nullptr;
    }
    // The first eight bytes of the text as one number, the first byte lowest and zeros behind its
    // end: equal texts have equal heads. 0 for what is no text.
    std::uint64_t Head() const noexcept {
        return IsText() ? CutAtEnd(kind_ == kShortText ? payload_.text : payload_.buffer.bytes) : 0;
    }
    // Length of the value's text in bytes, numbers as they would be formatted; 0 for NULL.
    int Length() const;
    // Writes at most `size` bytes, the last one always NUL; nothing when size is below 1.
    void CopyText(char* buffer, int size) const;
    // The value's text as a string, numbers formatted; "" for NULL.
    std::string ToText() const;

    // -1, 0, 1, the result of strcmp for two texts, or -2 when not comparable. Not symmetric: NULL
    // against a number is -1, a number against NULL -2; a number against a text converts the text
    // to the number's kind, a text against anything but a text is -2.
    int Compare(const FIValue& other) const;

    void AppendChar(char c);
    // With `xml` set, `quote` is ignored and the eight entities are written, an `&` that already
    // begins one of them left alone. With `quote` alone, text with path characters is put in double
    // quotes; "#" followed by digits only is not.
    void AppendText(const char* text, bool quote = false, bool xml = false);
    void AppendInt(std::int32_t number);
    void AppendReal(double number);
    void AppendValue(const FIValue& value, bool quote = false, bool xml = false);
    // In place on a text: `"`, `&` and `<` become entities.
    void EscapeForAttribute();

    // Name of a kind in dumps: NULL, INT, REAL, STRING, UNKNWN.
    static const char* KindName(int kind) noexcept;

    // Growth statistics of long texts, process-wide; kept for a debugger, never printed.
    struct Statistics {
        std::int64_t growth_checks = 0;
        std::int32_t largest_capacity = 0;
        std::int64_t check_at_largest = 0;
    };
    static const Statistics& GetStatistics() noexcept;

 private:
    struct Long {
        char* bytes;
        std::int32_t capacity;
        std::int32_t length;
    };
    union Payload {
        std::int32_t number;
        double real;
        char text[kShortCapacity + 1];
        Long buffer;
        Payload() noexcept : real(0) {}
    };

    // Both forms of a text have room for eight bytes.
    static std::uint64_t CutAtEnd(const char* bytes) noexcept {
        constexpr std::uint64_t kLows = 0x0101010101010101U;
        std::uint64_t head;
        std::memcpy(&head, bytes, sizeof head);
        const std::uint64_t ends = (head - kLows) & ~head & (kLows << 7);
        return ends == 0 ? head : head & (((ends & (~ends + 1)) >> 7) - 1);
    }
    // A kind without a buffer, and a known one.
    bool IsPlain() const noexcept { return kind_ >= kNull && kind_ < kLongText; }
    void CopyFrom(const FIValue& other) {
        if (!other.IsPlain()) return CopyUncommon(other);
        kind_ = other.kind_;
        payload_ = other.payload_;
    }
    void StealFrom(FIValue& other) noexcept {
        kind_ = other.kind_;
        payload_ = other.payload_;
        other.kind_ = kNull;
    }
    void FreeBuffer() noexcept {
        if (kind_ == kLongText) ReleaseBuffer();
    }

    void CopyUncommon(const FIValue& other);
    void AssignUncommon(const FIValue& other);
    void ReleaseBuffer() noexcept;
    std::int32_t IntFromOtherKind() const noexcept;
    double RealFromOtherKind() const noexcept;

    std::string_view View() const noexcept;
    std::string_view ViewOrFormat(char* buffer) const noexcept;
    void SetInline(std::string_view text) noexcept;
    void MakeLong(std::string_view text);
    void Reserve(std::size_t size);
    void AppendBytes(std::string_view bytes);
    void AppendView(std::string_view text, bool quote, bool xml);
    bool Holds(const char* text) const noexcept;

    int kind_ = kNull;
    Payload payload_;
};

// The one format in which a double becomes text: twelve significant digits, no trailing zeros.
// `buffer` has at least kRealTextSize bytes; answers the length.
inline constexpr std::size_t kRealTextSize = 32;
int FormatReal(double number, char* buffer) noexcept;

}  // namespace fixtop
