#include "core/health/health_score.h"
#include "core/scan/large_files.h"
#include "core/scan/scanner.h"
#include "core/scan/sources.h"
#include "core/storage/storage_breakdown.h"
#include "tests/support/temporary_disk.h"

#include <chrono>
#include <filesystem>
#include <limits>

#include <gtest/gtest.h>

using namespace std::chrono_literals;

namespace {

using Lines = std::vector<std::string>;

constexpr auto month = 30 * 24h;

/// Returns "path size" of each item, the path relative to the home.
Lines lines(const std::vector<core::ScanItem>& items) {
    Lines result;
    for (const core::ScanItem& item : items)
        result.push_back(item.path.substr(at("~/").size()) + " " + std::to_string(item.sizeBytes));
    return result;
}

core::ScanItem inCaches(const std::string& name, core::ScanCategory category = core::ScanCategory::cache,
                        bool ticked = true) {
    return core::ScanItem(at("~/Library/Caches/") + name, 1, category, "exp_cache", ticked, {});
}

} // namespace

TEST(Scan, ProposesTheChildrenOfEachPlaceWithItsCategoryReasonAndTick) {
    const TemporaryDisk disk;
    disk.make({"~/Library/Caches/com.example.app/deep/er/blob 300",
               "~/Library/Caches/com.example.app/.hidden 1000", "~/Library/Caches/com.apple.Safari/blob 200",
               "~/Library/Caches/.hidden 50", "~/Library/Caches/only-hidden/.x 50", "~/Library/Caches/empty/",
               "~/Library/Logs/app.log 300", "~/Library/Logs/.hidden.log 8", "~/.Trash/old.zip 90",
               "~/.Trash/.DS_Store 6", "~/.Trash/empty", "~/Downloads/old 7", "~/Downloads/recent 7",
               "~/Library/Developer/Xcode/DerivedData/Project-abc/x 60",
               "~/Library/Developer/CoreSimulator/Caches/dyld/x 50",
               "~/Library/Developer/CoreSimulator/Caches/.hidden/x 40", "~/Movies/film 52428800",
               "~/Library/WebKit/com.gone.a.tool 5", "~/Parallels/Guest.pvm/disk 4"});
    const platform::Date modified(platform::Date::duration(1'700'000'000.5));
    const auto item = [&](std::string_view path, std::int64_t size, core::ScanCategory category,
                          std::string_view explanation, bool ticked = true) {
        return core::ScanItem(at(path), size, category, explanation, ticked, modified);
    };
    using enum core::ScanCategory;
    // Largest first; of equal sizes the cache comes first, as its source is searched first.
    const std::vector<core::ScanItem> expected{
        item("~/Movies/film", 52428800, largeOldFiles, "exp_large_old_file", false),
        item("~/Library/Caches/com.example.app", 300, cache, "exp_cache"),
        item("~/Library/Logs/app.log", 300, logs, "exp_logs"),
        item("~/Library/Caches/com.apple.Safari", 200, cache, "exp_cache", false),
        item("~/.Trash/old.zip", 90, trash, "exp_trash"),
        item("~/Library/Developer/Xcode/DerivedData/Project-abc", 60, cache, "exp_derived_data"),
        item("~/Library/Developer/CoreSimulator/Caches/dyld", 50, cache, "exp_simulator_cache"),
        item("~/Downloads/old", 7, oldDownloads, "exp_old_downloads", false),
        item("~/.Trash/.DS_Store", 6, trash, "exp_trash"),
        item("~/Library/WebKit/com.gone.a.tool", 5, orphanLeftovers, "exp_orphan_leftover", false),
        item("~/Parallels/Guest.pvm", 4, virtualMachines, "exp_vm_parallels", false)};
    for (const core::ScanItem& one : expected)
        disk.setModified(one.path, modified);
    const core::ScanResult result = core::LumvaleScanner::scan(disk.disk());
    platform::Progress stopped;
    stopped.stop();
    EXPECT_TRUE(core::LumvaleScanner::scan(disk.disk(), &stopped).items.empty());
    EXPECT_EQ(result.items, expected);
    EXPECT_EQ(result.totalBytes, 1022 + 52428800);
}

TEST(Scan, OldDownloadsAreOlderThanThirtyDaysToTheSecond) {
    const TemporaryDisk disk;
    const platform::Date boundary(std::chrono::floor<std::chrono::seconds>(platform::now()) - month);
    disk.make({"~/Downloads/exact 1", "~/Downloads/older 2", "~/Downloads/.older 3", "~/Downloads/empty",
               "~/Downloads/folder/recent 4", "~/Downloads/dangling -> nowhere"});
    disk.setModified("~/Downloads/exact", boundary);
    for (const char* old : {"older", ".older", "empty", "folder", "dangling"})
        disk.setModified("~/Downloads/" + std::string(old), boundary - 1s);
    const auto found =
        core::LumvaleScanner::scanOldDownloads(disk.disk(), at("~/Downloads"), boundary + month);
    EXPECT_EQ(lines(measureCandidates(disk.disk(), found)),
              (Lines{"Downloads/.older 3", "Downloads/folder 4", "Downloads/older 2"}));
}

TEST(Scan, SkipsUnreadableFoldersAndFollowsNoLinks) {
    const OrdinaryUser user;
    const TemporaryDisk disk;
    disk.make({"~/Library/Caches/good/x 5", "~/Library/Caches/bad/x 5", "~/Library/Caches/half/open/x 5",
               "~/Library/Caches/half/closed/x 5", "~/Library/Logs/x 5", "~/Downloads/loop -> loop",
               "~/Library/Caches/out -> /Applications", "/Applications/A.app/x 9",
               "~/Library/Caches/file-link -> good/x", "~/Documents/letter 5", "~/.Trash -> Library",
               "~/Library/Containers -> ../Documents", "~/Documents/a.b.c.plist 5", "/System/a.b.c.plist 5",
               "~/Library/WebKit -> /System"});
    for (const char* closed : {"~/Library/Caches/bad", "~/Library/Caches/half/closed", "~/Library/Logs"})
        disk.setMode(closed, 0);
    EXPECT_EQ(lines(core::LumvaleScanner::scan(disk.disk()).items),
              (Lines{"Library/Caches/file-link 6", "Library/Caches/good 5", "Library/Caches/half 5"}));
}

TEST(LargeFiles, AreChosenBySizeAndPlaceUpToThreeHundred) {
    const TemporaryDisk disk;
    disk.make({"~/exact 52428800", "~/one-less 52428799", "~/Documents/1/2/3/4/5/6/7/8/9/10/deep 60000000",
               "~/Documents/Library/found 52428801", "~/Documents/Photos.PhotosLibrary/no 60000000",
               "~/Documents/Some.APP/no 60000000", "~/Documents/disk.sparsebundle/bands/no 60000000",
               "~/Documents/movie.band 52428803", "~/Documents/.hidden/no 60000000",
               "~/Documents/.hidden-file 60000000", "~/Tool.app/walked 52428802", "~/Library/no 60000000",
               "~/Applications/no 60000000", "~/.cache/no 60000000", "~/linked -> Documents",
               "~/Documents/loop -> .."});
    EXPECT_EQ(lines(core::LumvaleScanner::scan(disk.disk()).items),
              (Lines{"Documents/1/2/3/4/5/6/7/8/9/10/deep 60000000", "Documents/movie.band 52428803",
                     "Tool.app/walked 52428802", "Documents/Library/found 52428801", "exact 52428800"}));
    for (int i = 0; i < 310; ++i)
        disk.make("~/Movies/" + std::to_string(i) + " 52428800");
    EXPECT_EQ(core::LumvaleScanner::scan(disk.disk()).items.size(), 300U);
}

TEST(LargeFiles, CollectingStopsAtFourTimesTheMaximumInOrderOfNames) {
    const TemporaryDisk disk;
    disk.make({"~/a/1 10", "~/a/2 11", "~/a/3 12", "~/a.d/4 13", "~/a.d/5 99", "~/b/6 98", "~/pipe |"});
    const auto search = [&](std::size_t max, std::int64_t minimumBytes = 10) {
        return lines(core::LumvaleScanner::scanLargeFiles(disk.disk(), at("~"), minimumBytes, max));
    };
    EXPECT_EQ(search(1), Lines{"a.d/4 13"});
    EXPECT_EQ(search(2), (Lines{"a.d/5 99", "b/6 98"}));
    EXPECT_EQ(search(0), Lines{});
    disk.make("~/A 10"); // the walk meets it first, so that a.d/4 is the fifth
    EXPECT_EQ(search(1), Lines{"a/3 12"});
    disk.make("~/z 50"); // files of the root itself are collected beyond the limit too
    EXPECT_EQ(search(1), Lines{"z 50"});

    // Equal sizes keep the order of the walk, in which a folder's content follows its name.
    disk.make({"~/same/x 60", "~/same/x.y/1 60", "~/same/x-y 60", "~/same.b 60"});
    EXPECT_EQ(search(std::numeric_limits<std::size_t>::max() / 4 + 1, 60),
              (Lines{"a.d/5 99", "b/6 98", "same/x 60", "same/x-y 60", "same/x.y/1 60", "same.b 60"}));
}

TEST(StorageBreakdown, ListsFoldersOfTheHomeAndTheApplications) {
    const TemporaryDisk disk;
    disk.make({"~/Movies/film 900", "~/Music/song 100", "~/Music/.hidden 5000", "~/Empty/", "~/.config/x 50",
               "~/file 70", "~/Applications/B.app/x 30", "~/link -> Movies", "~/odd\xff/x 100",
               "/Applications/A.app/x 100"});
    Lines found;
    for (const core::StorageEntry& entry : core::LumvaleScanner::storageBreakdown(disk.disk()))
        found.push_back(entry.name + " " + entry.path + " " + std::to_string(entry.sizeBytes));
    EXPECT_EQ(found, (Lines{"Movies /Users/me/Movies 900", "Music /Users/me/Music 100",
                            "odd\xff /Users/me/odd\xff 100", "Applications /Applications 100",
                            "Applications /Users/me/Applications 30"}));
}

TEST(ScanItem, FriendlyNameAndTickDependOnTheWholeName) {
    for (const auto& [component, name] : {std::pair("Com.Spotify.Client", "Spotify"),
                                          {"com.spotify.client.plugin", "com.spotify.client.plugin"},
                                          {"com.apple.Safari/", "Safari"}})
        EXPECT_EQ(inCaches(component).name, name);
    const std::pair<const char*, bool> ticked[] = {
        {"com.apple.Safari", false},       {"com.applet.Safari", true}, {"GoogleUpdater", false},
        {"com.example.app.ShipIt", false}, {"PassKit", false},          {"PassKitCache", true},
        {"ClaudeForDesktop-1", false},     {"xGeoServicesx", false},    {"com.spotify.client", true}};
    for (const auto& [name, isTicked] : ticked) {
        EXPECT_EQ(inCaches(name).safeByDefault, isTicked) << name;
        EXPECT_TRUE(inCaches(name, core::ScanCategory::logs).safeByDefault) << name;
        EXPECT_FALSE(inCaches(name, core::ScanCategory::cache, false).safeByDefault) << name;
    }
}

TEST(ScanResult, TotalDoesNotOverflow) {
    core::ScanItem huge = inCaches("c");
    huge.sizeBytes = std::numeric_limits<std::int64_t>::max() - 1;
    EXPECT_EQ(core::ScanResult({huge, huge}).totalBytes, std::numeric_limits<std::int64_t>::max());
}

TEST(HealthScore, FollowsTheFreeSpaceAndHasABand) {
    constexpr std::int64_t largest = std::numeric_limits<std::int64_t>::max();
    const struct {
        std::int64_t freeBytes, totalBytes;
        int score;
        const char* label;
    } cases[]{
        {0, 500, 0, "À nettoyer"},           {279, 1000, 39, "À nettoyer"},
        {286, 1000, 40, "À surveiller"},     {464, 1000, 64, "À surveiller"},
        {465, 1000, 65, "Bonne santé"},      {607, 1000, 84, "Bonne santé"},
        {608, 1000, 85, "Très bonne santé"}, {199, 280, 99, "Très bonne santé"}, // truncated, not rounded
        {-largest, 1, 0, "À nettoyer"},      {largest, largest, 100, "Très bonne santé"},
        {0, 0, 100, "Très bonne santé"}};
    for (const auto& [freeBytes, totalBytes, score, label] : cases) {
        core::HealthScore health;
        health.score = core::LumvaleScanner::scoreFor(freeBytes, totalBytes);
        EXPECT_EQ(health.score, score) << freeBytes << " of " << totalBytes;
        EXPECT_EQ(health.label(), label) << score;
    }
}

TEST(HealthScore, IsThatOfTheVolumeOfTheHome) {
    using namespace core::LumvaleScanner;
    const TemporaryDisk disk;
    const core::HealthScore health = healthScore(disk.disk());
    EXPECT_GT(health.totalDiskBytes, health.freeDiskBytes);
    EXPECT_EQ(health.score, scoreFor(health.freeDiskBytes, health.totalDiskBytes));
    std::filesystem::remove(disk.host("~"));
    EXPECT_EQ(healthScore(disk.disk()).score, 100);
    EXPECT_EQ(healthScore(disk.disk()).totalDiskBytes, 0);
}
