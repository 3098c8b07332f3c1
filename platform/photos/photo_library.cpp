#include "platform/photos/photo_library.h"

#include "platform/files/folder.h"
#include "platform/files/path.h"
#include "platform/photos/photo_catalogue.h"
#include "platform/system/system.h"

#include <cerrno>
#include <chrono>
#include <optional>
#include <thread>
#include <utility>

namespace platform {

namespace {

/// Repeats `look` while the catalogue changes during it. Returns true when one attempt read it completely.
bool read(const Disk& disk, const std::function<PhotoReading(const PhotoCatalogue&)>& look) {
    constexpr int maxAttempts = 5;
    constexpr std::chrono::milliseconds pause(20);
    for (int attempt = 1;; ++attempt) {
        const Result<PhotoCatalogue> catalogue = PhotoCatalogue::open(disk);
        if (!catalogue)
            return false;
        const PhotoReading reading = look(*catalogue);
        if (reading != PhotoReading::changed || attempt == maxAttempts)
            return reading == PhotoReading::whole;
        std::this_thread::sleep_for(pause);
    }
}

/// Returns the part of an asset's identifier with which names of files begin.
std::string_view uuidOf(std::string_view identifier) {
    return identifier.substr(0, identifier.find('/'));
}

/// Opens a picture that the library made of the asset: the largest file, or a small one, smaller kinds first.
Descriptor rendition(const Disk& disk, std::string_view uuid, bool isLargest) {
    const std::string start = std::string(uuid) + "_";
    Descriptor largest;
    std::int64_t largestBytes = 0;
    for (const char* part : {"resources/derivatives/masters", "resources/derivatives"}) {
        const std::string folder = joined(joined(photoLibraryFolder(disk), part), start.substr(0, 1));
        const auto names = listFolder(disk, folder);
        if (!names)
            continue;
        for (const std::string& name : *names) {
            if (!name.starts_with(start) || extension(name) != "jpeg")
                continue;
            const Result<Place> place = disk.place(joined(folder, name));
            Result<Descriptor> file = place ? Disk::openFile(*place) : place.error();
            if (!file)
                continue;
            if (!isLargest)
                return std::move(*file);
            const auto attributes = system::attributesAt(place->folder.number(), name.c_str());
            if (attributes && attributes->sizeBytes > largestBytes) {
                largest = std::move(*file);
                largestBytes = attributes->sizeBytes;
            }
        }
    }
    return largest;
}

/// Returns true when the text of a relative path has no "..", "." or NUL.
bool leadsDown(std::string_view relative) {
    const std::string path = "/" + std::string(relative);
    return !relative.empty() && relative.find('\0') == std::string_view::npos && standardized(path) == path;
}

std::string originalsFolder(const Disk& disk) {
    return joined(photoLibraryFolder(disk), "originals");
}

Result<Descriptor> openOriginal(const Disk& disk, const PhotoCatalogue::Original& original) {
    if (!leadsDown(original.folder) || !leadsDown(original.name)
        || original.name.find('/') != std::string::npos)
        return posixError(EINVAL);
    const Result<Descriptor> originals = disk.openFolder(originalsFolder(disk));
    if (!originals)
        return originals.error();
    Descriptor folder = system::openFolderBelow(originals->number(), original.folder.c_str());
    if (!folder)
        return posixError(errno);
    return Disk::openFile(Place{std::move(folder), original.name});
}

} // namespace

PhotoLibrary::PhotoLibrary(Disk disk, PhotoAccess access, const SystemPhotoLibrary* system)
    : m_disk(std::move(disk)),
      m_access(std::move(access)),
      m_system(m_disk.isOfThisUser() ? system : nullptr) {}

PhotoAuthorization PhotoLibrary::authorization() const {
    return m_system ? m_system->status() : m_access.status(m_disk);
}

PhotoAuthorization PhotoLibrary::requestAuthorization() const {
    return m_system ? m_system->request() : m_access.request(m_disk);
}

bool PhotoLibrary::isOpen() const {
    const PhotoAuthorization authorized = authorization();
    return authorized == PhotoAuthorization::authorized || authorized == PhotoAuthorization::limited;
}

bool PhotoLibrary::visitAssets(const std::function<void()>& begin,
                               const std::function<bool(const PhotoAsset&)>& visit) const {
    if (!isOpen())
        return false;
    if (m_system) {
        begin();
        // Once access is revoked, the system leaves out assets without an error.
        return m_system->visitAssets(visit) && isOpen();
    }
    const Result<Descriptor> folder = m_disk.openFolder(photoLibraryFolder(m_disk));
    if (!folder && folder.error().code == ENOENT) {
        begin();
        return true;
    }
    return read(m_disk, [&](const PhotoCatalogue& catalogue) {
        begin();
        return catalogue.visitAssets(visit);
    });
}

PhotoPicture PhotoLibrary::picture(std::string_view localIdentifier, PhotoPictureKind kind) const {
    if (!isOpen())
        return {};
    if (m_system)
        return m_system->picture(localIdentifier, kind);
    std::optional<PhotoCatalogue::Original> original;
    const auto find = [&](const PhotoCatalogue& catalogue) {
        return catalogue.findOriginal(localIdentifier, original);
    };
    if (!read(m_disk, find) || !original)
        return {};
    PhotoPicture picture;
    Result<Descriptor> file = openOriginal(m_disk, *original);
    if (file)
        picture.originalPath = joined(joined(originalsFolder(m_disk), original->folder), original->name);
    if (kind != PhotoPictureKind::original) {
        const bool isLargest = kind == PhotoPictureKind::rendition;
        picture.file = rendition(m_disk, uuidOf(localIdentifier), isLargest);
        if (picture.file || isLargest)
            return picture;
    }
    if (file)
        picture.file = std::move(*file);
    else
        picture.isInCloud = file.error().code == ENOENT;
    return picture;
}

bool PhotoLibrary::isChangeable() const {
    return m_system || PhotoCatalogue::isChangeable(m_disk);
}

PhotoDeletion PhotoLibrary::deleteAssets(const std::vector<std::string>& localIdentifiers,
                                         Progress* progress) const {
    if (isStopped(progress))
        return PhotoDeletion::stopped;
    if (!isOpen())
        return PhotoDeletion::failed;
    if (m_system)
        return m_system->deleteAssets(localIdentifiers);
    return PhotoCatalogue::moveToRecentlyDeleted(m_disk, localIdentifiers, progress);
}

} // namespace platform
