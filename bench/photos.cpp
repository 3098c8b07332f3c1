#include "core/photos/photo_duplicates.h"

#include <chrono>
#include <cstdio>
#include <functional>
#include <string_view>

#include <sqlite3.h>
#include <sys/resource.h>

// Searches the duplicates of a photo library, or does no more than step through the same columns of its
// catalogue with SQLite itself. Prints what that takes, in milliseconds, and the peak of the memory, in
// bytes.

namespace {

constexpr const char* query =
    "SELECT a.Z_PK, a.ZTRASHEDSTATE, a.ZHIDDEN, a.ZVISIBILITYSTATE, a.ZUUID, a.ZKIND, a.ZWIDTH, a.ZHEIGHT,"
    " a.ZDATECREATED, a.ZFAVORITE, r.ZASSET, r.ZORIGINALFILENAME, r.ZORIGINALFILESIZE FROM ZASSET a"
    " LEFT JOIN ZADDITIONALASSETATTRIBUTES r ON r.ZASSET = a.Z_PK ORDER BY a.Z_PK";

/// Every column of every row, as SQLite keeps it. How many rows there are; -1 when the catalogue can't be
/// read.
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

std::size_t findDuplicates(const platform::Disk& disk) {
    const platform::Executor here{[](platform::Executor::Job job) { job(); },
                                  [](platform::Executor::Job job) {
                                      job();
                                  }};
    const auto authorized = [](const platform::Disk&) {
        return platform::PhotoAuthorization::authorized;
    };
    std::size_t count = 0;
    core::LumvalePhotoDuplicates::findExactDuplicates([&](const auto& groups) { count = groups.size(); },
                                                      here, {disk, {authorized, authorized}});
    return count;
}

} // namespace

int main(int argc, char** argv) {
    const std::string_view what = argc == 4 ? argv[1] : "";
    if (what != "bare" && what != "duplicates") {
        std::fputs("usage: bench-photos bare|duplicates DISK HOME\n", stderr);
        return 2;
    }
    const platform::Result<platform::Disk> disk = platform::Disk::open(argv[2], argv[3]);
    if (!disk) {
        std::fprintf(stderr, "%s: %s\n", argv[2], disk.error().description.c_str());
        return 2;
    }
    const std::string library = disk->inHome("Pictures/Photos Library.photoslibrary/database/Photos.sqlite");
    const auto started = std::chrono::steady_clock::now();
    const auto found =
        what == "bare" ? stepThrough(disk->hostRoot() + library) : static_cast<long>(findDuplicates(*disk));
    const std::chrono::duration<double, std::milli> taken = std::chrono::steady_clock::now() - started;
    rusage use{};
    getrusage(RUSAGE_SELF, &use);
    std::printf("milliseconds %.3f\nfound %ld\npeak %ld\n", taken.count(), found, use.ru_maxrss * 1024);
}
