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
    const struct {
        std::int64_t freeBytes;
        std::int64_t totalBytes;
        int score;
    } cases[]{{0, 500 * gigabyte, 0},
              {50 * gigabyte, 500 * gigabyte, 14},
              {400 * gigabyte, 500 * gigabyte, 100},
              {99, 140, 99},
              {199, 280, 99}, // cut, not rounded
              {-1, 500, 0},
              {-largest, 1, 0},
              {largest, largest, 100},
              {0, 0, 100},
              {5, -1, 100}};
    for (const auto& [freeBytes, totalBytes, score] : cases)
        EXPECT_EQ(scoreFor(freeBytes, totalBytes), score) << freeBytes << " of " << totalBytes;
}

TEST(HealthScore, IsLabelledByBand) {
    HealthScore health;
    for (const auto& [score, label] :
         {std::pair(85, "Très bonne santé"), {84, "Bonne santé"}, {39, "À nettoyer"}}) {
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

    std::filesystem::remove(disk.host("~"));
    const HealthScore unknown = LumvaleScanner::healthScore(disk.disk());
    EXPECT_EQ(unknown.score, 100);
    EXPECT_EQ(unknown.freeDiskBytes + unknown.totalDiskBytes, 0);
}
