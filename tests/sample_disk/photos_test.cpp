#include "tests/support/temporary_disk.h"
#include "tools/sample_disk/areas.h"

#include <filesystem>
#include <fstream>
#include <map>
#include <memory>
#include <set>
#include <string>
#include <vector>

#include <sqlite3.h>

#include <gtest/gtest.h>

namespace fs = std::filesystem;

namespace {

constexpr std::chrono::sys_days today = std::chrono::sys_days(std::chrono::year(2024) / 3 / 10);

/// A disk with nothing on it but the photo library of a sample.
class Photos {
public:
    explicit Photos(std::uint64_t seed) {
        SampleDisk::DiskWriter writer(m_disk.host("/"), today);
        SampleDisk::Folder root = writer.root();
        SampleDisk::Random random(seed, "photos");
        SampleDisk::makePhotos(root, root, random);
    }

    fs::path host(const std::string& path) const {
        return m_disk.host("/Pictures/Photos Library.photoslibrary/" + path);
    }

    /// The beginning of a file, which all of a picture fits in, without the hole behind it.
    std::string content(const std::string& path) const {
        std::string bytes(300'000, '\0');
        std::ifstream(host(path), std::ios::binary)
            .read(bytes.data(), static_cast<std::streamsize>(bytes.size()));
        return bytes.substr(0, bytes.find_last_not_of('\0') + 1);
    }

    /// All files, by their paths in the library.
    std::map<std::string, std::string> contents() const {
        std::map<std::string, std::string> files;
        for (const fs::directory_entry& entry : fs::recursive_directory_iterator(host(""))) {
            const std::string path = entry.path().lexically_relative(host("")).string();
            if (entry.is_regular_file())
                files[path] = std::to_string(entry.file_size()) + ' ' + content(path);
        }
        return files;
    }

    /// What the catalogue answers, row by row; what is null comes back as "null".
    std::vector<std::vector<std::string>> ask(const std::string& question) const {
        sqlite3* opened = nullptr;
        EXPECT_EQ(
            sqlite3_open_v2(host("database/Photos.sqlite").c_str(), &opened, SQLITE_OPEN_READONLY, nullptr),
            SQLITE_OK);
        const std::unique_ptr<sqlite3, decltype(&sqlite3_close)> database(opened, &sqlite3_close);
        sqlite3_stmt* prepared = nullptr;
        EXPECT_EQ(sqlite3_prepare_v2(opened, question.c_str(), -1, &prepared, nullptr), SQLITE_OK)
            << sqlite3_errmsg(opened);
        std::vector<std::vector<std::string>> rows;
        while (sqlite3_step(prepared) == SQLITE_ROW) {
            std::vector<std::string>& row = rows.emplace_back();
            for (int column = 0; column < sqlite3_column_count(prepared); ++column) {
                const auto* text = reinterpret_cast<const char*>(sqlite3_column_text(prepared, column));
                row.push_back(text == nullptr ? "null" : text);
            }
        }
        EXPECT_EQ(sqlite3_finalize(prepared), SQLITE_OK) << sqlite3_errmsg(opened);
        return rows;
    }

    int count(const std::string& what) const { return std::stoi(ask("SELECT count(*) FROM " + what)[0][0]); }

private:
    TemporaryDisk m_disk{TemporaryDisk::Where::inMemory};
};

/// The two tables as one, with the second in which a photo was taken.
const std::string photos = "(SELECT *, CAST(ZDATECREATED + 978307200 AS INTEGER) AS second FROM ZASSET"
                           " JOIN ZADDITIONALASSETATTRIBUTES AS more ON more.ZASSET = ZASSET.Z_PK)";

/// The groups of photos in sight that have five facts in common.
const std::string groups =
    "(SELECT count(*) AS size, group_concat(ZORIGINALFILENAME, '|') AS names, min(ZORIGINALFILENAME) AS "
    "first,"
    " max(ZORIGINALFILENAME) AS last, max(ZDATECREATED) - min(ZDATECREATED) AS apart, second, ZKIND,"
    " max(ZFAVORITE) AS favourite FROM "
    + photos
    + " WHERE ZHIDDEN = 0 AND ZTRASHEDSTATE = 0 AND ZVISIBILITYSTATE = 0 AND ZORIGINALFILESIZE > 0"
      " GROUP BY ZORIGINALFILESIZE, ZWIDTH, ZHEIGHT, second, ZKIND HAVING count(*) > 1)";

std::string from(const std::string& table, const std::string& condition) {
    return table + " WHERE " + condition;
}

unsigned numberAt(const std::string& bytes, std::size_t at, std::size_t length) {
    unsigned number = 0;
    for (std::size_t i = 0; i < length; ++i)
        number = number << 8 | static_cast<unsigned char>(bytes.at(at + i));
    return number;
}

/// "width height" of a whole JPEG or PNG file.
std::string pixels(const std::string& bytes) {
    using namespace std::literals;
    std::size_t at = 16; // of the width
    std::size_t length = 4;
    unsigned height = 0;
    if (bytes.starts_with("\x89PNG\r\n\x1A\n\0\0\0\x0DIHDR"sv) && bytes.ends_with("IEND\xAE\x42\x60\x82"sv)) {
        height = numberAt(bytes, at + length, length);
    } else if (bytes.starts_with("\xFF\xD8\xFF"sv) && bytes.ends_with("\xFF\xD9"sv)) {
        for (at = 2; numberAt(bytes, at, 2) != 0xFFC0;) // from segment to segment to the frame
            at += 2 + numberAt(bytes, at + 2, 2);
        length = 2;
        height = numberAt(bytes, at + 5, length);
        at += 7;
    } else {
        return "no picture";
    }
    return std::to_string(numberAt(bytes, at, length)) + ' ' + std::to_string(height);
}

} // namespace

TEST(SamplePhotos, HaveACatalogueThatIsMarkedAsOursAndAlone) {
    const Photos library(7);
    EXPECT_EQ(library.ask("PRAGMA application_id")[0][0], std::to_string(0x4C756D76));
    EXPECT_EQ(library.ask("PRAGMA integrity_check")[0][0], "ok");
    EXPECT_EQ(library.count("ZASSET"), library.count(photos));
    for (const fs::directory_entry& entry : fs::directory_iterator(library.host("database")))
        EXPECT_TRUE(entry.path().filename() == "Photos.sqlite" || entry.is_directory()) << entry.path();
}

TEST(SamplePhotos, HoldDuplicatesOfEveryKindAndWhatOnlyLooksLikeThem) {
    const Photos library(7);
    struct Case {
        std::string what;
        int count;
    };
    const Case cases[] = {
        {groups, 19},
        {from(groups, "size = 2"), 12},
        {from(groups, "size = 5"), 1},
        {from(groups, "ZKIND = 1"), 2},
        {from(groups, "second IS NULL"), 2},
        {from(groups, "first = last"), 4},
        {from(groups, "second < 978307200"), 2},
        {from(groups, "apart > 0"), 2},
        {from(groups, "favourite = 1"), 2},
        {from(photos, "ZHIDDEN = 1 AND ZORIGINALFILENAME IN ('IMG_4127.HEIC', 'IMG_4690.HEIC')"), 2},
        {from(photos, "ZTRASHEDSTATE = 1"), 2},
        {from(photos, "(ZTRASHEDSTATE = 1) <> (ZTRASHEDDATE IS NOT NULL)"), 0},
        {from(photos, "ZVISIBILITYSTATE = 2"), 1},
        {from(photos, "ZORIGINALFILESIZE = 0"), 3},
        {from(photos, "ZORIGINALFILESIZE IS NULL"), 3},
        {from(photos, "ZDIRECTORY LIKE '/%'"), 1},
        {from(groups, "names LIKE '%.MOV%' AND names LIKE '%.HEIC%'"), 0},
    };
    for (const Case& expected : cases)
        EXPECT_EQ(library.count(expected.what), expected.count) << expected.what;
    for (const char* name :
         {"IMG_4300", "IMG_4289", "IMG_3702", "IMG_2500", "IMG_2481", "Scan 15", "IMG_0001", "IMG_4690",
          "IMG_4655", "IMG_4640", "IMG_1702", "IMG_1690", "IMG_1688"}) {
        const std::string named = std::string(" LIKE '%") + name + "%'";
        EXPECT_GE(library.count(from(photos, "ZORIGINALFILENAME" + named)), 1) << name;
        EXPECT_EQ(library.count(from(groups, "names" + named)), 0) << name;
    }
}

TEST(SamplePhotos, HaveTheFilesThatTheCatalogueSpeaksOf) {
    const Photos library(7);
    std::map<std::string, std::string> files = library.contents();
    std::map<std::string, std::string> contentOf; // a picture by the facts that its copies have in common
    std::set<std::string> pictures;
    int cloudOnly = 0;
    int thinned = 0;
    int apart = 0; // one picture, but not the same facts
    for (const std::vector<std::string>& row : library.ask(
             "SELECT ZUUID, ZDIRECTORY || '/' || ZFILENAME, ZORIGINALFILESIZE, ZWIDTH || ' ' || ZHEIGHT, "
             "ZKIND, substr(ZUUID, 1, 1) || '/' || ZUUID || '_1_105_c.jpeg', second FROM "
             + photos)) {
        const std::string original = "originals/" + row[1];
        const std::string rendition = "resources/derivatives/" + row[5];
        if (files.erase(rendition) == 1) {
            EXPECT_EQ(pixels(library.content(rendition)), row[3]) << rendition;
            EXPECT_EQ(files.count(original), 0U) << original;
            ++thinned;
        } else if (files.erase(original) == 1) {
            const std::string content = library.content(original);
            if (row[2] != "0" && row[2] != "null") {
                EXPECT_EQ(std::to_string(fs::file_size(library.host(original))), row[2]) << original;
            }
            if (row[4] == "1") {
                EXPECT_EQ(content.substr(4, 8), "ftypqt  ") << original;
                EXPECT_EQ(numberAt(content, 20, 4) + 20, fs::file_size(library.host(original))) << original;
                continue;
            }
            EXPECT_EQ(pixels(content), row[3]) << original;
            const std::string facts = row[2] + ' ' + row[3] + ' ' + row[6];
            const auto [first, isNew] = contentOf.emplace(facts, content);
            EXPECT_EQ(first->second, content) << original;
            if (isNew && !pictures.insert(content).second)
                ++apart;
        } else {
            ++cloudOnly;
        }
    }
    EXPECT_GE(cloudOnly, 20);
    EXPECT_GE(thinned, 5);
    EXPECT_EQ(apart, 2);
    // And no file that nobody speaks of.
    files.erase("database/Photos.sqlite");
    files.erase("database/search/psi.sqlite");
    EXPECT_EQ(files.size(), 0U) << files.begin()->first;
}

TEST(SamplePhotos, AreTheSameOfOneSeedToTheByte) {
    const auto files = Photos(7).contents();
    EXPECT_EQ(files, Photos(7).contents());
    EXPECT_NE(files, Photos(8).contents());
}
