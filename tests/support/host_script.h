// SPDX-License-Identifier: Apache-2.0
#pragma once

// HostScript: what a test orders the case host to do against its nature: refuse stores, act in the
// middle of them and between them, never finish or fail a solve. It stands between the host and its
// clients as their store watch, and around the engines that compute its cases. An empty one changes
// nothing. Counts start at 1 with the next event after the order.

#include <functional>
#include <memory>
#include <string>
#include <utility>
#include <vector>

#include "casehost/case_host.h"

namespace fixtop {

class HostScript final : public casehost::StoreWatch,
                         public std::enable_shared_from_this<HostScript> {
 public:
    // Of the cases that `host` opens from now on; its engines are those it has a maker for now.
    static std::shared_ptr<HostScript> Over(casehost::CaseHost& host) {
        auto script = std::make_shared<HostScript>(host);
        host.SetStoreWatch(script);
        if (casehost::EngineMaker maker = host.GetEngineMaker()) {
            host.SetEngineMaker([script, maker] { return script->Around(maker()); });
        }
        return script;
    }
    explicit HostScript(casehost::CaseHost& host) : host_(host) {}

    // The nth store is refused silently; 0 refuses all until RefuseStore(-1) is given.
    void RefuseStore(int nth) { refuse_at_ = nth > 0 ? stores_ + nth : nth; }
    // Runs in the middle of the nth store, after it was found allowed and before it takes effect.
    void InStore(int nth, std::function<void()> action) {
        orders_.push_back({stores_ + nth, std::move(action)});
    }
    // Runs at the beginning of the kth turn of the host's loop.
    void AtTurn(int kth, std::function<void()> action) {
        if (kth == 1) return host_.Post(std::move(action));
        host_.Post([this, kth, action] { AtTurn(kth - 1, action); });
    }
    // Solves go on until they are stopped.
    void NeverFinishSolve(bool on) { never_finish_ = on; }
    // Every solve ends without success and with this message; an empty one ends the order.
    void FailSolve(std::string message) { solve_failure_ = std::move(message); }
    // An engine that follows these orders and else does what `engine` does.
    std::unique_ptr<casehost::SolveEngine> Around(std::unique_ptr<casehost::SolveEngine> engine) {
        return std::make_unique<Engine>(shared_from_this(), std::move(engine));
    }

    bool MayStore() override { return ++stores_, refuse_at_ != 0 && refuse_at_ != stores_; }
    // An action may give further orders or cause further stores, so each is taken out first.
    void InStore() override {
        const int now = stores_;
        for (std::size_t i = 0; i < orders_.size();) {
            if (orders_[i].at != now) {
                ++i;
                continue;
            }
            const std::function<void()> action = std::move(orders_[i].action);
            orders_.erase(orders_.begin() + static_cast<std::ptrdiff_t>(i));
            action();
            i = 0;
        }
    }

 private:
    struct Order {
        int at;
        std::function<void()> action;
    };

    class Engine final : public casehost::SolveEngine {
     public:
        Engine(std::shared_ptr<HostScript> script, std::unique_ptr<SolveEngine> engine)
            : script_(std::move(script)), engine_(std::move(engine)) {}

        Outcome Prepare(const casehost::CaseData& problem) override {
            return engine_->Prepare(problem);
        }
        Outcome Step(int turn) override {
            if (!script_->solve_failure_.empty())
                return {Progress::failed, script_->solve_failure_};
            if (script_->never_finish_) return {Progress::running, ""};
            return engine_->Step(turn);
        }
        const casehost::CaseData& Results() const override { return engine_->Results(); }

     private:
        std::shared_ptr<HostScript> script_;
        std::unique_ptr<SolveEngine> engine_;
    };

    casehost::CaseHost& host_;
    int stores_ = 0;
    int refuse_at_ = -1;
    bool never_finish_ = false;
    std::string solve_failure_;
    std::vector<Order> orders_;
};

}  // namespace fixtop
