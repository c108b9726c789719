// SPDX-License-Identifier: Apache-2.0
#pragma once

// The simulator of the random client: up to three cases, connected and not, whose objects come, go,
// take each other's names, and are closed or taken out with their host. It keeps a book of its own
// on what is alive.
//
// Every object has a number of its own: its temperature and profile are that number with a
// fraction, its note tells it. So what a handle shows tells whose it is.

#include <functional>
#include <memory>
#include <random>
#include <string>
#include <vector>

#include "casehost/case_host.h"
#include "live/case.h"
#include "support/host_script.h"

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

    using Fail = std::function<void(const std::string&)>;

    World(Dice& dice, Fail fail);
    ~World();
    World(const World&) = delete;
    World& operator=(const World&) = delete;

    // Whether the module has a host now, and how often it lost one.
    bool HasHost() const { return installed_; }
    int Removals() const { return removals_; }
    // It is being taken out right now: one case after the other ends.
    bool IsGoing() const { return is_going_; }
    HostScript& Script() { return *script_; }

    // The cases that are open, by their numbers, which are never used again.
    std::vector<int> Cases() const;
    casehost::Case* Live(int case_number) const;
    bool IsOnline(int case_number) const;
    // Makes it the active one.
    void Activate(int case_number);

    const Thing& At(int number) const { return things_[static_cast<std::size_t>(number)]; }
    bool Lives(int number) const { return At(number).lives; }
    // One that lives in the case; -1 when there is none.
    int Any(int case_number, bool operation);
    // Where it stands among those of its kind in its flowsheet.
    int IndexOf(int number) const;
    bool HasName(int case_number, const std::string& name) const;
    std::size_t Count() const { return things_.size(); }

    // One event that may happen while clients are on the stack.
    void Disturb();
    // What the host does when none is: its loop, new hosts, the return of the present one.
    void Rest();
    void OpenCase();

 private:
    struct OpenedCase {
        int number;
        casehost::Case* live;
        bool online;
    };

    void NewHost();
    void TakeOut();
    void WatchTurns();
    void Close(std::size_t index);
    void Delete(OpenedCase& of);
    void Rename(OpenedCase& of);
    void Add(OpenedCase& of);
    void Replace(OpenedCase& of);
    void Move(OpenedCase& of);
    void AddNamed(OpenedCase& of, const std::string& name, int holder);
    void BuryThing(int number);
    int NewThing(int case_number, const std::string& name, int holder, bool operation);
    void Enter(OpenedCase& of, const casehost::CaseData& data);
    void Match(host::FlowSheet* sheet, int case_number, int holder);
    void BuryAll(const std::function<bool(const Thing&)>& of);
    casehost::ObjectData StreamOf(int number) const;
    casehost::ObjectData OperationOf(int number);
    std::string RandomName();

    Dice& dice_;
    Fail fail_;
    std::unique_ptr<casehost::CaseHost> host_;
    std::shared_ptr<HostScript> script_;
    bool installed_ = false;
    int removals_ = 0;
    bool is_going_ = false;
    int turns_ = 0;  // of the host's loop since the last Rest
    int next_case_ = 0;
    std::vector<OpenedCase> cases_;
    std::vector<Thing> things_;
    std::vector<int> living_;
};

}  // namespace fixtop::lifetimes
