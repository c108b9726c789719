// Saving to the disk: whatever goes wrong, the old file stays whole and nothing is left beside it.

#include <gtest/gtest.h>

#include <algorithm>
#include <cstring>

#include "case_builder.h"
#include "casehost/case_file.h"
#include "live/case.h"
#include "support/temporary_folder.h"

#ifndef _WIN32
#include <sys/resource.h>

#include <csignal>

#include "support/ordinary_user.h"
#endif

namespace casehost {
namespace {

constexpr char kOld[] = "the old file\n";

class Saving : public ::testing::Test {
 protected:
    void SetUp() override { RegisterCaseFiles(); }

    // The names in the folder, in order.
    std::vector<std::string> Found() {
        std::vector<std::string> names;
        for (const auto& entry : std::filesystem::directory_iterator(folder_.Path())) {
            names.push_back(entry.path().filename().string());
        }
        std::sort(names.begin(), names.end());
        return names;
    }

    TemporaryFolder folder_;
};

using Names = std::vector<std::string>;

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

// They are of others, or of one who is saving to the same file just now.
TEST_F(Saving, FilesThatStandBesideTheTargetStay) {
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

TEST_F(Saving, EndsWhenEveryNameBesideTheTargetIsTaken) {
    folder_.Write("plant.json", kOld);
    for (int i = 0; i < 100; ++i) {
        folder_.Write("plant.json" + (i == 0 ? "" : "." + std::to_string(i)) + ".part", kOld);
    }
    const SaveResult result = WriteCaseFile(test::SmallCase(), folder_.File("plant.json"));
    EXPECT_FALSE(result);
    EXPECT_NE(result.problem.Text().find("plant.json: can't be written: "), std::string::npos)
        << result.problem.Text();
    EXPECT_EQ(folder_.Read("plant.json"), kOld);
    EXPECT_EQ(Found().size(), 101u);
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

TEST_F(Saving, LinkInTheWayOfTheUnfinishedFileIsNotFollowed) {
    folder_.Write("plant.json", kOld);
    folder_.Write("other.txt", kOld);
    std::filesystem::create_symlink("other.txt", folder_.File("plant.json.part"));
    ASSERT_TRUE(WriteCaseFile(test::SmallCase(), folder_.File("plant.json")));
    EXPECT_EQ(folder_.Read("plant.json"), CaseToText(test::SmallCase()));
    EXPECT_EQ(folder_.Read("other.txt"), kOld);
    EXPECT_TRUE(std::filesystem::is_symlink(folder_.File("plant.json.part")));
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
}  // namespace casehost
