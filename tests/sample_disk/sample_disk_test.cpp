#include "tools/sample_disk/sample_disk.h"

#include "tests/support/temporary_disk.h"

#include <chrono>
#include <cstdlib>
#include <filesystem>
#include <map>
#include <optional>

#include <sys/mount.h>
#include <sys/stat.h>

#include <gtest/gtest.h>
#include <plist/plist.h>

namespace fs = std::filesystem;

namespace {

using Kind = SampleDisk::Outcome::Kind;

constexpr const char* marker = ".lumvale-sample-disk";

/// Everything below a folder: what each entry is, its size, its date and where it leads.
std::map<std::string, std::string> listing(const std::string& hostFolder) {
    std::map<std::string, std::string> entries;
    for (const fs::directory_entry& entry : fs::recursive_directory_iterator(hostFolder)) {
        struct stat status {};
        EXPECT_EQ(lstat(entry.path().c_str(), &status), 0) << entry.path();
        std::string facts = std::to_string(status.st_mode);
        if (!S_ISDIR(status.st_mode)) // the size of a folder is the file system's own affair
            facts += ' ' + std::to_string(status.st_size);
        if (entry.path().filename() != marker) // as old as the run that made it
            facts += ' ' + std::to_string(status.st_mtim.tv_sec);
        if (entry.is_symlink())
            facts += ' ' + fs::read_symlink(entry.path()).string();
        entries[entry.path().lexically_relative(hostFolder).string()] = facts;
    }
    return entries;
}

std::int64_t filesBelow(const std::string& hostFolder) {
    std::int64_t bytes = 0;
    for (const fs::directory_entry& entry : fs::recursive_directory_iterator(hostFolder))
        if (entry.is_regular_file() && !entry.is_symlink())
            bytes += static_cast<std::int64_t>(entry.file_size());
    return bytes;
}

/// The CFBundleIdentifier in a property list, read without the product's own reader.
std::optional<std::string> identifierIn(const std::string& bytes) {
    plist_t list = nullptr;
    plist_from_memory(bytes.data(), static_cast<std::uint32_t>(bytes.size()), &list);
    char* text = nullptr;
    if (list != nullptr && plist_get_node_type(list) == PLIST_DICT)
        if (const plist_t value = plist_dict_get_item(list, "CFBundleIdentifier"))
            plist_get_string_val(value, &text);
    const std::optional<std::string> identifier = text ? std::optional<std::string>(text) : std::nullopt;
    std::free(text);
    plist_free(list);
    return identifier;
}

constexpr std::size_t entries = 20'000;
constexpr std::chrono::sys_days today = std::chrono::sys_days(std::chrono::year(2024) / 3 / 10);

/// Makes one sample for all tests that only look.
class SampleDiskTest : public testing::Test {
protected:
    static void SetUpTestSuite() {
        s_disk = new TemporaryDisk;
        s_outcome =
            SampleDisk::build(s_disk->host("/sample"), {.entries = entries, .seed = 7, .today = today});
        ASSERT_EQ(s_outcome.kind, Kind::made) << s_outcome.message;
    }

    static void TearDownTestSuite() { delete s_disk; }

    static std::string host(const std::string& path) { return s_disk->host("/sample" + path); }
    static std::string hostHome(const std::string& path) {
        return host(std::string(SampleDisk::homePath) + path);
    }

    static TemporaryDisk* s_disk;
    static SampleDisk::Outcome s_outcome;
};

TemporaryDisk* SampleDiskTest::s_disk = nullptr;
SampleDisk::Outcome SampleDiskTest::s_outcome;

} // namespace

TEST_F(SampleDiskTest, HasAsManyEntriesAsAsked) {
    const std::size_t found = listing(host("")).size();
    EXPECT_EQ(s_outcome.entryCount, found);
    EXPECT_NEAR(static_cast<double>(found), double{entries}, 0.02 * entries);
}

TEST_F(SampleDiskTest, SameOptionsMakeTheSameDisk) {
    const TemporaryDisk other;
    const SampleDisk::Options options = {.entries = entries, .seed = 7, .today = today};
    ASSERT_EQ(SampleDisk::build(other.host("/sample"), options).kind, Kind::made);
    EXPECT_EQ(listing(host("")), listing(other.host("/sample")));
}

TEST_F(SampleDiskTest, AgesCountBackFromToday) {
    // Folders too, though their contents were made after them, some by other areas of the disk.
    const std::map<std::string, int> ages = {
        {"/Downloads/Archive.zip", 6},
        {"/Downloads/dataset-2023", 288},
        {"/Library/Logs/parallels", 18},
        {"/Library/Caches/Homebrew", 9},
        {"/Library", 0},
    };
    for (const auto& [path, ageDays] : ages) {
        struct stat status {};
        ASSERT_EQ(lstat(hostHome(path).c_str(), &status), 0) << path;
        EXPECT_EQ(status.st_mtim.tv_sec,
                  std::chrono::system_clock::to_time_t(today - std::chrono::days(ageDays)))
            << path;
    }
}

