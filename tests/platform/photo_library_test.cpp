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

using Form = CatalogueWriter::Form;
using Log = CatalogueWriter::Log;
using Maker = CatalogueWriter::Maker;
using Texts = std::vector<std::string>;

const std::string libraryFolder = CatalogueWriter::folder;
const std::string file = CatalogueWriter::file;

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
    const auto optional = [](const auto& value) {
        return value ? std::to_string(*value) : "-";
    };
    std::string line = identifierOf(asset) + " " + std::to_string(static_cast<int>(asset.mediaType)) + " "
                       + std::to_string(asset.pixelWidth) + "x" + std::to_string(asset.pixelHeight) + " ";
    line += asset.creationDate ? std::to_string(platform::secondsSince1970(*asset.creationDate)) : "-";
    line += asset.isFavorite ? " favourite " : " ";
    return !asset.resource ? line
                           : line + std::string(asset.resource->originalFilename) + " "
                                 + optional(asset.resource->fileSize);
}

const Texts unreadable{"unreadable"};

/// The assets in the order of the library; `unreadable` when they can't be read to the end.
Texts assets(const PhotoLibrary& library, std::string (*text)(const PhotoAsset&) = identifierOf) {
    Texts lines;
    const bool isWhole = library.visitAssets([&] { lines.clear(); },
                                             [&](const PhotoAsset& asset) { lines.push_back(text(asset)); });
    return isWhole ? lines : unreadable;
}

class PhotoLibraryOnDisk : public testing::Test {
protected:
    const TemporaryDisk m_disk;
    const PhotoLibrary m_library = libraryOn(m_disk);
};

void putNumber(std::string& bytes, std::size_t at, std::size_t number, unsigned length = 4) {
    while (length-- > 0)
        bytes[at++] = static_cast<char>(number >> (8 * length));
}

constexpr std::size_t pageSize = 4096;

/// A page of a table's tree with a hundred ways, all to the page `next`.
std::string pageOfWaysTo(std::size_t next) {
    constexpr std::size_t ways = 100;
    constexpr std::size_t cellLength = 5; // the way, and a key of one byte
    constexpr std::size_t cells = pageSize - ways * cellLength;
    std::string page(pageSize, '\0');
    page[0] = 5;
    page[4] = ways;
    putNumber(page, 5, cells, 2);
    putNumber(page, 8, next);
    for (std::size_t i = 0; i < ways; ++i) {
        const std::size_t cell = cells + i * cellLength;
        putNumber(page, 12 + 2 * i, cell, 2);
        putNumber(page, cell, next);
        page[cell + 4] = static_cast<char>(i + 1);
    }
    return page;
}

/// The catalogue with a table, whose root is page `root`, as a tree of ten levels that meet in each: a few
/// pages that pretend to hold more rows than anybody can step through.
std::string endless(std::string catalogue, std::size_t root) {
    constexpr std::size_t levels = 10;
    const std::size_t first = catalogue.size() / pageSize + 1; // pages count from 1
    const std::string leaf = catalogue.substr((root - 1) * pageSize, pageSize);
    catalogue.replace((root - 1) * pageSize, pageSize, pageOfWaysTo(first));
    for (std::size_t level = 1; level < levels; ++level)
        catalogue += pageOfWaysTo(first + level);
    catalogue += leaf;
    putNumber(catalogue, 28, catalogue.size() / pageSize);
    return catalogue;
}

std::size_t rootPage(CatalogueWriter& catalogue, const std::string& table) {
    return std::stoul(catalogue.value("SELECT rootpage FROM sqlite_master WHERE name = '" + table + "'"));
}

} // namespace

