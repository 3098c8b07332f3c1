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

std::string identifierOf(const PhotoAsset& asset) {
    return std::string(asset.localIdentifier);
}

std::string factsOf(const PhotoAsset& asset) {
    std::string line = identifierOf(asset) + " " + std::to_string(static_cast<int>(asset.mediaType)) + " "
                       + std::to_string(asset.pixelWidth) + "x" + std::to_string(asset.pixelHeight) + " ";
    line += asset.creationDate ? std::to_string(platform::secondsSince1970(*asset.creationDate)) : "-";
    line += asset.isFavorite ? " favourite " : " ";
    if (!asset.resource)
        return line;
    const auto& size = asset.resource->fileSize;
    return line + std::string(asset.resource->originalFilename) + " " + (size ? std::to_string(*size) : "-");
}

/// Returns the assets in the order of the library, or `unreadable` when not all could be read.
Texts assets(const PhotoLibrary& library, std::string (*text)(const PhotoAsset&) = identifierOf) {
    Texts lines;
    const bool isWhole = library.visitAssets([&] { lines.clear(); },
                                             [&](const PhotoAsset& asset) { lines.push_back(text(asset)); });
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
             {CataloguedAsset{.uuid = "Z", .favorite = "1"},
              {.uuid = "A", .size = "0", .created = "-0.25", .kind = "1", .name = "'caf' || x'e9'"},
              {.uuid = "B", .size = "NULL", .created = "NULL", .width = "NULL", .kind = "2", .name = "NULL"},
              {.uuid = "C", .size = "'12'", .created = "'soon'", .kind = "7"},
              {.uuid = "D", .size = "1.5", .created = "9e999", .kind = "NULL"},
              {.uuid = "HIDDEN", .hidden = "1"},
              {.uuid = "TRASHED", .trashed = "1"},
              {.uuid = "SHARED", .visibility = "2"},
              {.uuid = std::string(65, 'x')},
              {.uuid = "LONG", .name = "'" + std::string(1025, 'x') + "'"}})
            catalogue.add(asset);
        EXPECT_EQ(assets(libraryOn(of, PhotoAuthorization::limited), factsOf),
                  (Texts{"Z/L0/001 1 40x30 1678307200.500000 favourite IMG_1.JPG 1000",
                         "A/L0/001 2 40x30 978307199.750000 caf\xE9 0", "B/L0/001 3 0x30 -  -",
                         "C/L0/001 0 40x30 - IMG_1.JPG 12", "D/L0/001 0 40x30 - IMG_1.JPG -"}));
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
    Texts found;
    int passes = 0;
    const auto visit = [&](const PhotoAsset& asset) {
        found.emplace_back(asset.localIdentifier);
    };
    const auto begin = [&] {
        found.clear();
        if (++passes < 3)
            catalogue.add({.uuid = std::to_string(passes)});
    };
    EXPECT_TRUE(library.visitAssets(begin, visit));
    EXPECT_EQ(found, (Texts{"A/L0/001", "1/L0/001", "2/L0/001"}));
    EXPECT_FALSE(library.visitAssets([&] { catalogue.add({.uuid = "more"}); }, visit)) << "changes each time";
    disk.write(file + "-journal", "half"); // an interrupted transaction
    EXPECT_EQ(assets(library), unreadable);
}

TEST_F(PhotoLibraryOnDisk, ReportsDamagedAndForeignFilesAsUnreadable) {
    EXPECT_EQ(assets(library), unreadable);
    CatalogueWriter catalogue(disk);
    for (int i = 0; i < 200; ++i)
        catalogue.add({.uuid = std::to_string(i)});
    catalogue.abandon();
    const std::string good = disk.read(file);
    disk.write("~/elsewhere.sqlite", good);
    for (const char* how :
         {" |", " -> /Users/me/elsewhere.sqlite", " -> Photos.sqlite", " 100", " 100000", "/folder/"}) {
        std::filesystem::remove_all(disk.host(file));
        disk.make(file + how);
        EXPECT_EQ(assets(library), unreadable) << how;
    }
    std::filesystem::remove_all(disk.host(file));
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
    disk.write(file, good);
    disk.make(file + "-wal |");
    EXPECT_EQ(assets(library), unreadable);

    const TemporaryDisk linked;
    linked.make("~/Pictures -> " + disk.host("~/Pictures")); // leads out of this disk
    EXPECT_EQ(assets(libraryOn(linked)), unreadable);
}

