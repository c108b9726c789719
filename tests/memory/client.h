// SPDX-License-Identifier: Apache-2.0
#pragma once

// A client of the module whose calls are those that memory runs out in. What the calls answer is
// kept as text; what the client itself needs to ask and to note is never denied.

#include <exception>
#include <memory>
#include <string>
#include <type_traits>

#include "casehost/case_host.h"
#include "fixtop/fixtop.h"
#include "lifetimes/plant_data.h"
#include "lifetimes/scene_files.h"
#include "live/case.h"
#include "memory/failing_memory.h"

namespace fixtop::memory_test {

class Client {
 public:
    // Calls the module; an exception that comes out is noted and answers nothing.
    template <class Call>
    auto In(Call call) -> decltype(call()) {
        using Answer = decltype(call());
        try {
            const failing_memory::Counting counting;
            return call();
        } catch (const std::exception& error) {
            escaped_ += std::string("an exception left the module: ") + error.what() + "\n";
        }
        if constexpr (!std::is_void_v<Answer>) return Answer{};
    }
    // The same for an operation that hands out an object.
    template <class Call>
    auto Take(Call call) {
        return Ref<std::remove_pointer_t<decltype(call())>>::Adopt(In(call));
    }
    // An object is let go of in the module too.
    template <class T>
    void Drop(Ref<T>& object) {
        In([&] { object.Reset(); });
    }

    void Tell(const std::string& text) { told_ += text + "\n"; }
    void Tell(bool answer) { Tell(std::string(answer ? "true" : "false")); }
    void Tell(int answer) { Tell(std::to_string(answer)); }
    void Tell(const FIValue& value) { Tell(value.IsNull() ? "NULL" : value.ToText()); }
    // What a call that puts its answer into a value puts there.
    template <class Call>
    void TellOut(Call call) {
        FIValue out;
        In([&] { call(out); });
        Tell(out);
    }
    template <class Call>
    void TellAnswer(Call call) {
        Tell(In(call));
    }

    const std::string& Told() const { return told_; }
    const std::string& Escaped() const { return escaped_; }

 private:
    std::string told_;
    std::string escaped_;
};

// The host with its case, which it can solve.
class World {
 public:
    World();
    ~World() { FixtopInstallHost(nullptr); }
    World(const World&) = delete;
    World& operator=(const World&) = delete;

    casehost::CaseHost& Host() { return host_; }
    casehost::Case& Open() { return *case_; }
    // Renames a stream, of which everybody who wants to is told.
    void RenameStream(const std::string& name, const std::string& to);
    // What the case calls to tell of its changes; null when nobody wants to hear.
    host::IModelCallback* Callback() { return case_->OnlineManager()->ModelCallback(); }

 private:
    casehost::CaseHost host_;
    casehost::Case* case_;
};

struct Scenario {
    const char* name;
    void (*play)(World& world, Client& client);
};
// All of them.
const std::vector<Scenario>& Scenarios();
// One that has a file of its own.
void Automate(World& world, Client& client);

}  // namespace fixtop::memory_test
