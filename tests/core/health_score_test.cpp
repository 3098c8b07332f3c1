#include "core/scan/health_score.h"

#include "core/scan/scanner.h"
#include "core/scan/score.h"
#include "tests/support/temporary_disk.h"

#include <filesystem>
#include <limits>

#include <gtest/gtest.h>

TEST(HealthScore, FollowsTheFreeSpace) {
    constexpr std::int64_t largest = std::numeric_limits<std::int64_t>::max();
    const struct {
        std::int64_t freeBytes, totalBytes;
        int score;
        const char* label;
    } cases[]{{0, 500, 0, "À nettoyer"},
              {50, 500, 14, "À nettoyer"},
              {279, 1000, 39, "À nettoyer"},
              {286, 1000, 40, "À surveiller"},
              {464, 1000, 64, "À surveiller"},
              {465, 1000, 65, "Bonne santé"},
              {607, 1000, 84, "Bonne santé"},
              {608, 1000, 85, "Très bonne santé"},
              {99, 140, 99, "Très bonne santé"},
              {199, 280, 99, "Très bonne santé"}, // cut, not rounded
              {400, 500, 100, "Très bonne santé"},
              {-largest, 1, 0, "À nettoyer"},
              {largest, largest, 100, "Très bonne santé"},
              {0, 0, 100, "Très bonne santé"},
              {5, -1, 100, "Très bonne santé"}};
    for (const auto& [freeBytes, totalBytes, score, label] : cases) {
        HealthScore health;
        health.score = LumvaleScanner::scoreFor(freeBytes, totalBytes);
        EXPECT_EQ(health.score, score) << freeBytes << " of " << totalBytes;
        EXPECT_EQ(health.label(), label) << score;
    }
}

TEST(HealthScore, IsThatOfTheHomesVolume) {
    const TemporaryDisk disk;
    const HealthScore health = LumvaleScanner::healthScore(disk.disk());
    const std::filesystem::space_info space = std::filesystem::space(disk.host("~"));
    EXPECT_EQ(health.totalDiskBytes, static_cast<std::int64_t>(space.capacity));
    EXPECT_LE(health.freeDiskBytes, static_cast<std::int64_t>(space.free));
    EXPECT_EQ(health.score, LumvaleScanner::scoreFor(health.freeDiskBytes, health.totalDiskBytes));

    std::filesystem::remove(disk.host("~"));
    const HealthScore unknown = LumvaleScanner::healthScore(disk.disk());
    EXPECT_EQ(unknown.score, 100);
    EXPECT_EQ(unknown.freeDiskBytes + unknown.totalDiskBytes, 0);
}
