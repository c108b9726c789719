// SPDX-License-Identifier: Apache-2.0
// What the objects of a case answer while it is being solved: the process's turns are the test's,
// and so a call comes in just where the solve lets calls in.

#include <gtest/gtest.h>

#include <utility>

#include "fixtop/value.h"
#include "objects/case_object.h"
#include "process_life.h"

namespace fixtop::hovex {

namespace {

std::vector<std::function<void()>> posted;
// Called at every turn of a solve.
std::function<void()> at_turn;

}  // namespace

void ProcessLife::Begin() {}
void ProcessLife::End() {}
void ProcessLife::Post(std::function<void()> work) {
    posted.push_back(std::move(work));
}
bool ProcessLife::LetCallsIn() {
    if (at_turn) at_turn();
    return true;
}

namespace {

constexpr char kRunning[] = "the solver is running: call Stop, or wait until IsRunning is False";

std::string Narrow(const wchar_t* text) {
    return text ? std::string(text, text + SysStringLen(const_cast<BSTR>(text))) : "";
}

std::wstring Wide(const std::string& text) {
    return {text.begin(), text.end()};
}

ScriptValue Text(const char* text) {
    return ScriptValue::Of(std::string(text));
}

// An object as a script holds it; each call answers its value, and keeps the text of its error.
class Held {
 public:
    explicit Held(ScriptValue value) : value_(std::move(value)) {}

    template <class... Arguments>
    ScriptValue Get(const std::string& name, Arguments... arguments) {
        return Run(DISPATCH_METHOD | DISPATCH_PROPERTYGET, name, std::move(arguments)...);
    }
    template <class Argument>
    void Put(const std::string& name, Argument argument) {
        Run(DISPATCH_PROPERTYPUT, name, std::move(argument));
    }
    template <class... Arguments>
    Held Object(const std::string& name, Arguments... arguments) {
        Held object(Get(name, std::move(arguments)...));
        EXPECT_EQ(object.value_.Get().vt, VT_DISPATCH) << name << ": " << problem;
        return object;
    }

    std::string problem;

 private:
    template <class... Arguments>
    ScriptValue Run(WORD flags, const std::string& name, Arguments... arguments) {
        // Arguments stand from the last to the first.
        std::vector<VARIANT> given;
        (given.insert(given.begin(), arguments.Get()), ...);
        return Call(flags, name, given);
    }
    ScriptValue Call(WORD flags, const std::string& name, std::vector<VARIANT>& given) {
        IDispatch* object = value_.Get().pdispVal;
        std::wstring wide = Wide(name);
        LPOLESTR names = wide.data();
        DISPID id = DISPID_UNKNOWN;
        EXPECT_HRESULT_SUCCEEDED(object->GetIDsOfNames(IID_NULL, &names, 1, 0, &id)) << name;
        DISPID stored = DISPID_PROPERTYPUT;
        const bool stores = flags == DISPATCH_PROPERTYPUT;
        DISPPARAMS params = {given.data(), stores ? &stored : nullptr,
                             static_cast<UINT>(given.size()), stores ? 1U : 0U};
        VARIANT answer;
        VariantInit(&answer);
        EXCEPINFO told = {};
        const HRESULT code =
            object->Invoke(id, IID_NULL, 0, flags, &params, &answer, &told, nullptr);
        problem = FAILED(code) ? Narrow(told.bstrDescription) : "";
        EXPECT_TRUE(SUCCEEDED(code) || code == DISP_E_EXCEPTION) << name << ' ' << code;
        SysFreeString(told.bstrSource);
        SysFreeString(told.bstrDescription);
        return ScriptValue(answer);
    }

    ScriptValue value_;
};

class Busy : public testing::Test {
 protected:
    Busy() {
        c.Get("Open", Text("demo"));
        flow.emplace(
            c.Object("Find", Text("appModel.FlowSheetObjects.Streams.Raw Gas.Molar Flow")));
        solver.emplace(c.Object("Solver"));
        chosen.emplace(c.Object("Collect"));
        gas.emplace(c.Object("Find", Text("appModel.FlowSheetObjects.Streams.Raw Gas")));
        solver->Put("SolvesOnStore", ScriptValue::Of(false));
        chosen->Get("Add", Text("appModel.FlowSheetObjects.Streams.Raw Gas.Molar Flow"));
        before = Flow();
        flow->Get("SetValue", ScriptValue::Of(1200.0), Text("kgmole/h"));
        EXPECT_EQ(flow->problem, "");
    }
    ~Busy() override {
        at_turn = nullptr;
        posted.clear();
    }

