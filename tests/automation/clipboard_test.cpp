// SPDX-License-Identifier: Apache-2.0
// Selections that another process has put on the clipboard.

#include <gtest/gtest.h>

#include <atomic>
#include <thread>

#include "automation/objects.h"
#include "automation/other_thread.h"
#include "casehost/standard_host.h"
#include "front/open_module.h"
#include "support/temporary_folder.h"

// The system's headers come last: they rename functions of common names.
#include <windows.h>
// The component services follow the base header.
#include <ole2.h>

namespace fixtop {

namespace {

const std::string kPath = "Top.appModel.FlowSheetObjects.Streams.\"Raw Gas\".Temperature";

std::string Selection(const std::string& items) {
    return "<Selection><Items>" + items + "</Items></Selection>";
}

std::string Item(const std::string& path) {
    return "<Item><Path>" + path + "</Path></Item>";
}

// Runs the program that writes to the clipboard; its exit status.
int RunWriter(const std::string& arguments) {
    std::string line = "\"" FIXTOP_CLIPBOARD_WRITER "\" " + arguments;
    STARTUPINFOA start = {};
    start.cb = sizeof start;
    PROCESS_INFORMATION process = {};
    if (!CreateProcessA(nullptr, line.data(), nullptr, nullptr, FALSE, 0, nullptr, nullptr, &start,
                        &process)) {
        return -1;
    }
    DWORD status = 0;
    WaitForSingleObject(process.hProcess, INFINITE);
    GetExitCodeProcess(process.hProcess, &status);
    CloseHandle(process.hThread);
    CloseHandle(process.hProcess);
    return static_cast<int>(status);
}

// With the way of the system's components, and with the plain one.
class Clipboard : public HostedModule, public testing::WithParamInterface<bool> {
 protected:
    void SetUp() override {
        if (GetParam()) {
            ASSERT_EQ(S_OK, OleInitialize(nullptr));
        }
        casehost::UseStandardParts(host_);
        ASSERT_TRUE(casehost::OpenCase(host_, "demo"));
        HostedModule::SetUp();
        node_ = Ref<IQSINode>::Adopt(static_cast<IQSINode*>(GetQSINode(nullptr, nullptr)));
    }
    void TearDown() override {
        node_.Reset();
        HostedModule::TearDown();
        if (GetParam()) OleUninitialize();
    }
    void Put(const std::string& bytes, const std::string& format = "") {
        folder_.Write("clip", bytes);
        ASSERT_EQ(0, RunWriter("clip" + (format.empty() ? format : " \"" + format + "\"")));
    }
    HRESULT Refuse() {
        return Refused<IQSICollection>(
            [&](IQSICollection** out) { return PasteCollection(node_.Get(), out); });
    }
    // The values of what is pasted.
    std::vector<double> Paste() {
        const auto pasted = Take<IQSICollection>(
            [&](IQSICollection** out) { return PasteCollection(node_.Get(), out); });
        if (!pasted) return {};
        EXPECT_EQ(1u, CountOf(*pasted));
        std::int32_t count = 0;
        double* values = nullptr;
        EXPECT_EQ(kResultOk, pasted->GetValues(&count, &values));
        std::vector<double> read(values, values + count);
        FreeAsClient(values);
        return read;
    }

    TemporaryFolder folder_;
    Ref<IQSINode> node_;
};

TEST_P(Clipboard, selection_of_another_process_is_pasted) {
    Put(Selection(Item(kPath)));
    EXPECT_EQ(std::vector<double>({30}), Paste());
    EXPECT_EQ(std::vector<double>({30}), Paste()) << "it is still there";
}

TEST_P(Clipboard, text_may_end_with_zero_and_with_more_behind_it) {
    const std::string text = Selection(Item(kPath) + Item("Top.nowhere") + Item(kPath));
    Put(text + '\0');
    EXPECT_EQ(std::vector<double>({30}), Paste());
    Put(text + '\0' + "anything");
    EXPECT_EQ(std::vector<double>({30}), Paste());
}

TEST_P(Clipboard, empty_clipboard_gives_nothing) {
    ASSERT_EQ(0, RunWriter(""));
    EXPECT_EQ(kResultFalse, Refuse());
    Put(Selection(Item(kPath)), "Another Format");
    EXPECT_EQ(kResultFalse, Refuse());
    Put(Selection(Item(kPath)));
    EXPECT_EQ(std::vector<double>({30}), Paste());
}

TEST_P(Clipboard, text_that_is_no_selection_is_refused) {
    for (const std::string& text :
         {std::string("\0", 1), std::string("x"), std::string("<Selection>"),
          std::string("<Other/>"), Selection(Item(kPath)).substr(1)}) {
        Put(text);
        EXPECT_EQ(kResultFail, Refuse()) << text;
    }
    EXPECT_EQ("Top", PathOf(*node_));
}

TEST_P(Clipboard, ten_megabytes_are_pasted) {
    // Most paths lead nowhere, which is told soon.
    const std::string item = Item("Top." + std::string(1000, 'x'));
    std::string items = Item(kPath);
    while (items.size() < 10 << 20) items += item;
    Put(Selection(items));
    EXPECT_EQ(std::vector<double>({30}), Paste());
}

TEST_P(Clipboard, what_is_no_node_is_refused) {
    Put(Selection(Item(kPath)));
    EXPECT_EQ(kResultPointer, PasteCollection(node_.Get(), nullptr));
    EXPECT_EQ(kResultPointer, Refused<IQSICollection>([&](IQSICollection** out) {
                  return PasteCollection(nullptr, out);
              }));
    EXPECT_EQ(kResultWrongThread, OnOtherThread([&] {
                  IQSICollection* out = nullptr;
                  return PasteCollection(node_.Get(), &out);
              }));
}

TEST_P(Clipboard, one_that_another_keeps_open_gives_nothing_in_the_plain_way) {
    Put(Selection(Item(kPath)));
    if (GetParam()) GTEST_SKIP() << "the components have a copy of their own";
    // Whoever has it open is a thread of the system's, not a program.
    std::atomic<int> state{0};
    std::thread keeper([&] {
        const HWND window =
            CreateWindowA("STATIC", "", 0, 0, 0, 0, 0, HWND_MESSAGE, nullptr, nullptr, nullptr);
        state = OpenClipboard(window) ? 1 : -1;
        while (state == 1) Sleep(1);
        CloseClipboard();
        DestroyWindow(window);
    });
    while (state == 0) Sleep(1);
    EXPECT_EQ(1, state);
    EXPECT_EQ(kResultFalse, Refuse());
    state = 2;
    keeper.join();
    EXPECT_EQ(std::vector<double>({30}), Paste());
}

INSTANTIATE_TEST_SUITE_P(Ways, Clipboard, testing::Bool(), [](const auto& way) {
    return way.param ? std::string("components") : std::string("plain");
});

}  // namespace

}  // namespace fixtop
