#include "core/uninstall/installed_apps.h"
#include "core/uninstall/related_files.h"
#include "tools/sample_disk/sample_disk.h"

#include "tests/support/mounted_volume.h"
#include "tests/support/temporary_disk.h"
#include "tools/sample_disk/ground.h"

#include <chrono>
#include <filesystem>
#include <map>
#include <set>

#include <sys/stat.h>

#include <gtest/gtest.h>

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

} // namespace

TEST(SampleDisk, IsTheOneThatItsOptionsDescribe) {
    constexpr std::size_t entries = 8'000;
    constexpr std::chrono::sys_days today = std::chrono::sys_days(std::chrono::year(2024) / 3 / 10);
    const TemporaryDisk ground(TemporaryDisk::Where::inMemory);
    const auto built = [&](const char* name, std::uint64_t seed) {
        const auto outcome =
            SampleDisk::build(ground.host(name), {.entries = entries, .seed = seed, .today = today});
        EXPECT_EQ(outcome.kind, Kind::made) << outcome.message;
        auto found = listing(ground.host(name));
        EXPECT_EQ(outcome.entryCount, found.size());
        return found;
    };
    const auto found = built("/sample", 7);
    EXPECT_NEAR(static_cast<double>(found.size()), double{entries}, 0.02 * entries);
    EXPECT_EQ(built("/again", 7), found);
    const std::string catalogue = "/Pictures/Photos Library.photoslibrary/database/Photos.sqlite";
    const auto photos = [&](const char* sample) {
        return ground.read(sample + std::string(SampleDisk::homePath) + catalogue);
    };
    EXPECT_EQ(photos("/again"), photos("/sample"));
    EXPECT_NE(built("/another", 8), found);

    // It takes no room, and ages count back from today: those of folders, too, to which later entries came.
    const std::string home = ground.host("/sample") + std::string(SampleDisk::homePath);
    struct stat status {};
    ASSERT_EQ(lstat((home + "/Documents/Limits/exactly large.bin").c_str(), &status), 0);
    EXPECT_EQ(status.st_size, 52'428'800);
    EXPECT_LT(status.st_blocks, 16);
    ASSERT_EQ(lstat((home + "/Library").c_str(), &status), 0);
    EXPECT_EQ(status.st_mtim.tv_sec, std::chrono::system_clock::to_time_t(today));

    // Wherever applications keep files, one of its own does.
    const auto disk =
        platform::Disk::open(ground.host("/sample"), SampleDisk::homePath, SampleDisk::userCachePath);
    std::set<std::string> explanations;
    for (const core::InstalledApp& app : core::LumvaleUninstaller::discoverApps(*disk))
        for (const core::ScanItem& item : core::LumvaleUninstaller::relatedFiles(app, *disk))
            explanations.insert(item.explanation);
    EXPECT_EQ(explanations.size(), 22U) << testing::PrintToString(explanations);
}

TEST(SampleDisk, RefusesAFolderOfOthersAndTouchesNothing) {
    const TemporaryDisk ground;
    ASSERT_FALSE(SampleDisk::clearGround(ground.host("/sample"))); // counts as an earlier sample
    ground.make({"/full/keep.txt 12", "/full/sub/", "/file 3", "/forged/.lumvale-sample-disk 40",
                 "/forged/keep.txt 5", "/linked/keep.txt 5",
                 std::string("/linked/.lumvale-sample-disk -> ../sample/") + marker});
    const auto before = ground.entries();
    for (const char* name : {"/full", "/forged", "/linked", "/file"}) {
        const SampleDisk::Outcome outcome = SampleDisk::build(ground.host(name));
        EXPECT_EQ(outcome.kind, Kind::refused) << name;
        EXPECT_NE(outcome.message.find(ground.host(name)), std::string::npos);
    }
    EXPECT_EQ(ground.entries(), before);
}

TEST(SampleDisk, RefusesAnEarlierSampleWithAVolumeMountedInIt) {
    const TemporaryDisk ground;
    ASSERT_FALSE(SampleDisk::clearGround(ground.host("/sample"))); // counts as an earlier sample
    ground.make("/sample/Volumes/A disk/");
    const MountedVolume volume(ground.host("/sample/Volumes/A disk"));
    SKIP_UNLESS_MOUNTED(volume);
    ground.make("/sample/Volumes/A disk/keep.txt 12");
    EXPECT_EQ(SampleDisk::build(ground.host("/sample")).kind, Kind::refused);
    EXPECT_TRUE(ground.exists("/sample/Volumes/A disk/keep.txt"));
}

TEST(SampleDisk, MakesAnEarlierSampleAnewAndFollowsNoLinkOutOfIt) {
    const TemporaryDisk ground(TemporaryDisk::Where::inMemory);
    ground.make("/outside/keep.txt 12");
    const OrdinaryUser user;                                       // for root no mode is an obstacle
    ASSERT_FALSE(SampleDisk::clearGround(ground.host("/sample"))); // counts as an earlier sample
    ground.make({"/sample/old/deep/file 7", "/sample/old/out -> ../../outside", "/sample/out -> ../outside",
                 "/sample/locked/file 7"});
    ground.setMode("/sample/old/deep", 0);
    ground.setMode("/sample/old", 0500);
    static_cast<void>(ground.setImmutable("/sample/locked", true)); // where there is such a flag
    const SampleDisk::Outcome outcome = SampleDisk::build(ground.host("/sample"));
    ASSERT_EQ(outcome.kind, Kind::made) << outcome.message;
    for (const char* gone : {"/sample/old", "/sample/out", "/sample/locked"})
        EXPECT_FALSE(ground.exists(gone)) << gone;
    EXPECT_TRUE(ground.exists("/outside/keep.txt"));
}
