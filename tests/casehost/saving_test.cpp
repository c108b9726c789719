// SPDX-License-Identifier: Apache-2.0
// Saving to the disk: whatever goes wrong, the old file stays whole and nothing is left beside it.

#include <gtest/gtest.h>

#include <cstring>

#include "live/case.h"
#include "saving_fixture.h"

#ifndef _WIN32
#include <sys/resource.h>
#include <sys/stat.h>
#include <sys/xattr.h>
#include <unistd.h>

#include <csignal>

#include "support/ordinary_user.h"
#endif

namespace fixtop::casehost {
namespace {

using test::kOld;
using test::Names;
using test::Saving;

TEST_F(Saving, ReplacesTheOldFileAndLeavesNothingBesideIt) {
    folder_.Write("plant.json", kOld);
    ASSERT_TRUE(WriteCaseFile(test::SmallCase(), folder_.File("plant.json")));
    EXPECT_EQ(folder_.Read("plant.json"), CaseToText(test::SmallCase()));
    EXPECT_EQ(Found(), Names{"plant.json"});
}

TEST_F(Saving, TakesNamesWithoutAFolder) {
    ASSERT_TRUE(WriteCaseFile(test::SmallCase(), "plant.json"));
    ASSERT_TRUE(WriteCaseFile(test::SmallCase(), "plant.json")) << "over the former file";
    EXPECT_EQ(Found(), Names{"plant.json"});
}

TEST_F(Saving, FolderInTheWayOfTheTargetStays) {
    std::filesystem::create_directory(folder_.File("plant.json"));
    folder_.Write("plant.json/inside", kOld);
    const SaveResult result = WriteCaseFile(test::SmallCase(), folder_.File("plant.json"));
    EXPECT_FALSE(result);
    EXPECT_NE(result.problem.Text().find("plant.json: can't be replaced: "), std::string::npos)
        << result.problem.Text();
    EXPECT_EQ(folder_.Read("plant.json/inside"), kOld);
    EXPECT_EQ(Found(), Names{"plant.json"});
}

TEST_F(Saving, FileThatCanNotBeBegunChangesNothing) {
    const SaveResult result = WriteCaseFile(test::SmallCase(), folder_.File("missing/plant.json"));
    EXPECT_FALSE(result);
    EXPECT_NE(result.problem.Text().find("plant.json: can't be written: "), std::string::npos)
        << result.problem.Text();
    EXPECT_EQ(Found(), Names{});
}

TEST_F(Saving, CaseKeepsItsNameWhenSavingElsewhereFails) {
    CaseHost host;
    Case& open = *host.Open(test::SmallCase()).opened;
    ASSERT_TRUE(host.Save(open, folder_.File("plant.json")));
    EXPECT_FALSE(host.Save(open, folder_.File("missing/other.json")));
    EXPECT_EQ(open.GetDocumentName().FullPath().Str(), folder_.File("plant.json"));
    EXPECT_TRUE(open.Save());
    std::filesystem::remove(folder_.File("plant.json"));
    std::filesystem::create_directory(folder_.File("plant.json"));
    EXPECT_FALSE(open.Save()) << "the document tells it too";
    open.SetDocumentName(host::FileName(folder_.File("second").c_str(), ".json"));
    EXPECT_EQ(open.GetDocumentName().Name().Str(), "second");
    EXPECT_TRUE(open.Save());
    EXPECT_TRUE(std::filesystem::exists(folder_.File("second.json"))) << "under its new name";
}

#ifndef _WIN32

// As long as it lives, a file that grows beyond the size is refused as on a full disk.
class FullDisk {
 public:
    explicit FullDisk(rlim_t size) : handler_(std::signal(SIGXFSZ, SIG_IGN)) {
        getrlimit(RLIMIT_FSIZE, &former_);
        const rlimit limit{size, former_.rlim_max};
        setrlimit(RLIMIT_FSIZE, &limit);
    }
    ~FullDisk() {
        setrlimit(RLIMIT_FSIZE, &former_);
        std::signal(SIGXFSZ, handler_);
    }

