// SPDX-License-Identifier: Apache-2.0
#pragma once

// The simulator of the random client: cases whose objects come, go, take each other's names, and
// are closed or taken out with their host. It keeps a book of its own on what is alive; which host
// does all that says a derived class.
//
// Every object has a number of its own: its temperature and profile are that number with a
// fraction, its note tells it. So what a handle shows tells whose it is.

#include <functional>
#include <random>
#include <string>
#include <utility>
#include <vector>

#include "fixtop/host/services.h"

namespace fixtop::lifetimes {

class Dice {
 public:
    explicit Dice(unsigned seed) : generator_(seed) {}
    // 0 to count - 1.
    int Roll(int count) { return static_cast<int>(generator_() % static_cast<unsigned>(count)); }
    bool OneIn(int count) { return Roll(count) == 0; }

 private:
    std::mt19937 generator_;
};

class World {
 public:
    struct Thing {
        std::string name;
        int case_number = 0;
        int holder = -1;  // the operation that it stands in
        bool is_operation = false;
        bool lives = true;
        host::Viewable* object = nullptr;
    };
    // What of an object a handle stands on.
    enum class Field { object, temperature, note, profile };

    using Fail = std::function<void(const std::string&)>;
    using Event = std::function<void()>;

    World(Dice& dice, Fail fail) : dice_(dice), fail_(std::move(fail)) {}
    // A derived class takes its host out before.
    virtual ~World() = default;
    World(const World&) = delete;
    World& operator=(const World&) = delete;

    // Whether the module has a host now, and how often it lost one.
    bool HasHost() const { return installed_; }
    int Removals() const { return removals_; }
    // It is being taken out right now: one case after the other ends.
    bool IsGoing() const { return is_going_; }

    // The cases that are open, by their numbers, which are never used again.
    virtual std::vector<int> Cases() const = 0;
    // Null when it is not open.
    virtual host::SimulationCase* Live(int case_number) const = 0;
    // Makes it the active one.
    virtual void Activate(int case_number) = 0;
    // The fields that its streams have: so many from the first.
    virtual int FieldCount() const = 0;

    const Thing& At(int number) const { return things_[static_cast<std::size_t>(number)]; }
    bool Lives(int number) const { return At(number).lives; }
    // One that lives in the case; -1 when there is none.
    int Any(int case_number, bool operation);
    // The one of this name that lives there, -1 for none; of what stands in no operation the holder
    // has no name.
    int Find(int case_number, const std::string& holder, const std::string& name,
             bool operation) const;
    std::string HolderName(int number) const;
    // Where it stands among those of its kind in its flowsheet.
    int IndexOf(int number) const;
    bool HasName(int case_number, const std::string& name) const;

    // A change that the host tells once; 0 outside of any, and the number of those so far.
    long PresentChange() const { return change_; }
    long Changes() const { return changes_; }
    // What happens meanwhile is another matter.
    class Aside;
    // Called around each change of a case, -1 for all of them; behind it, whether it came about.
    struct Witness {
        virtual void OnBegin(int case_number) = 0;
        virtual void OnEnd(bool happened) = 0;

     protected:
        ~Witness() = default;
    };
    void SetWitness(Witness* witness) { witness_ = witness; }

    // One event that may happen while clients are on the stack.
    virtual void Disturb() = 0;
    // Lets it happen later, where the host may change things while a client waits.
    virtual void Order(Event event) = 0;
    // What the host does when no client is on the stack: its loop, the return of a host.
    void Rest();

 protected:
    class Change;

    virtual host::HostServices& Services() = 0;
    // Makes one in place of the present host, if any.
    virtual void MakeHost() = 0;
    virtual void RunLoop() = 0;
    // Opens what there should be more.
    virtual void Refill() = 0;
    // Its cases are gone, and it is about to be.
    virtual void Forget() = 0;

    void Start();
    void TakeOut();

    std::size_t ThingCount() const { return things_.size(); }
    int NewThing(int case_number, const std::string& name, int holder, bool operation);
    void Name(int number, const std::string& name);
    // Finds the objects of what was just opened or added, and what stands in it.
    void Match(host::FlowSheet* sheet, int case_number, int holder);
    void BuryAll(const std::function<bool(const Thing&)>& of);
    void BuryThing(int number);
    // As if those from this number on had never been.
    void Unmake(std::size_t from);
    std::string RandomName();

    Dice& dice_;
    Fail fail_;

 private:
    bool installed_ = false;
    int removals_ = 0;
    bool is_going_ = false;
    long change_ = 0;
    long changes_ = 0;
    Witness* witness_ = nullptr;
    std::vector<Thing> things_;
    std::vector<int> living_;
};

class World::Aside {
 public:
    explicit Aside(World& world) : Aside(world, 0) {}
    ~Aside() { world_.change_ = outer_; }
    Aside(const Aside&) = delete;
    Aside& operator=(const Aside&) = delete;

 protected:
    Aside(World& world, long change)
        : world_(world), outer_(std::exchange(world.change_, change)) {}

 private:
    World& world_;
    const long outer_;
};

class World::Change : public Aside {
 public:
    Change(World& world, int case_number) : Aside(world, ++world.changes_), of_(world) {
        if (of_.witness_) of_.witness_->OnBegin(case_number);
    }
    ~Change() {
        if (of_.witness_) of_.witness_->OnEnd(happened_);
    }
    // The host refused it.
    void Cancel() { happened_ = false; }

 private:
    World& of_;
    bool happened_ = true;
};

}  // namespace fixtop::lifetimes
