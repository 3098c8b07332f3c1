#include "platform/photo_library.h"

#include "tests/support/photo_catalogue.h"
#include "tests/support/process.h"
#include "tests/support/temporary_disk.h"

#include <cstdlib>
#include <limits>
#include <optional>
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

platform::PhotoAccess answering(PhotoAuthorization authorization) {
    const auto answer = [authorization](const platform::Disk&) {
        return authorization;
    };
    return {answer, answer};
}

std::string text(const PhotoAsset& asset) {
    const auto resource = asset.resource;
    const auto optional = [](const auto& value) {
        return value ? std::to_string(*value) : "-";
    };
    std::string line(asset.localIdentifier);
    line += " " + std::to_string(static_cast<int>(asset.mediaType)) + " " + std::to_string(asset.pixelWidth)
            + "x" + std::to_string(asset.pixelHeight) + " ";
    line +=
        (asset.creationDate ? optional(std::optional(platform::secondsSince1970(*asset.creationDate))) : "-")
        + (asset.isFavorite ? " favourite" : "");
    return line + " "
           + (resource ? std::string(resource->originalFilename) + " " + optional(resource->fileSize) : "");
}

/// A disk whose library may be looked into, and what is seen there.
class PhotoLibraryOnDisk : public testing::Test {
protected:
    PhotoLibrary library(PhotoAuthorization authorization = PhotoAuthorization::authorized) const {
        return {m_disk.disk(), answering(authorization)};
    }

    /// The assets as lines; "unreadable" alone when they can't be read to the end.
    Texts assets() const {
        Texts lines;
        const bool isWhole = library().visitAssets(
            [&] { lines.clear(); }, [&](const PhotoAsset& asset) { lines.push_back(text(asset)); });
        return isWhole ? lines : Texts{"unreadable"};
    }

    Texts identifiers() const {
        Texts found;
        const bool isWhole = library().visitAssets(
            [&] { found.clear(); },
            [&](const PhotoAsset& asset) { found.emplace_back(asset.localIdentifier); });
        return isWhole ? found : Texts{"unreadable"};
    }

    const TemporaryDisk m_disk;
};

const Texts unreadable{"unreadable"};

void putNumber(std::string& bytes, std::size_t at, std::size_t number) {
    for (int shift = 24; shift >= 0; shift -= 8)
        bytes[at++] = static_cast<char>(number >> static_cast<unsigned>(shift));
}

/// A page of a table's tree with a hundred ways, all to the page `next`.
std::string pageOfWaysTo(std::size_t next) {
    constexpr std::size_t ways = 100;
    constexpr std::size_t cellLength = 5; // the way, and a key of one byte
    std::string page(4096, '\0');
    page[0] = 5;
    page[4] = ways;
    const std::size_t cells = page.size() - ways * cellLength;
    page[5] = static_cast<char>(cells >> 8U);
    page[6] = static_cast<char>(cells);
    putNumber(page, 8, next);
    for (std::size_t i = 0; i < ways; ++i) {
        const std::size_t cell = cells + i * cellLength;
        page[12 + 2 * i] = static_cast<char>(cell >> 8U);
        page[13 + 2 * i] = static_cast<char>(cell);
        putNumber(page, cell, next);
        page[cell + 4] = static_cast<char>(i + 1);
    }
    return page;
}

/// The catalogue with a table, whose root is page `root`, as a tree of ten levels that meet in each: a few
/// pages that pretend to hold more rows than anybody can step through.
std::string endless(std::string catalogue, std::size_t root) {
    constexpr std::size_t levels = 10;
    const std::size_t first = catalogue.size() / 4096 + 1; // pages count from 1
    const std::string leaf = catalogue.substr((root - 1) * 4096, 4096);
    catalogue.replace((root - 1) * 4096, 4096, pageOfWaysTo(first));
    for (std::size_t level = 1; level < levels; ++level)
        catalogue += pageOfWaysTo(first + level);
    catalogue += leaf;
    putNumber(catalogue, 28, catalogue.size() / 4096);
    return catalogue;
}

} // namespace

