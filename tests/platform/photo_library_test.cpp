#include "platform/photos/photo_library.h"

#include "tests/support/photo_catalogue.h"
#include "tests/support/process.h"
#include "tests/support/temporary_disk.h"

#include <cstdlib>
#include <filesystem>
#include <string>
#include <vector>

#include <unistd.h>

#include <gtest/gtest.h>

using platform::PhotoAsset;
using platform::PhotoAuthorization;
using platform::PhotoLibrary;

namespace {

using Log = CatalogueWriter::Log;
using Maker = CatalogueWriter::Maker;
using Texts = std::vector<std::string>;

const std::string libraryFolder = CatalogueWriter::folder;
const std::string file = CatalogueWriter::file;
const Texts unreadable{"unreadable"};

PhotoLibrary libraryOn(const TemporaryDisk& disk,
                       PhotoAuthorization answer = PhotoAuthorization::authorized) {
    const auto access = [answer](const platform::Disk&) {
        return answer;
    };
    return {disk.disk(), {access, access}};
}

/// Returns the assets in the order of the library, or `unreadable` when not all could be read.
Texts assets(const PhotoLibrary& library) {
    Texts lines;
    const bool isWhole = library.visitAssets(
        [&] { lines.clear(); }, [&](const PhotoAsset& asset) { lines.emplace_back(asset.localIdentifier); });
    return isWhole ? lines : unreadable;
}

struct PhotoLibraryOnDisk : testing::Test {
    const TemporaryDisk disk;
    const PhotoLibrary library = libraryOn(disk);
};

} // namespace

TEST_F(PhotoLibraryOnDisk, ListsVisibleAssetsOfBothSchemas) {
    for (const auto form : {CatalogueWriter::Form::macOS10, CatalogueWriter::Form::macOS11}) {
        const TemporaryDisk of;
        CatalogueWriter catalogue(of, Maker::mac, Log::none, form);
        for (const CataloguedAsset& asset :
             {CataloguedAsset{.uuid = "Z"},
              {.uuid = "A", .size = "NULL", .created = "'soon'", .width = "NULL", .name = "NULL"},
              {.uuid = "HIDDEN", .hidden = "1"},
              {.uuid = "TRASHED", .trashed = "1"},
              {.uuid = "SHARED", .visibility = "2"},
              {.uuid = std::string(65, 'x')},
              {.uuid = "LONG", .name = "'" + std::string(1025, 'x') + "'"}})
            catalogue.add(asset);
        EXPECT_EQ(assets(libraryOn(of, PhotoAuthorization::limited)), (Texts{"Z/L0/001", "A/L0/001"}));
    }
}

TEST_F(PhotoLibraryOnDisk, ReadsTheWriteAheadLogAndLeavesNoTrace) {
    const OrdinaryUser user;
    const std::pair<Log, const char*> cases[]{
        {Log::none, "BEGIN EXCLUSIVE"}, {Log::pending, "BEGIN IMMEDIATE"}, {Log::pending, nullptr}};
    for (const auto& [log, transaction] : cases) {
        for (const unsigned mode : {0755U, 0555U}) {
            const TemporaryDisk of;
            CatalogueWriter catalogue(of, Maker::mac, log);
            catalogue.add({.uuid = "A"});
            if (transaction != nullptr)
                catalogue.run(transaction);
            else
                catalogue.abandon();
            of.setMode(libraryFolder + "/database", mode);
            const auto entries = of.entries();
            const std::size_t open = openDescriptors();
            EXPECT_EQ(assets(libraryOn(of)), Texts{"A/L0/001"});
            EXPECT_EQ(openDescriptors(), open);
            EXPECT_EQ(of.entries(), entries);
        }
    }
}

TEST_F(PhotoLibraryOnDisk, StartsAgainWhenTheCatalogueChanges) {
    CatalogueWriter catalogue(disk);
    catalogue.add({.uuid = "A"});
    std::size_t found = 0;
    int passes = 0;
    const auto begin = [&] {
        found = 0;
        if (++passes < 3)
            catalogue.add({.uuid = std::to_string(passes)});
    };
    EXPECT_TRUE(library.visitAssets(begin, [&](const PhotoAsset&) { ++found; }));
    EXPECT_EQ(found, 3U);
    EXPECT_FALSE(library.visitAssets([&] { catalogue.add({.uuid = "more"}); }, [](const PhotoAsset&) {}));
    disk.write(file + "-journal", "half"); // an interrupted transaction
    EXPECT_EQ(assets(library), unreadable);
}

TEST_F(PhotoLibraryOnDisk, ReportsDamagedAndForeignFilesAsUnreadable) {
    CatalogueWriter catalogue(disk);
    for (int i = 0; i < 200; ++i)
        catalogue.add({.uuid = std::to_string(i)});
    catalogue.abandon();
    const std::string good = disk.read(file);
    disk.write("~/elsewhere.sqlite", good);
    for (const char* how :
         {"/folder/", " |", " -> /Users/me/elsewhere.sqlite", " -> Photos.sqlite", " 100000"}) {
        std::filesystem::remove_all(disk.host(file));
        EXPECT_EQ(assets(library), unreadable) << "missing";
        disk.make(file + how);
        EXPECT_EQ(assets(library), unreadable) << how;
    }
    for (const std::size_t length : {10UL, 4096UL, good.size() / 2, good.size() - 4096}) {
        disk.write(file, good.substr(0, length));
        EXPECT_EQ(assets(library), unreadable) << length;
    }
    for (std::size_t at = 0; at < good.size(); at += 97) { // must end, whatever it returns
        std::string changed = good;
        changed[at] = static_cast<char>(~changed[at]);
        disk.write(file, changed);
        assets(library);
    }
    const TemporaryDisk linked;
    linked.make("~/Pictures -> " + disk.host("~/Pictures")); // leads out of this disk
    EXPECT_EQ(assets(libraryOn(linked)), unreadable);
}

