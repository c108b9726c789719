// SPDX-License-Identifier: Apache-2.0
#pragma once

// CCDMClassContext: the family of the entries below one place of the neutral tree: the attributes
// of a class, on up to two nodes of the application, or on none when the tree is pure.
//
// It holds the library and the entry above it, so both last as long as anything below.

#include "fixtop/entry.h"
#include "framework/nodes/counted.h"
#include "mapping/nodes/application_faces.h"
#include "mapping/open/open_library.h"

namespace fixtop {

class CCDMClassEntry;

// What a context is made of.
struct ClassPlace {
    Ref<OpenLibrary> library;
    const CCDMClass* shown = nullptr;          // the class whose attributes are listed
    const CCDMAttribute* attribute = nullptr;  // that leads here; null at the top
    Ref<CCDMClassEntry> parent;                // null at the top
    BranchRequest branch = BranchRequest::kBoth;
    AppReferences references;
};

class CCDMClassContext : public CountedFromZero<FIContext> {
 public:
    explicit CCDMClassContext(ClassPlace place);
    ~CCDMClassContext() override;

    // The attributes that are shown here; of kind kKeyCursor those that name this element among its
    // siblings, none when nothing does or the tree is pure.
    FICursorBase* MakeCursor(int kind) override;
    // The key that the application's node splits off; its pseudo names "!Input" and "!Output" are
    // passed over. Both nodes are asked in turn.
    void GetKeyValue(const char* path, FIValue& out, const char** rest) override;

    const ClassPlace& Place() const { return place_; }
    CCDMClassLibrary& Library() const { return place_.library->library; }
    // The level above the entries of this context; null at the top.
    const AncestorPath* ParentPath() const;
    // The level of an attribute's entry, as far as it is known before the entry is made.
    AncestorPath PathOf(const CCDMAttribute& attribute) const;
    FaceQuery QueryFor(const CCDMAttribute& attribute, const AncestorPath& path) const;
    // The translators of an attribute here.
    FacesChoice ChoiceFor(const CCDMAttribute& attribute) const;
    // Of the level below an attribute whose element is of this class. Lent; null for none.
    ClassWay* WayBelow(const CCDMAttribute& attribute, const CCDMClass& shown) const {
        return way_ ? way_->Below(attribute, shown) : nullptr;
    }
    // Whether both list the attributes of one place of one tree.
    bool IsSameList(const CCDMClassContext& other) const;

 private:
    const ClassPlace place_;
    ClassWay* const way_;  // null where none is remembered
};

}  // namespace fixtop