TEST_F(PhotoLibraryOnDisk, ListsWhatIsShownInTheOrderOfTheLibrary) {
    for (const Form form : {Form::macOS10, Form::macOS11}) {
        const TemporaryDisk disk;
        CatalogueWriter catalogue(disk, Maker::mac, Log::none, form);
        catalogue.add({.uuid = "Z", .favorite = "1"});
        catalogue.add({.uuid = "A", .size = "0", .created = "-0.25", .kind = "1", .name = "'caf' || x'e9'"});
        catalogue.add(
            {.uuid = "B", .size = "NULL", .created = "NULL", .width = "NULL", .kind = "2", .name = "NULL"});
        catalogue.add({.uuid = "C", .size = "'12'", .created = "'soon'", .kind = "7"});
        catalogue.add({.uuid = "D", .size = "1.5", .created = "9e999", .kind = "NULL"});
        catalogue.add({.uuid = "HIDDEN", .hidden = "1"});
        catalogue.add({.uuid = "TRASHED", .trashed = "1"});
        catalogue.add({.uuid = "SHARED", .visibility = "2"});
        catalogue.add({.uuid = ""});
        catalogue.add({.uuid = std::string(65, 'x')});
        catalogue.add({.uuid = "LONG", .name = "'" + std::string(1025, 'x') + "'"});
        catalogue.add(
            {.uuid = "NULLS", .favorite = "NULL", .hidden = "NULL", .trashed = "NULL", .visibility = "NULL"});
        // A file more of one asset, and an asset without any.
        catalogue.run("INSERT INTO ZADDITIONALASSETATTRIBUTES (ZASSET, ZORIGINALFILESIZE) VALUES (1, 7)");
        catalogue.run("DELETE FROM ZADDITIONALASSETATTRIBUTES WHERE ZASSET = 12");
        Texts lines;
        EXPECT_TRUE(PhotoLibrary(disk.disk(), answering(PhotoAuthorization::limited))
                        .visitAssets([] {}, [&](const PhotoAsset& asset) { lines.push_back(text(asset)); }));
        EXPECT_EQ(lines, (Texts{"Z/L0/001 1 40x30 1678307200.500000 favourite IMG_1.JPG 1000",
                                "A/L0/001 2 40x30 978307199.750000 caf\xE9 0", "B/L0/001 3 0x30 -  -",
                                // Numbers written as text become numbers in a column of numbers.
                                "C/L0/001 0 40x30 - IMG_1.JPG 12", "D/L0/001 0 40x30 - IMG_1.JPG -",
                                "NULLS/L0/001 1 40x30 1678307200.500000 "}));
    }
}

TEST_F(PhotoLibraryOnDisk, SeesWhatWaitsInTheLogAndLeavesNoTrace) {
    for (const bool isWriterThere : {true, false}) {
        const TemporaryDisk disk;
        CatalogueWriter catalogue(disk, Maker::mac, Log::pending);
        catalogue.add({.uuid = "A"});
        catalogue.add({.uuid = "B"});
        if (!isWriterThere)
            catalogue.abandon();
        ASSERT_GT(disk.read(CatalogueWriter::file + std::string("-wal")).size(), 0U);
        const auto entries = disk.entries();
        const std::string log = disk.read(CatalogueWriter::file + std::string("-wal"));
        std::size_t count = 0;
        const std::size_t open = openDescriptors();
        EXPECT_TRUE(PhotoLibrary(disk.disk(), answering(PhotoAuthorization::authorized))
                        .visitAssets([] {}, [&](const PhotoAsset&) { ++count; }));
        EXPECT_EQ(count, 2U);
        EXPECT_EQ(openDescriptors(), open);
        EXPECT_EQ(disk.entries(), entries);
        EXPECT_EQ(disk.read(CatalogueWriter::file + std::string("-wal")), log);
    }
}