TEST_F(PhotoLibraryOnDisk, ListsWhatIsShownInTheOrderOfTheLibrary) {
    for (const Form form : {Form::macOS10, Form::macOS11}) {
        const TemporaryDisk disk;
        CatalogueWriter catalogue(disk, Maker::mac, Log::none, form);
        const CataloguedAsset catalogued[]{
            {.uuid = "Z", .favorite = "1"},
            {.uuid = "A", .size = "0", .created = "-0.25", .kind = "1", .name = "'caf' || x'e9'"},
            {.uuid = "B", .size = "NULL", .created = "NULL", .width = "NULL", .kind = "2", .name = "NULL"},
            {.uuid = "C", .size = "'12'", .created = "'soon'", .kind = "7"},
            {.uuid = "D", .size = "1.5", .created = "9e999", .kind = "NULL"},
            {.uuid = "HIDDEN", .hidden = "1"},
            {.uuid = "TRASHED", .trashed = "1"},
            {.uuid = "SHARED", .visibility = "2"},
            {.uuid = ""},
            {.uuid = std::string(65, 'x')},
            {.uuid = "LONG", .name = "'" + std::string(1025, 'x') + "'"},
            {.uuid = "NULLS", .favorite = "NULL", .hidden = "NULL", .trashed = "NULL", .visibility = "NULL"}};
        for (const CataloguedAsset& asset : catalogued)
            catalogue.add(asset);
        // A file more of one asset, and an asset without any.
        catalogue.run("INSERT INTO ZADDITIONALASSETATTRIBUTES (ZASSET, ZORIGINALFILESIZE) VALUES (1, 7);"
                      "DELETE FROM ZADDITIONALASSETATTRIBUTES WHERE ZASSET = 12");
        EXPECT_EQ(assets(libraryOn(disk, PhotoAuthorization::limited), factsOf),
                  (Texts{"Z/L0/001 1 40x30 1678307200.500000 favourite IMG_1.JPG 1000",
                         "A/L0/001 2 40x30 978307199.750000 caf\xE9 0", "B/L0/001 3 0x30 -  -",
                         // Numbers written as text become numbers in a column of numbers.
                         "C/L0/001 0 40x30 - IMG_1.JPG 12", "D/L0/001 0 40x30 - IMG_1.JPG -",
                         "NULLS/L0/001 1 40x30 1678307200.500000 "}));
    }
}

TEST_F(PhotoLibraryOnDisk, IsReadWithItsLogWhoeverHasItOpenAndLeavesNoTrace) {
    const OrdinaryUser user;
    const std::pair<Log, const char*> cases[]{
        {Log::none, "BEGIN EXCLUSIVE"}, {Log::pending, "BEGIN IMMEDIATE"}, {Log::pending, nullptr}};
    for (const auto& [log, transaction] : cases) {
        for (const unsigned mode : {0755U, 0555U}) { // also where nothing may be written
            const TemporaryDisk disk;
            CatalogueWriter catalogue(disk, Maker::mac, log);
            catalogue.add({.uuid = "A"});
            if (transaction != nullptr)
                catalogue.run(transaction);
            else
                catalogue.abandon();
            disk.setMode(file, mode & 0666);
            disk.setMode(libraryFolder + "/database", mode);
            const auto entries = disk.entries();
            const std::size_t open = openDescriptors();
            EXPECT_EQ(assets(libraryOn(disk)), Texts{"A/L0/001"});
            EXPECT_EQ(openDescriptors(), open);
            EXPECT_EQ(disk.entries(), entries);
        }
    }
}

