#include "core/photos/photo_duplicates.h"

#include "core/photos/photo_grouping.h"
#include "tests/support/photo_catalogue.h"
#include "tests/support/temporary_disk.h"

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
    platform::PhotoLibrary library(PhotoAuthorization status, PhotoAuthorization asked) const {
        return {m_disk.disk(),
                {[status](const platform::Disk&) { return status; },
                 [asked](const platform::Disk&) {
                     return asked;
                 }}};
    }
    platform::PhotoLibrary library(PhotoAuthorization status = PhotoAuthorization::authorized) const {
        return library(status, status);
    }

    /// What comes of a request: it works on a thread of its own, and answers when the test's has time.
    template <class Value, class Request>
    Value answer(Request request) {
        std::vector<platform::Executor::Job> results;
        std::optional<Value> given;
        platform::Executor executor;
        executor.background = [](const auto& job) {
            std::thread(job).join();
        };
        executor.interfaceThread = [&](auto job) {
            results.push_back(std::move(job));
        };
        request([&](Value value) { given = std::move(value); }, executor);
        EXPECT_FALSE(given) << "answered before its time";
        EXPECT_EQ(results.size(), 1U);
        results.at(0)();
        return given.value();
    }

    std::vector<core::DuplicatePhotoGroup>
    groups(PhotoAuthorization status = PhotoAuthorization::authorized) {
        return answer<std::vector<core::DuplicatePhotoGroup>>([&](auto completion, const auto& executor) {
            core::LumvalePhotoDuplicates::findExactDuplicates(completion, executor, library(status));
        });
    }

    Texts ids() {
        Texts found;
        for (const core::DuplicatePhotoGroup& group : groups())
            found.push_back(group.id);
        return found;
    }

    bool deletes(const std::vector<core::DuplicatePhotoItem>& items) {
        return answer<bool>([&](auto completion, const auto& executor) {
            core::LumvalePhotoDuplicates::deleteItems(items, completion, executor, library());
        });
    }

    const TemporaryDisk m_disk;
};

platform::Date date(double seconds) {
    return platform::Date(platform::Date::duration(seconds));
}

core::DuplicatePhotoItem item(std::string id, std::int64_t size = 5,
                              std::optional<platform::Date> taken = {}) {
    return {std::move(id), "name", size, taken, false, false};
}

} // namespace

TEST_F(PhotoDuplicates, AreThoseThatAgreeInAllFiveFacts) {
    CatalogueWriter catalogue(m_disk);
    // Pairs that differ in one fact from all others, or have no size.
    for (const char* half : {"2", "1"})
        for (CataloguedAsset asset : {CataloguedAsset{.uuid = "plain"},
                                      {.uuid = "size", .size = "1001"},
                                      {.uuid = "second", .created = "700000001.0"},
                                      {.uuid = "width", .width = "41"},
                                      {.uuid = "height", .height = "31"},
                                      {.uuid = "turned", .width = "30", .height = "40"},
                                      {.uuid = "video", .kind = "1"},
                                      {.uuid = "undated", .created = "NULL"},
                                      {.uuid = "old", .created = "-978307300.5"},
                                      {.uuid = "zero", .size = "0"},
                                      {.uuid = "below", .size = "-5"},
                                      {.uuid = "none", .size = "NULL"}}) {
            asset.uuid += half;
            asset.name = "'" + asset.uuid + ".jpg'"; // doesn't count
            catalogue.add(asset);
        }
    // Nor do fractions of a second. Times are cut toward zero: from −0.9 to 0.9 since 1970 is one whole
    // second.
    for (const CataloguedAsset& asset : {CataloguedAsset{.uuid = "hidden", .hidden = "1"},
                                         {.uuid = "trashed", .trashed = "1"},
                                         {.uuid = "shared", .visibility = "2"},
                                         {.uuid = "plain3", .created = "700000000.999"},
                                         {.uuid = "cut1", .created = "-978307200.9"},
                                         {.uuid = "cut2", .created = "-978307199.1"},
                                         {.uuid = "before1", .created = "-978307202.0"},
                                         {.uuid = "before2", .created = "-978307202.5"},
                                         {.uuid = "single1", .created = "-978307199"},
                                         {.uuid = "single2", .created = "1e300"},
                                         {.uuid = "single3", .created = "-1e300"}})
        catalogue.add(asset);
    const auto pair = [&](const std::string& name) {
        return name + "1/L0/001-" + name + "2/L0/001";
    };
    // Those with the largest waste, then in the order of the library.
    EXPECT_EQ(ids(), (Texts{pair("plain") + "-plain3/L0/001", pair("size"), pair("second"), pair("width"),
                            pair("height"), pair("turned"), pair("video"), pair("undated"), pair("old"),
                            pair("cut"), pair("before")}));
}