TEST_F(PhotoLibraryOnDisk, ChangesOnlyOwnCataloguesAndOnlyWithAccess) {
    const struct {
        const char* what;
        Maker maker;
        std::string sql;
        PhotoAuthorization access = PhotoAuthorization::authorized;
    } cases[]{
        {"a Mac's", Maker::mac, ""},
        {"another application_id", Maker::mac, "PRAGMA application_id = 1"},
        {"without access", Maker::lumvale, "", PhotoAuthorization::denied},
        {"with triggers", Maker::lumvale,
         "CREATE TRIGGER t AFTER UPDATE ON ZASSET BEGIN DELETE FROM ZASSET; END"},
        {"ambiguous identifiers", Maker::lumvale, "UPDATE ZASSET SET ZUUID = 'A' WHERE Z_PK = 3"},
        {"a view", Maker::lumvale,
         "CREATE TABLE t AS SELECT * FROM ZASSET; DROP TABLE ZASSET; CREATE VIEW ZASSET AS SELECT * FROM t"},
        {"open in another program", Maker::lumvale, "BEGIN EXCLUSIVE"}};
    for (const auto& [what, maker, sql, access] : cases) {
        const TemporaryDisk of;
        CatalogueWriter catalogue(of, maker);
        for (const char* uuid : {"B", "A", "C"})
            catalogue.add({.uuid = uuid});
        catalogue.run(sql);
        const auto entries = of.entries();
        EXPECT_FALSE(libraryOn(of, access).deleteAssets({"B/L0/001", "A/L0/001"})) << what;
        EXPECT_EQ(catalogue.value("SELECT count(*) FROM ZASSET WHERE ZTRASHEDSTATE = 0"), "3") << what;
        if (maker == Maker::mac || access == PhotoAuthorization::denied) {
            EXPECT_EQ(of.entries(), entries) << what;
        }
        if (access == PhotoAuthorization::denied || what == std::string("a view")) {
            EXPECT_EQ(assets(libraryOn(of, access)), unreadable) << what;
        }
    }
}

TEST_F(PhotoLibraryOnDisk, OpensPicturesInsideTheLibraryOnly) {
    CatalogueWriter catalogue(disk);
    const std::string originals = libraryFolder + "/originals";
    const std::string derivatives = libraryFolder + "/resources/derivatives";
    const std::pair<std::string, const char*> files[]{
        {originals + "/A/HERE.jpeg", "original"},
        {originals + "/A/SMALL.jpeg", "original"},
        {derivatives + "/S/SMALL_1_105_c.jpeg", "larger"},
        {derivatives + "/masters/S/SMALL_4_5005_c.jpeg", "small"},
        {derivatives + "/O/ONLY_1_105_c.jpeg", "larger"},
        {"~/secret", "secret"},
        {"/etc/secret", "secret"}};
    for (const auto& [path, content] : files)
        disk.write(path, content);
    disk.make({originals + "/A/LINK.jpeg -> /Users/me/secret", originals + "/OUT -> /Users/me",
               derivatives + "/T/TRICK_1_105_c.jpeg -> /Users/me/secret"});
    const struct {
        CataloguedAsset asset;
        const char* picture;
    } cases[]{{{.uuid = "HERE"}, "original"},
              {{.uuid = "SMALL"}, "small"},
              {{.uuid = "ONLY"}, "larger"},
              {{.uuid = "AWAY"}, "in the cloud"},
              {{.uuid = "TRICK"}, "in the cloud"},
              {{.uuid = "LINK"}, "none"},
              {{.uuid = "HIDDEN", .hidden = "1", .file = "'HERE.jpeg'"}, "none"},
              {{.uuid = "ABSOLUTE", .directory = "'/etc'", .file = "'secret'"}, "none"},
              {{.uuid = "UP", .directory = "'A/../../../..'", .file = "'secret'"}, "none"},
              {{.uuid = "OUT", .directory = "'OUT'", .file = "'secret'"}, "none"},
              {{.uuid = "NAME", .file = "'../../../../secret'"}, "none"},
              {{.uuid = "ZERO", .directory = "'A' || char(0) || 'B'"}, "none"}};
    for (const auto& [asset, picture] : cases)
        catalogue.add(asset);
    for (const auto& [asset, expected] : cases) {
        const platform::PhotoPicture picture = library.picture(asset.uuid + "/L0/001");
        std::string shown = picture.isInCloud ? "in the cloud" : "none";
        char bytes[100];
        if (picture.file)
            shown.assign(bytes, static_cast<std::size_t>(read(picture.file.number(), bytes, sizeof bytes)));
        EXPECT_EQ(shown, expected) << asset.uuid;
    }
}

TEST(PhotoAccess, IsRequestedOnceAndThenDependsOnTheDisk) {
    const OrdinaryUser user;
    const TemporaryDisk disk;
    const PhotoLibrary photos(disk.disk());
    setenv("LUMVALE_SETTINGS", disk.host("/config").c_str(), 1);
    EXPECT_EQ(photos.authorization(), PhotoAuthorization::notDetermined);
    EXPECT_EQ(photos.requestAuthorization(), PhotoAuthorization::authorized);
    CatalogueWriter catalogue(disk);
    EXPECT_EQ(photos.authorization(), PhotoAuthorization::authorized);
    disk.setMode(file, 0);
    EXPECT_EQ(photos.authorization(), PhotoAuthorization::denied);
    unsetenv("LUMVALE_SETTINGS");
}
