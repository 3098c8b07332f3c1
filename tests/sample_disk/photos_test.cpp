#include "core/photos/photo_grouping.h"
#include "platform/photo_library.h"
#include "tests/support/temporary_disk.h"
#include "tools/sample_disk/areas.h"

#include <map>
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

TEST(SampleDisk, HasPhotosWithDuplicatesOfEveryKindAndWhatOnlyLooksLikeThem) {
    const TemporaryDisk disk(TemporaryDisk::Where::inMemory);
    const platform::PhotoLibrary photos = samplePhotos(disk);
    LumvalePhotoDuplicates::PhotoGrouping grouping;
    int inCloud = 0;
    int originals = 0;
    int renditions = 0;
    const auto visit = [&](const platform::PhotoAsset& asset) {
        grouping.add(asset);
        const platform::PhotoPicture picture = photos.picture(asset.localIdentifier);
        const bool isOriginal = sizeOf(picture) == asset.resource->fileSize;
        ++(picture.isInCloud ? inCloud : isOriginal ? originals : renditions);
    };
    EXPECT_TRUE(photos.visitAssets([] {}, visit));
    EXPECT_GE(inCloud, 20);
    EXPECT_GE(originals, 200);
    EXPECT_GE(renditions, 5);

    const std::string nearMisses[]{"IMG_4300", "IMG_4289", "IMG_3702", "IMG_2500", "IMG_2481",
                                   "Scan 15",  "IMG_0001", "IMG_4690", "IMG_4655", "IMG_4640",
                                   "IMG_1702", "IMG_1690", "IMG_1688"};
    std::map<std::string, int> kinds;
    for (const DuplicatePhotoGroup& group : grouping.groups()) {
        const DuplicatePhotoItem& first = group.items.front();
        ++kinds[std::to_string(group.items.size()) + " copies"];
        kinds["films"] += first.isVideo ? 1 : 0;
        kinds["undated"] += first.creationDate ? 0 : 1;
        kinds["apart within a second"] += first.creationDate != group.items.back().creationDate ? 1 : 0;
        std::set<std::string> names;
        std::set<std::string> pictures;
        bool hasFavourite = false;
        for (const DuplicatePhotoItem& item : group.items) {
            names.insert(item.filename);
            hasFavourite = hasFavourite || item.isFavorite;
            if (const auto picture = photos.picture(item.id); sizeOf(picture) == item.sizeBytes)
                pictures.insert(beginning(picture.file.number()));
            for (const std::string& name : nearMisses)
                EXPECT_FALSE(item.filename.starts_with(name)) << item.filename;
        }
        kinds["of one name"] += names.size() == 1 ? 1 : 0;
        kinds["with a favourite"] += hasFavourite ? 1 : 0;
        EXPECT_LE(pictures.size(), 1U) << first.filename << " and its copies show different pictures";
    }
    EXPECT_EQ(testing::PrintToString(kinds),
              R"({ ("2 copies", 12), ("3 copies", 5), ("4 copies", 1), ("5 copies", 1),)"
              R"( ("apart within a second", 2), ("films", 2), ("of one name", 4), ("undated", 2),)"
              R"( ("with a favourite", 2) })");
    // It is the program's to change, and sound.
    EXPECT_TRUE(photos.deleteAssets({grouping.groups()[0].items[0].id}));
    int left = 0;
    EXPECT_TRUE(photos.visitAssets([] {}, [&](const platform::PhotoAsset&) { ++left; }));
    EXPECT_EQ(left, inCloud + originals + renditions - 1);
}