    double Flow() {
        const ScriptValue value = flow->Get("ValueIn", Text("kgmole/h"));
        return value.Get().vt == VT_R8 ? value.Get().dblVal : -1;
    }
    bool Is(Held& object, const char* name) {
        return object.Get(name).Get().boolVal != VARIANT_FALSE;
    }
    static void RunPosted() {
        for (const auto& work : std::exchange(posted, {})) work();
    }

    Held c{ScriptValue::Object(new CaseObject)};
    std::optional<Held> flow, gas, solver, chosen;
    double before = 0;
};

TEST_F(Busy, WhateverChangesTheCaseIsRefusedWhileASolveRuns) {
    int turns = 0;
    at_turn = [&] {
        if (++turns > 1) return;
        const auto refused = [](Held& object, const char* what) {
            EXPECT_EQ(object.problem, kRunning) << what;
        };
        flow->Get("SetValue", ScriptValue::Of(1.0), Text("kgmole/h"));
        refused(*flow, "SetValue");
        flow->Put("Value", ScriptValue::Of(1.0));
        refused(*flow, "Value");
        gas->Put("Molar Flow", ScriptValue::Of(1.0));
        refused(*gas, "a member");
        std::vector<ScriptValue> values;
        values.push_back(ScriptValue::Of(1.0));
        chosen->Get("Write", ScriptValue::Array(std::move(values)));
        refused(*chosen, "Write");
        solver->Put("SolvesOnStore", ScriptValue::Of(true));
        refused(*solver, "SolvesOnStore");
        c.Get("Save", Text("never_written.json"));
        refused(c, "Save");
        c.Get("Open", Text("demo"));
        refused(c, "Open");
        c.Get("Close");
        refused(c, "Close");
        solver->Get("Start");
        refused(*solver, "Start");
        c.Get("Solve");
        refused(c, "Solve");
    };
    EXPECT_TRUE(Is(c, "Solve"));
    EXPECT_GE(turns, 1);
    EXPECT_TRUE(Is(c, "IsOpen"));
    EXPECT_FALSE(Is(*solver, "SolvesOnStore"));
    EXPECT_EQ(Flow(), 1200);
}

TEST_F(Busy, ReadsAreAnsweredWhileASolveRuns) {
    double read = 0;
    bool running = false;
    bool complete = true;
    at_turn = [&] {
        read = Flow();
        running = Is(*solver, "IsRunning");
        complete = Is(*solver, "IsComplete");
    };
    EXPECT_TRUE(Is(c, "Solve"));
    EXPECT_EQ(read, 1200);
    EXPECT_TRUE(running);
    EXPECT_FALSE(complete);
    EXPECT_FALSE(Is(*solver, "IsRunning"));
    EXPECT_TRUE(Is(*solver, "IsComplete"));
}

TEST_F(Busy, SolveThatIsStartedRunsOnceTheCallerIsGone) {
    solver->Get("Start");
    EXPECT_TRUE(Is(*solver, "IsRunning"));
    flow->Get("SetValue", ScriptValue::Of(1.0), Text("kgmole/h"));
    EXPECT_EQ(flow->problem, kRunning);
    RunPosted();
    EXPECT_FALSE(Is(*solver, "IsRunning"));
    EXPECT_TRUE(Is(*solver, "IsComplete"));
}

TEST_F(Busy, StopEndsASolveAtItsNextTurn) {
    at_turn = [&] {
        solver->Get("Stop");
        EXPECT_EQ(solver->problem, "");
    };
    EXPECT_FALSE(Is(c, "Solve"));
    EXPECT_FALSE(Is(*solver, "IsRunning"));
    EXPECT_FALSE(Is(*solver, "IsComplete"));
    at_turn = nullptr;
    flow->Get("SetValue", ScriptValue::Of(before), Text("kgmole/h"));
    EXPECT_EQ(flow->problem, "");
    EXPECT_EQ(Flow(), before);
    EXPECT_TRUE(Is(c, "Solve"));
}

}  // namespace

}  // namespace fixtop::hovex
