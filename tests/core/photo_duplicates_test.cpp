#include "core/photos/photo_duplicates.h"

#include "tests/support/photo_catalogue.h"
#include "tests/support/temporary_disk.h"

#include <limits>
#include <optional>
#include <string>
#include <thread>
#include <vector>

#include <gtest/gtest.h>

using platform::PhotoAuthorization;

namespace {

using Texts = std::vector<std::string>;

class PhotoDuplicates : public testing::Test {
protected:
    platform::PhotoLibrary library(PhotoAuthorization access = PhotoAuthorization::authorized) const {
        return {m_disk.disk(), photoAccess(access)};
    }

    /// Returns the value that a request hands to its completion. The request works on a thread of its own;
    /// the completion has to run here.
    template <class Value, class Request>
    Value answer(Request request) {
        platform::Executor::Job result;
        std::optional<Value> given;
        const platform::Executor executor{[](const auto& job) { std::thread(job).join(); },
                                          [&](auto job) {
                                              result = std::move(job);
                                          }};
        request([&](Value value) { given = std::move(value); }, executor);
        EXPECT_FALSE(given) << "the completion ran on the background thread";
        result();
        return given.value();
    }

    std::vector<core::DuplicatePhotoGroup>
    groups(PhotoAuthorization access = PhotoAuthorization::authorized) {
        return answer<std::vector<core::DuplicatePhotoGroup>>([&](auto completion, const auto& executor) {
            core::LumvalePhotoDuplicates::findExactDuplicates(completion, executor, library(access));
        });
    }

    const TemporaryDisk m_disk;
};

core::DuplicatePhotoItem item(std::string id, std::int64_t size, std::optional<double> taken = {}) {
    std::optional<platform::Date> date;
    if (taken)
        date = platform::Date(platform::Date::duration(*taken));
    return {std::move(id), "IMG_1.JPG", size, date, false, true};
}

} // namespace

TEST_F(PhotoDuplicates, AgreeInSizeDimensionsSecondAndMediaType) {
    EXPECT_TRUE(groups().empty()); // no library
    CatalogueWriter catalogue(m_disk);
    for (const char* half : {"2", "1"})
        for (CataloguedAsset asset : {CataloguedAsset{.uuid = "plain"},
                                      {.uuid = "size", .size = "1001"},
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
    for (const CataloguedAsset& asset : {CataloguedAsset{.uuid = "hidden", .hidden = "1"},
                                         {.uuid = "trashed", .trashed = "1"},
                                         {.uuid = "plain3", .created = "700000000.999"},
                                         {.uuid = "cut1", .created = "-978307200.9"},
                                         {.uuid = "cut2", .created = "-978307199.1"},
                                         {.uuid = "single1", .created = "-978307199"},
                                         {.uuid = "single2", .created = "1e300"}})
        catalogue.add(asset);
    Texts found;
    for (const core::DuplicatePhotoGroup& group : groups())
        found.push_back(group.id);
    Texts expected{"plain1/L0/001-plain2/L0/001-plain3/L0/001"}; // the largest waste first
    for (const std::string name : {"size", "second", "height", "turned", "video", "undated", "cut"})
        expected.push_back(name + "1/L0/001-" + name + "2/L0/001");
    EXPECT_EQ(found, expected);
}

TEST_F(PhotoDuplicates, GroupsHoldTheOldestFirstAndAreDeletedByIdentifier) {
    CatalogueWriter catalogue(m_disk, CatalogueWriter::Maker::lumvale);
    catalogue.add({.uuid = "B", .kind = "1"});
    catalogue.add({.uuid = "A", .created = "700000000.25", .kind = "1", .favorite = "1"});
    EXPECT_TRUE(groups(PhotoAuthorization::denied).empty());
    const auto found = groups(PhotoAuthorization::limited);
    ASSERT_EQ(found.size(), 1U);
    core::DuplicatePhotoItem favourite = item("A/L0/001", 1000, 1'678'307'200.25);
    favourite.isFavorite = true;
    EXPECT_EQ(found[0].items, (std::vector{favourite, item("B/L0/001", 1000, 1'678'307'200.5)}));

    const auto outcome = answer<platform::PhotoDeletion>([&](auto completion, const auto& executor) {
        core::LumvalePhotoDuplicates::deleteItems({found[0].items[1], item("unknown/L0/001", 1)}, completion,
                                                  executor, library());
    });
    EXPECT_EQ(outcome, platform::PhotoDeletion::done);
    EXPECT_TRUE(groups().empty());
    EXPECT_EQ(catalogue.value("SELECT ZUUID FROM ZASSET WHERE ZTRASHEDSTATE = 1"), "B");
}

TEST(DuplicatePhotoGroup, OrdersItemsByDateAndCountsAllButTheLargest) {
    const core::DuplicatePhotoGroup group({item("b", 5, 3), item("c", 9), item("a", 7, 2), item("B", 5, 3)});
    EXPECT_EQ(group.id, "B-a-b-c");
    Texts order;
    for (const core::DuplicatePhotoItem& one : group.items)
        order.push_back(one.id);
    EXPECT_EQ(order, (Texts{"c", "a", "b", "B"}));
    EXPECT_EQ(group.totalWastedBytes(), 17);
    constexpr std::int64_t most = std::numeric_limits<std::int64_t>::max();
    EXPECT_EQ(
        core::DuplicatePhotoGroup({item("a", most), item("b", most), item("c", most)}).totalWastedBytes(),
        most);
}
