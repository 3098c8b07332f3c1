#include "core/photos/photo_duplicates.h"

#include "core/photos/photo_grouping.h"
#include "tests/support/photo_catalogue.h"
#include "tests/support/temporary_disk.h"

#include <deque>
#include <optional>
#include <string>
#include <thread>
#include <vector>

#include <gtest/gtest.h>

using platform::PhotoAuthorization;

namespace {

using Texts = std::vector<std::string>;

/// Background work runs on a thread of its own, what comes back on the test's.
class TwoThreads {
public:
    platform::Executor executor() {
        return {.background =
                    [this](platform::Executor::Job job) {
                        std::thread([&] {
                            m_background = std::this_thread::get_id();
                            job();
                        }).join();
                    },
                .interfaceThread =
                    [this](platform::Executor::Job job) {
                        EXPECT_EQ(std::this_thread::get_id(), m_background);
                        m_results.push_back(std::move(job));
                    }};
    }

    /// Lets the one result be seen that must have come.
    void publish() {
        ASSERT_EQ(m_results.size(), 1U);
        m_results.front()();
        m_results.pop_front();
    }

private:
    std::thread::id m_background;
    std::deque<platform::Executor::Job> m_results;
};

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

    std::vector<DuplicatePhotoGroup> groups(PhotoAuthorization status = PhotoAuthorization::authorized) {
        std::optional<std::vector<DuplicatePhotoGroup>> found;
        LumvalePhotoDuplicates::findExactDuplicates([&](auto groups) { found = std::move(groups); },
                                                    m_threads.executor(), library(status));
        EXPECT_FALSE(found) << "answered before its time";
        m_threads.publish();
        return found.value();
    }

    Texts ids() {
        Texts found;
        for (const DuplicatePhotoGroup& group : groups())
            found.push_back(group.id);
        return found;
    }

    std::optional<bool> deleted(const std::vector<DuplicatePhotoItem>& items) {
        std::optional<bool> succeeded;
        LumvalePhotoDuplicates::deleteItems(
            items, [&](bool flag) { succeeded = flag; }, m_threads.executor(), library());
        m_threads.publish();
        return succeeded;
    }

    const TemporaryDisk m_disk;
    TwoThreads m_threads;
};

DuplicatePhotoItem item(std::string id, std::int64_t size = 5, std::optional<double> seconds = {}) {
    std::optional<platform::Date> date;
    if (seconds)
        date = platform::Date(platform::Date::duration(*seconds));
    return {std::move(id), "name", size, date, false, false};
}

} // namespace

TEST_F(PhotoDuplicates, AreThoseThatAgreeInAllFiveFacts) {
    CatalogueWriter catalogue(m_disk);
    // Pairs that differ in one fact from all others.
    const CataloguedAsset kinds[]{{.uuid = "plain"},
                                  {.uuid = "size", .size = "1001"},
                                  {.uuid = "second", .created = "700000001.0"},
                                  {.uuid = "width", .width = "41"},
                                  {.uuid = "height", .height = "31"},
                                  {.uuid = "turned", .width = "30", .height = "40"},
                                  {.uuid = "video", .kind = "1"},
                                  {.uuid = "undated", .created = "NULL"},
                                  {.uuid = "old", .created = "-978307300.5"}};
    for (const char* half : {"2", "1"})
        for (CataloguedAsset asset : kinds) {
            asset.uuid += half;
            // The fraction of a second doesn't count, nor does the name.
            if (asset.uuid == "plain1")
                asset.created = "700000000.999";
            if (asset.uuid == "old1")
                asset.created = "-978307300.1";
            asset.name = "'" + asset.uuid + ".jpg'";
            catalogue.add(asset);
        }
    // What has no size, or isn't shown, is nobody's duplicate.
    for (const CataloguedAsset& asset : {CataloguedAsset{.uuid = "zero", .size = "0"},
                                         {.uuid = "below", .size = "-5"},
                                         {.uuid = "none", .size = "NULL"},
                                         {.uuid = "part", .size = "1.5"}})
        for (const char* half : {"1", "2"}) {
            CataloguedAsset one = asset;
            one.uuid += half;
            catalogue.add(one);
        }
    catalogue.add({.uuid = "hidden", .hidden = "1"});
    catalogue.add({.uuid = "trashed", .trashed = "1"});
    catalogue.add({.uuid = "shared", .visibility = "2"});
    catalogue.add({.uuid = "single", .size = "77"});

    const std::string end = "/L0/001";
    const auto pair = [&](const std::string& name) {
        return name + "1" + end + "-" + name + "2" + end;
    };
    // The one with the largest waste, then in the order of the library.
    EXPECT_EQ(ids(), (Texts{pair("size"), pair("plain"), pair("second"), pair("width"), pair("height"),
                            pair("turned"), pair("video"), pair("undated"), pair("old")}));
}

