// SPDX-License-Identifier: Apache-2.0
// Runs random operations on three values beside a plain model of their kind and text. The model
// formats and scans with the C library; the value does so in its own way.

#include <fuzzer/FuzzedDataProvider.h>

#include <climits>
#include <cmath>
#include <cstdio>
#include <cstring>
#include <functional>
#include <iterator>
#include <string>

#include "check.h"
#include "fixtop/value.h"

namespace fixtop {

namespace {

constexpr std::size_t kLongest = 1 << 16;
constexpr char kDiffer[] = "value and model differ";

struct Model {
    int kind = 0;
    int number = 0;
    double real = 0;
    std::string text;

    bool IsText() const { return kind >= 3; }

    std::string Show() const {
        char buffer[64] = "";
        if (kind == 1) std::snprintf(buffer, sizeof buffer, "%d", number);
        if (kind == 2) std::snprintf(buffer, sizeof buffer, "%.12lg", real);
        return IsText() ? text : buffer;
    }
    int AsInt() const {
        if (kind == 1) return number;
        if (kind == 2) return std::fabs(std::trunc(real)) < 2147483648.0 ? int(real) : INT_MIN;
        int scanned = 0;
        if (IsText() && std::sscanf(text.c_str(), "%d", &scanned) != 1) scanned = 0;
        return scanned;
    }
    double AsDouble() const {
        if (kind == 1) return number;
        if (kind == 2) return real;
        double scanned = 0;
        if (IsText() && std::sscanf(text.c_str(), "%lg", &scanned) != 1) scanned = 0;
        return scanned;
    }
    void SetText(const std::string& value) {
        kind = kind == 4 || value.size() > 18 ? 4 : 3;
        text = value;
    }
    void SetInt(int value) { *this = Model{1, value, 0, ""}; }
    void SetReal(double value) { *this = Model{2, 0, value, ""}; }
    void ConvertTo(int target) {
        if (target == 0) *this = Model{};
        if (target == 1) SetInt(AsInt());
        if (target == 2) SetReal(AsDouble());
        if (target == 3 && !IsText()) *this = Model{3, 0, 0, Show()};
        if (target != 4) return;
        if (kind == 1) text = "&d";
        if (kind == 2) text = "&g";
        kind = 4;
    }
    void AppendChar(char c) {
        ConvertTo(3);
        text += c;
        if (text.size() > 19) kind = 4;
    }
    void Append(const std::string& more) {
        ConvertTo(4);
        text += more;
    }
};

std::string Xml(const std::string& text) {
    static const std::string entities[] = {"&#00;",  "&lt;",   "&gt;",  "&amp;",
                                           "&apos;", "&quot;", "&#10;", "&#13;"};
    std::string out;
    for (std::size_t i = 0; i < text.size(); ++i) {
        bool entity = false;
        for (const std::string& e : entities) entity |= text.compare(i, e.size(), e) == 0;
        switch (text[i]) {
            case '<':
                out += "&lt;";
                break;
            case '>':
                out += "&gt;";
                break;
            case '&':
                out += entity ? "&" : "&amp;";
                break;
            case '\'':
                out += "&apos;";
                break;
            case '"':
                out += "&quot;";
                break;
            case '\n':
                out += "&#10;";
                break;
            case '\r':
                out += "&#13;";
                break;
            default:
                out += text[i];
        }
    }
    return out;
}

std::string Quoted(const std::string& text) {
    if (text.find_first_of("%#'&!|()[].=\"") == std::string::npos) return text;
    if (text.size() > 1 && text[0] == '#' &&
        text.find_first_not_of("0123456789", 1) == std::string::npos) {
        return text;
    }
    std::string out = "\"";
    for (char c : text) out += c == '"' ? std::string("\"\"") : std::string(1, c);
    return out + "\"";
}

std::string Prepared(const std::string& text, bool quote, bool xml) {
    return xml ? Xml(text) : quote ? Quoted(text) : text;
}

std::string AttributeText(const std::string& text) {
    std::string out;
    for (char c : text)
        out += c == '"' ? "&quot;" : c == '&' ? "&amp;" : c == '<' ? "&lt;" : std::string(1, c);
    return out;
}

int Compared(const Model& a, const Model& b) {
    if (a.kind == 0) return b.kind == 0 ? 0 : b.IsText() && b.text.empty() ? 0 : -1;
    if (a.IsText()) return b.IsText() ? std::strcmp(a.text.c_str(), b.text.c_str()) : -2;
    if (b.kind == 0) return -2;
    Model right = b;
    if (b.IsText()) right.ConvertTo(a.kind);
    const double x = a.AsDouble(), y = right.AsDouble();
    return x < y ? -1 : x > y ? 1 : 0;
}

int Sign(int number) {
    return (number > 0) - (number < 0);
}
bool Same(double a, double b) {
    return a == b || (std::isnan(a) && std::isnan(b));
}

void CheckEqual(const FIValue& value, const Model& model) {
    Check(value.Kind() == model.kind, kDiffer, "kind");
    const std::string text = model.Show();
    Check(value.ToText() == text, kDiffer, "text");
    Check(value.Length() == static_cast<int>(text.size()), kDiffer, "length");
    Check(value.AsInt() == model.AsInt(), kDiffer, "integer");
    Check(Same(value.AsDouble(), model.AsDouble()), kDiffer, "real");
    const bool number = model.kind == 1 || model.kind == 2;
    Check(number ? value.CStr() == nullptr : value.CStr() == text, kDiffer, "C text");
    char buffer[8];
    for (int size : {1, 5, 8}) {
        value.CopyText(buffer, size);
        Check(text.substr(0, size - 1) == buffer, kDiffer, "copied text");
    }
}

std::string Text(FuzzedDataProvider& data) {
    std::string text = data.ConsumeRandomLengthString(64);
    std::erase(text, '\0');
    return text;
}

struct Pair {
    FIValue value;
    Model model;
};

using Operation = std::function<void(FuzzedDataProvider&, Pair&, Pair&)>;

const Operation kOperations[] = {
    [](FuzzedDataProvider& data, Pair& a, Pair&) {
        const std::string text = Text(data);
        a.value.SetText(text.c_str());
        a.model.SetText(text);
    },
    [](FuzzedDataProvider& data, Pair& a, Pair&) {
        const std::string text = Text(data);
        a.value.SetText(text);
        a.model.SetText(text);
    },
    [](FuzzedDataProvider& data, Pair& a, Pair&) {
        const int number = data.ConsumeIntegral<int>();
        a.value.SetInt(number);
        a.model.SetInt(number);
    },
    [](FuzzedDataProvider& data, Pair& a, Pair&) {
        const double number = data.ConsumeFloatingPoint<double>();
        a.value.SetReal(number);
        a.model.SetReal(number);
    },
    [](FuzzedDataProvider&, Pair& a, Pair&) {
        a.value.Clear();
        a.model = Model{};
    },
    [](FuzzedDataProvider& data, Pair& a, Pair&) {
        const int target = data.ConsumeIntegralInRange(-1, 6);
        a.value.ConvertTo(target);
        a.model.ConvertTo(target);
    },
    [](FuzzedDataProvider& data, Pair& a, Pair&) {
        const char c = data.ConsumeIntegralInRange<char>(1, 127);
        const int times = data.ConsumeIntegralInRange(1, 40);
        for (int i = 0; i < times; ++i) {
            a.value.AppendChar(c);
            a.model.AppendChar(c);
        }
    },
    [](FuzzedDataProvider& data, Pair& a, Pair&) {
        const std::string text = Text(data);
        const bool quote = data.ConsumeBool(), xml = data.ConsumeBool();
        a.value.AppendText(text.c_str(), quote, xml);
        a.model.Append(Prepared(text, quote, xml));
    },
    [](FuzzedDataProvider& data, Pair& a, Pair&) {
        const int number = data.ConsumeIntegral<int>();
        a.value.AppendInt(number);
        a.model.Append(Model{1, number, 0, ""}.Show());
    },
    [](FuzzedDataProvider& data, Pair& a, Pair&) {
        const double number = data.ConsumeFloatingPoint<double>();
        a.value.AppendReal(number);
        a.model.Append(Model{2, 0, number, ""}.Show());
    },
    // The second may be the first.
    [](FuzzedDataProvider& data, Pair& a, Pair& b) {
        const bool quote = data.ConsumeBool(), xml = data.ConsumeBool();
        const std::string text = b.model.Show();
        const bool prepare = b.model.IsText();
        a.value.AppendValue(b.value, quote, xml);
        a.model.Append(prepare ? Prepared(text, quote, xml) : text);
    },
    [](FuzzedDataProvider&, Pair& a, Pair&) {
        a.value.EscapeForAttribute();
        if (a.model.IsText() && a.model.text.find_first_of("\"&<") != std::string::npos)
            a.model.SetText(AttributeText(a.model.text));
    },
    [](FuzzedDataProvider&, Pair& a, Pair& b) {
        a.value.Assign(b.value);
        a.model = Model(b.model);
    },
    [](FuzzedDataProvider&, Pair& a, Pair& b) {
        FIValue copy(b.value);
        a.value = std::move(copy);
        Check(copy.IsNull(), kDiffer, "moved from");
        a.model = Model(b.model);
    },
    [](FuzzedDataProvider& data, Pair& a, Pair&) {
        if (!a.model.IsText()) return;
        const auto begin = data.ConsumeIntegralInRange<std::size_t>(0, a.model.text.size());
        a.value.SetText(a.value.CStr() + begin);
        a.model.SetText(a.model.text.substr(begin));
    },
};

}  // namespace

extern "C" int LLVMFuzzerTestOneInput(const std::uint8_t* bytes, std::size_t size) {
    FuzzedDataProvider data(bytes, size);
    Pair pairs[3];
    while (data.remaining_bytes() > 0) {
        Pair& a = pairs[data.ConsumeIntegralInRange(0, 2)];
        Pair& b = pairs[data.ConsumeIntegralInRange(0, 2)];
        kOperations[data.ConsumeIntegralInRange<std::size_t>(0, std::size(kOperations) - 1)](data,
                                                                                             a, b);
        CheckEqual(a.value, a.model);
        CheckEqual(b.value, b.model);
        Check(Sign(a.value.Compare(b.value)) == Sign(Compared(a.model, b.model)), kDiffer,
              "comparison");
        if (a.model.text.size() <= kLongest) continue;
        a.value.Clear();
        a.model = Model{};
    }
    return 0;
}

}  // namespace fixtop
