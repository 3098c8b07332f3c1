#include "core/scan/health_score.h"
#include "core/scan/scan_result.h"
#include "core/scan/storage_entry.h"

#include <limits>

#include <gtest/gtest.h>

namespace {

ScanItem item(std::string name, ScanCategory category = ScanCategory::cache, bool tick = true) {
    return ScanItem("/Users/me/Library/Caches/" + std::move(name), 1, category, "exp_cache", tick, {});
}

} // namespace

TEST(ScanCategory, RawValuesAreMatchedExactly) {
    for (const ScanCategory category : allScanCategories) {
        EXPECT_EQ(scanCategory(rawValue(category)), category);
        EXPECT_TRUE(translationKey(category).starts_with("cat_"));
    }
    for (const char* other : {"", "corbeille", "Corbeille ", "cache", "Anciens telechargements"})
        EXPECT_FALSE(scanCategory(other)) << other;
    EXPECT_EQ(rawValue(ScanCategory::oldDownloads), "Anciens téléchargements");
    EXPECT_EQ(translationKey(ScanCategory::largeOldFiles), "cat_large_old_files");
}

TEST(ScanItem, FriendlyNameKnowsWholeNamesInAnyCase) {
    const struct {
        const char* component;
        const char* name;
    } cases[] = {
        {"Com.Spotify.Client", "Spotify"},
        {"com.spotify.client.plugin", "com.spotify.client.plugin"},
        {"Foo", "Foo"},
        {"GeoServices", "Cartes et localisation (Apple)"},
        {"GOOGLE", "Google (Chrome)"},
        {"WhatsApp", "WhatsApp"},
        {"\xff.bin", "\xff.bin"},
    };
    for (const auto& c : cases)
        EXPECT_EQ(ScanItem::friendlyName(c.component), c.name);
    EXPECT_EQ(item("com.apple.Safari/").name, "Safari") << "a trailing slash is no part of the name";
}

TEST(ScanItem, CachesThatAreBetterLeftAloneStartUnticked) {
    const struct {
        const char* name;
        bool ticked;
    } cases[] = {
        {"com.apple.Safari", false},      {"com.applet.Safari", true},
        {"GoogleUpdater", false},         {"com.example.app.ShipIt", false},
        {"com.example.ShipIt.app", true}, {"PassKit", false},
        {"PassKitCache", true},           {"Animoji", false},
        {"org.SwiftPM.cache", false},     {"ClaudeForDesktop-1", false},
        {"xGeoServicesx", false},         {"com.spotify.client", true},
    };
    for (const auto& c : cases) {
        EXPECT_EQ(item(c.name).safeByDefault, c.ticked) << c.name;
        EXPECT_TRUE(item(c.name, ScanCategory::logs).safeByDefault) << c.name << ": caches only";
        EXPECT_FALSE(item(c.name, ScanCategory::cache, false).safeByDefault) << c.name << ": never ticks";
    }
}

TEST(ScanItem, IsItsPath) {
    const ScanItem one = item("a");
    EXPECT_EQ(one.id, one.path);
    ScanItem other = one;
    EXPECT_EQ(one, other);
    other.sizeBytes = 2;
    EXPECT_NE(one, other);
    EXPECT_EQ(StorageEntry("Movies", "/Users/me/Movies", 3).id, "/Users/me/Movies");
}

TEST(ScanResult, AddsUpWithoutOverflow) {
    EXPECT_EQ(ScanResult({}).totalBytes, 0);
    EXPECT_EQ(ScanResult({item("a"), item("b")}).totalBytes, 2);
    ScanItem huge = item("c");
    huge.sizeBytes = std::numeric_limits<std::int64_t>::max() - 1;
    EXPECT_EQ(ScanResult({huge, huge}).totalBytes, std::numeric_limits<std::int64_t>::max());
}
