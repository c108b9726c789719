// SPDX-License-Identifier: Apache-2.0
#pragma once

// HPublishContext, HPublishCursorBase, HPublishEntry: the real-time variables of a connected case,
// as one flat list. They are numbered from 0, whatever bounds the manager states.
//
// Values are in the unit that the reader asks for, or else in the default unit of the case, as
// those of all variables. A store is neither read back nor followed by a solve.

#include "fixtop/ref.h"
#include "framework/nodes/attr_map.h"
#include "framework/nodes/counted.h"
#include "host/host_object.h"
#include "host/lists/numbered_cursor.h"

namespace fixtop {

class HPublishContext : public CountedFromZero<FIContext>, public LivingNode {
 public:
    // `manager` is that of the case of `life`; `parent`, the node above, is kept.
    HPublishContext(host::COnlineConnectivityManager& manager, FIEntry* parent, Ref<CaseLife> life);

    // How many variables a manager publishes.
    static int CountOf(host::COnlineConnectivityManager& manager);

    FICursorBase* MakeCursor(int kind) override;
    // The shared empty entry for a number without a variable.
    FIEntry* MakeEntry(int number);
    bool IsSameList(const HPublishContext& other) const {
        return manager_.Number() == other.manager_.Number();
    }
    Liveness* Life() const final { return manager_.Life().Get(); }
    bool IsGone() const final { return manager_.IsGone(); }
    std::uint64_t NumberAt(int number) const { return HostObjectBase::NumberOf(Variable(number)); }

    const Ref<CaseLife>& CaseRecord() const { return manager_.Life(); }
    // 0 when the manager is gone.
    int Count() const;
    // Null when the manager has none of this number.
    host::RTIVariable* Variable(int number) const;

 private:
    HostObject<host::COnlineConnectivityManager> manager_;
    mutable int count_ = 0;
    mutable std::uint64_t counted_at_ = 0;  // the revision of the structure
    Ref<FIEntry> parent_;
};

class HPublishCursorBase : public NumberedCursor<HPublishCursorBase, HPublishContext> {
 public:
    using NumberedCursor::NumberedCursor;

    bool Seek(int origin, int delta) override;
    // From the first or the end: all of them. From the present: those behind it, then those before;
    // the present one itself is not asked, but where it stands is where a vain search ends.
    bool SeekName(int origin, const char* name) override;

 protected:
    int End() const override { return List().Count(); }
    void ReadKey(int position, FIValue& out) const override;
};

class HPublishEntry : public AttrMapEntry<HPublishEntry>, public LivingNode {
 public:
    HPublishEntry(HPublishContext* context, host::RTIVariable& variable);

    static std::span<const AttrRow<HPublishEntry>> AttributeRows();

    void GetName(FIValue& out) override;
    void SetAttribute(const FIValue& name, const FIValue& value, int mode, FIValue& out) override;
    FIContext* GetContext() override;
    bool IsContainer() override { return !IsGone(); }
    Liveness* Life() const final { return variable_.Life().Get(); }
    bool IsGone() const final { return variable_.IsGone(); }
    std::uint64_t ObjectNumber() const final { return variable_.Number(); }
    bool IsTracked() const final { return variable_.IsTracked(); }

 private:
    bool HasUnit() const { return unit_type_ != host::kVariableUnitType; }
    void ReadValue(FIValue& out);
    void Store(const FIValue& value, FIValue& out);

    Ref<HPublishContext> context_;
    HostObject<host::RTIVariable> variable_;
    host::VarType unit_type_;
};

}  // namespace fixtop
