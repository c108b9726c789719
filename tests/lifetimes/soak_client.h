// SPDX-License-Identifier: Apache-2.0
#pragma once

// The random client: tops, views and handles of all kinds on whatever the world has, used at random
// and kept whatever happens. What a handle shows is compared with the world's book.

#include <functional>
#include <memory>
#include <string>
#include <vector>

#include "lifetimes/making.h"
#include "lifetimes/soak_selections.h"
#include "lifetimes/soak_view.h"

namespace fixtop::lifetimes {

class SoakClient {
 public:
    enum class Views { raw, neutral, mixed };

    SoakClient(World& world, Dice& dice, Views views, World::Fail fail);
    ~SoakClient();

    // One operation of the client, or one event of the host with what follows.
    void Step();
    void LetGo();

    struct Counts {
        long live = 0;
        long gone = 0;
        long calls = 0;
        long lost = 0;  // handles that outlived their object
    };
    const Counts& Count() const { return counts_; }
    const SoakSelections::Counts& SelectionCount() const { return selections_.Count(); }

 private:
    using Field = World::Field;

    using Root = SoakView;

    struct Held {
        std::unique_ptr<Subject> subject;
        Kind kind = Kind::iterator;
        Field field = Field::object;
        bool neutral = false;
        int number = 0;
        int removals = 0;
        bool was_live = true;
        bool final_said = false;
        bool moved = false;  // it has left its place, and nothing is expected of it
        int in_use = 0;
    };
    // A client of a reference that acts when it is called, by one of its three subscriptions.
    struct Listener;
    struct Ear {
        Listener* listener = nullptr;
    };
    struct Listener {
        SoakClient* client = nullptr;
        Ref<FIReferenceBase> reference;
        Ear ears[3];
        int number = 0;
        int removals = 0;
        bool ends = false;
    };
    struct Solver {
        std::unique_ptr<FISolver> solver;
        int case_number = 0;
        int removals = 0;
    };

    void OpenRoot();
    void LeaveRoot();
    void Take();
    void Release();
    void Use();
    void UseHeld(Held& held);
    void Listen();
    void StopListening();
    void UseSolver();
    void TakeStock();
    void OrderEvent();
    void CallBack(Ear& ear);
    void ActWithinCall();

    bool IsLive(const Held& held) const;
    bool IsLive(int case_number, int removals) const;
    Root* LiveRoot();
    Access AccessTo(int number, Field field) const;
    void CheckLive(const Held& held, Op op, const std::string& answer);
    void CheckGone(Held& held, Op op, const std::string& answer);
    std::string StateOf(const Held& held) const;
    std::string Describe(const Held& held, Op op, const std::string& answer) const;

    World& world_;
    Dice& dice_;
    Views views_;
    World::Fail fail_;
    Counts counts_;
    std::vector<Root> roots_;
    std::vector<std::shared_ptr<Held>> held_;
    std::vector<std::shared_ptr<Listener>> listeners_;
    std::vector<Solver> solvers_;
    SoakSelections selections_;
    int depth_ = 0;
    int disturbances_ = 0;
};

}  // namespace fixtop::lifetimes
