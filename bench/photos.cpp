#include "core/photos/photo_duplicates.h"
#include "tools/sample_disk/photo_catalogue.h"
#include "tools/sample_disk/random.h"

#include <chrono>
#include <cstdio>
#include <cstdlib>
#include <filesystem>
#include <functional>
#include <string>
#include <string_view>

#include <sqlite3.h>

// Creates the catalogue of a photo library, searches it for duplicates, or steps through the same columns
// with SQLite alone. Prints the time in milliseconds and the number found.

namespace {

constexpr const char* query =
    "SELECT a.Z_PK, a.ZTRASHEDSTATE, a.ZHIDDEN, a.ZVISIBILITYSTATE, a.ZUUID, a.ZKIND, a.ZWIDTH, a.ZHEIGHT,"
    " a.ZDATECREATED, a.ZFAVORITE, r.ZASSET, r.ZORIGINALFILENAME, r.ZORIGINALFILESIZE FROM ZASSET a"
    " LEFT JOIN ZADDITIONALASSETATTRIBUTES r ON r.ZASSET = a.Z_PK ORDER BY a.Z_PK";

/// Reads every column of every row. Returns the number of rows, or -1 when the catalogue can't be read.
long stepThrough(const std::string& catalogue) {
    sqlite3* database = nullptr;
    sqlite3_stmt* rows = nullptr;
    long count = -1;
    const std::string name =
        "file:" + catalogue + "?immutable=1"; // the catalogue of a bench has a simple path
    if (sqlite3_open_v2(name.c_str(), &database, SQLITE_OPEN_READONLY | SQLITE_OPEN_URI | SQLITE_OPEN_NOMUTEX,
                        nullptr)
            == SQLITE_OK
        && sqlite3_prepare_v2(database, query, -1, &rows, nullptr) == SQLITE_OK) {
        for (count = 0; sqlite3_step(rows) == SQLITE_ROW; ++count)
            for (int column = 0; column < sqlite3_column_count(rows); ++column)
                sqlite3_column_blob(rows, column);
    }
    sqlite3_finalize(rows);
    sqlite3_close(database);
    return count;
}

/// Creates assets with distinct dates, except for the last `groups` ones, which duplicate the first ones.
void makeCatalogue(const std::string& file, int count, int groups) {
    std::filesystem::create_directories(std::filesystem::path(file).parent_path());
    sample_disk::PhotoCatalogueWriter catalogue(file);
    sample_disk::Random identifiers(7, "identifiers");
    catalogue.run("BEGIN");
    for (int number = 0; number < count; ++number) {
        const int original = number < count - groups ? number : number - (count - groups);
        sample_disk::Random random(7, std::to_string(original));
        const std::string uuid = identifiers.uuid();
        catalogue.add({.uuid = uuid,
                       .size = std::to_string(random.between(200'000, 9'000'000)),
                       .created = std::to_string(500'000'000 + 61.25 * original),
                       .width = "4032",
                       .height = "3024",
                       .kind = original % 9 == 0 ? "1" : "0",
                       .name = "'IMG_" + std::to_string(number % 10'000) + ".HEIC'",
                       .directory = sample_disk::quoted(uuid.substr(0, 1))});
    }
    catalogue.run("COMMIT");
}

std::size_t findDuplicates(const platform::Disk& disk) {
    const platform::Executor here{[](platform::Executor::Job job) { job(); },
                                  [](platform::Executor::Job job) {
                                      job();
                                  }};
    const auto authorized = [](const platform::Disk&) {
        return platform::PhotoAuthorization::authorized;
    };
    std::size_t count = 0;
    core::LumvalePhotoDuplicates::findExactDuplicates([&](const auto& groups) { count = groups->size(); },
                                                      here, {disk, {authorized, authorized}});
    return count;
}

} // namespace

int main(int argc, char** argv) {
    const std::string_view what = argc == 4 ? argv[1] : "";
    const bool makes = argc == 6 && argv[1] == std::string_view("make");
    if (!makes && what != "bare" && what != "duplicates") {
        std::fputs("usage: bench-photos bare|duplicates DISK HOME\n"
                   "       bench-photos make DISK HOME ASSETS GROUPS\n",
                   stderr);
        return 2;
    }
    const platform::Result<platform::Disk> disk = platform::Disk::open(argv[2], argv[3]);
    if (!disk) {
        std::fprintf(stderr, "%s: %s\n", argv[2], disk.error().description.c_str());
        return 2;
    }
    const std::string library = disk->inHome("Pictures/Photos Library.photoslibrary/database/Photos.sqlite");
    if (makes) {
        makeCatalogue(disk->hostRoot() + library, std::atoi(argv[4]), std::atoi(argv[5]));
        return 0;
    }
    const auto started = std::chrono::steady_clock::now();
    const auto found =
        what == "bare" ? stepThrough(disk->hostRoot() + library) : static_cast<long>(findDuplicates(*disk));
    const std::chrono::duration<double, std::milli> taken = std::chrono::steady_clock::now() - started;
    std::printf("milliseconds %.3f\nfound %ld\n", taken.count(), found);
}
