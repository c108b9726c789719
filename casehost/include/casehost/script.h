#pragma once

// Script: what a test orders the host to do against its nature. One script serves a host and all
// its cases; an empty one changes nothing. Counts start at 1 with the next event after the order.

#include <cstdint>
#include <functional>
#include <string>
#include <vector>

namespace fixtop::casehost {

class Script {
 public:
    // Operations that can be told to answer null, empty or the empty real.
    enum class Answer : unsigned {
        variable_names,
        variable_row,
        variable_owner,
        variable_enum,
        real_value,
        text_value,
        attachment,
        dimensions,
        variable_status,
        owner,
        spec_source,
        sub_flowsheet,
        solver,
        active_solver,
        basis,
        reactions,
        data_tables,
        utilities,
        online_manager,
        active_case,
        app_form,
        default_unit,
        find_unit,
        variable_info,
        moniker,
    };

    void ReturnNothing(Answer answer, bool on = true) {
        const std::uint64_t bit = std::uint64_t{1} << static_cast<unsigned>(answer);
        blank_ = on ? blank_ | bit : blank_ & ~bit;
    }
    bool Blank(Answer answer) const { return blank_ >> static_cast<unsigned>(answer) & 1; }

    // The nth store is refused silently; 0 refuses all until RefuseStore(-1) is given.
    void RefuseStore(int nth) { refuse_at_ = nth > 0 ? stores_ + nth : nth; }
    // Runs in the middle of the nth store, after it was found allowed and before it takes effect.
    void InStore(int nth, std::function<void()> action) {
        in_store_.push_back({stores_ + nth, std::move(action)});
    }
    // Runs at the beginning of the kth turn of the host's loop.
    void AtTurn(int kth, std::function<void()> action) {
        at_turn_.push_back({turns_ + kth, std::move(action)});
    }
    // Solves go on until they are stopped.
    void NeverFinishSolve(bool on) { never_finish_ = on; }
    bool NeverFinishes() const { return never_finish_; }
    // Every solve ends without success and with this message; an empty one ends the order.
    void FailSolve(std::string message) { solve_failure_ = std::move(message); }
    const std::string& SolveFailure() const { return solve_failure_; }
    // Turns between SolveTask and the first turn of the solve: 1 or 2.
    void TurnsToBegin(int turns) { turns_to_begin_ = turns; }
    int TurnsToBegin() const { return turns_to_begin_; }

    // For the host: counts a store and answers whether it may go on; then runs what was ordered for
    // its middle. The second is called only when the first answered true.
    bool AllowStore() {
        ++stores_;
        return refuse_at_ != 0 && refuse_at_ != stores_;
    }
    void RunInStore() { RunDue(in_store_, stores_); }
    void RunAtTurn() { RunDue(at_turn_, ++turns_); }

 private:
    struct Order {
        int at;
        std::function<void()> action;
    };

    // An action may give further orders or cause further events, so each is taken out first.
    static void RunDue(std::vector<Order>& orders, int now) {
        for (std::size_t i = 0; i < orders.size();) {
            if (orders[i].at != now) {
                ++i;
                continue;
            }
            const std::function<void()> action = std::move(orders[i].action);
            orders.erase(orders.begin() + static_cast<std::ptrdiff_t>(i));
            action();
            i = 0;
        }
    }

    std::uint64_t blank_ = 0;
    int stores_ = 0;
    int turns_ = 0;
    int refuse_at_ = -1;
    bool never_finish_ = false;
    int turns_to_begin_ = 1;
    std::string solve_failure_;
    std::vector<Order> in_store_;
    std::vector<Order> at_turn_;
};

}  // namespace fixtop::casehost
