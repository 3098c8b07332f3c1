#include "core/photos/photo_grouping.h"
#include "platform/photos/photo_library.h"
#include "tests/support/temporary_disk.h"
#include "tools/sample_disk/areas.h"

#include <optional>
#include <set>
#include <string>
#include <vector>

#include <sys/stat.h>
#include <unistd.h>

#include <gtest/gtest.h>

namespace {

/// What a file begins with, which all of a picture fits in.
std::string beginning(int file) {
    std::string bytes(300'000, '\0');
    const ssize_t length = pread(file, bytes.data(), bytes.size(), 0);
    return bytes.substr(0, static_cast<std::size_t>(std::max<ssize_t>(length, 0)));
}

/// The size of the file that the picture is in; none without one.
std::optional<std::int64_t> sizeOf(const platform::PhotoPicture& picture) {
    struct stat status {};
    return fstat(picture.file.number(), &status) == 0 ? std::optional(status.st_size) : std::nullopt;
}

/// The photo library of a sample, on a disk with nothing else, as the program sees it.
platform::PhotoLibrary samplePhotos(const TemporaryDisk& disk) {
    SampleDisk::DiskWriter writer(disk.host("/"), std::chrono::year(2024) / 3 / 10);
    SampleDisk::Folder root = writer.root();
    SampleDisk::Random random(7, "photos");
    SampleDisk::makePhotos(root, root, random);
    const auto authorized = [](const platform::Disk&) {
        return platform::PhotoAuthorization::authorized;
    };
    return {*platform::Disk::open(disk.host("/"), "/"), {authorized, authorized}};
}

} // namespace

TEST(SampleDisk, HasPhotosWithDuplicatesAndWhatOnlyLooksLikeThem) {
    const TemporaryDisk disk(TemporaryDisk::Where::inMemory);
    const platform::PhotoLibrary photos = samplePhotos(disk);
    core::LumvalePhotoDuplicates::PhotoGrouping grouping;
    int inCloud = 0;
    int originals = 0;
    int renditions = 0;
    const auto visit = [&](const platform::PhotoAsset& asset) {
        grouping.add(asset);
        const platform::PhotoPicture picture = photos.picture(asset.localIdentifier);
        const bool isOriginal = picture.file && sizeOf(picture) == asset.resource->fileSize;
        const bool isFilm = asset.mediaType == platform::PhotoMediaType::video;
        EXPECT_FALSE(isFilm && isOriginal) << "no frame to show it by: " << asset.localIdentifier;
        ++(picture.isInCloud ? inCloud : isOriginal ? originals : renditions);
    };
    EXPECT_TRUE(photos.visitAssets([] {}, visit));
    EXPECT_GE(inCloud, 20);
    EXPECT_GE(originals, 200);
    EXPECT_GE(renditions, 5);

    const std::string nearMisses[]{"IMG_4300", "IMG_4289", "IMG_3702", "IMG_2500", "IMG_2481",
                                   "Scan 15",  "IMG_0001", "IMG_4690", "IMG_4655", "IMG_4640",
                                   "IMG_1702", "IMG_1690", "IMG_1688"};
    const std::vector<core::DuplicatePhotoGroup> groups = grouping.groups();
    EXPECT_EQ(groups.size(), 19U);
    for (const core::DuplicatePhotoGroup& group : groups) {
        std::set<std::string> pictures; // of all copies the same
        for (const core::DuplicatePhotoItem& item : group.items) {
            if (const auto picture = photos.picture(item.id); sizeOf(picture) == item.sizeBytes)
                pictures.insert(beginning(picture.file.number()));
            for (const std::string& name : nearMisses)
                EXPECT_FALSE(item.filename.starts_with(name)) << item.filename;
        }
        EXPECT_LE(pictures.size(), 1U) << group.items[0].filename;
    }
    // It is the program's to change, and sound.
    EXPECT_TRUE(photos.deleteAssets({groups[0].items[0].id}));
    int left = 0;
    EXPECT_TRUE(photos.visitAssets([] {}, [&](const platform::PhotoAsset&) { ++left; }));
    EXPECT_EQ(left, inCloud + originals + renditions - 1);
}