TEST_F(PhotoDuplicates, HoldWhatTheLibraryKnows) {
    EXPECT_TRUE(groups().empty()); // no library
    CatalogueWriter catalogue(m_disk);
    catalogue.add({.uuid = "B", .size = "2000000", .kind = "1", .name = "'b.MOV'"});
    catalogue.add({.uuid = "A", .size = "2000000", .created = "700000000.25", .kind = "1", .favorite = "1"});
    catalogue.add({.uuid = "C", .size = "2000000", .created = "700000000.5", .kind = "1", .name = "NULL"});
    EXPECT_TRUE(groups(PhotoAuthorization::denied).empty());
    const auto found = groups(PhotoAuthorization::limited);
    ASSERT_EQ(found.size(), 1U);
    EXPECT_EQ(found[0].id, "A/L0/001-B/L0/001-C/L0/001");
    EXPECT_EQ(found[0].totalWastedBytes(), 4'000'000);
    EXPECT_EQ(found[0].items, (std::vector<core::DuplicatePhotoItem>{
                                  {"A/L0/001", "IMG_1.JPG", 2'000'000, date(1'678'307'200.25), true, true},
                                  {"B/L0/001", "b.MOV", 2'000'000, date(1'678'307'200.5), false, true},
                                  {"C/L0/001", "", 2'000'000, date(1'678'307'200.5), false, true}}));
}

TEST(DuplicatePhotoGroup, IsInOrderAndCountsWhatIsTooMuch) {
    const core::DuplicatePhotoGroup group(
        {item("b", 5, date(3)), item("c", 9), item("a", 7, date(2)), item("B", 5, date(3)), item("d", 1)});
    EXPECT_EQ(group.id, "B-a-b-c-d");
    Texts order;
    for (const core::DuplicatePhotoItem& one : group.items)
        order.push_back(one.id);
    EXPECT_EQ(order, (Texts{"c", "d", "a", "b", "B"}));
    EXPECT_EQ(group.totalWastedBytes(), 18);
    EXPECT_EQ(core::DuplicatePhotoGroup({item("a")}).totalWastedBytes(), 0);
    constexpr std::int64_t most = std::numeric_limits<std::int64_t>::max();
    EXPECT_EQ(
        core::DuplicatePhotoGroup({item("a", most), item("b", most), item("c", most)}).totalWastedBytes(),
        most);
}

TEST_F(PhotoDuplicates, TellWhatThisProgramMayDo) {
    const std::pair<PhotoAuthorization, core::PhotoAccessState> states[]{
        {PhotoAuthorization::notDetermined, core::PhotoAccessState::notDetermined},
        {PhotoAuthorization::restricted, core::PhotoAccessState::denied},
        {PhotoAuthorization::denied, core::PhotoAccessState::denied},
        {PhotoAuthorization::authorized, core::PhotoAccessState::authorized},
        {PhotoAuthorization::limited, core::PhotoAccessState::limited},
        {static_cast<PhotoAuthorization>(99), core::PhotoAccessState::denied}};
    for (const auto& [answered, state] : states) {
        EXPECT_EQ(core::LumvalePhotoDuplicates::authorizationStatus(library(answered)), state);
        EXPECT_EQ(answer<core::PhotoAccessState>([&](auto completion, const auto& executor) {
                      core::LumvalePhotoDuplicates::requestAccess(
                          completion, executor, library(PhotoAuthorization::notDetermined, answered));
                  }),
                  state);
    }
}

TEST_F(PhotoDuplicates, AreDeletedByTheirIdentifiers) {
    CatalogueWriter catalogue(m_disk, CatalogueWriter::Maker::lumvale);
    for (const char* uuid : {"A", "B", "C"})
        catalogue.add({.uuid = uuid});
    const auto before = groups();
    ASSERT_EQ(before.size(), 1U);
    EXPECT_TRUE(deletes({before[0].items[2], item("gone/L0/001")}));
    EXPECT_EQ(ids(), Texts{"A/L0/001-B/L0/001"});

    catalogue.run("PRAGMA application_id = 0");
    EXPECT_FALSE(deletes({before[0].items[1]}));
    EXPECT_EQ(ids(), Texts{"A/L0/001-B/L0/001"});
}
