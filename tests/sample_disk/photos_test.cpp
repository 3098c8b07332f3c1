#include "core/photos/photo_grouping.h"
#include "platform/photo_library.h"
#include "tests/support/temporary_disk.h"
#include "tools/sample_disk/areas.h"

#include <filesystem>
#include <map>
#include <optional>
#include <set>
#include <string>
#include <vector>

#include <fcntl.h>
#include <sys/stat.h>
#include <unistd.h>

#include <gtest/gtest.h>

namespace fs = std::filesystem;

namespace {

constexpr std::chrono::sys_days today = std::chrono::sys_days(std::chrono::year(2024) / 3 / 10);

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

/// A disk with nothing on it but the photo library of a sample, seen as the program sees it.
class Photos {
public:
    explicit Photos(std::uint64_t seed) {
        SampleDisk::DiskWriter writer(m_files.host("/"), today);
        SampleDisk::Folder root = writer.root();
        SampleDisk::Random random(seed, "photos");
        SampleDisk::makePhotos(root, root, random);
        const auto authorized = [](const platform::Disk&) {
            return platform::PhotoAuthorization::authorized;
        };
        m_library.emplace(*platform::Disk::open(m_files.host("/"), "/"),
                          platform::PhotoAccess{authorized, authorized});
    }

    const platform::PhotoLibrary& library() const { return *m_library; }

    std::vector<DuplicatePhotoGroup> groups() const {
        LumvalePhotoDuplicates::PhotoGrouping grouping;
        EXPECT_TRUE(
            library().visitAssets([] {}, [&](const platform::PhotoAsset& asset) { grouping.add(asset); }));
        return grouping.groups();
    }

    /// All files, by their paths: the size, and what each begins with.
    std::map<std::string, std::string> files() const {
        std::map<std::string, std::string> found;
        for (const fs::directory_entry& entry : fs::recursive_directory_iterator(m_files.host("/Pictures"))) {
            const platform::Descriptor file(open(entry.path().c_str(), O_RDONLY | O_CLOEXEC));
            if (entry.is_regular_file())
                found[entry.path().lexically_relative(m_files.host("/"))] =
                    std::to_string(entry.file_size()) + beginning(file.number());
        }
        return found;
    }

private:
    TemporaryDisk m_files{TemporaryDisk::Where::inMemory};
    std::optional<platform::PhotoLibrary> m_library;
};

} // namespace

TEST(SamplePhotos, HoldDuplicatesOfEveryKindAndWhatOnlyLooksLikeThem) {
    const Photos photos(7);
    const std::vector<DuplicatePhotoGroup> groups = photos.groups();
    const std::string nearMisses[]{"IMG_4300", "IMG_4289", "IMG_3702", "IMG_2500", "IMG_2481",
                                   "Scan 15",  "IMG_0001", "IMG_4690", "IMG_4655", "IMG_4640",
                                   "IMG_1702", "IMG_1690", "IMG_1688"};
    std::map<std::string, int> kinds;
    for (const DuplicatePhotoGroup& group : groups) {
        const DuplicatePhotoItem& first = group.items.front();
        ++kinds[std::to_string(group.items.size()) + " copies"];
        kinds["films"] += first.isVideo ? 1 : 0;
        kinds["undated"] += first.creationDate ? 0 : 1;
        kinds["apart within a second"] += first.creationDate != group.items.back().creationDate ? 1 : 0;
        std::set<std::string> names;
        std::set<std::string> originals;
        bool hasFavourite = false;
        for (const DuplicatePhotoItem& item : group.items) {
            names.insert(item.filename);
            hasFavourite = hasFavourite || item.isFavorite;
            if (const auto picture = photos.library().picture(item.id); sizeOf(picture) == item.sizeBytes)
                originals.insert(beginning(picture.file.number()));
            for (const std::string& name : nearMisses)
                EXPECT_FALSE(item.filename.starts_with(name)) << item.filename;
        }
        kinds["of one name"] += names.size() == 1 ? 1 : 0;
        kinds["with a favourite"] += hasFavourite ? 1 : 0;
        EXPECT_LE(originals.size(), 1U) << first.filename << " and its copies show different pictures";
    }
    EXPECT_EQ(kinds, (std::map<std::string, int>{{"2 copies", 12},
                                                 {"3 copies", 5},
                                                 {"4 copies", 1},
                                                 {"5 copies", 1},
                                                 {"films", 2},
                                                 {"undated", 2},
                                                 {"apart within a second", 2},
                                                 {"of one name", 4},
                                                 {"with a favourite", 2}}));
    // It is the program's to change, and sound.
    EXPECT_TRUE(photos.library().deleteAssets({groups[0].items[0].id}));
    EXPECT_EQ(photos.groups().size(), groups.size() - 1);
}

TEST(SamplePhotos, HaveTheFilesThatTheCatalogueSpeaksOf) {
    const Photos photos(7);
    int inCloud = 0;
    int originals = 0;
    int renditions = 0;
    EXPECT_TRUE(photos.library().visitAssets(
        [] {},
        [&](const platform::PhotoAsset& asset) {
            const platform::PhotoPicture picture = photos.library().picture(asset.localIdentifier);
            const bool isOriginal = sizeOf(picture) == asset.resource->fileSize;
            ++(picture.isInCloud ? inCloud : isOriginal ? originals : renditions);
        }));
    EXPECT_GE(inCloud, 20);
    EXPECT_GE(originals, 200);
    EXPECT_GE(renditions, 5);
}

TEST(SamplePhotos, AreTheSameOfOneSeedToTheByte) {
    const auto files = Photos(7).files();
    EXPECT_EQ(files, Photos(7).files());
    EXPECT_NE(files, Photos(8).files());
}
