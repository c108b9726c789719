// SPDX-License-Identifier: Apache-2.0
#pragma once

// CCDMClassEntry: an attribute of a class, or one element of an array of them, as a node of the
// neutral tree. It is bound to up to two nodes of the application, one a face. In a tree that was
// opened without application it is pure: the name of its class stands for a value. In any other one
// it may be that the application has no such node: then it is missing, its values are NULL and it
// has no children.
//
// Values cross between application and model: option names by the tables of the map, numbers by
// their units. A number is shown in the display unit that the caller's variable set has for its
// quantity, and without one in the application's unit; "uom" is the model's name of that unit.
//
// Short-lived: made when a cursor stands on it, the translators chosen then.

#include <array>

#include "diagnostics/instance_counts.h"
#include "fixtop/entry.h"
#include "framework/nodes/small_object.h"
#include "mapping/nodes/class_context.h"

namespace fixtop {

class CCDMClassEntry : public FIEntry,
                       public FIAttributeSource,
                       public LivingNode,
                       public SmallObject,
                       private Counted<CountedClass::AncestorPath> {
 public:
    // A single attribute, by the translators that were chosen for it. Context and attribute may be
    // one of a pure tree.
    CCDMClassEntry(CCDMClassContext& context, const CCDMAttribute& attribute,
                   const FacesChoice& choice);
    // An element of an array, with the references on it.
    CCDMClassEntry(CCDMClassContext& context, const CCDMAttribute& attribute, AppFaces faces,
                   int index);

    int AddRef() override { return ++references_; }
    int Release() override;

    void GetName(FIValue& out) override;
    void GetAttribute(const FIValue& name, FIValue& out) override;
    void SetAttribute(const FIValue& name, const FIValue& value, int mode, FIValue& out) override;
    FIAttributeSource* GetAttributeSource() override;
    FIAttributeCursorBase* MakeCursor() override;
    // Objects that are not missing, as long as they live.
    bool IsContainer() override;
    FIContext* GetContext() override;
    // The application's nodes tell; a pure entry never changes.
    bool Subscribe(void* owner, int kind, FICallback callback) override;
    bool Unsubscribe(void* owner, int kind) override;
    // By name; of elements by their nodes, or where they are one node by their number.
    int Compare(FIEntry& other) override;

    void SetUnit(const FIValue& unit, FIValue& out) override;
    void SetSpecUnit(const FIValue& unit, FIValue& out) override;
    void SetValue(const FIValue& value, int mode, FIValue& out) override;
    void SetValueInUnit(const FIValue& value, const FIValue& unit, int mode, FIValue& out) override;
    void SetSpecValue(const FIValue& value, int mode, FIValue& out) override;
    void SetSpecValueInUnit(const FIValue& value, const FIValue& unit, int mode,
                            FIValue& out) override;
    // Units by the model's names; the empty unit is none. They stay in the caller's variable set.
    void SetDisplayUnit(const FIValue& unit, const FIValue& quantity, FIValue& out) override;
    void SetDisplaySpecUnit(const FIValue& unit, const FIValue& quantity, FIValue& out) override;

    // The application's nodes do; a pure entry is never gone.
    Liveness* Life() const final;
    bool IsGone() const final;

    // Of the object that the element is, by the application's nodes; 0 for two different ones.
    std::uint64_t ObjectNumber() const override;
    bool IsTracked() const override;
    Mark MarkOf() const override;
    bool StandsWith(const LivingNode& other) const override;
    // Whether two entries, which may be null, are one place of one tree.
    static bool IsSamePlace(const CCDMClassEntry* one, const CCDMClassEntry* other);

    const AncestorPath& Path() const { return path_; }
    // Of what is below it; null where none is remembered.
    ClassWay* WayBelow() const {
        return path_.classRecord ? context_->WayBelow(attribute_, *path_.classRecord) : nullptr;
    }
    const AppFaces& Faces() const { return faces_; }
    // Where its attributes were read last.
    LastPlace& Last() { return last_; }
    const CCDMAttribute& Attribute() const { return attribute_; }
    bool IsMissing() const;
    // Rows that are not asked of the application.
    static bool IsAnsweredByModel(const char* name);
    // False for the element of a list whose keys the map knows, when none of them has a node: the
    // application counts such an element where it has nothing.
    bool HasKey();

    // How the value of a row crosses from the application: not at all, as a value, as the name of a
    // unit or as a list of such names.
    enum class Crossing { kNone, kValue, kUnit, kUnits };
    struct Row {
        const char* name;
        Crossing crossing = Crossing::kNone;
        // Null: the application's node answers.
        void (CCDMClassEntry::*own)(FIValue& out) = nullptr;
        // Null: the application's node is written.
        void (CCDMClassEntry::*write)(const FIValue& value, FIValue& out) = nullptr;
    };
    // The table, in its order, and behind its kListedRows rows two that are only answered by name.
    static constexpr std::size_t kListedRows = 28;
    static constexpr std::size_t kRows = kListedRows + 2;
    static const std::array<Row, kRows>& Rows();

 private:
    enum class Shown { kValue, kSpecification };
    // Where an attribute is read: a node, the name that it has there, and the face that it is of.
    struct Source {
        const AppFace* face;
        const FIValue& name;
        Shown shown;
    };

    bool IsObject() const { return attribute_.type == CCDMAttrType::kObject; }
    bool IsOwnNode() const;
    bool IsOnSameNode(const CCDMClassEntry& other) const;
    static const Row* FindRow(const char* name);
    static const FIValue& UnitNameOf(const Source& source);
    // Null when no node has an override of this name.
    const AppFace* OverridingFace(const FIValue& name) const;
    // As what "value" or "spec_value" is shown: an override as its face is.
    Shown ShownAs(const FIValue& value_name) const;
    Shown ShownOn(const AppFace& face) const;
    CCDMClassLibrary& Library() const { return context_->Library(); }
    // The face that "value" is of, the calculated one; the specified one; the first that is there.
    const AppFace& ValueFace() const;
    const AppFace& SpecFace() const;
    const AppFace& AnyFace() const;
    Source SourceOf(const FIValue& name) const;
    // Where it is written.
    Source TargetOf(const FIValue& name) const;

    // In the application's words; of a source false when it has no node.
    void ReadOverride(const AppFace& face, const FIValue& name, FIValue& out) const;
    static bool ReadSource(const Source& source, FIValue& out);
    void ReadUncrossed(const FIValue& name, FIValue& out) const;
    // What was read under `name` at the source.
    void Cross(const FIValue& name, const Source& source, Crossing crossing, FIValue& out);

    void ReadId(FIValue& out);
    void ReadType(FIValue& out);
    void ReadContainer(FIValue& out);
    void ReadContainerType(FIValue& out);
    void ReadParent(FIValue& out);
    void ReadDisplayName(FIValue& out);
    void ReadIsLeaf(FIValue& out);
    void ReadHasChildren(FIValue& out);
    void ReadPath(FIValue& out);
    void ReadConverters(FIValue& out);
    void ReadVariables(FIValue& out);

    // Units of the attribute's own quantity.
    void WriteDisplayUnit(const FIValue& unit, FIValue& out);
    void WriteDisplaySpecUnit(const FIValue& unit, FIValue& out);

    // Turns the value into what the application wants; false, and the reason in `out`, when it
    // can't.
    bool Reverse(const Source& source, FIValue& value, FIValue& out);
    // The unit and quantity of a display unit; false, and the reason in `out`, when there is none.
    bool FindDisplayUnit(const FIValue& unit, const FIValue& quantity, FIValue& unit_number,
                         FIValue& quantity_number, FIValue& out);
    void WriteUnit(const AppFace& face, const FIValue& unit, FIValue& out);
    void WriteInUnit(const AppFace& face, Shown shown, const FIValue& value, const FIValue& unit,
                     int mode, FIValue& out);

    int references_ = 0;
    const Ref<CCDMClassContext> context_;
    const CCDMAttribute& attribute_;
    AncestorPath path_;
    AppFaces faces_;
    FIValue subclass_;
    LastPlace last_;
};

}  // namespace fixtop