TEST_F(PhotoLibraryOnDisk, IsReadAlsoWhereNothingMayBeWrittenAndWhileItIsLocked) {
    const OrdinaryUser user;
    for (const Log log : {Log::none, Log::pending}) {
        const TemporaryDisk disk;
        CatalogueWriter catalogue(disk, Maker::mac, log);
        catalogue.add({.uuid = "A"});
        catalogue.run(log == Log::none ? "BEGIN EXCLUSIVE" : "BEGIN IMMEDIATE");
        disk.setMode(CatalogueWriter::file, 0444);
        disk.setMode(std::string(CatalogueWriter::folder) + "/database", 0555);
        std::size_t count = 0;
        EXPECT_TRUE(PhotoLibrary(disk.disk(), answering(PhotoAuthorization::authorized))
                        .visitAssets([] {}, [&](const PhotoAsset&) { ++count; }));
        EXPECT_EQ(count, 1U);
        disk.setMode(std::string(CatalogueWriter::folder) + "/database", 0755);
    }
}

TEST_F(PhotoLibraryOnDisk, IsReadAnewWhenItChangesMeanwhile) {
    for (const Log log : {Log::none, Log::pending}) {
        const TemporaryDisk disk;
        CatalogueWriter catalogue(disk, Maker::mac, log);
        catalogue.add({.uuid = "A"});
        const PhotoLibrary photos(disk.disk(), answering(PhotoAuthorization::authorized));
        Texts found;
        int looks = 0;
        const auto visit = [&](const PhotoAsset& asset) {
            found.emplace_back(asset.localIdentifier);
        };
        EXPECT_TRUE(photos.visitAssets(
            [&] {
                found.clear();
                if (++looks < 3)
                    catalogue.add({.uuid = std::to_string(looks)});
            },
            visit));
        EXPECT_EQ(looks, 3);
        EXPECT_EQ(found, (Texts{"A/L0/001", "1/L0/001", "2/L0/001"}));
        // One that never rests says nothing in the end.
        EXPECT_FALSE(photos.visitAssets([&] { catalogue.add({.uuid = "more"}); }, visit));
    }
    // A change by the other way of SQLite, cut off in its middle.
    CatalogueWriter catalogue(m_disk);
    catalogue.add({.uuid = "A"});
    EXPECT_EQ(identifiers(), Texts{"A/L0/001"});
    m_disk.write(CatalogueWriter::file + std::string("-journal"), "half");
    EXPECT_EQ(identifiers(), unreadable);
    m_disk.write(CatalogueWriter::file + std::string("-journal"), "");
    EXPECT_EQ(identifiers(), Texts{"A/L0/001"});
}

TEST_F(PhotoLibraryOnDisk, HasNoAssetsWithoutAccess) {
    CatalogueWriter catalogue(m_disk, Maker::lumvale);
    catalogue.add({.uuid = "A"});
    for (const auto answer :
         {PhotoAuthorization::notDetermined, PhotoAuthorization::restricted, PhotoAuthorization::denied}) {
        EXPECT_FALSE(library(answer).visitAssets([] { FAIL(); }, [](const PhotoAsset&) { FAIL(); }));
        EXPECT_FALSE(library(answer).deleteAssets({"A/L0/001"}));
        EXPECT_FALSE(library(answer).picture("A/L0/001").isInCloud);
    }
    EXPECT_EQ(identifiers(), Texts{"A/L0/001"});
}