TEST_F(PhotoDuplicates, TruncateTheTimeTowardZero) {
    CatalogueWriter catalogue(m_disk);
    // Seconds since 1970 from −0.9 to 0.9 are one whole second, and those beside it others.
    const std::pair<const char*, const char*> assets[]{
        {"A", "-978307200.9"}, {"B", "-978307199.1"}, {"C", "-978307202.0"}, {"D", "-978307202.5"},
        {"E", "-978307199"},   {"F", "1e300"},        {"G", "-1e300"}};
    for (const auto& [uuid, created] : assets)
        catalogue.add({.uuid = uuid, .created = created});
    EXPECT_EQ(ids(), (Texts{"A/L0/001-B/L0/001", "C/L0/001-D/L0/001"}));
}

TEST_F(PhotoDuplicates, HoldWhatTheLibraryKnows) {
    CatalogueWriter catalogue(m_disk);
    catalogue.add({.uuid = "B", .size = "2000000", .kind = "1", .name = "'b.MOV'"});
    catalogue.add({.uuid = "A", .size = "2000000", .created = "700000000.25", .kind = "1", .favorite = "1"});
    catalogue.add({.uuid = "C", .size = "2000000", .created = "700000000.5", .kind = "1", .name = "NULL"});
    const auto found = groups(PhotoAuthorization::limited);
    ASSERT_EQ(found.size(), 1U);
    EXPECT_EQ(found[0].id, "A/L0/001-B/L0/001-C/L0/001");
    EXPECT_EQ(found[0].totalWastedBytes(), 4'000'000);
    const auto date = [](double seconds) {
        return platform::Date(platform::Date::duration(seconds));
    };
    EXPECT_EQ(found[0].items, (std::vector<DuplicatePhotoItem>{
                                  {"A/L0/001", "IMG_1.JPG", 2'000'000, date(1'678'307'200.25), true, true},
                                  {"B/L0/001", "b.MOV", 2'000'000, date(1'678'307'200.5), false, true},
                                  {"C/L0/001", "", 2'000'000, date(1'678'307'200.5), false, true}}));
}

TEST(DuplicatePhotoGroup, IsInOrderAndCountsWhatIsTooMuch) {
    const DuplicatePhotoGroup group(
        {item("b", 5, 3), item("c", 9), item("a", 7, 2), item("B", 5, 3), item("d", 1)});
    EXPECT_EQ(group.id, "B-a-b-c-d");
    Texts order;
    for (const DuplicatePhotoItem& one : group.items)
        order.push_back(one.id);
    EXPECT_EQ(order, (Texts{"c", "d", "a", "b", "B"}));
    EXPECT_EQ(group.totalWastedBytes(), 18);
    EXPECT_EQ(DuplicatePhotoGroup({item("a")}).totalWastedBytes(), 0);
    constexpr std::int64_t most = std::numeric_limits<std::int64_t>::max();
    EXPECT_EQ(DuplicatePhotoGroup({item("a", most), item("b", most), item("c", most)}).totalWastedBytes(),
              most);
}

TEST_F(PhotoDuplicates, AreNoneWithoutAccess) {
    EXPECT_TRUE(groups().empty()); // no library
    CatalogueWriter catalogue(m_disk);
    catalogue.add({.uuid = "A"});
    catalogue.add({.uuid = "B"});
    EXPECT_EQ(groups().size(), 1U);
    for (const auto status :
         {PhotoAuthorization::notDetermined, PhotoAuthorization::restricted, PhotoAuthorization::denied})
        EXPECT_TRUE(groups(status).empty());
}

TEST_F(PhotoDuplicates, TellWhatThisProgramMayDo) {
    const std::pair<PhotoAuthorization, PhotoAccessState> states[]{
        {PhotoAuthorization::notDetermined, PhotoAccessState::notDetermined},
        {PhotoAuthorization::restricted, PhotoAccessState::denied},
        {PhotoAuthorization::denied, PhotoAccessState::denied},
        {PhotoAuthorization::authorized, PhotoAccessState::authorized},
        {PhotoAuthorization::limited, PhotoAccessState::limited},
        {static_cast<PhotoAuthorization>(99), PhotoAccessState::denied}};
    for (const auto& [answer, state] : states) {
        EXPECT_EQ(LumvalePhotoDuplicates::authorizationStatus(library(answer)), state);
        std::optional<PhotoAccessState> asked;
        LumvalePhotoDuplicates::requestAccess([&](PhotoAccessState now) { asked = now; },
                                              m_threads.executor(),
                                              library(PhotoAuthorization::notDetermined, answer));
        EXPECT_FALSE(asked);
        m_threads.publish();
        EXPECT_EQ(asked, state);
    }
}

TEST_F(PhotoDuplicates, AreDeletedByTheirIdentifiers) {
    CatalogueWriter catalogue(m_disk, CatalogueWriter::Maker::lumvale);
    for (const char* uuid : {"A", "B", "C"})
        catalogue.add({.uuid = uuid});
    const auto before = groups();
    ASSERT_EQ(before.size(), 1U);
    EXPECT_EQ(deleted({before[0].items[2], item("gone/L0/001")}), true);
    EXPECT_EQ(ids(), Texts{"A/L0/001-B/L0/001"});

    catalogue.run("PRAGMA application_id = 0");
    EXPECT_EQ(deleted({before[0].items[1]}), false);
    EXPECT_EQ(ids(), Texts{"A/L0/001-B/L0/001"});
}
