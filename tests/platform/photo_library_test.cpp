#include "platform/photos/photo_library.h"

#include "tests/support/photo_catalogue.h"
#include "tests/support/process.h"
#include "tests/support/temporary_disk.h"

#include <cstdlib>
#include <filesystem>
#include <string>
#include <vector>

#include <pwd.h>
#include <unistd.h>

#include <gtest/gtest.h>

using platform::PhotoAsset;
using platform::PhotoAuthorization;
using platform::PhotoDeletion;
using platform::PhotoLibrary;
using platform::PhotoPictureKind;

namespace {

using Log = CatalogueWriter::Log;
using Maker = CatalogueWriter::Maker;
using Texts = std::vector<std::string>;

const std::string libraryFolder = CatalogueWriter::folder;
const std::string file = CatalogueWriter::file;
const Texts unreadable{"unreadable"};

PhotoLibrary libraryOn(const TemporaryDisk& disk,
                       PhotoAuthorization answer = PhotoAuthorization::authorized) {
    return {disk.disk(), photoAccess(answer)};
}

/// Returns the assets in the order of the library, or `unreadable` when not all could be read.
Texts assets(const PhotoLibrary& library) {
    Texts lines;
    const bool isWhole = library.visitAssets(
        [&] { lines.clear(); },
        [&](const PhotoAsset& asset) { return !lines.emplace_back(asset.localIdentifier).empty(); });
    return isWhole ? lines : unreadable;
}

/// Returns the bytes of a catalogue with `levels` copies of a table's root page: the branches of the root
/// lead to a copy, its branches to the next one, and those of the last to the first leaf, so that a few pages
/// seem to hold more rows than can be read. See https://www.sqlite.org/fileformat.html.
std::string looped(CatalogueWriter& writer, const std::string& table, int levels, std::string catalogue) {
    constexpr std::size_t pageSize = 4096;
    const std::string page = "SELECT rootpage - 1 FROM sqlite_master WHERE name = '" + table + "'";
    const std::size_t start = std::stoul(writer.value(page)) * pageSize;
    std::string root = catalogue.substr(start, pageSize);
    const auto number = [&root](std::size_t at) {
        return 256U * static_cast<unsigned char>(root[at]) + static_cast<unsigned char>(root[at + 1]);
    };
    std::string target = root.substr(number(12), 4);
    for (int level = 0; level <= levels; ++level) {
        root.replace(8, 4, target);
        for (std::size_t branch = 0; branch < number(3); ++branch)
            root.replace(number(12 + 2 * branch), 4, target);
        catalogue.replace(level < levels ? catalogue.size() : start, pageSize, root);
        target[3] = static_cast<char>(catalogue.size() / pageSize);
    }
    catalogue[31] = target[3]; // number of pages
    return catalogue;
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
        EXPECT_EQ(assets(libraryOn(of, PhotoAuthorization::denied)), unreadable);
    }
}

