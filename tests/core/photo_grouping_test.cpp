#include "core/photos/photo_grouping.h"

#include <string>
#include <vector>

#include <gtest/gtest.h>

using platform::PhotoResource;
using platform::PhotoResourceType;

namespace {

/// Types of PHAssetResourceType that no photo or video has on its own.
constexpr PhotoResourceType alternatePhoto{4};
constexpr PhotoResourceType adjustmentData{7};
constexpr PhotoResourceType pairedVideo{9};

/// Returns the name of the file that stands for an asset with these files, or "none".
std::string chosen(const std::vector<PhotoResource>& resources, std::string_view identifier = "A") {
    core::LumvalePhotoDuplicates::PhotoGrouping grouping;
    platform::PhotoAsset asset;
    asset.resources = resources;
    for (const char* const ending : {"1", "2"}) {
        const std::string id = std::string(identifier) + ending;
        asset.localIdentifier = id;
        grouping.add(asset);
    }
    const auto groups = grouping.groups();
    return groups.empty() ? "none" : groups[0].items[0].filename;
}

} // namespace

TEST(PhotoGrouping, TakesTheFirstPhotoOrVideoOfAnAssetOrElseItsFirstFile) {
    using enum PhotoResourceType;
    const std::string longest(1024, 'x');
    const std::string longer(65536 + 1, 'x'); // 1 in 16 bits
    const struct {
        std::vector<PhotoResource> resources;
        std::string expected;
    } cases[]{{{{adjustmentData, "a", 9}, {photo, "b", 1}, {fullSizePhoto, "c", 2}}, "b"},
              {{{pairedVideo, "a", 9}, {fullSizeVideo, "b", 1}, {video, "c", 2}}, "b"},
              {{{alternatePhoto, "a", 9}, {fullSizePhoto, "b", 1}, {photo, "c", 2}}, "b"},
              {{{audio, "a", 9}, {video, "b", 1}}, "b"},
              {{{alternatePhoto, "a", 9}, {audio, "b", 1}}, "a"},
              {{{photo, "a", 0}, {fullSizePhoto, "b", 1}}, "none"},
              {{{photo, "a", {}}, {fullSizePhoto, "b", 1}}, "none"},
              {{{photo, longest, 1}}, longest},
              {{{photo, longer, 1}}, "none"},
              {{}, "none"}};
    for (const auto& [resources, expected] : cases)
        EXPECT_EQ(chosen(resources), expected);
    EXPECT_EQ(chosen({{photo, "a", 1}}, longer), "none");
}
