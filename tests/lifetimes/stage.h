// SPDX-License-Identifier: Apache-2.0
#pragma once

// Plays scenes: sets one up, lets the event happen, uses the handles and compares what they answer
// with the tables.

#include <functional>
#include <map>
#include <memory>
#include <string>
#include <vector>

#include "lifetimes/client.h"
#include "lifetimes/plant.h"
#include "lifetimes/scene.h"

namespace fixtop::lifetimes {

struct Tally {
    long scenes = 0;
    long answers = 0;
    long failures = 0;
    long addresses_taken_again = 0;
};
Tally& TheTally();

// The scene that is being played, for whoever has to say where it ended.
const char* PresentScene();

// Plays the scenes that differ in their order alone, or a single one when `only` names one. Each
// failure is told as one line.
class Stage {
 public:
    using Tell = std::function<void(const std::string&)>;

    Stage(const Scene& scene, std::vector<int> orders, Tell tell);
    void Play();

 private:
    struct Player {
        int order;
        std::unique_ptr<Subject> subject;
        bool invalid_said = false;  // by the guard of a reference
        bool invalid_said_by_copy = false;
    };
    struct Before {
        std::string name, key, up, model_rows, read;
    };

    void SetUp();
    void Observe();
    void LetHappen();
    void Happen();
    void HappenInStore(bool own, bool solve);
    void HappenInCallback();
    void SecondClientLeaves();
    void Settle();
    void Leave();
    void MakeTruth();
    void Use(Player& player);
    void Ask(Player& player, Op op);
    void AskSubscriber(Player& player, Op op, bool used);
    void AskAtRelease(Player& player, bool used);
    bool MayHaveFoundOut(bool used) const;
    std::string Expected(Player& player, Op op);
    const std::string& Truth(Op op);
    std::string Guarded(Player& player, Op op);
    std::string StoreElsewhere();
    std::string GuardedRows(Player& player);
    bool IsToldAtOnce() const;
    int EndsTold(bool used) const;
    bool ListensStill() const;
    void Check(const Player& player, const char* what, const std::string& expected,
               const std::string& answer);
    bool Online() const { return scene_.moment != Moment::offline; }
    void GuardAgainstWaiting();

    Scene scene_;
    std::vector<int> orders_;
    Tell tell_;
    Fate fate_;
    Plant plant_;
    std::unique_ptr<Client> client_;
    std::unique_ptr<Client> second_client_;
    Ref<FIEntry> second_top_;
    Ref<FIReferenceBase> listener_;
    std::unique_ptr<Subject> twin_;
    std::unique_ptr<Subject> other_;
    std::unique_ptr<Client> fresh_client_;
    std::unique_ptr<Subject> fresh_;
    std::unique_ptr<Subject> peer_;
    std::map<Op, std::string> truths_;
    Before before_;
    std::vector<Player> players_;
    bool root_invalid_said_ = false;
    bool happened_ = false;
};

}  // namespace fixtop::lifetimes
