// SPDX-License-Identifier: Apache-2.0
#include "fixtop/value.h"

#include <algorithm>
#include <charconv>
#include <cstdlib>
#include <cstring>
#include <functional>
#include <limits>
#include <new>

#include "value/number_scan.h"
#include "value/text_forms.h"

namespace fixtop {

namespace {

FIValue::Statistics g_statistics;

// Room for any formatted number, the NUL included.
constexpr std::size_t kNumberTextSize = kRealTextSize;

int FormatInt(std::int32_t number, char* buffer) noexcept {
    char* end = std::to_chars(buffer, buffer + kNumberTextSize - 1, number).ptr;
    *end = '\0';
    return static_cast<int>(end - buffer);
}

std::int32_t CutToInt(double number) noexcept {
    constexpr double kBound = 2147483648.0;
    if (number > -kBound - 1 && number < kBound) return static_cast<std::int32_t>(number);
    return std::numeric_limits<std::int32_t>::min();
}

char* Allocate(std::size_t capacity) {
    char* bytes = static_cast<char*>(std::malloc(capacity));
    if (bytes == nullptr) throw std::bad_alloc();
    return bytes;
}

// The first capacity at or above `size` that doubling from `capacity` reaches, and the note of it.
std::int32_t GrownCapacity(std::int32_t capacity, std::size_t size) {
    constexpr std::int64_t kLargest = std::numeric_limits<std::int32_t>::max();
    ++g_statistics.growth_checks;
    std::int64_t grown = capacity;
    while (grown < static_cast<std::int64_t>(size)) grown *= 2;
    if (grown > kLargest) throw std::bad_alloc();
    if (grown > g_statistics.largest_capacity) {
        g_statistics.largest_capacity = static_cast<std::int32_t>(grown);
        g_statistics.check_at_largest = g_statistics.growth_checks;
    }
    return static_cast<std::int32_t>(grown);
}

// The first and the last bytes of a text that has as many as Word, or more; both are read before
// one is written.
template <class Word>
void MoveEnds(char* to, std::string_view text) noexcept {
    const std::size_t last = text.size() - sizeof(Word);
    Word words[2];
    std::memcpy(&words[0], text.data(), sizeof(Word));
    std::memcpy(&words[1], text.data() + last, sizeof(Word));
    std::memcpy(to, &words[0], sizeof(Word));
    std::memcpy(to + last, &words[1], sizeof(Word));
}

// Moves a text that fits a value without a call: most names and units do. `to` may lie in the text.
void MoveShort(char* to, std::string_view text) noexcept {
    if (text.size() > 2 * sizeof(std::uint64_t)) {
        std::memmove(to, text.data(), text.size());
    } else if (text.size() >= sizeof(std::uint64_t)) {
        MoveEnds<std::uint64_t>(to, text);
    } else if (text.size() >= sizeof(std::uint32_t)) {
        MoveEnds<std::uint32_t>(to, text);
    } else if (text.size() >= sizeof(std::uint16_t)) {
        MoveEnds<std::uint16_t>(to, text);
    } else if (!text.empty()) {
        *to = text.front();
    }
}

int Sign(double a, double b) noexcept {
    return a < b ? -1 : a > b ? 1 : 0;
}

}  // namespace

int FormatReal(double number, char* buffer) noexcept {
    char* end =
        std::to_chars(buffer, buffer + kRealTextSize - 1, number, std::chars_format::general, 12)
            .ptr;
    *end = '\0';
    return static_cast<int>(end - buffer);
}

FIValue& FIValue::operator=(FIValue&& other) noexcept {
    if (this != &other) {
        FreeBuffer();
        StealFrom(other);
    }
    return *this;
}

FIValue FIValue::OfInt(std::int32_t number) {
    FIValue value;
    value.SetInt(number);
    return value;
}

FIValue FIValue::OfReal(double number) {
    FIValue value;
    value.SetReal(number);
    return value;
}

// Made first, so that a value which can't be replaced stays as it is.
void FIValue::AssignUncommon(const FIValue& other) {
    if (this == &other) return;
    FIValue copy(other);
    FreeBuffer();
    StealFrom(copy);
}

void FIValue::CopyUncommon(const FIValue& other) {
    kind_ = kNull;
    if (other.kind_ != kLongText) return;
    const Long& source = other.payload_.buffer;
    char* bytes = Allocate(source.capacity);
    std::memcpy(bytes, source.bytes, static_cast<std::size_t>(source.length) + 1);
    payload_.buffer = {bytes, source.capacity, source.length};
    kind_ = kLongText;
}

void FIValue::ReleaseBuffer() noexcept {
    std::free(payload_.buffer.bytes);
}

void FIValue::SetText(const char* text) {
    SetText(text, text == nullptr ? 0 : std::strlen(text));
}

void FIValue::SetText(const std::string& text) {
    SetText(text.data(), text.size());
}

void FIValue::SetText(const char* text, std::size_t length) {
    const std::string_view view(text, text == nullptr ? 0 : length);
    if (kind_ != kLongText) {
        if (length <= static_cast<std::size_t>(kShortLimit)) {
            SetInline(view);
        } else {
            MakeLong(view);
        }
        return;
    }
    // A part of the own text never grows the buffer, so it can't move away below the copy.
    Reserve(view.size() + 1);
    Long& own = payload_.buffer;
    if (!view.empty()) std::memmove(own.bytes, view.data(), view.size());
    own.bytes[view.size()] = '\0';
    own.length = static_cast<std::int32_t>(view.size());
}

void FIValue::SetInt(std::int32_t number) noexcept {
    FreeBuffer();
    kind_ = kInt;
    payload_.number = number;
}

void FIValue::SetInline(std::string_view text) noexcept {
    MoveShort(payload_.text, text);
    payload_.text[text.size()] = '\0';
    kind_ = kShortText;
}

// The value has no buffer yet; `text` may lie in its inline form.
void FIValue::MakeLong(std::string_view text) {
    const std::int32_t capacity = GrownCapacity(kFirstCapacity, text.size() + 1);
    char* bytes = Allocate(capacity);
    if (!text.empty()) std::memcpy(bytes, text.data(), text.size());
    bytes[text.size()] = '\0';
    payload_.buffer = {bytes, capacity, static_cast<std::int32_t>(text.size())};
    kind_ = kLongText;
}

void FIValue::Reserve(std::size_t size) {
    Long& own = payload_.buffer;
    const std::int32_t capacity = GrownCapacity(own.capacity, size);
    if (capacity == own.capacity) return;
    char* bytes = static_cast<char*>(std::realloc(own.bytes, capacity));
    if (bytes == nullptr) throw std::bad_alloc();
    own.bytes = bytes;
    own.capacity = capacity;
}

void FIValue::ConvertTo(int target) {
    if (target == kind_) return;
    switch (target) {
        case kNull:
            Clear();
            break;
        case kInt:
            SetInt(AsInt());
            break;
        case kReal:
            SetReal(AsDouble());
            break;
        case kShortText:
            if (!IsText()) {
                char buffer[kNumberTextSize];
                SetInline(ViewOrFormat(buffer));
            }
            break;
        case kLongText:
            MakeLong(kind_ == kInt ? "&d" : kind_ == kReal ? "&g" : View());
            break;
        default:
            break;
    }
}

std::int32_t FIValue::IntFromOtherKind() const noexcept {
    if (kind_ == kReal) return CutToInt(payload_.real);
    return IsText() ? text_forms::ScanInt(CStr()) : 0;
}

double FIValue::RealFromOtherKind() const noexcept {
    if (kind_ == kInt) return payload_.number;
    return IsText() ? text_forms::ScanReal(CStr()) : 0.0;
}

// The bytes of a text; nothing for other kinds.
std::string_view FIValue::View() const noexcept {
    if (kind_ == kShortText) return payload_.text;
    if (kind_ != kLongText) return {};
    return {payload_.buffer.bytes, static_cast<std::size_t>(payload_.buffer.length)};
}

std::string_view FIValue::ViewOrFormat(char* buffer) const noexcept {
    if (!IsNumber()) return View();
    const int length =
        kind_ == kInt ? FormatInt(payload_.number, buffer) : FormatReal(payload_.real, buffer);
    return {buffer, static_cast<std::size_t>(length)};
}

int FIValue::Length() const {
    char buffer[kNumberTextSize];
    return static_cast<int>(ViewOrFormat(buffer).size());
}

void FIValue::CopyText(char* buffer, int size) const {
    if (buffer == nullptr || size < 1) return;
    char number[kNumberTextSize];
    const std::string_view text = ViewOrFormat(number);
    const std::size_t length = std::min(text.size(), static_cast<std::size_t>(size) - 1);
    if (length != 0) std::memcpy(buffer, text.data(), length);
    buffer[length] = '\0';
}

std::string FIValue::ToText() const {
    char buffer[kNumberTextSize];
    return std::string(ViewOrFormat(buffer));
}

int FIValue::Compare(const FIValue& other) const {
    if (IsText()) return other.IsText() ? std::strcmp(CStr(), other.CStr()) : -2;
    if (kind_ == kNull) {
        if (other.IsNull()) return 0;
        return other.IsText() && *other.CStr() == '\0' ? 0 : -1;
    }
    if (other.IsNull()) return -2;
    return Sign(AsDouble(), kind_ == kInt && other.IsText() ? other.AsInt() : other.AsDouble());
}

void FIValue::AppendChar(char c) {
    if (kind_ == kNull || IsNumber()) ConvertTo(kShortText);
    if (kind_ == kShortText) {
        const std::size_t length = std::strlen(payload_.text);
        if (length < static_cast<std::size_t>(kShortCapacity)) {
            payload_.text[length] = c;
            payload_.text[length + 1] = '\0';
            return;
        }
        ConvertTo(kLongText);
    }
    AppendBytes({&c, 1});
}

void FIValue::AppendBytes(std::string_view bytes) {
    Long& own = payload_.buffer;
    Reserve(static_cast<std::size_t>(own.length) + bytes.size() + 1);
    if (!bytes.empty()) std::memcpy(own.bytes + own.length, bytes.data(), bytes.size());
    own.length += static_cast<std::int32_t>(bytes.size());
    own.bytes[own.length] = '\0';
}

bool FIValue::Holds(const char* text) const noexcept {
    const std::string_view own = View();
    const std::less_equal<const char*> not_after;
    return not_after(own.data(), text) && not_after(text, own.data() + own.size());
}

void FIValue::AppendView(std::string_view text, bool quote, bool xml) {
    // The own text may move while the value grows.
    std::string copy;
    if (Holds(text.data())) text = copy.assign(text);
    ConvertTo(kLongText);
    std::string changed;
    if (xml && text_forms::NeedsXmlEscape(text)) {
        text_forms::EscapeXml(text, changed);
        text = changed;
    } else if (!xml && quote && text_forms::NeedsPathQuotes(text)) {
        text_forms::QuoteForPath(text, changed);
        text = changed;
    }
    AppendBytes(text);
}

void FIValue::AppendText(const char* text, bool quote, bool xml) {
    AppendView(text == nullptr ? std::string_view() : std::string_view(text), quote, xml);
}

void FIValue::AppendInt(std::int32_t number) {
    char buffer[kNumberTextSize];
    FormatInt(number, buffer);
    AppendText(buffer);
}

void FIValue::AppendReal(double number) {
    char buffer[kNumberTextSize];
    FormatReal(number, buffer);
    AppendText(buffer);
}

void FIValue::AppendValue(const FIValue& value, bool quote, bool xml) {
    char buffer[kNumberTextSize];
    const bool text = value.IsText();
    AppendView(value.ViewOrFormat(buffer), text && quote, text && xml);
}

void FIValue::EscapeForAttribute() {
    if (!text_forms::NeedsAttributeEscape(View())) return;
    std::string escaped;
    text_forms::EscapeAttribute(View(), escaped);
    SetText(escaped);
}

const char* FIValue::KindName(int kind) noexcept {
    static constexpr const char* kNames[] = {"NULL", "INT", "REAL", "STRING", "STRING"};
    return kind >= kNull && kind <= kLongText ? kNames[kind] : "UNKNWN";
}

const FIValue::Statistics& FIValue::GetStatistics() noexcept {
    return g_statistics;
}

}  // namespace fixtop
