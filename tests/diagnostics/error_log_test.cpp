// SPDX-License-Identifier: Apache-2.0
#include "diagnostics/error_log.h"
#include "diagnostics/module_log.h"

#include <gmock/gmock.h>
#include <gtest/gtest.h>

#include <ctime>
#include <string>
#include <vector>

#include "support/temporary_folder.h"

namespace fixtop {

namespace {

// The text behind the header line and its blank line; fails when there is no header.
std::string AfterHeader(const std::string& text) {
    const std::size_t end = text.find("\n\n");
    EXPECT_EQ(text.substr(0, 15), " FI Error Log, ") << text;
    if (end == std::string::npos) return "no header";
    return text.substr(end + 2);
}

TEST(ErrorLog, first_message_creates_the_default_file_with_a_header) {
    const TemporaryFolder folder;
    ErrorLog log;
    EXPECT_FALSE(folder.Has("QSIErrors.log"));
    log.Message("one");
    EXPECT_EQ(AfterHeader(folder.Read("QSIErrors.log")), " one\n");
    log.Message("two");
    EXPECT_EQ(AfterHeader(folder.Read("QSIErrors.log")), " one\n two\n");
}

// The file is held for no longer than a line takes, so one that was taken away begins again.
TEST(ErrorLog, each_line_opens_the_file_anew) {
    const TemporaryFolder folder;
    ErrorLog log;
    log.Message("one");
    std::filesystem::remove(folder.File("QSIErrors.log"));
    log.Message("two");
    EXPECT_EQ(folder.Read("QSIErrors.log"), " two\n") << "the header came with the first line";
    folder.Write("QSIErrors.log", "of another program\n");
    log.Message("three");
    EXPECT_EQ(folder.Read("QSIErrors.log"), "of another program\n three\n");
}

TEST(ErrorLog, header_has_time_then_date) {
    const TemporaryFolder folder;
    ErrorLog log;
    const std::time_t before = std::time(nullptr);
    log.Open("x.log");
    std::tm day = *std::localtime(&before);
    int hour, minute, second, month, date, year, read = 0;
    const std::string text = folder.Read("x.log");
    EXPECT_EQ(std::sscanf(text.c_str(), " FI Error Log, %2d:%2d:%2d, %2d/%2d/%2d\n\n%n", &hour,
                          &minute, &second, &month, &date, &year, &read),
              6)
        << text;
    EXPECT_EQ(text.size(), std::string(" FI Error Log, HH:MM:SS, MM/DD/YY\n\n").size());
    day.tm_hour = hour;
    day.tm_min = minute;
    day.tm_sec = second;
    day.tm_mon = month - 1;
    day.tm_mday = date;
    day.tm_year = year + 100;
    EXPECT_NEAR(std::difftime(std::mktime(&day), before), 0, 5) << text;
}

TEST(ErrorLog, naming_the_file_writes_nothing) {
    const TemporaryFolder folder;
    ErrorLog log;
    log.SetFile("own.log");
    EXPECT_FALSE(folder.Has("own.log"));
    log.Message("one");
    EXPECT_EQ(AfterHeader(folder.Read("own.log")), " one\n");
    EXPECT_FALSE(folder.Has("QSIErrors.log"));
}

TEST(ErrorLog, first_message_empties_a_former_file) {
    const TemporaryFolder folder;
    folder.Write("own.log", "of an earlier run\n");
    ErrorLog log;
    log.SetFile("own.log");
    EXPECT_EQ(folder.Read("own.log"), "of an earlier run\n");
    log.Message("one");
    EXPECT_EQ(AfterHeader(folder.Read("own.log")), " one\n");
}

TEST(ErrorLog, opening_truncates) {
    const TemporaryFolder folder;
    ErrorLog log;
    log.SetFile("own.log");
    log.Message("one");
    log.Open(nullptr);
    EXPECT_EQ(AfterHeader(folder.Read("own.log")), "");
    log.Message("two");
    log.Open("");
    log.Message("three");
    EXPECT_EQ(AfterHeader(folder.Read("own.log")), " three\n");
    log.Open("other.log");
    log.Message("four");
    EXPECT_EQ(AfterHeader(folder.Read("own.log")), " three\n");
    EXPECT_EQ(AfterHeader(folder.Read("other.log")), " four\n");
}

TEST(ErrorLog, empty_name_means_the_default) {
    for (const char* name : {"", static_cast<const char*>(nullptr)}) {
        const TemporaryFolder folder;
        ErrorLog log;
        log.SetFile(name);
        log.Message("one");
        EXPECT_EQ(AfterHeader(folder.Read("QSIErrors.log")), " one\n");
    }
}

TEST(ErrorLog, level_decides) {
    struct {
        int log_level, level;
        bool written;
    } rows[] = {{5, 4, true}, {5, 5, true},  {5, 6, false},
                {7, 7, true}, {7, 8, false}, {0, 1, false}};
    for (const auto& row : rows) {
        const TemporaryFolder folder;
        ErrorLog log;
        EXPECT_EQ(log.SetLevel(row.log_level), 5);
        EXPECT_EQ(log.SetLevel(row.log_level), row.log_level);
        log.AtLevel("text", row.level);
        EXPECT_EQ(folder.Has("QSIErrors.log"), row.written) << row.log_level << " " << row.level;
    }
}

TEST(ErrorLog, default_level_is_five) {
    const TemporaryFolder folder;
    ErrorLog log;
    log.AtLevel("six", 6);
    EXPECT_FALSE(folder.Has("QSIErrors.log"));
    log.AtLevel("five", 5);
    EXPECT_EQ(AfterHeader(folder.Read("QSIErrors.log")), " five\n");
}

TEST(ErrorLog, naming_a_file_after_opening_starts_a_new_log) {
    const TemporaryFolder folder;
    ErrorLog log;
    log.SetFile("a.log");
    log.SetLevel(9);
    log.SetFile("b.log");
    EXPECT_EQ(log.SetLevel(9), 9) << "not opened yet: the level stays";
    log.Open("b.log");
    log.SetFile("c.log");
    EXPECT_EQ(log.SetLevel(7), 5) << "the first call after opening resets the level";
    log.SetFile("c.log");
    EXPECT_EQ(log.SetLevel(7), 7) << "the second does not";
    log.Message("one");
    EXPECT_EQ(AfterHeader(folder.Read("c.log")), " one\n");
    EXPECT_EQ(AfterHeader(folder.Read("b.log")), "");
}

TEST(ErrorLog, file_that_cannot_be_opened_is_passed_over) {
    const TemporaryFolder folder;
    ErrorLog log;
    log.SetFile("no such folder/x.log");
    log.Message("lost");
    log.Message(nullptr);
    log.SetFile("x.log");
    log.Message(nullptr);
    EXPECT_EQ(AfterHeader(folder.Read("x.log")), " \n");
}

TEST(ErrorLog, listener_is_told_what_is_written) {
    const TemporaryFolder folder;
    ErrorLog log;
    std::vector<std::string> told;
    const LogListener note = [](void* owner, const char* text) {
        static_cast<std::vector<std::string>*>(owner)->push_back(text);
    };
    log.Message("before");
    log.SetListener(note, &told);
    log.Message("one");
    log.AtLevel("six", 6);
    log.AtLevel("five", 5);
    log.Message(nullptr);
    log.SetFile("no such folder/x.log");
    log.Message("lost in the file alone");
    log.SetListener(nullptr, &told);
    log.Message("after");
    EXPECT_EQ(told, (std::vector<std::string>{"one", "five", "", "lost in the file alone"}));
}

TEST(ErrorLog, file_names_are_utf8) {
    const TemporaryFolder folder;
    const std::string name = "Str\u00f6me \u6d41.log";
    ErrorLog log;
    log.Open(name.c_str());
    log.Message("one");
    std::ifstream file(std::filesystem::path(std::u8string(name.begin(), name.end())));
    EXPECT_EQ(AfterHeader({std::istreambuf_iterator<char>(file), {}}), " one\n");
}

TEST(ErrorLog, module_functions_drive_the_module_log) {
    const TemporaryFolder folder;
    SetLogFile("module.log");
    EXPECT_EQ(SetLogLevel(6), 5);
    LogAtLevel("six", 6);
    LogAtLevel("seven", 7);
    LogMessage("always");
    EXPECT_EQ(AfterHeader(folder.Read("module.log")), " six\n always\n");
    OpenErrorLog("again.log");
    LogMessage("x");
    EXPECT_EQ(AfterHeader(folder.Read("again.log")), " x\n");
    SetLogFile(nullptr);
}

TEST(LogAndTell, line_goes_to_standard_error_too) {
    const TemporaryFolder folder;
    OpenErrorLog("told.log");
    testing::internal::CaptureStderr();
    LogAndTell("Gr\u00f6\u00dfe\x1b[1m\n\u009b\u00a0end\x7f\xc2");
    EXPECT_EQ("Gr\u00f6\u00dfe?[1m??\u00a0end?\xc2\n", testing::internal::GetCapturedStderr());
    EXPECT_EQ(AfterHeader(folder.Read("told.log")),
              " Gr\u00f6\u00dfe\x1b[1m\n\u009b\u00a0end\x7f\xc2\n");
}

}  // namespace

}  // namespace fixtop
