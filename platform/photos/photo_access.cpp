#include "platform/photos/photo_access.h"

#include "platform/files/file.h"
#include "platform/files/path.h"
#include "platform/photos/photo_catalogue.h"

#include <atomic>
#include <cerrno>
#include <cstdlib>

// No system asks the user for access to a catalogue. A file records that access was requested; until then the
// program doesn't read the library. The permission itself follows from the disk's current file permissions.

namespace platform {

namespace {

/// Returns the path of the file that records the request: in the program's settings folder if one is set,
/// otherwise in the user's (XDG Base Directory Specification). Returns nullopt when the user has none.
std::optional<std::string> askedFile() {
    const char* const name = "Lumvale/photos-asked";
    for (const char* const variable : {"LUMVALE_SETTINGS", "XDG_CONFIG_HOME"}) {
        const char* const folder = std::getenv(variable);
        if (folder != nullptr && *folder == '/')
            return joined(folder, name);
    }
    const char* const home = std::getenv("HOME");
    if (home != nullptr && *home == '/')
        return joined(joined(home, ".config"), name);
    return std::nullopt;
}

PhotoAuthorization answer(const Disk& disk) {
    const Result<PhotoCatalogue> catalogue = PhotoCatalogue::open(disk);
    const bool isRefused =
        !catalogue && (catalogue.error().code == EACCES || catalogue.error().code == EPERM);
    return isRefused ? PhotoAuthorization::denied : PhotoAuthorization::authorized;
}

/// Set when the request could not be recorded in the file: the permission then lasts for the run.
std::atomic<bool> wasAskedInThisRun = false;

PhotoAuthorization presentStatus(const Disk& disk) {
    const std::optional<std::string> file = askedFile();
    const Result<Disk> host = Disk::open("/", "/");
    const bool wasAsked = file && host && readFile(*host, *file, 1024);
    return wasAsked || wasAskedInThisRun ? answer(disk) : PhotoAuthorization::notDetermined;
}

PhotoAuthorization answerOnceAsked(const Disk& disk) {
    const std::optional<std::string> file = askedFile();
    const Result<Disk> host = Disk::open("/", "/");
    wasAskedInThisRun = !file || !host || !writeFile(*host, *file, "yes\n");
    return answer(disk);
}

} // namespace

PhotoAccess PhotoAccess::ofCatalogue() {
    return {presentStatus, answerOnceAsked};
}

} // namespace platform
