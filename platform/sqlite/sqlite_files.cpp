#include "platform/sqlite/sqlite_files.h"

#include <cerrno>
#include <charconv>
#include <cstring>
#include <string_view>

#include <sqlite3.h>
#include <sys/stat.h>
#include <unistd.h>

namespace platform::sqlite_files {

namespace {

/// SQLite allocates `szOsFile` bytes for this and passes pointers to the first member.
struct File {
    sqlite3_file base;
    int descriptor;
};

int descriptorOf(const sqlite3_file* file) {
    return reinterpret_cast<const File*>(file)->descriptor;
}

int close(sqlite3_file* /*file*/) {
    return SQLITE_OK; // the caller of openToRead() owns the descriptor
}

/// A missing log (descriptor -1) reads as an empty one.
int read(sqlite3_file* file, void* buffer, int size, sqlite3_int64 offset) {
    auto* const bytes = static_cast<char*>(buffer);
    const auto wanted = static_cast<std::size_t>(size);
    std::size_t got = 0;
    while (descriptorOf(file) >= 0 && got < wanted) {
        const ssize_t count =
            pread(descriptorOf(file), bytes + got, wanted - got, offset + static_cast<sqlite3_int64>(got));
        if (count < 0 && errno == EINTR)
            continue;
        if (count < 0)
            return SQLITE_IOERR_READ;
        if (count == 0)
            break;
        got += static_cast<std::size_t>(count);
    }
    if (got == wanted)
        return SQLITE_OK;
    std::memset(bytes + got, 0, wanted - got);
    return SQLITE_IOERR_SHORT_READ;
}

int refuseToWrite(sqlite3_file* /*file*/, const void* /*bytes*/, int /*size*/, sqlite3_int64 /*offset*/) {
    return SQLITE_READONLY;
}

int refuseToTruncate(sqlite3_file* /*file*/, sqlite3_int64 /*size*/) {
    return SQLITE_READONLY;
}

int sync(sqlite3_file* /*file*/, int /*flags*/) {
    return SQLITE_OK;
}

int fileSize(sqlite3_file* file, sqlite3_int64* size) {
    struct stat status {};
    if (descriptorOf(file) >= 0 && fstat(descriptorOf(file), &status) != 0)
        return SQLITE_IOERR_FSTAT;
    *size = status.st_size;
    return SQLITE_OK;
}

int lock(sqlite3_file* /*file*/, int /*level*/) {
    return SQLITE_OK; // the catalogue checks afterwards that its files are unchanged
}

int checkReservedLock(sqlite3_file* /*file*/, int* isLocked) {
    *isLocked = 0;
    return SQLITE_OK;
}

int control(sqlite3_file* /*file*/, int /*operation*/, void* /*argument*/) {
    return SQLITE_NOTFOUND;
}

int none(sqlite3_file* /*file*/) {
    return 0;
}

const sqlite3_io_methods methods = [] {
    sqlite3_io_methods made{};
    made.iVersion = 1;
    made.xClose = close;
    made.xRead = read;
    made.xWrite = refuseToWrite;
    made.xTruncate = refuseToTruncate;
    made.xSync = sync;
    made.xFileSize = fileSize;
    made.xLock = lock;
    made.xUnlock = lock;
    made.xCheckReservedLock = checkReservedLock;
    made.xFileControl = control;
    made.xSectorSize = none;
    made.xDeviceCharacteristics = none;
    return made;
}();

int open(sqlite3_vfs* /*self*/, const char* name, sqlite3_file* file, int flags, int* outFlags) {
    auto* const made = reinterpret_cast<File*>(file);
    made->base.pMethods = nullptr;
    const bool isDatabase = (flags & SQLITE_OPEN_MAIN_DB) != 0;
    if (name == nullptr || (!isDatabase && (flags & SQLITE_OPEN_WAL) == 0))
        return SQLITE_CANTOPEN;
    const std::string_view text(name);
    int numbers[2] = {-1, -1};
    const char* const end = text.data() + text.size();
    const auto first = std::from_chars(text.data(), end, numbers[0]);
    if (first.ec != std::errc() || first.ptr == end
        || std::from_chars(first.ptr + 1, end, numbers[1]).ec != std::errc())
        return SQLITE_CANTOPEN;
    made->descriptor = numbers[isDatabase ? 0 : 1];
    made->base.pMethods = &methods;
    if (outFlags != nullptr)
        *outFlags = (flags & ~(SQLITE_OPEN_READWRITE | SQLITE_OPEN_CREATE)) | SQLITE_OPEN_READONLY;
    return SQLITE_OK;
}

int removeNothing(sqlite3_vfs* /*self*/, const char* /*name*/, int /*syncFolder*/) {
    return SQLITE_READONLY;
}

/// Reports the log as existing if it has a descriptor. SQLite's other queries don't matter here.
int access(sqlite3_vfs* /*self*/, const char* name, int /*flags*/, int* result) {
    const std::string_view text(name);
    *result = text.ends_with("-wal") && text.find(",-") == std::string_view::npos ? 1 : 0;
    return SQLITE_OK;
}

int fullName(sqlite3_vfs* /*self*/, const char* name, int size, char* out) {
    const std::string_view text(name);
    if (text.size() >= static_cast<std::size_t>(size))
        return SQLITE_CANTOPEN;
    out[text.copy(out, text.size())] = '\0';
    return SQLITE_OK;
}

int noRandomness(sqlite3_vfs* /*self*/, int size, char* bytes) {
    std::memset(bytes, 0, static_cast<std::size_t>(size)); // only writers need randomness
    return size;
}

int noSleep(sqlite3_vfs* /*self*/, int /*microseconds*/) {
    return 0;
}

int noTime(sqlite3_vfs* /*self*/, double* /*days*/) {
    return SQLITE_ERROR;
}

int noLastError(sqlite3_vfs* /*self*/, int /*size*/, char* /*text*/) {
    return 0;
}

} // namespace

const char* fileSystem() {
    constexpr int maxNameBytes = 64;
    static sqlite3_vfs files = [] {
        sqlite3_vfs made{};
        made.iVersion = 1;
        made.szOsFile = sizeof(File);
        made.mxPathname = maxNameBytes;
        made.zName = "lumvale-open-files";
        made.xOpen = open;
        made.xDelete = removeNothing;
        made.xAccess = access;
        made.xFullPathname = fullName;
        made.xRandomness = noRandomness;
        made.xSleep = noSleep;
        made.xCurrentTime = noTime;
        made.xGetLastError = noLastError;
        return made;
    }();
    static const bool isRegistered = sqlite3_vfs_register(&files, 0) == SQLITE_OK;
    return isRegistered ? files.zName : nullptr;
}

std::string name(int database, int log) {
    return std::to_string(database) + "," + std::to_string(log);
}

} // namespace platform::sqlite_files