TEST_F(PhotoLibraryOnDisk, IsReadAnewWhenItChangesMeanwhile) {
    for (const Log log : {Log::none, Log::pending}) {
        const TemporaryDisk disk;
        CatalogueWriter catalogue(disk, Maker::mac, log);
        catalogue.add({.uuid = "A"});
        Texts found;
        int looks = 0;
        const auto visit = [&](const PhotoAsset& asset) {
            found.emplace_back(asset.localIdentifier);
        };
        const auto begin = [&] {
            found.clear();
            if (++looks < 3)
                catalogue.add({.uuid = std::to_string(looks)});
        };
        EXPECT_TRUE(libraryOn(disk).visitAssets(begin, visit));
        EXPECT_EQ(looks, 3);
        EXPECT_EQ(found, (Texts{"A/L0/001", "1/L0/001", "2/L0/001"}));
        // One that never rests says nothing in the end.
        EXPECT_FALSE(libraryOn(disk).visitAssets([&] { catalogue.add({.uuid = "more"}); }, visit));
    }
    // A change by the other way of SQLite, cut off in its middle.
    CatalogueWriter catalogue(m_disk);
    catalogue.add({.uuid = "A"});
    m_disk.write(file + "-journal", "half");
    EXPECT_EQ(assets(m_library), unreadable);
    m_disk.write(file + "-journal", "");
    EXPECT_EQ(assets(m_library), Texts{"A/L0/001"});
}

TEST_F(PhotoLibraryOnDisk, HasNoAssetsWithoutAccess) {
    CatalogueWriter catalogue(m_disk, Maker::lumvale);
    catalogue.add({.uuid = "A"});
    for (const auto answer :
         {PhotoAuthorization::notDetermined, PhotoAuthorization::restricted, PhotoAuthorization::denied}) {
        const PhotoLibrary closed = libraryOn(m_disk, answer);
        EXPECT_FALSE(closed.visitAssets([] { FAIL(); }, [](const PhotoAsset&) { FAIL(); }));
        EXPECT_FALSE(closed.deleteAssets({"A/L0/001"}));
        EXPECT_FALSE(closed.picture("A/L0/001").isInCloud);
    }
    EXPECT_EQ(assets(m_library), Texts{"A/L0/001"});
}

TEST_F(PhotoLibraryOnDisk, SurvivesWhateverLiesInTheCataloguesPlace) {
    EXPECT_EQ(assets(m_library), unreadable);
    CatalogueWriter catalogue(m_disk);
    for (int i = 0; i < 200; ++i)
        catalogue.add({.uuid = std::to_string(i)});
    const std::size_t root = pageSize * (rootPage(catalogue, "ZASSET") - 1);
    catalogue.abandon();
    const std::string good = m_disk.read(file);
    m_disk.write("~/elsewhere.sqlite", good);

    for (const char* how : {" |", " -> /Users/me/elsewhere.sqlite", " -> ../../../../../../etc/passwd",
                            " -> Photos.sqlite", " 100", " 100000", "/folder/"}) {
        std::filesystem::remove_all(m_disk.host(file));
        m_disk.make(file + how);
        EXPECT_EQ(assets(m_library), unreadable) << how;
    }
    std::filesystem::remove_all(m_disk.host(file));
    for (const std::size_t length : {10UL, 100UL, 4096UL, good.size() / 2, good.size() - 4096}) {
        m_disk.write(file, good.substr(0, length));
        EXPECT_EQ(assets(m_library), unreadable) << length;
    }
    // Bytes turned here and there: it may still be read, or not, but always to an end.
    for (std::size_t at = 0; at < good.size(); at += 97) {
        std::string turned = good;
        turned[at] = static_cast<char>(~turned[at]);
        m_disk.write(file, turned);
        assets(m_library);
    }
    // The last page of assets is the first one again: so one can be built that seems to have no end.
    std::string cyclic = good;
    const std::size_t firstCell = root + 256 * static_cast<unsigned char>(good[root + 12])
                                  + static_cast<unsigned char>(good[root + 13]);
    cyclic.replace(root + 8, 4, good.substr(firstCell, 4));
    ASSERT_NE(cyclic, good);
    m_disk.write(file, cyclic);
    EXPECT_EQ(assets(m_library), unreadable);
    // The log counts: one that can't be read leaves nothing to go by, one that is no log holds nothing.
    m_disk.write(file, good);
    m_disk.make(file + "-wal |");
    EXPECT_EQ(assets(m_library), unreadable);
    unlink((m_disk.host(file) + "-wal").c_str());
    m_disk.write(file + "-wal", "junk that is no log");
    EXPECT_EQ(assets(m_library).size(), 200U);
}

