#include "platform/files/file.h"
#include "platform/files/path.h"
#include "platform/photos/photo_catalogue.h"
#include "platform/photos/photo_library.h"

#include <cerrno>
#include <cstdlib>

// Here no system asks the user whether a program may see the photos, and whoever can read the disk can read
// them. What stays of the question is that it was put: until then the program keeps away from the library.
// The answer itself is given by the disk, each time anew, so that it is the answer for this disk and for now.

namespace platform {

namespace {

/// Where it is kept that the question was put; none where the user has no place for such files.
std::optional<std::string> askedFile() {
    const char* const name = "Lumvale/photos-asked";
    const char* const configuration = std::getenv("XDG_CONFIG_HOME");
    if (configuration != nullptr && *configuration == '/')
        return joined(configuration, name);
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

PhotoAuthorization presentStatus(const Disk& disk) {
    const std::optional<std::string> file = askedFile();
    const Result<Disk> host = Disk::open("/", "/");
    const bool wasAsked = file && host && readFile(*host, *file, 1024);
    return wasAsked ? answer(disk) : PhotoAuthorization::notDetermined;
}

PhotoAuthorization answerOnceAsked(const Disk& disk) {
    const std::optional<std::string> file = askedFile();
    if (const Result<Disk> host = Disk::open("/", "/"); file && host) {
        // Where it can't be kept, the question comes again the next time.
        (void)writeFile(*host, *file, "yes\n");
    }
    return answer(disk);
}

} // namespace

PhotoAccess PhotoAccess::ofSystem() {
    return {presentStatus, answerOnceAsked};
}

} // namespace platform