TEST_F(PhotoLibraryOnDisk, SurvivesWhateverLiesInTheCataloguesPlace) {
    EXPECT_EQ(assets(), unreadable);
    const std::string file = CatalogueWriter::file;
    std::string good;
    std::size_t root = 0; // where the page lies that leads to those of the assets
    {
        const TemporaryDisk other;
        CatalogueWriter catalogue(other);
        for (int i = 0; i < 200; ++i)
            catalogue.add({.uuid = std::to_string(i)});
        root =
            4096
            * (std::stoul(catalogue.value("SELECT rootpage FROM sqlite_master WHERE name = 'ZASSET'")) - 1);
        catalogue.abandon();
        good = other.read(file);
    }
    const auto makeInPlace = [&](const char* how) {
        unlink(m_disk.host(file).c_str());
        m_disk.make(file + how);
    };
    m_disk.write("~/elsewhere.sqlite", good);
    for (const char* how : {" |", " -> /Users/me/elsewhere.sqlite", " -> ../../../../../../etc/passwd",
                            " -> Photos.sqlite", " 100", " 100000"}) {
        makeInPlace(how);
        EXPECT_EQ(assets(), unreadable) << how;
    }
    unlink(m_disk.host(file).c_str());
    m_disk.make(file + "/folder/");
    EXPECT_EQ(assets(), unreadable);
    rmdir((m_disk.host(file) + "/folder").c_str());
    rmdir(m_disk.host(file).c_str());

    for (const std::size_t length : {10UL, 100UL, 4096UL, good.size() / 2, good.size() - 4096}) {
        makeInPlace("");
        m_disk.write(file, good.substr(0, length));
        EXPECT_EQ(assets(), unreadable) << length;
    }
    // Bytes turned here and there: it may still be read, or not, but always to an end.
    for (std::size_t at = 0; at < good.size(); at += 97) {
        std::string turned = good;
        turned[at] = static_cast<char>(~turned[at]);
        m_disk.write(file, turned);
        assets();
    }
    // The last page of assets is the first one again: so one can be built that seems to have no end.
    std::string cyclic = good;
    const std::size_t firstCell = root + 256 * static_cast<unsigned char>(good[root + 12])
                                  + static_cast<unsigned char>(good[root + 13]);
    cyclic.replace(root + 8, 4, good.substr(firstCell, 4));
    ASSERT_NE(cyclic, good);
    m_disk.write(file, cyclic);
    EXPECT_EQ(assets(), unreadable);
    m_disk.write(file, good);
    EXPECT_EQ(assets().size(), 200U);
    // The log counts: one that can't be read leaves nothing to go by.
    m_disk.make(file + "-wal |");
    EXPECT_EQ(assets(), unreadable);
    unlink((m_disk.host(file) + "-wal").c_str());
    m_disk.write(file + "-wal", "junk that is no log");
    EXPECT_EQ(assets().size(), 200U);
}

TEST_F(PhotoLibraryOnDisk, IsGivenUpWhereItPretendsToHaveNoEnd) {
    for (const char* table : {"ZASSET", "ZADDITIONALASSETATTRIBUTES"}) {
        const TemporaryDisk disk;
        CatalogueWriter catalogue(disk);
        catalogue.add({.uuid = "A"});
        catalogue.run("DROP INDEX Z_ASSET; DROP INDEX Z_UUID"); // SQLite makes one for itself
        const std::string root =
            catalogue.value("SELECT rootpage FROM sqlite_master WHERE name = '" + std::string(table) + "'");
        catalogue.abandon();
        disk.write(CatalogueWriter::file, endless(disk.read(CatalogueWriter::file), std::stoul(root)));
        const PhotoLibrary photos(disk.disk(), answering(PhotoAuthorization::authorized));
        std::size_t seen = 0;
        EXPECT_FALSE(photos.visitAssets([] {}, [&](const PhotoAsset&) { ++seen; })) << table;
        EXPECT_LE(seen, 1U) << table;
        EXPECT_FALSE(photos.picture("B/L0/001").isInCloud) << table;
    }
}

