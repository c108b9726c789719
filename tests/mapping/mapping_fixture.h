// SPDX-License-Identifier: Apache-2.0
#pragma once

// What the tests of the mapping share: levels above an attribute, functions that maps may name, and
// a library read from the text of a map.

#include <deque>
#include <functional>
#include <string>
#include <vector>

#include "framework/reference/reference.h"
#include "mapping/map_file/map_file.h"
#include "mapping/translators/ancestor_path.h"
#include "mapping/translators/semantic_modules.h"
#include "model/class_library.h"
#include "support/log_lines.h"
#include "support/scripted_tree.h"
#include "support/temporary_folder.h"

namespace fixtop {

// Levels from the top down, written "Class:id/Class:id"; the last one is the attribute's.
class Levels {
 public:
    Levels(const std::string& text, const CCDMClassLibrary* library = nullptr) : text_(text) {
        std::size_t begin = 0;
        while (begin <= text_.size()) {
            const std::size_t end = std::min(text_.find('/', begin), text_.size());
            const std::string_view level = std::string_view(text_).substr(begin, end - begin);
            const std::size_t colon = level.find(':');
            AncestorPath next;
            next.className = level.substr(0, colon);
            next.id = level.substr(colon + 1);
            next.parent = levels_.empty() ? nullptr : &levels_.back();
            next.depth = static_cast<int>(levels_.size()) + 1;
            if (library != nullptr) next.classRecord = library->FindClass(next.className);
            levels_.push_back(next);
            begin = end + 1;
        }
    }
    Levels(const Levels&) = delete;
    Levels& operator=(const Levels&) = delete;
    const AncestorPath& Path() const { return levels_.back(); }

 private:
    const std::string text_;
    std::deque<AncestorPath> levels_;
};

// The calls that the recording functions got, and what they do.
struct Recorded {
    std::vector<std::string> calls;
    std::function<int(FIIteratorBase* it, FIValue* subclass, int index)> array;
    std::function<bool(FIIteratorBase* it, int move)> scalar;

    static Recorded& Now() {
        static Recorded recorded;
        return recorded;
    }
    static void Reset() { Now() = Recorded(); }
};

inline int RecordingArray(FIIteratorBase* it, FIValue* subclass, int index) {
    Recorded& now = Recorded::Now();
    now.calls.push_back(std::to_string(index) + "@" + std::to_string(it->Depth()) +
                        (subclass->IsNull() ? "" : "!"));
    return now.array ? now.array(it, subclass, index) : 0;
}

inline bool RecordingScalar(FIIteratorBase* it, int move) {
    Recorded& now = Recorded::Now();
    now.calls.push_back("move " + std::to_string(move) + "@" + std::to_string(it->Depth()));
    return now.scalar && now.scalar(it, move);
}

inline FIEntry* RecordingTop() {
    Recorded::Now().calls.push_back("top");
    return nullptr;
}

inline constexpr NamedFunction kRecordingFunctions[] = {{"CTArray", RecordingArray},
                                                        {"CTScalar", RecordingScalar},
                                                        {"MakeTop", RecordingTop},
                                                        {"CTAsked", RecordingScalar, false, true}};

// A module that offers them to maps.
class OfferedFunctions {
 public:
    explicit OfferedFunctions(const char* module = "recording.dll") : module_(module) {
        Recorded::Reset();
        OfferSemanticModule(module, kRecordingFunctions);
    }
    ~OfferedFunctions() { WithdrawSemanticModule(module_); }
    OfferedFunctions(const OfferedFunctions&) = delete;
    OfferedFunctions& operator=(const OfferedFunctions&) = delete;

    const SemanticModule* Module() const { return FindSemanticModule(module_); }

 private:
    const char* module_;
};

inline Ref<FIReference> ReferenceTo(FIIterator& it) {
    return Ref<FIReference>::Adopt(new FIReference(it));
}

inline std::string NameOf(FIReferenceBase& reference) {
    FIValue name;
    reference.GetName(name);
    return name.ToText();
}

inline std::string VariableOf(FIReferenceBase& reference, const char* name) {
    FIValue value;
    if (!reference.GetVarText(name, value)) return "(unset)";
    return value.IsNull() ? "(NULL)" : value.ToText();
}

}  // namespace fixtop