TEST_F(PhotoLibraryOnDisk, ReadsTheWriteAheadLogAndLeavesNoTrace) {
    const OrdinaryUser user;
    const std::pair<Log, const char*> cases[]{
        {Log::none, "BEGIN EXCLUSIVE"}, {Log::pending, "BEGIN IMMEDIATE"}, {Log::pending, nullptr}};
    for (const auto& [log, transaction] : cases) {
        const TemporaryDisk of;
        CatalogueWriter catalogue(of, Maker::mac, log);
        catalogue.run("PRAGMA wal_checkpoint"); // so that the database alone can be read
        catalogue.add({.uuid = "A"});
        if (transaction != nullptr)
            catalogue.run(transaction);
        else
            catalogue.abandon();
        const auto entries = of.entries();
        const std::size_t open = openDescriptors();
        EXPECT_EQ(assets(libraryOn(of)), Texts{"A/L0/001"});
        EXPECT_EQ(openDescriptors(), open);
        EXPECT_EQ(of.entries(), entries);
        if (log == Log::pending) {
            of.setMode(file + "-wal", 0);
            EXPECT_EQ(assets(libraryOn(of)), unreadable); // the database alone is outdated
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
    EXPECT_TRUE(library.visitAssets(begin, [&](const PhotoAsset&) { return ++found != 0; }));
    EXPECT_EQ(found, 3U);
    EXPECT_FALSE(library.visitAssets([&] { catalogue.add({.uuid = "more"}); },
                                     [](const PhotoAsset&) { return true; }));
    disk.write(file + "-journal", "half"); // an interrupted transaction
    EXPECT_EQ(assets(library), unreadable);
}

TEST_F(PhotoLibraryOnDisk, ReportsDamagedAndForeignFilesAsUnreadable) {
    CatalogueWriter catalogue(disk);
    catalogue.run("DROP INDEX Z_ASSET"); // so that the whole second table is searched
    for (int i = 0; i < 200; ++i)
        catalogue.add({.uuid = std::to_string(i), .name = "'" + std::string(60, 'x') + "'"});
    const std::string good = disk.read(file);
    EXPECT_EQ(assets(library).size(), 200U);
    catalogue.run("UPDATE ZADDITIONALASSETATTRIBUTES SET ZASSET = 1 WHERE ZASSET < 19"); // 18 of one asset
    for (const std::string& bad :
         {disk.read(file), looped(catalogue, "ZASSET", 0, good),
          looped(catalogue, "ZADDITIONALASSETATTRIBUTES", 18, good), good.substr(0, 10), good.substr(0, 4096),
          good.substr(0, good.size() - 4096)}) {
        disk.write(file, bad);
        EXPECT_EQ(assets(library), unreadable) << bad.size();
    }
    disk.write("~/elsewhere.sqlite", good);
    for (const char* how :
         {"/folder/", " |", " -> /Users/me/elsewhere.sqlite", " -> Photos.sqlite", " 100000"}) {
        std::filesystem::remove_all(disk.host(file));
        EXPECT_EQ(assets(library), unreadable) << "missing";
        disk.make(file + how);
        EXPECT_EQ(assets(library), unreadable) << how;
    }
    const TemporaryDisk linked;
    linked.make("~/Pictures -> " + disk.host("~/Pictures")); // leads out of this disk
    EXPECT_EQ(assets(libraryOn(linked)), Texts());
}

TEST_F(PhotoLibraryOnDisk, ChangesOnlyOwnCataloguesAndOnlyWithAccess) {
    const std::pair<bool, const char*> cases[]{
        // whether no file changes at all, and what is wrong
        {true, "PRAGMA application_id = 0"}, // a Mac's
        {true, "CREATE TRIGGER t AFTER UPDATE ON ZASSET BEGIN DELETE FROM ZASSET; END"},
        {false, "UPDATE ZASSET SET ZUUID = 'A' WHERE Z_PK = 3"}, // ambiguous
        {false,
         "CREATE TABLE t AS SELECT * FROM ZASSET; DROP TABLE ZASSET; CREATE VIEW ZASSET AS SELECT * FROM t"},
        {false, "BEGIN EXCLUSIVE"}}; // in use by another program
    for (const auto& [isUntouched, sql] : cases) {
        const TemporaryDisk of;
        CatalogueWriter catalogue(of, Maker::lumvale);
        for (const char* uuid : {"B", "A", "C"})
            catalogue.add({.uuid = uuid});
        EXPECT_EQ(libraryOn(of, PhotoAuthorization::denied).deleteAssets({"A/L0/001"}),
                  PhotoDeletion::failed);
        catalogue.run(sql);
        const auto entries = of.entries();
        EXPECT_EQ(libraryOn(of).deleteAssets({"B/L0/001", "A/L0/001"}), PhotoDeletion::failed) << sql;
        EXPECT_EQ(catalogue.value("SELECT count(*) FROM ZASSET WHERE ZTRASHEDSTATE = 0"), "3") << sql;
        EXPECT_TRUE(!isUntouched || of.entries() == entries) << sql;
    }
}

TEST_F(PhotoLibraryOnDisk, OpensPicturesInsideTheLibraryOnly) {
    CatalogueWriter catalogue(disk);
    const std::string originals = libraryFolder + "/originals";
    const std::string derivatives = libraryFolder + "/resources/derivatives";
    disk.make({originals + "/A/HERE.jpeg 1", originals + "/A/SMALL.jpeg 1",
               derivatives + "/S/SMALL_1_105_c.jpeg 4", derivatives + "/S/SMALL_1_106_c.jpeg 2",
               derivatives + "/masters/S/SMALL_4_5005_c.jpeg 3", derivatives + "/O/ONLY_1_105_c.jpeg 2",
               "~/secret 9", "/etc/secret 9", originals + "/A/LINK.jpeg -> /Users/me/secret",
               originals + "/OUT -> /Users/me", derivatives + "/T/TRICK_1_105_c.jpeg -> /Users/me/secret"});
    constexpr off_t none = -1;
    constexpr off_t inCloud = -2;
    const std::pair<CataloguedAsset, off_t> cases[]{
        {{.uuid = "HERE"}, 1},
        {{.uuid = "SMALL"}, 3},
        {{.uuid = "ONLY"}, 2},
        {{.uuid = "AWAY"}, inCloud},
        {{.uuid = "TRICK"}, inCloud},
        {{.uuid = "LINK"}, none},
        {{.uuid = "HIDDEN", .hidden = "1", .file = "'HERE.jpeg'"}, none},
        {{.uuid = "ABSOLUTE", .directory = "'/etc'", .file = "'secret'"}, none},
        {{.uuid = "UP", .directory = "'A/../../../..'", .file = "'secret'"}, none},
        {{.uuid = "OUT", .directory = "'OUT'", .file = "'secret'"}, none},
        {{.uuid = "NAME", .file = "'../../../../secret'"}, none},
        {{.uuid = "ZERO", .directory = "'A' || char(0) || 'B'"}, none}};
    for (const auto& [asset, size] : cases)
        catalogue.add(asset);
    const auto found = [&](const std::string& uuid, PhotoPictureKind kind) {
        const platform::PhotoPicture picture = library.picture(uuid + "/L0/001", kind);
        return picture.isInCloud ? inCloud : picture.file ? lseek(picture.file.number(), 0, SEEK_END) : none;
    };
    for (const auto& [asset, size] : cases)
        EXPECT_EQ(found(asset.uuid, PhotoPictureKind::thumbnail), size) << asset.uuid;
    for (const auto& [uuid, path] :
         {std::pair("SMALL", at(originals + "/A/SMALL.jpeg")), {"ONLY", ""}, {"LINK", ""}})
        EXPECT_EQ(library.picture(uuid + std::string("/L0/001"), PhotoPictureKind::thumbnail).originalPath,
                  path);
    EXPECT_EQ(found("SMALL", PhotoPictureKind::original), 1);
    EXPECT_EQ(found("SMALL", PhotoPictureKind::rendition), 4);
    EXPECT_EQ(found("ONLY", PhotoPictureKind::original), inCloud);
    for (const char* uuid : {"HERE", "AWAY", "TRICK", "HIDDEN"})
        EXPECT_EQ(found(uuid, PhotoPictureKind::rendition), none) << uuid;
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

TEST(SystemPhotoLibrary, IsUsedInTheHomeOfThisUserWhileItsPermissionLasts) {
    using enum PhotoAuthorization;
    const struct {
        PhotoAuthorization before, after; // the visit of the only asset
        bool isAvailable, isWhole;
    } cases[]{{authorized, authorized, true, true},       {authorized, limited, true, true},
              {authorized, denied, true, false},          {limited, notDetermined, true, false},
              {authorized, authorized, false, false},     {denied, denied, true, false},
              {notDetermined, notDetermined, true, false}};
    for (const auto& one : cases) {
        SCOPED_TRACE(testing::PrintToString(one.before) + " to " + testing::PrintToString(one.after));
        PhotoAuthorization present = one.before;
        const auto permission = [&] {
            return present;
        };
        const auto visit = [&](const std::function<void(const PhotoAsset&)>& visitAsset) {
            visitAsset({});
            present = one.after;
            return one.isAvailable;
        };
        const platform::SystemPhotoLibrary system{permission, permission, visit,
                                                  [](auto, auto) {
                                                      return platform::PhotoPicture{{}, true};
                                                  },
                                                  [](auto&) {
                                                      return PhotoDeletion::declined;
                                                  }};
        const auto libraryIn = [&system](const char* home) {
            return PhotoLibrary(*platform::Disk::open("/", home), photoAccess(restricted), &system);
        };
        const PhotoLibrary library = libraryIn(getpwuid(getuid())->pw_dir);
        EXPECT_EQ(library.authorization(), one.before);
        const bool isOpen = one.before == authorized || one.before == limited;
        EXPECT_EQ(library.picture("A", PhotoPictureKind::original).isInCloud, isOpen);
        EXPECT_EQ(library.deleteAssets({"A"}), isOpen ? PhotoDeletion::declined : PhotoDeletion::failed);
        int found = 0;
        EXPECT_EQ(library.visitAssets([] {}, [&](auto&) { return ++found != 0; }), one.isWhole);
        EXPECT_EQ(found, isOpen ? 1 : 0);
        for (const char* const home : {"/", "/usr"})
            EXPECT_EQ(libraryIn(home).authorization(), restricted) << home;
    }
}
