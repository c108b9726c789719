// SPDX-License-Identifier: Apache-2.0
#pragma once

// VarDescription: the address of one variable of one object. A value type, copied freely: copies
// share one body, counted plainly, as all belongs to the thread of the simulation; the offsets are
// each one's own.
//
// Text form (moniker): parts joined by '/', each "Class.number" with further ".index" offsets, a
// part that names a variable beginning with ':'. "[]" means a dimension still to be filled.
// Examples: "FlowSht.1/Solver.400", ":Boolean.302", ":Double.501.[]", "RTIVariable.500.3".

#include <array>
#include <cstdint>
#include <utility>

#include "fixtop/host/text.h"

namespace fixtop::host {

class Viewable;

using VariableType = std::int32_t;
using VarType = std::int32_t;
using VarDescType = int;

// A real variable that has no value.
inline constexpr double kEmptyReal = -32767.0;
// Unit type of a variable whose unit type is not fixed: the object must be asked.
inline constexpr VarType kVariableUnitType = 65;
// Third argument of GetPathDimensions; also "none" as an answer of GetVariableUnitType.
inline constexpr int kEmptyDimensionMarker = -32767;
// Type of the text-like array variables.
inline constexpr VariableType kStringArrayType = 1519;

// What the variable part of a description holds.
enum PartKind : std::int32_t { kPartNone = 0, kPartReal = 1, kPartText = 2, kPartAttachment = 3 };

// Bounds of an array variable, up to three dimensions.
struct DimInfo {
    unsigned count = 0;
    std::int32_t low[3] = {0, 0, 0};
    std::int32_t high[3] = {-1, -1, -1};
};

class VarDescription {
 public:
    // What a host states of one part when it builds a description itself.
    struct Facts {
        Text moniker;
        std::int32_t kind = kPartNone;
        std::int32_t number = 0;
        VariableType type = 0;
        VarType unit_type = kVariableUnitType;
        double minimum = kEmptyReal;  // internal units
        double maximum = kEmptyReal;  // internal units
        bool next_not_followed = false;
        bool chain_ends = false;
        // A word of the host's own, carried along by copies; no part of the address.
        std::uintptr_t host_word = 0;
    };

    VarDescription() noexcept;
    // From a moniker; `type` is 0 throughout. Type, unit type and limits of such a description are
    // asked of the local services when they are wanted.
    VarDescription(const char* moniker, VarDescType type);
    // From a host's facts, with the parts that follow it.
    explicit VarDescription(const Facts& facts, const VarDescription& next = VarDescription());

    std::int32_t Kind() const;
    std::int32_t Number() const;
    // Continuation of a multi-part description, null at the end. Valid while this one is unchanged.
    const VarDescription* NextPart() const;
    bool NextNotFollowed() const;
    bool ChainEnds() const;
    std::uintptr_t HostWord() const;

    // The last part, the one that names the variable: this one when there is only one.
    const VarDescription* GetVariablePart() const;
    VariableType Type() const;
    VarType UnitType() const;
    double MaxValue() const;
    double MinValue() const;
    bool IsEmpty() const { return !body_; }
    // Same parts and same offsets. With `ignore_offsets` set the offsets do not count.
    bool IsEqual(const VarDescription& other, bool ignore_offsets) const;

    // The moniker of this part and all that follow, "[]" where a dimension is to be filled.
    Text GetMoniker() const;
    // The same with the offsets set so far filled in.
    Text GetFilledMoniker() const;
    // Sets the offset of one dimension (0 to 2) of the variable part. `relative` adds to the
    // present one.
    void SetOffset(int dimension, int offset, bool relative);
    // Sets the first `count` dimensions in running order.
    void FillRunning(const int* indices, unsigned count);
    // Offset of a dimension of this part, kNoOffset when it is still to be filled.
    static constexpr int kNoOffset = INT32_MIN;
    int Offset(int dimension) const;
    // The offset that the last SetOffset of a dimension replaced. A store into a composition marks
    // its description with a form number in dimension 0; here the element is still told.
    int ReplacedOffset(int dimension) const;

    // Bounds of the variable on the object that finally holds it.
    void GetPathDimensions(Viewable* object, DimInfo& out, int marker) const;

 private:
    using Offsets = std::array<int, 3>;
    struct Body;

    // A counted pointer at a body, or null.
    class BodyRef {
     public:
        BodyRef() noexcept = default;
        explicit BodyRef(Body* body) noexcept;
        BodyRef(const BodyRef& other) noexcept : body_(other.body_), holders_(other.holders_) {
            if (holders_) ++*holders_;
        }
        BodyRef(BodyRef&& other) noexcept
            : body_(std::exchange(other.body_, nullptr)),
              holders_(std::exchange(other.holders_, nullptr)) {}
        BodyRef& operator=(BodyRef other) noexcept {
            std::swap(body_, other.body_);
            std::swap(holders_, other.holders_);
            return *this;
        }
        ~BodyRef() {
            if (holders_ && --*holders_ == 0) Destroy(body_);
        }

        explicit operator bool() const noexcept { return body_ != nullptr; }
        bool operator==(const BodyRef& other) const noexcept { return body_ == other.body_; }
        Body* operator->() const noexcept { return body_; }
        Body& operator*() const noexcept { return *body_; }
        bool IsShared() const noexcept { return holders_ && *holders_ > 1; }

     private:
        static void Destroy(Body* body);

        Body* body_ = nullptr;
        int* holders_ = nullptr;  // a part of the body
    };

    // For a description with a body, which is its own then.
    Body& Own();
    VarDescription& LastPart();

    BodyRef body_;
    // Of this part: the elements of an array share one body.
    Offsets offsets_ = {kNoOffset, kNoOffset, kNoOffset};
    Offsets replaced_ = {kNoOffset, kNoOffset, kNoOffset};
};

inline VarDescription::VarDescription() noexcept = default;

inline const VarDescription TheEmptyVarDesc;

}  // namespace fixtop::host