TEST_F(PhotoLibraryOnDisk, IsGivenUpWhereItPretendsToHaveNoEnd) {
    for (const char* table : {"ZASSET", "ZADDITIONALASSETATTRIBUTES"}) {
        const TemporaryDisk disk;
        CatalogueWriter catalogue(disk);
        catalogue.add({.uuid = "A"});
        catalogue.run("DROP INDEX Z_ASSET; DROP INDEX Z_UUID"); // SQLite makes one for itself
        const std::size_t root = rootPage(catalogue, table);
        catalogue.abandon();
        disk.write(file, endless(disk.read(file), root));
        std::size_t seen = 0;
        EXPECT_FALSE(libraryOn(disk).visitAssets([] {}, [&](const PhotoAsset&) { ++seen; })) << table;
        EXPECT_LE(seen, 1U) << table;
        EXPECT_FALSE(libraryOn(disk).picture("B/L0/001").isInCloud) << table;
    }
}

TEST_F(PhotoLibraryOnDisk, IsNotReadThroughLinksOutOfTheDisk) {
    const TemporaryDisk outside;
    CatalogueWriter catalogue(outside, Maker::lumvale);
    catalogue.add({.uuid = "A"});
    catalogue.abandon();
    m_disk.make("~/Pictures -> " + outside.host("~/Pictures"));
    EXPECT_EQ(assets(m_library), unreadable);
    EXPECT_FALSE(m_library.deleteAssets({"A/L0/001"}));
}

TEST_F(PhotoLibraryOnDisk, RunsNothingThatACatalogueBrings) {
    for (const std::string trick :
         {"CREATE VIEW ZASSET AS SELECT * FROM real",
          "CREATE VIEW ZASSET AS WITH RECURSIVE n(i) AS (SELECT 1 UNION ALL SELECT i + 1 FROM n)"
          " SELECT i Z_PK, 0 ZTRASHEDSTATE, 0 ZHIDDEN, 0 ZVISIBILITYSTATE, i ZUUID, 0 ZKIND, 1 ZWIDTH,"
          " 1 ZHEIGHT, 0 ZDATECREATED, 0 ZFAVORITE FROM n",
          "CREATE VIRTUAL TABLE ZASSET USING fts5(Z_PK, ZTRASHEDSTATE, ZHIDDEN, ZVISIBILITYSTATE, ZUUID,"
          " ZKIND, ZWIDTH, ZHEIGHT, ZDATECREATED, ZFAVORITE)",
          "CREATE TABLE ZASSET (Z_PK INTEGER PRIMARY KEY, ZUUID VARCHAR)", ""}) {
        const TemporaryDisk disk;
        CatalogueWriter catalogue(disk, Maker::lumvale);
        catalogue.add({.uuid = "A"});
        catalogue.run("CREATE TABLE real AS SELECT * FROM ZASSET; DROP TABLE ZASSET; " + trick);
        EXPECT_FALSE(libraryOn(disk).visitAssets([] {}, [](const PhotoAsset&) { FAIL(); })) << trick;
        EXPECT_FALSE(libraryOn(disk).deleteAssets({"A/L0/001"})) << trick;
    }
}