TEST_F(PhotoLibraryOnDisk, IsNotReadThroughLinksOutOfTheDisk) {
    const TemporaryDisk outside;
    CatalogueWriter catalogue(outside, Maker::lumvale);
    catalogue.add({.uuid = "A"});
    catalogue.abandon();
    m_disk.make("~/Pictures -> " + outside.host("~/Pictures"));
    EXPECT_EQ(assets(), unreadable);
    EXPECT_FALSE(library().deleteAssets({"A/L0/001"}));
}

TEST_F(PhotoLibraryOnDisk, RunsNothingThatACatalogueBrings) {
    const char* const form = "CREATE TABLE real AS SELECT * FROM ZASSET; DROP TABLE ZASSET; ";
    const char* const tricks[]{
        "CREATE VIEW ZASSET AS SELECT * FROM real",
        "CREATE VIEW ZASSET AS WITH RECURSIVE n(i) AS (SELECT 1 UNION ALL SELECT i + 1 FROM n)"
        " SELECT i Z_PK, 0 ZTRASHEDSTATE, 0 ZHIDDEN, 0 ZVISIBILITYSTATE, i ZUUID, 0 ZKIND, 1 ZWIDTH, 1 "
        "ZHEIGHT,"
        " 0 ZDATECREATED, 0 ZFAVORITE FROM n",
        "CREATE VIRTUAL TABLE ZASSET USING fts5(Z_PK, ZTRASHEDSTATE, ZHIDDEN, ZVISIBILITYSTATE, ZUUID, "
        "ZKIND, ZWIDTH,"
        " ZHEIGHT, ZDATECREATED, ZFAVORITE)",
        "CREATE TABLE ZASSET (Z_PK INTEGER PRIMARY KEY, ZUUID VARCHAR)",
        "",
    };
    for (const std::string trick : tricks) {
        const TemporaryDisk disk;
        CatalogueWriter catalogue(disk, Maker::lumvale);
        catalogue.add({.uuid = "A"});
        catalogue.run(form + trick);
        const PhotoLibrary photos(disk.disk(), answering(PhotoAuthorization::authorized));
        EXPECT_FALSE(photos.visitAssets([] {}, [](const PhotoAsset&) { FAIL(); })) << trick;
        EXPECT_FALSE(photos.deleteAssets({"A/L0/001"})) << trick;
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
        const PhotoLibrary photos(disk.disk(), answering(PhotoAuthorization::authorized));
        EXPECT_TRUE(photos.deleteAssets(
            {"C/L0/001", "unknown/L0/001", "", "B", "' OR 1/L0/001", "A/L0/001", "OLD/L0/001"}));
        const std::string deleted = "SELECT group_concat(ZUUID) FROM ZASSET WHERE ZTRASHEDSTATE = 1";
        EXPECT_EQ(catalogue.value(deleted), "A,C,OLD");
        EXPECT_EQ(catalogue.value(deleted + " AND ZTRASHEDDATE BETWEEN " + std::to_string(before) + " AND "
                                  + std::to_string(before + 60)),
                  "A,C");
        EXPECT_EQ(catalogue.value("SELECT ZUUID FROM ZASSET WHERE ZTRASHEDSTATE = 0"), "B");
        EXPECT_TRUE(photos.deleteAssets({"A/L0/001"})); // nothing left to do
        Texts left;
        EXPECT_TRUE(
            photos.visitAssets([&] { left.clear(); },
                               [&](const PhotoAsset& asset) { left.emplace_back(asset.localIdentifier); }));
        EXPECT_EQ(left, Texts{"B/L0/001"});
        EXPECT_EQ(catalogue.value("PRAGMA integrity_check"), "ok");
    }
}

