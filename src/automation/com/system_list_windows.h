// SPDX-License-Identifier: Apache-2.0
#pragma once

#include <algorithm>
#include <vector>

#include "automation/com/system_types_windows.h"
#include "automation/member.h"
#include "automation/object.h"

namespace fixtop {

// The table that all of the system's walks over lists have, IEnumConnections and the like.
template <class Row>
struct ListWalkMembers : IUnknown {
    virtual HRESULT FIXTOP_MEMBER Next(ULONG count, Row* rows, ULONG* fetched) = 0;
    virtual HRESULT FIXTOP_MEMBER Skip(ULONG count) = 0;
    virtual HRESULT FIXTOP_MEMBER Reset() = 0;
    virtual HRESULT FIXTOP_MEMBER Clone(void** walk) = 0;

 protected:
    ~ListWalkMembers() = default;
};

// What such a walk holds: Kind has the type Row, of what is handed out, the id of the walk's
// interface, and HandOut, which makes a row of a held object.
template <class Kind>
class SystemListWalk final : public AutomationObject<ListWalkMembers<typename Kind::Row>> {
 public:
    using Row = typename Kind::Row;
    using Held = std::vector<typename Kind::Held>;

    explicit SystemListWalk(Held rows, std::size_t place = 0)
        : rows_(std::move(rows)), place_(place) {}

    HRESULT FIXTOP_MEMBER Next(ULONG count, Row* rows, ULONG* fetched) override {
        if (fetched) *fetched = 0;
        if (!rows || (!fetched && count != 1)) return kResultPointer;
        return RunMember([&] {
            const std::size_t end = place_ + std::min<std::size_t>(count, rows_.size() - place_);
            const auto taken = static_cast<ULONG>(end - place_);
            for (; place_ < end; ++place_) *rows++ = Kind::HandOut(rows_[place_]);
            if (fetched) *fetched = taken;
            return taken == count ? kResultOk : kResultFalse;
        });
    }
    HRESULT FIXTOP_MEMBER Skip(ULONG count) override {
        return RunMember([&] {
            const bool has_all = count <= rows_.size() - place_;
            place_ = has_all ? place_ + count : rows_.size();
            return has_all ? kResultOk : kResultFalse;
        });
    }
    HRESULT FIXTOP_MEMBER Reset() override {
        return RunMember([&] {
            place_ = 0;
            return kResultOk;
        });
    }
    HRESULT FIXTOP_MEMBER Clone(void** walk) override {
        return HandOutObject(reinterpret_cast<SystemListWalk**>(walk),
                             [&] { return new SystemListWalk(rows_, place_); });
    }

 private:
    ~SystemListWalk() override = default;
    void* Find(const InterfaceId& id) override {
        return id == IUnknown::kId || id == Kind::kWalkId ? this : nullptr;
    }

    const Held rows_;
    std::size_t place_;
};

}  // namespace fixtop