TEST_F(PhotoLibraryOnDisk, RunsNoViewsOrModulesOfTheCatalogue) {
    for (const std::string trick :
         {"CREATE VIEW ZASSET AS SELECT * FROM real",
          "CREATE VIEW ZASSET AS WITH RECURSIVE n(i) AS (SELECT 1 UNION ALL SELECT i + 1 FROM n)"
          " SELECT i Z_PK, 0 ZTRASHEDSTATE, 0 ZHIDDEN, 0 ZVISIBILITYSTATE, i ZUUID, 0 ZKIND, 1 ZWIDTH,"
          " 1 ZHEIGHT, 0 ZDATECREATED, 0 ZFAVORITE FROM n",
          "CREATE VIRTUAL TABLE ZASSET USING fts5(Z_PK, ZTRASHEDSTATE, ZHIDDEN, ZVISIBILITYSTATE, ZUUID,"
          " ZKIND, ZWIDTH, ZHEIGHT, ZDATECREATED, ZFAVORITE)",
          "CREATE TABLE ZASSET (Z_PK INTEGER PRIMARY KEY, ZUUID VARCHAR)"}) {
        const TemporaryDisk of;
        CatalogueWriter catalogue(of, Maker::lumvale);
        catalogue.add({.uuid = "A"});
        catalogue.run("CREATE TABLE real AS SELECT * FROM ZASSET; DROP TABLE ZASSET; " + trick);
        EXPECT_FALSE(libraryOn(of).visitAssets([] {}, [](const PhotoAsset&) { FAIL(); })) << trick;
        EXPECT_FALSE(libraryOn(of).deleteAssets({"A/L0/001"})) << trick;
    }
}

TEST_F(PhotoLibraryOnDisk, MovesAssetsToTheRecentlyDeletedOnes) {
    for (const Log log : {Log::none, Log::pending}) {
        const TemporaryDisk of;
        CatalogueWriter catalogue(of, Maker::lumvale, log);
        for (const char* uuid : {"A", "B", "C"})
            catalogue.add({.uuid = uuid});
        const double before = platform::secondsSince1970(platform::now()) - 978'307'200;
        EXPECT_TRUE(libraryOn(of).deleteAssets({"C/L0/001", "unknown/L0/001", "", "B", "' OR 1/L0/001"}));
        EXPECT_EQ(catalogue.value("SELECT group_concat(ZUUID) FROM ZASSET WHERE ZTRASHEDSTATE = 1"
                                  " AND ZTRASHEDDATE BETWEEN "
                                  + std::to_string(before) + " AND " + std::to_string(before + 3600)),
                  "C");
        EXPECT_EQ(assets(libraryOn(of)), (Texts{"A/L0/001", "B/L0/001"}));
        EXPECT_EQ(catalogue.value("PRAGMA integrity_check"), "ok");
    }
}

