// SPDX-License-Identifier: Apache-2.0
#include "lifetimes/soak_world.h"

#include <algorithm>
#include <utility>

#include "fixtop/fixtop.h"

namespace fixtop::lifetimes {

void World::Start() {
    MakeHost();
    FixtopInstallHost(&Services());
    installed_ = true;
    Refill();
}

void World::TakeOut() {
    if (!installed_) return;
    const Change change(*this, -1);
    // Who is told of it looks here.
    installed_ = false;
    ++removals_;
    is_going_ = true;
    FixtopInstallHost(nullptr);
    is_going_ = false;
}

void World::Rest() {
    RunLoop();
    if (!installed_) {
        if (dice_.OneIn(2)) {
            FixtopInstallHost(&Services());
            installed_ = true;
        } else {
            BuryAll([](const Thing&) { return true; });
            Forget();
            Start();
        }
    }
    Refill();
}

int World::Any(int case_number, bool operation) {
    int found = -1;
    int seen = 0;
    for (int number : living_) {
        const Thing& each = At(number);
        const bool fits = each.case_number == case_number && each.is_operation == operation;
        // One that is just being added has no object yet.
        if (fits && each.object && dice_.OneIn(++seen)) found = number;
    }
    return found;
}

bool World::HasName(int case_number, const std::string& name) const {
    return std::any_of(living_.begin(), living_.end(), [&](int number) {
        return At(number).case_number == case_number && At(number).name == name;
    });
}

std::string World::HolderName(int number) const {
    const int holder = At(number).holder;
    return holder < 0 ? std::string() : At(holder).name;
}

int World::Find(int case_number, const std::string& holder, const std::string& name,
                bool operation) const {
    const auto is_it = [&](int number) {
        const Thing& each = At(number);
        return each.case_number == case_number && each.is_operation == operation &&
               each.name == name && HolderName(number) == holder;
    };
    const auto found = std::find_if(living_.begin(), living_.end(), is_it);
    return found == living_.end() ? -1 : *found;
}

int World::IndexOf(int number) const {
    const Thing& thing = At(number);
    host::FlowSheet* sheet = thing.holder < 0 ? Live(thing.case_number)->MainFlowSheet()
                                              : At(thing.holder).object->SubFlowSheet();
    int index = 0;
    host::FlowSheetObjectIterator it = sheet->Objects();
    for (host::Viewable* each = it.Reset(); each && each != thing.object; each = it.Next()) {
        if (each->Type() == thing.object->Type()) ++index;
    }
    return index;
}

std::string World::RandomName() {
    return std::string(1, static_cast<char>('A' + dice_.Roll(12)));
}

int World::NewThing(int case_number, const std::string& name, int holder, bool operation) {
    things_.push_back({name, case_number, holder, operation, true, nullptr});
    living_.push_back(static_cast<int>(things_.size()) - 1);
    return living_.back();
}

void World::Unmake(std::size_t from) {
    things_.resize(from);
    std::erase_if(living_, [=](int each) { return each >= static_cast<int>(from); });
}

void World::Name(int number, const std::string& name) {
    things_[static_cast<std::size_t>(number)].name = name;
}

void World::Match(host::FlowSheet* sheet, int case_number, int holder) {
    host::FlowSheetObjectIterator it = sheet->Objects();
    for (host::Viewable* each = it.Reset(); each; each = it.Next()) {
        for (int number : living_) {
            Thing& thing = things_[static_cast<std::size_t>(number)];
            const bool here = thing.case_number == case_number && thing.holder == holder;
            if (!here || thing.object || thing.name != each->GetName().Str()) continue;
            thing.object = each;
            if (thing.is_operation) Match(each->SubFlowSheet(), case_number, number);
        }
    }
}

void World::BuryAll(const std::function<bool(const Thing&)>& of) {
    std::vector<int> left;
    for (int number : living_) {
        Thing& thing = things_[static_cast<std::size_t>(number)];
        thing.lives = !of(thing);
        if (thing.lives) left.push_back(number);
    }
    living_.swap(left);
}

void World::BuryThing(int number) {
    const host::Viewable* object = At(number).object;
    BuryAll([=](const Thing& each) { return each.object == object || each.holder == number; });
}

}  // namespace fixtop::lifetimes