TEST_F(SampleDiskTest, SizesAreTheTablesAndTakeNoRoom) {
    EXPECT_EQ(filesBelow(hostHome("/Library/Caches/com.spotify.client")), 3'412'000'000);
    EXPECT_EQ(filesBelow(hostHome("/Parallels/Windows 11.pvm")), 14'480'000'000);
    struct stat status {};
    ASSERT_EQ(lstat(hostHome("/Documents/Limits/exactly large.bin").c_str(), &status), 0);
    EXPECT_EQ(status.st_size, 52'428'800);
    EXPECT_LT(status.st_blocks, 16);
}

TEST_F(SampleDiskTest, IsADiskOfOneUserWithReadableApplications) {
    std::size_t users = 0;
    for (const fs::directory_entry& entry : fs::directory_iterator(host("/Users")))
        users += entry.is_directory() ? 1 : 0;
    EXPECT_EQ(users, 1U);
    EXPECT_TRUE(fs::is_directory(hostHome("/Library/Mail")));
    EXPECT_TRUE(fs::is_directory(host(std::string(SampleDisk::userCachePath))));

    const std::map<std::string, std::optional<std::string>> identifiers = {
        {"1Password", "com.1password.1password"},
        {"Anki", "net.ankiweb.dtop"},
        {"Pixel Ruler", "$(PRODUCT_BUNDLE_IDENTIFIER)"},
        {"Label Printer", std::nullopt},
        {"Old Tax 2016", std::nullopt},
    };
    const auto info = [](const std::string& name) {
        return s_disk->read("/sample/Applications/" + name + ".app/Contents/Info.plist");
    };
    for (const auto& [name, identifier] : identifiers)
        EXPECT_EQ(identifierIn(info(name)), identifier) << name;
    EXPECT_TRUE(info("1Password").starts_with("<?xml"));
    EXPECT_TRUE(info("Anki").starts_with("bplist00"));
}

TEST_F(SampleDiskTest, RefusesAFolderOfOthersAndTouchesNothing) {
    const TemporaryDisk ground;
    ground.make({"/full/keep.txt 12", "/full/sub/", "/file 3", "/forged/.lumvale-sample-disk 40",
                 "/forged/keep.txt 5", "/linked/keep.txt 5"});
    ground.make("/linked/.lumvale-sample-disk -> " + host("/") + marker);
    for (const char* name : {"/full", "/forged", "/linked", "/file"}) {
        const bool isFolder = fs::is_directory(ground.host(name));
        const auto before = isFolder ? listing(ground.host(name)) : decltype(listing(""))();
        const SampleDisk::Outcome outcome = SampleDisk::build(ground.host(name));
        EXPECT_EQ(outcome.kind, Kind::refused) << name;
        EXPECT_NE(outcome.message.find(ground.host(name)), std::string::npos);
        if (isFolder) {
            EXPECT_EQ(listing(ground.host(name)), before);
        }
    }
}

TEST_F(SampleDiskTest, RefusesAnEarlierSampleWithAVolumeMountedInIt) {
    const TemporaryDisk ground;
    ground.make("/sample/Volumes/A disk/");
    fs::copy_file(host("/") + marker, ground.host("/sample/") + marker);
    const std::string volume = ground.host("/sample/Volumes/A disk");
    if (mount("tmpfs", volume.c_str(), "tmpfs", 0, "size=64k") != 0)
        GTEST_SKIP() << "this user cannot mount";
    ground.make("/sample/Volumes/A disk/keep.txt 12");
    const SampleDisk::Outcome outcome = SampleDisk::build(ground.host("/sample"));
    const bool kept = ground.exists("/sample/Volumes/A disk/keep.txt");
    EXPECT_EQ(umount(volume.c_str()), 0);
    EXPECT_EQ(outcome.kind, Kind::refused);
    EXPECT_TRUE(kept);
}

TEST_F(SampleDiskTest, MakesAnEarlierSampleAnewAndFollowsNoLinkOutOfIt) {
    const TemporaryDisk ground;
    ground.make({"/outside/keep.txt 12"});
    const OrdinaryUser user; // for root no mode is an obstacle
    ground.make({"/sample/old/deep/file 7", "/sample/old/out -> ../../outside", "/sample/out -> ../outside"});
    fs::copy_file(host("/") + marker, ground.host("/sample/") + marker);
    ground.setMode("/sample/old/deep", 0);
    ground.setMode("/sample/old", 0500);

    const SampleDisk::Outcome outcome = SampleDisk::build(ground.host("/sample"), {.seed = 8});
    ASSERT_EQ(outcome.kind, Kind::made) << outcome.message;
    EXPECT_FALSE(ground.exists("/sample/old"));
    EXPECT_FALSE(ground.exists("/sample/out"));
    EXPECT_TRUE(ground.exists("/outside/keep.txt"));

    const std::string cache = "/Users/camille/Library/Caches/com.spotify.client/Data";
    EXPECT_NE(listing(ground.host("/sample" + cache)), listing(host(cache))) << "another seed, another disk";
}

TEST_F(SampleDiskTest, MakesAnEarlierSampleAnewThatHoldsLockedEntries) {
    const TemporaryDisk ground;
    ground.make({"/sample/old/deep/file 7"});
    fs::copy_file(host("/") + marker, ground.host("/sample/") + marker);
    if (!ground.setImmutable("/sample/old/deep/file", true) || !ground.setImmutable("/sample/old", true))
        GTEST_SKIP() << "this user or file system has no immutable flag";
    const SampleDisk::Outcome outcome = SampleDisk::build(ground.host("/sample"));
    ASSERT_EQ(outcome.kind, Kind::made) << outcome.message;
    EXPECT_FALSE(ground.exists("/sample/old"));
}
