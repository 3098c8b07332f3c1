#include "core/photos/photo_duplicates.h"

#include "core/photos/photo_grouping.h"
#include "tests/support/photo_catalogue.h"
#include "tests/support/temporary_disk.h"

#include <limits>
#include <optional>
#include <string>
#include <vector>

#include <gtest/gtest.h>

using platform::PhotoAuthorization;
using platform::PhotoResource;
using platform::PhotoResourceType;

namespace {

using Texts = std::vector<std::string>;

class PhotoDuplicates : public testing::Test {
protected:
    std::optional<std::vector<core::DuplicatePhotoGroup>>
    groups(PhotoAuthorization access = PhotoAuthorization::authorized) const {
        std::optional<std::vector<core::DuplicatePhotoGroup>> found;
        core::LumvalePhotoDuplicates::findExactDuplicates([&](auto result) { found = std::move(result); },
                                                          m_executor, {m_disk.disk(), photoAccess(access)},
                                                          m_progress);
        return found;
    }

    static void run(const platform::Executor::Job& job) { job(); }

    const platform::Executor m_executor{run, run};
    const TemporaryDisk m_disk;
    const std::shared_ptr<platform::Progress> m_progress = std::make_shared<platform::Progress>();
};

core::DuplicatePhotoItem item(std::string id, std::int64_t size, std::optional<double> taken = {}) {
    std::optional<platform::Date> date;
    if (taken)
        date = platform::Date(platform::Date::duration(*taken));
    return {std::move(id), "IMG_1.JPG", size, date, false, true, 40, 30};
}

/// Types of PHAssetResourceType that no photo or video has on its own.
constexpr PhotoResourceType alternatePhoto{4};
constexpr PhotoResourceType adjustmentData{7};
constexpr PhotoResourceType pairedVideo{9};

/// Returns the name of the file that stands for an asset with these files, or "none".
std::string chosen(const std::vector<PhotoResource>& resources, std::string_view identifier = "A") {
    core::LumvalePhotoDuplicates::PhotoGrouping grouping;
    platform::PhotoAsset asset;
    asset.localIdentifier = identifier;
    asset.resources = resources;
    for (int copies = 0; copies < 2; ++copies)
        grouping.add(asset);
    const auto groups = grouping.groups();
    return groups.empty() ? "none" : groups[0].items[0].filename;
}

} // namespace

TEST_F(PhotoDuplicates, AgreeInSizeDimensionsSecondAndMediaType) {
    EXPECT_EQ(groups(), std::vector<core::DuplicatePhotoGroup>()); // no library
    CatalogueWriter catalogue(m_disk);
    for (const char* half : {"2", "1"})
        for (CataloguedAsset asset : {CataloguedAsset{.uuid = "plain"},
                                      {.uuid = "size", .size = "2001"},
                                      {.uuid = "second", .created = "700000001.0"},
                                      {.uuid = "height", .height = "31"},
                                      {.uuid = "turned", .width = "30", .height = "40"},
                                      {.uuid = "video", .kind = "1"},
                                      {.uuid = "undated", .created = "NULL"},
                                      {.uuid = "zero", .size = "0"},
                                      {.uuid = "none", .size = "NULL"}}) {
            asset.uuid += half;
            asset.name = "'" + asset.uuid + ".jpg'"; // names don't count
            catalogue.add(asset);
        }
    // Fractions of a second are cut off toward 1970, so that -0.9 and 0.9 are the same second.
    for (const CataloguedAsset& asset : {CataloguedAsset{.uuid = "plain3", .created = "700000000.999"},
                                         {.uuid = "cut1", .created = "-978307200.9"},
                                         {.uuid = "cut2", .created = "-978307199.1"},
                                         {.uuid = "single1", .created = "-978307199"},
                                         {.uuid = "single2", .created = "1e300"}})
        catalogue.add(asset);
    Texts found;
    const auto all = groups();
    for (const core::DuplicatePhotoGroup& group : all.value())
        found.push_back(group.id);
    // The largest waste first.
    Texts expected{"size1/L0/001-size2/L0/001", "plain1/L0/001-plain2/L0/001-plain3/L0/001"};
    for (const std::string name : {"second", "height", "turned", "video", "undated", "cut"})
        expected.push_back(name + "1/L0/001-" + name + "2/L0/001");
    EXPECT_EQ(found, expected);
}

TEST_F(PhotoDuplicates, GroupsHoldTheOldestFirstAndAreDeletedByIdentifier) {
    CatalogueWriter catalogue(m_disk, CatalogueWriter::Maker::lumvale);
    catalogue.add({.uuid = "B", .kind = "1"});
    catalogue.add({.uuid = "A", .created = "700000000.25", .kind = "1", .favorite = "1"});
    EXPECT_EQ(groups(PhotoAuthorization::denied), std::nullopt);
    const auto found = groups(PhotoAuthorization::limited).value();
    ASSERT_EQ(found.size(), 1U);
    EXPECT_EQ(m_progress->entries(), 2);
    EXPECT_EQ(m_progress->bytes(), 2000);
    core::DuplicatePhotoItem favorite = item("A/L0/001", 1000, 1'678'307'200.25);
    favorite.isFavorite = true;
    EXPECT_EQ(found[0].items, (std::vector{favorite, item("B/L0/001", 1000, 1'678'307'200.5)}));

    auto outcome = platform::PhotoDeletion::failed;
    core::LumvalePhotoDuplicates::deleteItems({found[0].items[1], item("unknown/L0/001", 1)},
                                              [&](platform::PhotoDeletion how) { outcome = how; }, m_executor,
                                              {m_disk.disk(), photoAccess()});
    EXPECT_EQ(outcome, platform::PhotoDeletion::done);
    EXPECT_TRUE(groups().value().empty());
    EXPECT_EQ(catalogue.value("SELECT ZUUID FROM ZASSET WHERE ZTRASHEDSTATE = 1"), "B");
    catalogue.add({.uuid = "C"});
    m_progress->stop();
    EXPECT_EQ(groups(), std::nullopt);
    EXPECT_EQ(m_progress->entries(), 1);
}

TEST(DuplicatePhotoGroup, OrdersItemsByDateAndCountsAllButTheLargest) {
    const core::DuplicatePhotoGroup group({item("b", 5, 3), item("c", 9), item("a", 7, 2), item("B", 5, 3)});
    EXPECT_EQ(group.id, "B-a-b-c");
    EXPECT_EQ(group.items, (std::vector{item("c", 9), item("a", 7, 2), item("b", 5, 3), item("B", 5, 3)}));
    EXPECT_EQ(group.totalWastedBytes(), 17);
    constexpr std::int64_t most = std::numeric_limits<std::int64_t>::max();
    EXPECT_EQ(core::DuplicatePhotoGroup(std::vector(3, item("a", most))).totalWastedBytes(), most);
}

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
