#include "core/scan/health_score.h"

#include "core/scan/scanner.h"
#include "core/scan/score.h"
#include "tests/support/temporary_disk.h"

#include <filesystem>
#include <limits>

#include <gtest/gtest.h>

using LumvaleScanner::scoreFor;

TEST(HealthScore, FollowsTheFreeSpace) {
    constexpr std::int64_t gigabyte = 1000000000;
    constexpr std::int64_t largest = std::numeric_limits<std::int64_t>::max();
    struct Case {
        std::int64_t freeBytes;
        std::int64_t totalBytes;
        int score;
    };
    const Case cases[]{{0, 500 * gigabyte, 0},
                       {50 * gigabyte, 500 * gigabyte, 14},
                       {100 * gigabyte, 500 * gigabyte, 28},
                       {150 * gigabyte, 500 * gigabyte, 42},
                       {250 * gigabyte, 500 * gigabyte, 70},
                       {400 * gigabyte, 500 * gigabyte, 100},
                       {99, 140, 99},
                       {100, 140, 100},
                       {199, 280, 99}, // cut, not rounded
                       {500, 500, 100},
                       {600, 500, 100},
                       {-1, 500, 0},
                       {-largest, 1, 0},
                       {largest, largest, 100},
                       {0, 0, 100},
                       {5, -1, 100}};
    for (const Case& c : cases)
        EXPECT_EQ(scoreFor(c.freeBytes, c.totalBytes), c.score) << c.freeBytes << " of " << c.totalBytes;
}

TEST(HealthScore, IsLabelledByBand) {
    const std::pair<int, const char*> cases[]{
        {100, "Très bonne santé"}, {85, "Très bonne santé"}, {84, "Bonne santé"}, {65, "Bonne santé"},
        {64, "À surveiller"},      {40, "À surveiller"},     {39, "À nettoyer"},  {0, "À nettoyer"},
        {-1, "À nettoyer"},        {101, "À nettoyer"}};
    for (const auto& [score, label] : cases) {
        HealthScore health;
        health.score = score;
        EXPECT_EQ(health.label(), label) << score;
    }
}

TEST(HealthScore, IsThatOfTheHomesVolume) {
    const TemporaryDisk disk;
    const HealthScore health = LumvaleScanner::healthScore(disk.disk());
    const std::filesystem::space_info space = std::filesystem::space(disk.host("~"));
    EXPECT_EQ(health.totalDiskBytes, static_cast<std::int64_t>(space.capacity));
    EXPECT_GT(health.freeDiskBytes, 0);
    EXPECT_LE(health.freeDiskBytes, static_cast<std::int64_t>(space.free));
    EXPECT_EQ(health.score, scoreFor(health.freeDiskBytes, health.totalDiskBytes));
    EXPECT_FALSE(health.batteryHealthPercent);
    EXPECT_TRUE(health.memoryPressureOK);
}

TEST(HealthScore, IsFullWhereNothingIsKnown) {
    const TemporaryDisk disk;
    std::filesystem::remove(disk.host("~"));
    const HealthScore health = LumvaleScanner::healthScore(disk.disk());
    EXPECT_EQ(health.score, 100);
    EXPECT_EQ(health.freeDiskBytes, 0);
    EXPECT_EQ(health.totalDiskBytes, 0);
}