 private:
    void (*handler_)(int);
    rlimit former_{};
};

TEST_F(Saving, PermissionsOfTheOldFileStay) {
    namespace fs = std::filesystem;
    for (const fs::perms mode : {fs::perms(0600), fs::perms(0664), fs::perms(0640)}) {
        folder_.Write("plant.json", kOld);
        fs::permissions(folder_.File("plant.json"), mode);
        ASSERT_TRUE(WriteCaseFile(test::SmallCase(), folder_.File("plant.json")));
        EXPECT_EQ(fs::status(folder_.File("plant.json")).permissions(), mode);
        EXPECT_NE(folder_.Read("plant.json"), kOld);
    }
}

mode_t ModeOf(const std::filesystem::path& file) {
    struct stat found {};
    return stat(file.c_str(), &found) == 0 ? found.st_mode & 07777 : 0;
}

TEST_F(Saving, AccessListOfTheOldFileStays) {
    const std::string target = folder_.File("plant.json");
    folder_.Write("plant.json", kOld);
    // The owner reads and writes, the user 65534 and the group read.
    const unsigned char list[] = {2, 0,   0,   0,   1,   0,   6,  0, 255, 255, 255, 255, 2,   0,  4,
                                  0, 254, 255, 0,   0,   4,   0,  4, 0,   255, 255, 255, 255, 16, 0,
                                  4, 0,   255, 255, 255, 255, 32, 0, 0,   0,   255, 255, 255, 255};
    constexpr char kName[] = "system.posix_acl_access";
    if (setxattr(target.c_str(), kName, list, sizeof list, 0) != 0) {
        GTEST_SKIP() << "this file system keeps no access lists";
    }
    ASSERT_TRUE(WriteCaseFile(test::SmallCase(), target));
    unsigned char found[256];
    ASSERT_EQ(getxattr(target.c_str(), kName, found, sizeof found), ssize_t{sizeof list});
    EXPECT_EQ(memcmp(found, list, sizeof list), 0);
    EXPECT_EQ(ModeOf(target), 0640u);
}

TEST_F(Saving, FileStaysItsOwnersWhoeverSavesIt) {
    if (geteuid() != 0) GTEST_SKIP() << "needs the rights to give files away";
    folder_.Write("plant.json", kOld);
    ASSERT_EQ(chown(folder_.File("plant.json").c_str(), 65534, 65534), 0);
    ASSERT_EQ(chmod(folder_.File("plant.json").c_str(), 0600), 0);
    ASSERT_TRUE(WriteCaseFile(test::SmallCase(), folder_.File("plant.json")));
    struct stat found {};
    ASSERT_EQ(stat(folder_.File("plant.json").c_str(), &found), 0);
    EXPECT_EQ(found.st_uid, 65534u);
    EXPECT_EQ(found.st_gid, 65534u);
    EXPECT_EQ(found.st_mode & 0777, 0600u);
}

TEST_F(Saving, LinkStaysAndTheFileBehindItIsReplaced) {
    namespace fs = std::filesystem;
    fs::create_directory(folder_.File("kept"));
    folder_.Write("kept/plant.json", kOld);
    fs::create_symlink("kept/plant.json", folder_.File("link.json"));
    ASSERT_TRUE(WriteCaseFile(test::SmallCase(), folder_.File("link.json")));
    EXPECT_TRUE(fs::is_symlink(folder_.File("link.json")));
    EXPECT_EQ(folder_.Read("kept/plant.json"), CaseToText(test::SmallCase()));
    EXPECT_EQ(Found(), (Names{"kept", "link.json"}));
}

TEST_F(Saving, FileBehindALinkThatLeadsNowhereIsMade) {
    namespace fs = std::filesystem;
    fs::create_directory(folder_.File("kept"));
    fs::create_directory(folder_.File("names"));
    fs::create_symlink("../kept/plant.json", folder_.File("names/link.json"));
    fs::create_symlink("names/link.json", folder_.File("first.json"));
    ASSERT_TRUE(WriteCaseFile(test::SmallCase(), folder_.File("first.json")));
    EXPECT_TRUE(fs::is_symlink(folder_.File("first.json")));
    EXPECT_TRUE(fs::is_symlink(folder_.File("names/link.json")));
    EXPECT_EQ(folder_.Read("kept/plant.json"), CaseToText(test::SmallCase()));
    EXPECT_EQ(Found(), (Names{"first.json", "kept", "names"}));
}

TEST_F(Saving, LinksThatLeadInACircleAreTold) {
    std::filesystem::create_symlink("b.json", folder_.File("a.json"));
    std::filesystem::create_symlink("a.json", folder_.File("b.json"));
    const SaveResult result = WriteCaseFile(test::SmallCase(), folder_.File("a.json"));
    EXPECT_FALSE(result);
    EXPECT_NE(
        result.problem.Text().find("a.json: can't be written: " + std::string(strerror(ELOOP))),
        std::string::npos)
        << result.problem.Text();
    EXPECT_TRUE(std::filesystem::is_symlink(folder_.File("a.json")));
    EXPECT_EQ(Found(), (Names{"a.json", "b.json"}));
}

TEST_F(Saving, PipeIsRefused) {
    ASSERT_EQ(mkfifo(folder_.File("pipe.json").c_str(), 0600), 0);
    std::filesystem::create_symlink("pipe.json", folder_.File("link.json"));
    for (const char* name : {"pipe.json", "link.json"}) {
        const SaveResult result = WriteCaseFile(test::SmallCase(), folder_.File(name));
        EXPECT_FALSE(result) << name;
        EXPECT_EQ(result.problem.message, "can't be written: not a file") << name;
    }
    EXPECT_TRUE(std::filesystem::is_fifo(folder_.File("pipe.json")));
    EXPECT_EQ(Found(), (Names{"link.json", "pipe.json"}));
}

TEST_F(Saving, DeviceIsRefused) {
    // Nothing is lost where the folder of devices can't be written.
    std::filesystem::permissions(folder_.Path(), std::filesystem::perms::all);
    const OrdinaryUser user;
    std::filesystem::create_symlink("/dev/null", folder_.File("null.json"));
    const SaveResult result = WriteCaseFile(test::SmallCase(), folder_.File("null.json"));
    EXPECT_EQ(result.problem.message, "can't be written: not a file");
    EXPECT_TRUE(std::filesystem::is_character_file("/dev/null"));
}

TEST_F(Saving, LongestNamesCanBeSaved) {
    std::string letters = "x";
    while (letters.size() < 249) letters += "\xC3\xA4";
    for (const std::string& name : {std::string(250, 'n') + ".json", letters + ".json"}) {
        for (int time = 0; time < 2; ++time) {
            const SaveResult result = WriteCaseFile(test::SmallCase(), folder_.File(name));
            EXPECT_TRUE(result) << name.size() << ": " << result.problem.Text();
        }
        EXPECT_EQ(Found(), Names{name});
        std::filesystem::remove(folder_.File(name));
    }
}

TEST_F(Saving, DiskThatFillsUpMidwayLeavesTheOldFile) {
    const std::size_t size = CaseToText(test::SmallCase()).size();
    for (const std::size_t room : {std::size_t{0}, std::size_t{1}, size / 2, size - 1}) {
        folder_.Write("plant.json", kOld);
        SaveResult result;
        {
            const FullDisk full(room);
            result = WriteCaseFile(test::SmallCase(), folder_.File("plant.json"));
        }
        EXPECT_FALSE(result) << room;
        EXPECT_NE(result.problem.Text().find("plant.json: can't be written: "), std::string::npos)
            << result.problem.Text();
        EXPECT_EQ(folder_.Read("plant.json"), kOld) << room;
        EXPECT_EQ(Found(), Names{"plant.json"}) << room;
    }
    const FullDisk enough(size);
    EXPECT_TRUE(WriteCaseFile(test::SmallCase(), folder_.File("plant.json")));
}

using std::filesystem::perms;

TEST_F(Saving, FileThatMayNotBeWrittenIsKept) {
    folder_.Write("plant.json", kOld);
    std::filesystem::permissions(folder_.File("plant.json"), perms{0444});
    std::filesystem::permissions(folder_.Path(), perms::all);
    const OrdinaryUser user;
    const SaveResult result = WriteCaseFile(test::SmallCase(), folder_.File("plant.json"));
    EXPECT_FALSE(result);
    EXPECT_NE(result.problem.Text().find("plant.json: can't be written: " +
                                         std::string(strerror(EACCES))),
              std::string::npos)
        << result.problem.Text();
    EXPECT_EQ(folder_.Read("plant.json"), kOld);
    EXPECT_EQ(Found(), Names{"plant.json"});
}

TEST_F(Saving, FileThatMayNotBeReadSaysSo) {
    ASSERT_TRUE(WriteCaseFile(test::SmallCase(), folder_.File("plant.json")));
    std::filesystem::permissions(folder_.File("plant.json"), perms::none);
    const OrdinaryUser user;
    const ReadResult result = ReadCaseFile(folder_.File("plant.json"));
    EXPECT_EQ(result.data, nullptr);
    ASSERT_EQ(result.problems.size(), 1u);
    EXPECT_EQ(result.problems[0].message, "can't be read: " + std::string(strerror(EACCES)));
}

#endif

}  // namespace
}  // namespace fixtop::casehost
