// SPDX-License-Identifier: Apache-2.0
#pragma once

// The application's side of an attribute: up to two references, one for each face of a simulated
// quantity, moved by the translators that were chosen for them.

#include "fixtop/ref.h"
#include "framework/reference/reference.h"
#include "mapping/translators/ancestor_path.h"
#include "mapping/translators/array_translator.h"
#include "mapping/translators/branch_request.h"
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
};

struct AppFace {
    BranchRequest request = BranchRequest::kAny;
    Ref<FIReference> reference;                  // null when the application has no such node
    const NodeAttributes* overrides = nullptr;   // of the chosen translator, when it has any
    const CCDMArrayTranslator* array = nullptr;  // walks the elements from the reference
    bool names_class = false;                    // kSubclassVariable is of this very attribute
};

struct AppFaces {
    AppFace primary;
    AppFace secondary;

    bool IsEmpty() const { return !primary.reference && !secondary.reference; }
    // The one that has a node; the secondary one when neither has.
    const AppFace& First() const { return primary.reference ? primary : secondary; }
    // The primary one is the specified face, the secondary the calculated one.
    bool IsSwapped() const { return primary.request == BranchRequest::kSpec; }
    bool IsSplit() const { return primary.request != BranchRequest::kAny; }
    // The references, the calculated face first.
    AppReferences ByFace() const;
};

// What is asked of the other face when the first is asked for `request`.
BranchRequest MirrorRequest(BranchRequest request);

// Chooses the translators and moves copies of the parent's references by them. An array's elements
// are not entered yet: each face has the translator that walks them.
AppFaces ChooseFaces(const FaceQuery& query);

// Whether some translator serves the attribute; without application everything is shown.
bool HasFace(const FaceQuery& query);

// How each translator was judged for the given face, as XML.
void DumpChoice(const FaceQuery& query, const AppFace& face, FIReference* parent, std::string& out);

}  // namespace fixtop
