// SPDX-License-Identifier: Apache-2.0
#include "mapping/check/translator_check.h"

#include <algorithm>
#include <optional>
#include <set>

#include "mapping/check/listed_names.h"
#include "mapping/map_file/map_text.h"
#include "path/tokenizer.h"

namespace fixtop {

// What stands in a translator.
enum class TranslatorCheck::Part { kNone, kPath, kPathBeside, kStep, kList };

// By the element and its Type.
struct TranslatorCheck::Type {
    const char* element;
    const char* type;
    Part body = Part::kNone;             // in its own text
    const char* body_element = nullptr;  // where that may stand too
    // A path that stands in <Map> beside a function.
    bool has_path_beside = false;
    bool may_be_empty = false;
};

namespace {

constexpr char kPathElement[] = "Map";
constexpr const char* kPartElements[] = {"Function", kPathElement};
// In the order of the parts.
constexpr const char* kPartWords[] = {"", "path", "path in <Map>", "function", "function"};

std::vector<std::string> PiecesOf(const CheckedElement& element, const char* child) {
    std::vector<std::string> pieces;
    if (!child) return pieces;
    element.ForEach(child, [&](const CheckedElement& each) {
        pieces.insert(pieces.end(), each.texts.begin(), each.texts.end());
    });
    return pieces;
}

}  // namespace

bool TranslatorCheck::Check(const CheckedElement& element) {
    static constexpr Type kTypes[] = {
        {"Translate", "Dummy"},
        {"Translate", "Function", Part::kStep, "Function"},
        {"Translate", "Map", Part::kPath, kPathElement, false, true},
        {"TranslateArray", "Function", Part::kStep, "Function", true},
        {"TranslateArray", "Map", Part::kPath, kPathElement},
        {"TranslateArray", "ArrayFunc", Part::kList},
    };
    const std::string* wanted = element.Find("Type");
    if (!wanted) return false;
    std::vector<const char*> known;
    for (const Type& type : kTypes) {
        if (element.name != type.element) continue;
        known.push_back(type.type);
        if (*wanted != type.type) continue;
        CheckBody(type, element);
        element.ForEach("NodeAttributes",
                        [&](const CheckedElement& each) { CheckNodeAttributes(each); });
        return true;
    }
    findings_.Mistake(element.place,
                      "Type " + *wanted + " of <" + element.name + "> is not known" + Right(known));
    return false;
}

void TranslatorCheck::CheckBody(const Type& type, const CheckedElement& element) {
    std::vector<std::string> body = element.texts;
    const std::vector<std::string> inside = PiecesOf(element, type.body_element);
    body.insert(body.end(), inside.begin(), inside.end());
    CheckPart(type.body, body, type.may_be_empty, element);
    if (type.has_path_beside) {
        CheckPart(Part::kPathBeside, PiecesOf(element, kPathElement), false, element);
    }
    for (const char* part : kPartElements) {
        const bool is_body = type.body_element && std::string_view(part) == type.body_element;
        const bool is_beside = type.has_path_beside && std::string_view(part) == kPathElement;
        if (is_body || is_beside) continue;
        element.ForEach(part, [&](const CheckedElement& each) {
            findings_.Mistake(each.place, std::string("nobody reads <") + part + "> in a <" +
                                              type.element + "> of Type " + type.type);
        });
    }
}

// Each piece takes the place of the one before.
void TranslatorCheck::CheckPart(Part part, const std::vector<std::string>& pieces,
                                bool may_be_empty, const CheckedElement& element) {
    if (part == Part::kNone) return;
    const std::string word = kPartWords[static_cast<std::size_t>(part)];
    if (pieces.empty()) {
        if (may_be_empty) return;
        return findings_.Mistake(element.place, "<" + element.name + "> has no " + word);
    }
    if (pieces.size() > 1) {
        findings_.Mistake(element.place,
                          "a " + word + " stands in several pieces; the last one counts");
    }
    const std::string& text = pieces.back();
    if (part == Part::kStep || part == Part::kList) {
        const FunctionKind kind = part == Part::kStep ? FunctionKind::kStep : FunctionKind::kList;
        return CheckFunction(PackedText(text), kind, element.place);
    }
    CheckPath(TrimmedText(text), element.place);
}

void TranslatorCheck::CheckPath(const std::string& text, FindingPlace place) {
    FIValue source;
    source.SetText(text);
    FIValue error;
    const ParsedPath path = ParsePath(source, error);
    if (!error.IsNull()) return findings_.Mistake(place, error.ToText());
    const std::size_t end = path->Last().end;
    if (end >= text.size()) return;
    findings_.Mistake(place, "of the path " + text + " nobody reads " + text.substr(end));
}

void TranslatorCheck::CheckNodeAttributes(const CheckedElement& element) {
    std::set<std::string> known;
    element.ForEach("Attribute", [&](const CheckedElement& each) {
        const std::string name = each.Get("Name");
        if (!known.insert(name).second) {
            findings_.Mistake(each.place,
                              "node attribute " + name + " is given twice; the last one counts");
        }
        // Blanks belong to an expression.
        CheckPath(each.Text(), each.place);
    });
}

void TranslatorCheck::Link(const std::string& module, FindingPlace place) {
    module_ = FindSemanticModule(module);
    is_linked_ = true;
    if (!module_) {
        findings_.Mistake(
            place,
            "module " + module + " is offered by nobody; that of this library is " + kOwnModule);
    }
}

void TranslatorCheck::CheckFunction(const std::string& name, FunctionKind kind,
                                    FindingPlace place) {
    if (module_) {
        const std::string wrong = WrongFunction(*module_, name, kind, findings_);
        if (!wrong.empty()) findings_.Mistake(place, wrong);
    } else if (!is_linked_) {
        // Told of each: which one was meant to come first, nobody knows.
        findings_.Mistake(place,
                          "function " + name + " is looked up before a <Linkage> names its module");
    }
}

}  // namespace fixtop
