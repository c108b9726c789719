// SPDX-License-Identifier: Apache-2.0
#pragma once

// The application's side of an attribute: up to two references, one for each face of a simulated
// quantity, moved by the translators that were chosen for them.
//
// Where one node above serves both faces, the one that "value" is not of is bound when it is first
// asked for: most nodes are read and left without.

#include "fixtop/ref.h"
#include "framework/reference/reference.h"
#include "mapping/nodes/last_place.h"
#include "mapping/translators/ancestor_path.h"
#include "mapping/translators/array_translator.h"
#include "mapping/translators/branch_request.h"
#include "mapping/translators/find_translator.h"
#include "mapping/translators/translator.h"

namespace fixtop {

class CCDMAttribute;
class CCDMClassLibrary;

// Where a class stands on the application: the face that is asked for first, of both the calculated
// one. Both null: on nothing.
struct AppReferences {
    Ref<FIReference> primary;
    Ref<FIReference> secondary;

    bool IsEmpty() const { return !primary && !secondary; }
    // Lent; null for none.
    FIReference* First() const { return primary ? primary.Get() : secondary.Get(); }
    // None of the nodes lives any more; never for none at all.
    bool AreGone() const;
    // Of the nodes, null when they can't go.
    Liveness* Life() const;
};

// What the choice depends on; all lent.
struct FaceQuery {
    const CCDMClassLibrary& library;
    const CCDMAttribute& attribute;
    const AncestorPath& path;
    const AppReferences& parent;
    BranchRequest branch;
    LastPlace* last = nullptr;  // of the entry above; null at the top
};

// The translators of one face.
struct FaceChoice {
    BranchRequest request = BranchRequest::kAny;
    TranslatorChoice plain;
    TranslatorChoice array;

    bool IsEmpty() const { return !plain.translator && !array.translator; }
};

// What is picked before a reference is moved. It holds as long as the nodes above stand.
struct FacesChoice {
    FaceChoice primary;
    FaceChoice secondary;
    bool is_split = false;  // the secondary face comes from the primary reference

    bool IsEmpty() const { return primary.IsEmpty() && secondary.IsEmpty(); }
};

class AppFace {
 public:
    AppFace() = default;
    // Not bound yet; `parent` is lent and outlives the face, as what `query` lends does. Null:
    // there is no node.
    AppFace(const FaceChoice& choice, const FaceQuery& query, FIReference* parent);

    // Lent; null when the application has no such node.
    FIReference* Node() const {
        if (parent_) Bind();
        return node_.Get();
    }
    // Counted.
    const Ref<FIReference>& SharedNode() const {
        Node();
        return node_;
    }
    // Stands there instead, or nowhere.
    void StandOn(Ref<FIReference> node);
    // Is bound when it is asked for. If `beside` is gone by then it stands on that.
    void BindLate(Ref<FIReference> beside) { beside_ = std::move(beside); }

    BranchRequest request = BranchRequest::kAny;
    const NodeAttributes* overrides = nullptr;   // of the node, by the chosen translators
    const CCDMArrayTranslator* array = nullptr;  // walks the elements from the node
    bool names_class = false;                    // kSubclassVariable is of this very attribute

 private:
    void Bind() const;
    Ref<FIReference> MovedCopy() const;
    // Null where the translators do more than follow a path.
    const CCDMMapTranslator* PathAlone() const;

    mutable Ref<FIReference> node_;
    mutable Ref<FIReference> beside_;
    mutable FIReference* parent_ = nullptr;  // null when it is bound
    const CCDMTranslator* plain_ = nullptr;
    const CCDMArrayTranslator* array_ = nullptr;
    LastPlace* last_ = nullptr;
};

struct AppFaces {
    AppFace primary;
    AppFace secondary;

    bool IsEmpty() const { return !primary.Node() && !secondary.Node(); }
    // The one that has a node; the secondary one when neither has.
    const AppFace& First() const { return primary.Node() ? primary : secondary; }
    // The primary one is the specified face, the secondary the calculated one.
    bool IsSwapped() const { return primary.request == BranchRequest::kSpec; }
    bool IsSplit() const { return primary.request != BranchRequest::kAny; }
    // The face of "value" now, the other one late when one node above serves both and it need not
    // stand in.
    void Bind(bool is_split);
    // The references, the calculated face first.
    AppReferences ByFace() const;
    // The face that "value" is of, the calculated one.
    const AppFace& OfValue() const { return IsSwapped() && secondary.Node() ? secondary : primary; }
};

// What is asked of the other face when the first is asked for `request`.
BranchRequest MirrorRequest(BranchRequest request);

// Empty when no translator serves the attribute, or there is no application.
FacesChoice ChooseTranslators(const FaceQuery& query);

// Whether the choice asks for the nodes' variables too: the same query may find another one then.
bool DependsOnVariables(const FaceQuery& query);

// Moves copies of the parent's references by the translators. An array's elements are not entered
// yet: each face has the translator that walks them. Logs ties.
AppFaces BindFaces(const FaceQuery& query, const FacesChoice& choice);

// How each translator was judged for the given face, as XML.
void DumpChoice(const FaceQuery& query, const AppFace& face, FIReference* parent, std::string& out);

}  // namespace fixtop
