#include "core/scan/scan_result.h"

#include <limits>

#include <gtest/gtest.h>

namespace {

ScanItem item(std::string name, ScanCategory category = ScanCategory::cache, bool tick = true) {
    return ScanItem("/Users/me/Library/Caches/" + std::move(name), 1, category, "exp_cache", tick, {});
}

} // namespace

TEST(ScanItem, KnowsNamesAndCachesThatAreBetterLeftAloneByWholeNames) {
    const std::pair<const char*, const char*> friendly[] = {
        {"Com.Spotify.Client", "Spotify"},
        {"com.spotify.client.plugin", "com.spotify.client.plugin"},
        {"GOOGLE", "Google (Chrome)"},
        {"\xff.bin", "\xff.bin"},
        {"com.apple.Safari/", "Safari"}};
    for (const auto& [component, name] : friendly)
        EXPECT_EQ(item(component).name, name);
    const std::pair<const char*, bool> ticked[] = {
        {"com.apple.Safari", false},      {"com.applet.Safari", true},
        {"GoogleUpdater", false},         {"com.example.app.ShipIt", false},
        {"com.example.ShipIt.app", true}, {"PassKit", false},
        {"PassKitCache", true},           {"ClaudeForDesktop-1", false},
        {"xGeoServicesx", false},         {"com.spotify.client", true}};
    for (const auto& [name, isTicked] : ticked) {
        EXPECT_EQ(item(name).safeByDefault, isTicked) << name;
        EXPECT_TRUE(item(name, ScanCategory::logs).safeByDefault) << name << ": caches only";
        EXPECT_FALSE(item(name, ScanCategory::cache, false).safeByDefault) << name << ": never ticks";
    }
}

TEST(ScanResult, AddsUpWithoutOverflow) {
    ScanItem huge = item("c");
    huge.sizeBytes = std::numeric_limits<std::int64_t>::max() - 1;
    EXPECT_EQ(ScanResult({huge, item("a")}).totalBytes, std::numeric_limits<std::int64_t>::max());
    EXPECT_EQ(ScanResult({huge, huge}).totalBytes, std::numeric_limits<std::int64_t>::max());
}
