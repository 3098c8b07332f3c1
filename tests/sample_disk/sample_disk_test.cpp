#include "tools/sample_disk/sample_disk.h"

#include "core/scan/scanner.h"
#include "tests/support/temporary_disk.h"

#include <gtest/gtest.h>

using Kind = sample_disk::Outcome::Kind;

TEST(SampleDisk, IsDeterministicAndHasItemsOfEveryCategory) {
    const TemporaryDisk ground(TemporaryDisk::Where::inMemory);
    for (const char* name : {"/sample", "/again"})
        EXPECT_EQ(sample_disk::build(ground.host(name), {.seed = 7}).kind, Kind::made);
    const std::string catalogue =
        "/Users/camille/Pictures/Photos Library.photoslibrary/database/Photos.sqlite";
    EXPECT_EQ(ground.read("/sample" + catalogue), ground.read("/again" + catalogue));

    const auto disk =
        *platform::Disk::open(ground.host("/sample"), sample_disk::homePath, sample_disk::userCachePath);
    std::map<core::ScanCategory, int> found;
    for (const core::ScanItem& item : core::LumvaleScanner::scan(disk).items)
        ++found[item.category];
    using enum core::ScanCategory;
    for (const auto category :
         {cache, logs, trash, oldDownloads, orphanLeftovers, virtualMachines, largeOldFiles})
        EXPECT_GE(found[category], 3) << static_cast<int>(category);
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
