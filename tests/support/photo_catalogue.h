#pragma once

#include "platform/photos/photo_access.h"
#include "tests/support/temporary_disk.h"
#include "tools/sample_disk/photo_catalogue.h"

#include <string>

using sample_disk::CataloguedAsset;

/// The catalogue of the photo library in the home of a disk. It is open as long as this object lives.
/// Functions end the test when they fail.
class CatalogueWriter : public sample_disk::PhotoCatalogueWriter {
public:
    static constexpr const char* folder = "~/Pictures/Photos Library.photoslibrary";
    static constexpr const char* file = "~/Pictures/Photos Library.photoslibrary/database/Photos.sqlite";

    explicit CatalogueWriter(const TemporaryDisk& disk, Maker maker = Maker::mac, Log log = Log::none,
                             Form form = Form::macOS11);

    std::string value(const std::string& sql); ///< the first value, as text

    /// Closes the file as if the program that wrote it had crashed: the content of the log stays there.
    void abandon();
};

/// Returns access to the photo library whose status and whose answer to requests is `answer`.
platform::PhotoAccess
photoAccess(platform::PhotoAuthorization answer = platform::PhotoAuthorization::authorized);