TEST_F(PhotoLibraryOnDisk, MovesToTheRecentlyDeletedWhatItIsAskedTo) {
    for (const Log log : {Log::none, Log::pending}) {
        const TemporaryDisk disk;
        CatalogueWriter catalogue(disk, Maker::lumvale, log);
        for (const char* uuid : {"A", "B", "C"})
            catalogue.add({.uuid = uuid});
        catalogue.add({.uuid = "OLD", .trashed = "1"});
        const double before = platform::secondsSince1970(platform::now()) - 978'307'200;
        const PhotoLibrary library = libraryOn(disk);
        EXPECT_TRUE(library.deleteAssets(
            {"C/L0/001", "unknown/L0/001", "", "B", "' OR 1/L0/001", "A/L0/001", "OLD/L0/001"}));
        EXPECT_TRUE(library.deleteAssets({"A/L0/001"})); // nothing left to do
        const std::string deleted = "SELECT group_concat(ZUUID) FROM ZASSET WHERE ZTRASHEDSTATE = 1";
        EXPECT_EQ(catalogue.value(deleted), "A,C,OLD");
        EXPECT_EQ(catalogue.value(deleted + " AND ZTRASHEDDATE BETWEEN " + std::to_string(before) + " AND "
                                  + std::to_string(before + 60)),
                  "A,C");
        EXPECT_EQ(assets(library), Texts{"B/L0/001"});
        EXPECT_EQ(catalogue.value("PRAGMA integrity_check"), "ok");
    }
}

TEST_F(PhotoLibraryOnDisk, ChangesNothingInALibraryThatItMayNotChange) {
    EXPECT_FALSE(m_library.deleteAssets({"A/L0/001"})); // there is none
    const struct {
        const char* what;
        Maker maker;
        const char* sql;
        const char* journal = "";
        unsigned mode = 0644;
    } cases[]{{"a Mac's", Maker::mac, ""},
              {"another mark", Maker::mac, "PRAGMA application_id = 1"},
              {"with triggers", Maker::lumvale,
               "CREATE TRIGGER t AFTER UPDATE ON ZASSET BEGIN DELETE FROM ZASSET; END"},
              {"two of one identifier", Maker::lumvale, "UPDATE ZASSET SET ZUUID = 'A' WHERE Z_PK = 3"},
              {"an unfinished change", Maker::lumvale, "", "half"},
              {"not writable", Maker::lumvale, "", "", 0444}};
    const OrdinaryUser user;
    for (const auto& [what, maker, sql, journal, mode] : cases) {
        for (const Log log : {Log::none, Log::pending}) {
            const TemporaryDisk disk;
            CatalogueWriter catalogue(disk, maker, log);
            for (const char* uuid : {"B", "A", "C"})
                catalogue.add({.uuid = uuid});
            catalogue.run(sql);
            catalogue.abandon();
            disk.write(file + "-journal", journal);
            disk.setMode(file, mode);
            const auto entries = disk.entries();
            EXPECT_FALSE(libraryOn(disk).deleteAssets({"B/L0/001", "A/L0/001"})) << what;
            if (maker == Maker::mac) { // not even touched
                EXPECT_EQ(disk.entries(), entries) << what;
            }
            disk.write(file + "-journal", "");
            EXPECT_EQ(assets(libraryOn(disk)).size(), 3U) << what;
        }
    }
}

TEST_F(PhotoLibraryOnDisk, RefusesADeletionWhileAnotherProgramWrites) {
    CatalogueWriter catalogue(m_disk, Maker::lumvale);
    catalogue.add({.uuid = "A"});
    catalogue.run("BEGIN EXCLUSIVE");
    EXPECT_FALSE(m_library.deleteAssets({"A/L0/001"}));
    catalogue.run("COMMIT");
    EXPECT_EQ(assets(m_library), Texts{"A/L0/001"});
}

