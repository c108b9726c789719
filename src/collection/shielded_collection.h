// SPDX-License-Identifier: Apache-2.0
#pragma once

// Shielded<Collection>, Shielded<CollectionIterator>: what clients are given of both; see
// framework/nodes/shield.h.

#include "fixtop/collection.h"
#include "framework/nodes/shield.h"

namespace fixtop {

template <std::derived_from<FICollectionBase> T>
class Shielded<T> final : public T {
 public:
    using T::T;

    FICollectionIteratorBase* MakeIterator() override {
        return memory::Or(nullptr, [this] { return T::MakeIterator(); });
    }
    void StartWatching() override {
        memory::OrNothing([this] { T::StartWatching(); });
    }
    void StopWatching() override {
        memory::OrNothing([this] { T::StopWatching(); });
    }
    void GetValues(const FIValue& attribute, FIValue* values) override {
        memory::OrNothing([&] { T::GetValues(attribute, values); });
    }
    void SetValues(const FIValue& attribute, const FIValue* values, int count, const FIValue& unit,
                   FIValue* outs) override {
        memory::OrNothing([&] { T::SetValues(attribute, values, count, unit, outs); });
    }
    void GetRows(const FIValue* attributes, int count, FIValue* values) override {
        memory::OrNothing([&] { T::GetRows(attributes, count, values); });
    }
    void ToXml(FIValue& out) override {
        memory::OrTell(out, [&] { T::ToXml(out); });
    }
    bool FromXml(const char* text) override {
        return memory::Or(false, [&] { return T::FromXml(text); });
    }
    bool Subscribe(void* owner, void* tag, FICollectionCallback callback) override {
        return memory::Or(false, [&] { return T::Subscribe(owner, tag, callback); });
    }
    bool Unsubscribe(void* owner, void* tag) override {
        return memory::Or(false, [&] { return T::Unsubscribe(owner, tag); });
    }
    void Clear() override {
        memory::OrNothing([this] { T::Clear(); });
    }
    bool Remove(FICollectionElement* item) override {
        return memory::Or(false, [&] { return T::Remove(item); });
    }
    bool RemoveAt(int index) override {
        return memory::Or(false, [&] { return T::RemoveAt(index); });
    }
    FICollectionElement* Add(FIIteratorBase& node) override {
        return memory::Or(nullptr, [&] { return T::Add(node); });
    }
    FICollectionElement* AddBefore(FIIteratorBase& node, FICollectionElement* behind) override {
        return memory::Or(nullptr, [&] { return T::AddBefore(node, behind); });
    }
    void FollowNames() override {
        memory::OrNothing([this] { T::FollowNames(); });
    }
    int AddMatches(FIIteratorBase& from, const FIValue& path) override {
        return memory::Or(-1, [&] { return T::AddMatches(from, path); });
    }
    bool Load(const char* text, FIIteratorBase& from) override {
        return memory::Or(false, [&] { return T::Load(text, from); });
    }
    void GetRootId(FIValue& out) override {
        memory::OrTell(out, [&] { T::GetRootId(out); });
    }
};

template <std::derived_from<FIEntry> T>
requires std::derived_from<T, FICollectionIteratorBase>
class Shielded<T> final : public ShieldedEntry<T> {
 public:
    using ShieldedEntry<T>::ShieldedEntry;

    void GetKey(FIValue& out) override {
        memory::OrTell(out, [&] { T::GetKey(out); });
    }
    void GetPath(FIValue& out) override {
        memory::OrTell(out, [&] { T::GetPath(out); });
    }
    void GetStep(int level, FIValue& out) override {
        memory::OrTell(out, [&] { T::GetStep(level, out); });
    }
    FIReferenceBase* GetNode() override {
        return memory::Or(nullptr, [this] { return T::GetNode(); });
    }
    void GetUnits(FIValue& unit, FIValue& spec_unit) override {
        memory::OrNothing([&] { T::GetUnits(unit, spec_unit); });
    }
};

}  // namespace fixtop
