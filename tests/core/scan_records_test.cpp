#include "core/scan/scan_result.h"

#include <limits>

#include <gtest/gtest.h>

namespace {

ScanItem item(std::string name, ScanCategory category = ScanCategory::cache, bool tick = true) {
    return ScanItem("/Users/me/Library/Caches/" + std::move(name), 1, category, "exp_cache", tick, {});
}

} // namespace

TEST(ScanItem, FriendlyNameKnowsWholeNamesInAnyCase) {
    const std::pair<const char*, const char*> cases[] = {
        {"Com.Spotify.Client", "Spotify"},
        {"com.spotify.client.plugin", "com.spotify.client.plugin"},
        {"GOOGLE", "Google (Chrome)"},
        {"\xff.bin", "\xff.bin"}};
    for (const auto& [component, name] : cases)
        EXPECT_EQ(ScanItem::friendlyName(component), name);
    EXPECT_EQ(item("com.apple.Safari/").name, "Safari") << "a trailing slash is no part of the name";
}

TEST(ScanItem, CachesThatAreBetterLeftAloneStartUnticked) {
    const std::pair<const char*, bool> cases[] = {
        {"com.apple.Safari", false},      {"com.applet.Safari", true},
        {"GoogleUpdater", false},         {"com.example.app.ShipIt", false},
        {"com.example.ShipIt.app", true}, {"PassKit", false},
        {"PassKitCache", true},           {"ClaudeForDesktop-1", false},
        {"xGeoServicesx", false},         {"com.spotify.client", true}};
    for (const auto& [name, isTicked] : cases) {
        EXPECT_EQ(item(name).safeByDefault, isTicked) << name;
        EXPECT_TRUE(item(name, ScanCategory::logs).safeByDefault) << name << ": caches only";
        EXPECT_FALSE(item(name, ScanCategory::cache, false).safeByDefault) << name << ": never ticks";
    }
}

TEST(ScanResult, AddsUpWithoutOverflow) {
    EXPECT_EQ(ScanResult({item("a"), item("b")}).totalBytes, 2);
    ScanItem huge = item("c");
    huge.sizeBytes = std::numeric_limits<std::int64_t>::max() - 1;
    EXPECT_EQ(ScanResult({huge, huge}).totalBytes, std::numeric_limits<std::int64_t>::max());
}
