// SPDX-License-Identifier: Apache-2.0
#pragma once

// The collections of the random client, plain ones and automation objects: nodes are added and
// removed, all is saved and loaded back, read and stored in bulk and watched. A book of its own
// says what each item must show. Who watches hears of a change of an item once, of its end once.

#include <functional>
#include <memory>
#include <string>
#include <vector>

#include "lifetimes/soak_faces.h"
#include "lifetimes/soak_view.h"

namespace fixtop::lifetimes {

class SoakSelections final : private World::Witness {
 public:
    struct Client {
        // Any that is open, or null.
        std::function<const SoakView*()> live_view;
        // Something else that it does, from within a call.
        std::function<void()> act;
    };
    struct Counts {
        long reads = 0;
        long gone = 0;
        long stores = 0;
        long loads = 0;
        long calls = 0;
        long awaited = 0;
    };

    SoakSelections(World& world, Dice& dice, World::Fail fail, Client client);
    ~SoakSelections();

    // One operation.
    void Step();
    // The client does something else.
    void Acted() { ++acts_; }
    // How often it did something.
    long Acts() const { return acts_; }
    void LetGo();
    const Counts& Count() const { return counts_; }

 private:
    using Field = World::Field;

    struct Item {
        // The path by which it is sought.
        bool is_top = false;
        bool is_operation = false;
        std::string holder;
        std::string name;
        Field field = Field::object;
        // The object whose it is, -1 while it has none.
        int number = -1;
        int case_number = 0;
        int removals = 0;
        bool end_told[SelectionFace::kEars] = {};
        long heard_in[SelectionFace::kEars] = {};

        bool HasPathOf(const Item& other) const;
    };
    struct Selection {
        std::unique_ptr<SelectionFace> face;
        Ref<FICollectionIteratorBase> walk;
        std::vector<Item> items;
        bool neutral = false;
        // Where nodes are sought, if anywhere.
        bool has_top = false;
        int case_number = 0;
        int removals = 0;
        bool is_watching = false;
        bool joined[SelectionFace::kEars] = {};
        bool is_dropped = false;
        int in_use = 0;
        long list_changes = 0;
    };
    using Held = std::shared_ptr<Selection>;
    using Op = void (SoakSelections::*)(Selection&);

    void Make();
    void MakePasted(const SoakView& view);
    void Bury();
    Held Any();
    bool IsSpent(const Selection& of) const;

    void Add(Selection& of);
    void Remove(Selection& of);
    void Read(Selection& of);
    void Store(Selection& of);
    void Walk(Selection& of);
    void SaveAndLoad(Selection& of);
    void Watch(Selection& of);
    void Join(Selection& of);
    void Drop(Selection& of);

    const SoakView* ViewFor(const Selection& of);
    Item ItemOn(const SoakView& view, int number, Field field) const;
    bool IsLive(const Item& item) const;
    bool IsLive(int case_number, int removals) const;
    void Bind(Item& item, int number, int case_number, int removals);
    // What a search finds at this time.
    void Find(const Selection& of, Item& item);
    void FindMissing(Selection& of);
    void FindAll(Selection& of);
    bool IsSure(Selection& of, long changes, bool searched);
    bool Misses(const Selection& of) const;
    bool PrepareSearch(Selection& of);
    void FollowNames(Selection& of);
    std::string TextOf(Selection& of);
    void Heard(Selection& of, int ear, int place, int kind);
    // World::Witness
    void OnBegin(int case_number) override;
    void OnEnd(bool happened) override;
    bool IsTold(int case_number) const;
    void Check(const Selection& of, const Item& item, const std::string& row,
               const std::string& answer);
    std::string Describe(const Selection& of, const Item& item) const;

    // What must be heard of a change, unless whoever hears of it does something.
    struct Awaited {
        Selection* of;
        int ear;
        int place;
    };
    struct Begun {
        long change;
        long acts;
        std::vector<Awaited> awaited;
    };

    World& world_;
    Dice& dice_;
    World::Fail fail_;
    Client client_;
    std::vector<Begun> begun_;
    long acts_ = 0;
    Counts counts_;
    std::vector<Held> held_;
    // Dropped from within their own operations, perhaps.
    std::vector<Held> dropped_;
    int depth_ = 0;
};

}  // namespace fixtop::lifetimes
