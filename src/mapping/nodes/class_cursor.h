// SPDX-License-Identifier: Apache-2.0
#pragma once

// CCDMClassCursorBase: a position in the attributes of a class, superclasses first, and within an
// array attribute in its elements, which the application counts. The key is the attribute's name,
// which all elements of an array share; a search by name finds the first of them. An array of which
// no element has a key of its own, though the map knows their keys, is hidden.
//
// An inherited attribute that the class declares again is shown forward, passed over backward.
//
// When the structure of the case has changed, the element is looked for among those that are there
// now. One that is gone is lost: the cursor is at the end, and does not move on from there.

#include <memory>

#include "fixtop/cursor.h"
#include "framework/nodes/counted.h"
#include "mapping/nodes/class_context.h"
#include "model/attribute_walker.h"

namespace fixtop {

// Which attributes of the class are listed.
class CCDMAttrCol {
 public:
    enum class Rows { kAll, kKeys };

    CCDMAttrCol(const CCDMClassContext& context, Rows rows) : context_(context), rows_(rows) {}

    // Without application every attribute; else those that some translator serves, with the choice
    // for its entry.
    bool Accepts(const CCDMAttribute& attribute, FacesChoice& choice) const;
    Rows Listed() const { return rows_; }

 private:
    bool IsKey(const CCDMAttribute& attribute) const;

    const CCDMClassContext& context_;
    Rows rows_;
};

class CCDMClassCursorBase : public CountedFromZero<FICursorBase> {
 public:
    // Counted, on the first element.
    static CCDMClassCursorBase* Make(CCDMClassContext& context, CCDMAttrCol::Rows rows);

    // On no element yet.
    CCDMClassCursorBase(CCDMClassContext& context, CCDMAttrCol::Rows rows);
    CCDMClassCursorBase(const CCDMClassCursorBase& other);

    const void* TypeId() const override;
    FICursorBase* Clone(bool deep) override;
    // Before the first element it does not go.
    bool Seek(int origin, int delta) override;
    bool SeekName(int origin, const char* name) override;
    bool AtBegin() override;
    bool AtEnd() override { return !Stands(); }
    int Compare(FICursorPosition& other) override;
    void GetKey(FIValue& out) override;
    // Null at the end.
    FIEntry* GetEntry() override;

 private:
    // What an element's entry is for: to be handed out, or to be looked at before the walk goes on,
    // whose own references it stands on then.
    enum class Use { kKeep, kLook };
    // The walk over an array's elements on one face.
    struct FaceWalk {
        Ref<FIReference> reference;
        int base_depth = 0;
        int past_end = 0;               // steps made behind the end, while the other face goes on
        std::unique_ptr<CDTBase> walk;  // ends before the reference

        bool Stands() const { return walk && walk->HasMore(); }
        void Enter(const AppFace& face);
        void Next();
        void Prev();
        FaceWalk Copy() const;
        AppFace AtElement(const AppFace& face, Use use) const;
        Ref<FIReference> CopyOfNode() const;
    };
    struct Elements {
        AppFaces faces;
        FaceWalk primary;
        FaceWalk secondary;
        int index = 0;

        bool Stands() const { return primary.Stands() || secondary.Stands(); }
        // The application's node of the present element; null for none.
        FIReference* Node() const;
        bool IsOnSame(const Elements& other) const;
        // Both faces in step; whether one of them stands on an element then.
        bool Next();
        bool Prev();
        Elements Copy() const;
    };

    bool First();
    bool Next();
    bool Last();
    bool Prev();
    // From the attribute on which the walker stands, to the first or last element that is shown.
    bool SettleForward(bool on_attribute);
    bool SettleBackward(bool on_attribute);
    // Enters the attribute; false when it has nothing to show.
    bool Enter(const CCDMAttribute& attribute);
    // The elements of an array, on the first; null when the application has no list of them.
    std::unique_ptr<Elements> EnterElements(const CCDMAttribute& attribute,
                                            const AncestorPath& path) const;
    // Whether it stands now, as the structure of the case is at present.
    bool Stand(bool on_attribute);
    // Looks for the element anew when the structure has changed.
    void CatchUp();
    bool Stands();
    // Where a seek starts from; false when that was lost.
    bool StartFrom(int origin);
    void TellIfCut(const AncestorPath& path, const FaceWalk& walk) const;
    bool HasKeys() const;
    // The element on which `elements`, of the present attribute, stand.
    Ref<CCDMClassEntry> EntryAt(const Elements& elements, Use use) const;
    bool IsOnSame(const CCDMClassCursorBase& other) const;
    // Both have lost the same element.
    bool HasLostWith(const CCDMClassCursorBase& other) const;

    const Ref<CCDMClassContext> context_;
    const CCDMAttrCol filter_;
    CCDMAttributeWalker walker_;
    FacesChoice choice_;  // for the attribute that was entered
    bool stands_ = false;
    bool is_lost_ = false;
    std::unique_ptr<Elements> elements_;  // when the walker stands on an array that was entered
    std::uint64_t revision_ = 0;          // at which the elements were found
};

}  // namespace fixtop