TEST_F(PhotoLibraryOnDisk, OpensThePicturesThatAreInIt) {
    CatalogueWriter catalogue(m_disk);
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
        m_disk.write(path, content);
    m_disk.make({originals + "/A/LINK.jpeg -> /Users/me/secret", originals + "/OUT -> /Users/me",
                 originals + "/A/PIPE.jpeg |", originals + "/A/FOLDER.jpeg/",
                 derivatives + "/T/TRICK_1_105_c.jpeg -> /Users/me/secret"});
    const struct {
        CataloguedAsset asset;
        const char* picture; ///< "cloud", "" for none
    } cases[]{{{.uuid = "HERE"}, "original"},
              {{.uuid = "SMALL"}, "small"},
              {{.uuid = "ONLY"}, "larger"},
              {{.uuid = "AWAY"}, "cloud"},
              {{.uuid = "AWAY2", .directory = "'B'"}, "cloud"},
              {{.uuid = "TRICK"}, "cloud"},
              {{.uuid = "LINK"}, ""},
              {{.uuid = "PIPE"}, ""},
              {{.uuid = "FOLDER"}, ""},
              {{.uuid = "HIDDEN", .hidden = "1", .file = "'HERE.jpeg'"}, ""},
              {{.uuid = "ABSOLUTE", .directory = "'/etc'", .file = "'secret'"}, ""},
              {{.uuid = "UP", .directory = "'../../..'", .file = "'secret'"}, ""},
              {{.uuid = "UP2", .directory = "'A/../../../..'", .file = "'secret'"}, ""},
              {{.uuid = "OUT", .directory = "'OUT'", .file = "'secret'"}, ""},
              {{.uuid = "NAME", .file = "'../../../../secret'"}, ""},
              {{.uuid = "NULLS", .directory = "NULL", .file = "NULL"}, ""},
              {{.uuid = "ZERO", .directory = "'A' || char(0) || 'B'"}, ""},
              {{.uuid = "NUMBER", .directory = "7", .file = "'.'"}, ""},
              {{.uuid = "../../A", .directory = "'..'"}, ""}};
    const auto shown = [&](const std::string& identifier) -> std::string {
        const platform::PhotoPicture picture = m_library.picture(identifier);
        char bytes[100];
        if (!picture.file)
            return picture.isInCloud ? "cloud" : "";
        return {bytes, static_cast<std::size_t>(read(picture.file.number(), bytes, sizeof bytes))};
    };
    for (const auto& [asset, picture] : cases)
        catalogue.add(asset);
    for (const auto& [asset, picture] : cases)
        EXPECT_EQ(shown(asset.uuid + "/L0/001"), picture) << asset.uuid;
    for (const char* unknown : {"", "HERE", "/L0/001", "NOBODY/L0/001"})
        EXPECT_EQ(shown(unknown), "") << unknown;
}

TEST(PhotoAccess, IsAskedForOnceAndThenAnsweredByTheDisk) {
    const OrdinaryUser user;
    const TemporaryDisk machine; // whose user has files of their own
    const TemporaryDisk disk;
    const PhotoLibrary photos(disk.disk());
    setenv("XDG_CONFIG_HOME", machine.host("~/config").c_str(), 1);
    const auto entries = disk.entries();
    EXPECT_EQ(photos.authorization(), PhotoAuthorization::notDetermined);
    EXPECT_FALSE(machine.exists("~/config")) << "asking for the status writes nothing";
    EXPECT_EQ(photos.requestAuthorization(), PhotoAuthorization::authorized); // there is no library
    EXPECT_EQ(photos.authorization(), PhotoAuthorization::authorized);
    EXPECT_EQ(disk.entries(), entries);

    CatalogueWriter catalogue(disk);
    for (const std::string& closed : {file, libraryFolder}) {
        disk.setMode(closed, 0);
        EXPECT_EQ(photos.requestAuthorization(), PhotoAuthorization::denied) << closed;
        EXPECT_EQ(photos.authorization(), PhotoAuthorization::denied);
        disk.setMode(closed, 0755);
        EXPECT_EQ(photos.authorization(), PhotoAuthorization::authorized);
    }
    disk.write(file, "junk"); // a damaged one is no refusal
    EXPECT_EQ(photos.authorization(), PhotoAuthorization::authorized);
    setenv("XDG_CONFIG_HOME", machine.host("~/other").c_str(), 1);
    EXPECT_EQ(photos.authorization(), PhotoAuthorization::notDetermined);
    unsetenv("XDG_CONFIG_HOME");
}