TEST_F(PhotoLibraryOnDisk, ChangesNothingInALibraryThatItMayNotChange) {
    EXPECT_FALSE(library().deleteAssets({"A/L0/001"})); // there is none
    using Prepare = void (*)(CatalogueWriter&, const TemporaryDisk&);
    const std::tuple<const char*, Maker, Prepare> cases[]{
        {"a Mac's", Maker::mac,
         [](CatalogueWriter&, const TemporaryDisk&) {
         }},
        {"another mark", Maker::mac,
         [](CatalogueWriter& catalogue, const TemporaryDisk&) {
             catalogue.run("PRAGMA application_id = 1");
         }},
        {"with triggers", Maker::lumvale,
         [](CatalogueWriter& catalogue, const TemporaryDisk&) {
             catalogue.run("CREATE TRIGGER t AFTER UPDATE ON ZASSET BEGIN DELETE FROM ZASSET; END");
         }},
        {"two of one identifier", Maker::lumvale,
         [](CatalogueWriter& catalogue, const TemporaryDisk&) {
             catalogue.add({.uuid = "A"});
         }},
        {"an unfinished change", Maker::lumvale,
         [](CatalogueWriter&, const TemporaryDisk& disk) {
             disk.write(CatalogueWriter::file + std::string("-journal"), "half");
         }},
        {"not writable", Maker::lumvale,
         [](CatalogueWriter&, const TemporaryDisk& disk) {
             disk.setMode(CatalogueWriter::file, 0444);
         }},
    };
    const OrdinaryUser user;
    for (const auto& [name, maker, prepare] : cases) {
        for (const Log log : {Log::none, Log::pending}) {
            const TemporaryDisk disk;
            CatalogueWriter catalogue(disk, maker, log);
            catalogue.add({.uuid = "B"});
            catalogue.add({.uuid = "A"});
            prepare(catalogue, disk);
            catalogue.abandon();
            const std::string before = disk.read(CatalogueWriter::file);
            const auto entries = disk.entries();
            EXPECT_FALSE(PhotoLibrary(disk.disk(), answering(PhotoAuthorization::authorized))
                             .deleteAssets({"B/L0/001", "A/L0/001"}))
                << name;
            if (maker == Maker::mac) {
                EXPECT_EQ(disk.read(CatalogueWriter::file), before) << name;
                EXPECT_EQ(disk.entries(), entries) << name;
            }
            std::size_t shown = 0;
            if (std::string_view(name) != "an unfinished change") {
                PhotoLibrary(disk.disk(), answering(PhotoAuthorization::authorized))
                    .visitAssets([&] { shown = 0; }, [&](const PhotoAsset&) { ++shown; });
                EXPECT_GE(shown, 2U) << name;
            }
        }
    }
}

TEST_F(PhotoLibraryOnDisk, RefusesADeletionWhileAnotherProgramWrites) {
    CatalogueWriter catalogue(m_disk, Maker::lumvale);
    catalogue.add({.uuid = "A"});
    catalogue.run("BEGIN EXCLUSIVE");
    EXPECT_FALSE(library().deleteAssets({"A/L0/001"}));
    catalogue.run("COMMIT");
    EXPECT_EQ(identifiers(), Texts{"A/L0/001"});
    EXPECT_TRUE(library().deleteAssets({"A/L0/001"}));
    EXPECT_EQ(identifiers(), Texts{});
}

