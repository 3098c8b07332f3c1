#include "tools/sample_disk/sample_disk.h"

#include "core/photos/photo_grouping.h"
#include "core/scan/scanner.h"
#include "core/startup/startup_items.h"
#include "core/uninstall/installed_apps.h"
#include "platform/photos/photo_library.h"
#include "tests/support/temporary_disk.h"

#include <map>

#include <unistd.h>

#include <gtest/gtest.h>

using Kind = sample_disk::Outcome::Kind;

namespace {

constexpr const char* catalogue =
    "/Users/camille/Pictures/Photos Library.photoslibrary/database/Photos.sqlite";

bool isPicture(int file) {
    char start[4]{};
    return pread(file, start, sizeof start, 0) == sizeof start
           && (std::string_view(start, 3) == "\xFF\xD8\xFF" || std::string_view(start, 4) == "\x89PNG");
}

} // namespace

TEST(SampleDisk, IsDeterministicAndHasContentForEveryTool) {
    const TemporaryDisk ground(TemporaryDisk::Where::inMemory);
    const auto build = [&](const char* name, std::uint64_t seed) {
        const auto outcome = sample_disk::build(ground.host(name), {.seed = seed});
        EXPECT_EQ(outcome.kind, Kind::made) << outcome.message;
        return outcome.entryCount;
    };
    EXPECT_GT(build("/sample", 7), 2'000U);
    build("/again", 7);
    build("/other", 8);
    EXPECT_EQ(ground.read(std::string("/sample") + catalogue),
              ground.read(std::string("/again") + catalogue));
    EXPECT_NE(ground.read(std::string("/sample") + catalogue),
              ground.read(std::string("/other") + catalogue));

    const auto disk =
        *platform::Disk::open(ground.host("/sample"), sample_disk::homePath, sample_disk::userCachePath);
    std::map<core::ScanCategory, int> found;
    for (const core::ScanItem& item : core::LumvaleScanner::scan(disk).items)
        ++found[item.category];
    using enum core::ScanCategory;
    for (const auto category :
         {cache, logs, trash, oldDownloads, orphanLeftovers, virtualMachines, largeOldFiles})
        EXPECT_GE(found[category], 3) << static_cast<int>(category);
    EXPECT_GE(core::LumvaleUninstaller::discoverApps(disk).size(), 30U);
    EXPECT_GE(core::LumvaleStartupItems::scan(disk).size(), 20U);

    const auto authorized = [](const platform::Disk&) {
        return platform::PhotoAuthorization::authorized;
    };
    const platform::PhotoLibrary photos(disk, {authorized, authorized});
    core::LumvalePhotoDuplicates::PhotoGrouping grouping;
    EXPECT_TRUE(photos.visitAssets([] {},
                                   [&](const platform::PhotoAsset& asset) {
                                       grouping.add(asset);
                                       const platform::PhotoPicture picture =
                                           photos.picture(asset.localIdentifier);
                                       EXPECT_TRUE(picture.isInCloud || isPicture(picture.file.number()))
                                           << asset.localIdentifier;
                                   }));
    EXPECT_EQ(grouping.groups().size(), 19U);
}

TEST(SampleDisk, ReplacesOnlyAnEarlierSample) {
    const TemporaryDisk ground;
    ground.make({"/full/keep.txt 12", "/forged/.lumvale-sample-disk 40", "/forged/keep.txt 5"});
    for (const char* name : {"/full", "/forged"})
        EXPECT_EQ(sample_disk::build(ground.host(name)).kind, Kind::refused) << name;
    EXPECT_TRUE(ground.exists("/full/keep.txt") && ground.exists("/forged/keep.txt"));
    for (int run = 0; run < 2; ++run) // the second run removes locked files
        EXPECT_EQ(sample_disk::build(ground.host("/sample")).kind, Kind::made);
}
