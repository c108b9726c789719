// SPDX-License-Identifier: Apache-2.0
// Drafts: the unfinished files beside the targets of saves, in use, left behind, or given up.

#include <gtest/gtest.h>

#include <algorithm>
#include <cstring>

#include "casehost/file_path.h"
#include "files/draft.h"
#include "saving_fixture.h"

#ifndef _WIN32
#include <sys/resource.h>
#include <sys/stat.h>
#include <sys/wait.h>
#include <unistd.h>

#include <csignal>
#include <functional>
#endif

namespace fixtop::casehost {
namespace {

using test::kOld;
using test::Names;

class Drafts : public test::Saving {};

std::error_code WriteWhole(files::NewFile& draft, std::string_view text) {
    const std::error_code error = draft.Append(text);
    return error ? error : draft.Sync();
}

TEST_F(Drafts, AnyNumberOfFilesBesideTheTargetHindersNobody) {
    for (int i = 0; i < 200; ++i) {
        folder_.Write("plant.json" + (i == 0 ? "" : "." + std::to_string(i)) + ".part", kOld);
    }
    EXPECT_TRUE(WriteCaseFile(test::SmallCase(), folder_.File("plant.json")));
    EXPECT_EQ(Found().size(), 201u);
}

TEST_F(Drafts, DraftsThatNobodyIsAtWorkOnAreRemovedByTheNextSave) {
    const Names others = {"other.json.0123456789ab.part",  "plant.json.0123456789aB.part",
                          "plant.json.0123456789ab.part2", "plant.json.0123456789abc.part",
                          "plant.json0123456789ab.part",   "xplant.json.0123456789ab.part"};
    for (const std::string& name : others) folder_.Write(name, kOld);
    folder_.Write("plant.json.0123456789ab.part", "half");
    folder_.Write("plant.json.ffffffffffff.part", "");
    std::filesystem::create_directory(folder_.File("plant.json.aaaaaaaaaaaa.part"));
    ASSERT_TRUE(WriteCaseFile(test::SmallCase(), folder_.File("plant.json")));
    Names expected = others;
    expected.insert(expected.end(), {"plant.json", "plant.json.aaaaaaaaaaaa.part"});
    std::sort(expected.begin(), expected.end());
    EXPECT_EQ(Found(), expected);
}

TEST_F(Drafts, DraftThatSomebodyIsAtWorkOnStays) {
    const std::filesystem::path target = folder_.File("plant.json");
    {
        files::NewFile other(target);
        ASSERT_FALSE(files::OpenDraft(other, target));
        EXPECT_EQ(Found().size(), 1u);
        ASSERT_TRUE(WriteCaseFile(test::SmallCase(), target.string()));
        EXPECT_EQ(Found().size(), 2u);
        ASSERT_FALSE(WriteWhole(other, "the last one"));
        ASSERT_FALSE(other.TakePlace());
        EXPECT_EQ(Found(), Names{"plant.json"});
        EXPECT_EQ(folder_.Read("plant.json"), "the last one");
    }
    EXPECT_EQ(folder_.Read("plant.json"), "the last one");
    {
        files::NewFile given_up(target);
        ASSERT_FALSE(files::OpenDraft(given_up, target));
        ASSERT_FALSE(WriteWhole(given_up, "never"));
    }
    EXPECT_EQ(Found(), Names{"plant.json"});
    EXPECT_EQ(folder_.Read("plant.json"), "the last one");
}

TEST_F(Drafts, NamesOfDraftsAreTheirOwnAndNoLongerThanNamesMayBe) {
    const auto size = [](const std::filesystem::path& path) { return path.native().size(); };
    const std::filesystem::path plain = files::NameDraft("a/plant.json");
    EXPECT_EQ(plain.parent_path(), "a");
    EXPECT_EQ(plain.filename().string().rfind("plant.json.", 0), 0u) << plain;
    EXPECT_EQ(plain.extension(), ".part");
    EXPECT_NE(plain, files::NameDraft("a/plant.json"));
    for (const std::size_t length : {90u, 100u, 101u, 255u}) {
        const std::string name(length, 'x');
        EXPECT_LE(size(files::NameDraft(name)), std::max<std::size_t>(length, 100u)) << length;
    }
    // Letters of two bytes are not cut in the middle.
    for (const char* first : {"", "x"}) {
        std::string name = first;
        while (name.size() < 250) name += "\xC3\xA4";
        const std::u8string draft = files::NameDraft(FilePath(name)).u8string();
        const std::string stem(draft.begin(), draft.begin() + draft.find(u8'.'));
        EXPECT_EQ(stem, name.substr(0, stem.size()));
        EXPECT_EQ(stem.size() % 2, *first ? 1u : 0u);
    }
}

// They are of others, or of one who is saving to the same file just now.
TEST_F(Drafts, FilesThatStandBesideTheTargetStay) {
    const std::string longer(1'000'000, 'x');
    folder_.Write("plant.json.part", longer);
    std::filesystem::create_directory(folder_.File("plant.json.1.part"));
    folder_.Write("plant.json.2.part", kOld);
    ASSERT_TRUE(WriteCaseFile(test::SmallCase(), folder_.File("plant.json")));
    EXPECT_EQ(folder_.Read("plant.json"), CaseToText(test::SmallCase()));
    EXPECT_EQ(folder_.Read("plant.json.part"), longer);
    EXPECT_EQ(folder_.Read("plant.json.2.part"), kOld);
    EXPECT_EQ(Found(),
              (Names{"plant.json", "plant.json.1.part", "plant.json.2.part", "plant.json.part"}));
}

#ifndef _WIN32

mode_t ModeOf(const std::filesystem::path& file) {
    struct stat found {};
    return stat(file.c_str(), &found) == 0 ? found.st_mode & 07777 : 0;
}

TEST_F(Drafts, LinkInTheWayOfTheDraftIsNotFollowed) {
    folder_.Write("other.txt", kOld);
    std::filesystem::create_symlink("other.txt", folder_.File("plant.json.0123456789ab.part"));
    std::filesystem::create_symlink("nowhere", folder_.File("plant.json.0123456789ac.part"));
    files::NewFile draft(folder_.File("plant.json"));
    for (const char* name : {"plant.json.0123456789ab.part", "plant.json.0123456789ac.part"}) {
        EXPECT_EQ(draft.Open(folder_.File(name)), std::errc::file_exists) << name;
    }
    ASSERT_TRUE(WriteCaseFile(test::SmallCase(), folder_.File("plant.json")));
    EXPECT_EQ(folder_.Read("other.txt"), kOld);
    EXPECT_EQ(Found(), (Names{"other.txt", "plant.json", "plant.json.0123456789ab.part",
                              "plant.json.0123456789ac.part"}));
}

TEST_F(Drafts, DraftIsItsMakersAloneUntilItTakesTheTargetsPlace) {
    const std::filesystem::path target = folder_.File("plant.json");
    const std::filesystem::path name = folder_.File("plant.json.0123456789ab.part");
    const mode_t umask_before = umask(0);
    for (const mode_t mode : {0600u, 0644u, 0660u, 0640u}) {
        folder_.Write("plant.json", kOld);
        ASSERT_EQ(chmod(target.c_str(), mode), 0);
        files::NewFile draft(target);
        ASSERT_FALSE(draft.Open(name));
        EXPECT_EQ(ModeOf(name), 0600u);
        ASSERT_FALSE(WriteWhole(draft, "new"));
        EXPECT_EQ(ModeOf(name), 0600u);
        ASSERT_FALSE(draft.TakePlace());
        EXPECT_EQ(ModeOf(target), mode);
    }
    umask(umask_before);
}

// Runs in a process of its own; answers how that ended.
int InChild(const std::function<void()>& work, const std::function<void(pid_t)>& meanwhile = {}) {
    const pid_t child = fork();
    if (child == 0) {
        work();
        _exit(0);
    }
    if (meanwhile) meanwhile(child);
    int status = 0;
    EXPECT_EQ(waitpid(child, &status, 0), child);
    return status;
}

TEST_F(Drafts, DraftOfAKilledSaveIsRemovedByTheNext) {
    for (int time = 0; time < 3; ++time) {
        const int status = InChild([this] {
            const rlimit none{0, 0};
            setrlimit(RLIMIT_CORE, &none);
            const rlimit half{1000, 1000};
            setrlimit(RLIMIT_FSIZE, &half);
            std::signal(SIGXFSZ, SIG_DFL);
            WriteCaseFile(test::SmallCase(), folder_.File("plant.json"));
        });
        ASSERT_TRUE(WIFSIGNALED(status)) << status;
        EXPECT_EQ(Found().size(), time == 0 ? 1u : 2u) << "the last one's, and the case";
        EXPECT_EQ(Found().back().rfind("plant.json.", 0), 0u) << Found().back();
        if (time > 0) continue;
        ASSERT_TRUE(WriteCaseFile(test::SmallCase(), folder_.File("plant.json")));
        EXPECT_EQ(Found(), Names{"plant.json"});
    }
    ASSERT_TRUE(WriteCaseFile(test::SmallCase(), folder_.File("plant.json")));
    EXPECT_EQ(Found(), Names{"plant.json"});
}

TEST_F(Drafts, InterruptedSaveLeavesNothingBesideTheFile) {
    CaseData data = test::SmallCase();
    data.title = std::string(8'000'000, 'x');
    const std::string target = folder_.File("plant.json");
    ASSERT_TRUE(WriteCaseFile(data, target));
    const auto interrupt = [this](pid_t child) {
        for (int i = 0; i < 10'000 && Found().size() < 2; ++i) usleep(1000);
        kill(child, SIGINT);
    };
    const int status = InChild(
        [&] {
            for (;;) WriteCaseFile(data, target);
        },
        interrupt);
    EXPECT_TRUE(WIFSIGNALED(status) && WTERMSIG(status) == SIGINT) << status;
    EXPECT_EQ(Found(), Names{"plant.json"});
    EXPECT_EQ(folder_.Read("plant.json").size(), CaseToText(data).size());
}

TEST_F(Drafts, ProgramThatIsToldOfTheInterruptLearnsThatTheSaveFailed) {
    CaseData data = test::SmallCase();
    data.title = std::string(8'000'000, 'x');
    const std::string target = folder_.File("plant.json");
    folder_.Write("plant.json", kOld);
    const auto interrupt = [this](pid_t child) {
        for (int i = 0; i < 10'000 && Found().size() < 2; ++i) usleep(1000);
        kill(child, SIGINT);
    };
    const auto save = [&] {
        static volatile std::sig_atomic_t told = 0;
        std::signal(SIGINT, [](int) { told = 1; });
        const SaveResult result = WriteCaseFile(data, target);
        const bool failed = !result && result.problem.message ==
                                           "can't be written: " + std::string(strerror(EINTR));
        _exit(told == 0 ? 3 : failed ? 0 : result ? 1 : 2);
    };
    // The signal may come too late for one save to be given up.
    int status = 0;
    for (int time = 0; time < 20; ++time) {
        status = InChild(save, interrupt);
        ASSERT_TRUE(WIFEXITED(status) && WEXITSTATUS(status) < 2) << status;
        EXPECT_EQ(Found(), Names{"plant.json"});
        if (WEXITSTATUS(status) == 0) break;
    }
    EXPECT_EQ(WEXITSTATUS(status), 0);
}

TEST_F(Drafts, SignalThatIsIgnoredInterruptsNothing) {
    const auto former = std::signal(SIGHUP, SIG_IGN);
    files::NewFile draft(folder_.File("plant.json"));
    ASSERT_FALSE(files::OpenDraft(draft, folder_.File("plant.json")));
    std::raise(SIGHUP);
    EXPECT_FALSE(WriteWhole(draft, "text"));
    EXPECT_FALSE(draft.TakePlace());
    EXPECT_EQ(Found(), Names{"plant.json"});
    std::signal(SIGHUP, former);
}

#endif

}  // namespace
}  // namespace fixtop::casehost