TEST_F(PhotoLibraryOnDisk, OpensThePicturesThatAreInIt) {
    CatalogueWriter catalogue(m_disk);
    const std::string library_ = CatalogueWriter::folder;
    m_disk.write(library_ + "/originals/A/HERE.jpeg", "original");
    m_disk.write(library_ + "/originals/A/SMALL.jpeg", "original");
    m_disk.write(library_ + "/resources/derivatives/S/SMALL_1_105_c.jpeg", "larger");
    m_disk.write(library_ + "/resources/derivatives/masters/S/SMALL_4_5005_c.jpeg", "small");
    m_disk.write(library_ + "/resources/derivatives/masters/S/SMALLER_4_5005_c.jpeg", "another's");
    m_disk.write(library_ + "/resources/derivatives/O/ONLY_1_105_c.jpeg", "larger");
    m_disk.write("~/secret", "secret");
    m_disk.write("/etc/secret", "secret");
    m_disk.make({library_ + "/originals/A/LINK.jpeg -> /Users/me/secret",
                 library_ + "/originals/OUT -> /Users/me", library_ + "/originals/A/PIPE.jpeg |",
                 library_ + "/originals/A/FOLDER.jpeg/",
                 library_ + "/resources/derivatives/T/TRICK_1_105_c.jpeg -> /Users/me/secret"});
    struct {
        CataloguedAsset asset;
        const char* picture; ///< "cloud", "" for none
    } const cases[]{
        {{.uuid = "HERE"}, "original"},
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
        {{.uuid = "../../A", .directory = "'..'"}, ""},
    };
    for (const auto& one : cases)
        catalogue.add(one.asset);
    for (const auto& [asset, expected] : cases) {
        const platform::PhotoPicture picture = library().picture(asset.uuid + "/L0/001");
        std::string found = picture.isInCloud ? "cloud" : "";
        char bytes[100];
        if (picture.file)
            found.append(bytes, static_cast<std::size_t>(read(picture.file.number(), bytes, sizeof bytes)));
        EXPECT_EQ(found, expected) << asset.uuid;
    }
    for (const char* unknown : {"", "HERE", "/L0/001", "NOBODY/L0/001"}) {
        const platform::PhotoPicture picture = library().picture(unknown);
        EXPECT_FALSE(picture.file || picture.isInCloud) << unknown;
    }
}

namespace {

/// The machine user's own files are a test's.
class PhotoAccess : public testing::Test {
protected:
    PhotoAccess() { setenv("XDG_CONFIG_HOME", m_user.host("~/config").c_str(), 1); }
    ~PhotoAccess() override { unsetenv("XDG_CONFIG_HOME"); }

    const TemporaryDisk m_user;
    const TemporaryDisk m_disk;
    const PhotoLibrary m_library{m_disk.disk()};
};

} // namespace

TEST_F(PhotoAccess, IsAskedForOnceAndKeptWithTheUserOfThisMachine) {
    const auto entries = m_disk.entries();
    EXPECT_EQ(m_library.authorization(), PhotoAuthorization::notDetermined);
    EXPECT_TRUE(m_user.entries().size() == 2U) << "asking for the status writes nothing";
    EXPECT_EQ(m_library.requestAuthorization(), PhotoAuthorization::authorized); // there is no library
    EXPECT_EQ(m_library.authorization(), PhotoAuthorization::authorized);
    EXPECT_EQ(m_disk.entries(), entries);
    EXPECT_TRUE(m_user.exists("~/config/Lumvale/photos-asked"));

    setenv("XDG_CONFIG_HOME", m_user.host("~/other").c_str(), 1);
    EXPECT_EQ(m_library.authorization(), PhotoAuthorization::notDetermined);
}

TEST_F(PhotoAccess, IsDeniedWhereTheSystemRefusesTheCatalogue) {
    const OrdinaryUser user;
    const TemporaryDisk disk;
    const PhotoLibrary photos(disk.disk());
    setenv("XDG_CONFIG_HOME", disk.host("~/config").c_str(), 1);
    CatalogueWriter catalogue(disk);
    catalogue.add({.uuid = "A"});
    for (const std::string& closed :
         {std::string(CatalogueWriter::file), std::string(CatalogueWriter::folder)}) {
        disk.setMode(closed, 0);
        EXPECT_EQ(photos.requestAuthorization(), PhotoAuthorization::denied) << closed;
        EXPECT_EQ(photos.authorization(), PhotoAuthorization::denied);
        disk.setMode(closed, 0755);
        EXPECT_EQ(photos.authorization(), PhotoAuthorization::authorized);
    }
    // A damaged one is no refusal.
    disk.write(CatalogueWriter::file, "junk");
    EXPECT_EQ(photos.authorization(), PhotoAuthorization::authorized);
}