TEST_F(PhotoLibraryOnDisk, ChangesOnlyOwnWritableCataloguesAndOnlyWithAccess) {
    const OrdinaryUser user;
    const struct {
        const char* what;
        Maker maker;
        const char* sql;
        PhotoAuthorization access = PhotoAuthorization::authorized;
        const char* journal = "";
        unsigned mode = 0644;
    } cases[]{{"a Mac's", Maker::mac, ""},
              {"another application_id", Maker::mac, "PRAGMA application_id = 1"},
              {"with triggers", Maker::lumvale,
               "CREATE TRIGGER t AFTER UPDATE ON ZASSET BEGIN DELETE FROM ZASSET; END"},
              {"ambiguous identifiers", Maker::lumvale, "UPDATE ZASSET SET ZUUID = 'A' WHERE Z_PK = 3"},
              {"without access", Maker::lumvale, "", PhotoAuthorization::denied},
              {"interrupted transaction", Maker::lumvale, "", PhotoAuthorization::authorized, "half"},
              {"not writable", Maker::lumvale, "", PhotoAuthorization::authorized, "", 0444}};
    for (const auto& [what, maker, sql, access, journal, mode] : cases) {
        for (const Log log : {Log::none, Log::pending}) {
            const TemporaryDisk of;
            CatalogueWriter catalogue(of, maker, log);
            for (const char* uuid : {"B", "A", "C"})
                catalogue.add({.uuid = uuid});
            catalogue.run(sql);
            catalogue.abandon();
            of.write(file + "-journal", journal);
            of.setMode(file, mode);
            const auto entries = of.entries();
            EXPECT_FALSE(libraryOn(of, access).deleteAssets({"B/L0/001", "A/L0/001"})) << what;
            if (maker == Maker::mac || access == PhotoAuthorization::denied) {
                EXPECT_EQ(of.entries(), entries) << what;
                EXPECT_EQ(assets(libraryOn(of, access)) == unreadable, access == PhotoAuthorization::denied);
            }
            of.write(file + "-journal", "");
            EXPECT_EQ(assets(libraryOn(of)).size(), 3U) << what;
        }
    }
    CatalogueWriter catalogue(disk, Maker::lumvale);
    catalogue.add({.uuid = "A"});
    catalogue.run("BEGIN EXCLUSIVE");
    EXPECT_FALSE(library.deleteAssets({"A/L0/001"})) << "while another program writes";
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
        {derivatives + "/masters/S/SMALLER_4_5005_c.jpeg", "another's"},
        {derivatives + "/O/ONLY_1_105_c.jpeg", "larger"},
        {"~/secret", "secret"},
        {"/etc/secret", "secret"}};
    for (const auto& [path, content] : files)
        disk.write(path, content);
    disk.make({originals + "/A/LINK.jpeg -> /Users/me/secret", originals + "/OUT -> /Users/me",
               originals + "/A/PIPE.jpeg |", derivatives + "/T/TRICK_1_105_c.jpeg -> /Users/me/secret"});
    const struct {
        CataloguedAsset asset;
        const char* picture;
    } cases[]{{{.uuid = "HERE"}, "original"},
              {{.uuid = "SMALL"}, "small"},
              {{.uuid = "ONLY"}, "larger"},
              {{.uuid = "AWAY"}, "in the cloud"},
              {{.uuid = "TRICK"}, "in the cloud"},
              {{.uuid = "LINK"}, "none"},
              {{.uuid = "PIPE"}, "none"},
              {{.uuid = "HIDDEN", .hidden = "1", .file = "'HERE.jpeg'"}, "none"},
              {{.uuid = "ABSOLUTE", .directory = "'/etc'", .file = "'secret'"}, "none"},
              {{.uuid = "UP", .directory = "'A/../../../..'", .file = "'secret'"}, "none"},
              {{.uuid = "OUT", .directory = "'OUT'", .file = "'secret'"}, "none"},
              {{.uuid = "NAME", .file = "'../../../../secret'"}, "none"},
              {{.uuid = "NULLS", .directory = "NULL", .file = "NULL"}, "none"},
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
    const TemporaryDisk machine;
    const TemporaryDisk disk;
    const PhotoLibrary photos(disk.disk());
    setenv("XDG_CONFIG_HOME", machine.host("~/config").c_str(), 1);
    EXPECT_EQ(photos.authorization(), PhotoAuthorization::notDetermined);
    EXPECT_FALSE(machine.exists("~/config"));
    EXPECT_EQ(photos.requestAuthorization(), PhotoAuthorization::authorized);
    EXPECT_EQ(photos.authorization(), PhotoAuthorization::authorized);

    CatalogueWriter catalogue(disk);
    for (const std::string& closed : {file, libraryFolder}) {
        disk.setMode(closed, 0);
        EXPECT_EQ(photos.requestAuthorization(), PhotoAuthorization::denied) << closed;
        disk.setMode(closed, 0755);
        EXPECT_EQ(photos.authorization(), PhotoAuthorization::authorized);
    }
    setenv("XDG_CONFIG_HOME", machine.host("~/other").c_str(), 1);
    EXPECT_EQ(photos.authorization(), PhotoAuthorization::notDetermined);
    unsetenv("XDG_CONFIG_HOME");
}
