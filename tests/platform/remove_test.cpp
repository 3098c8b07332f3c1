#include "platform/remove.h"

#include "platform/trash.h"
#include "tests/support/codes.h"
#include "tests/support/mounted_volume.h"
#include "tests/support/process.h"
#include "tests/support/temporary_disk.h"

#include <filesystem>
#include <functional>
#include <limits>

#include <fcntl.h>
#include <linux/fs.h>
#include <sys/stat.h>
#include <unistd.h>

#include <gtest/gtest.h>

using platform::removeForGood;

// The linker sends the product's calls here, so that each can be the moment for a surprise. Listings can be
// counted, too, and end early as those of a file system which passes over entries while others are removed.

namespace {
std::function<void()> surprise; // before each call
bool listingsEndEarly = false;
int listings = 0;
} // namespace

extern "C" {
ssize_t __real_getdents64(int, void*, size_t);
int __real_openat(int, const char*, int, ...);
int __real_unlinkat(int, const char*, int);

ssize_t __wrap_getdents64(int folder, void* buffer, size_t size) {
    static bool isAtEnd = false;
    ++listings;
    if (surprise)
        surprise();
    if (!listingsEndEarly)
        return __real_getdents64(folder, buffer, size);
    isAtEnd = !isAtEnd;
    return isAtEnd ? __real_getdents64(folder, buffer, 256) : 0;
}
int __wrap_openat(int folder, const char* name, int flags, mode_t mode) {
    if (surprise)
        surprise();
    return __real_openat(folder, name, flags, mode);
}
int __wrap_unlinkat(int folder, const char* name, int flags) {
    if (surprise)
        surprise();
    return __real_unlinkat(folder, name, flags);
}
}

namespace {

struct RemoveForGood : testing::Test {
    void TearDown() override {
        listingsEndEarly = false;
        surprise = nullptr;
    }

    std::string remove(std::string_view path) const { return codes(removeForGood(disk.disk(), at(path))); }

    const TemporaryDisk disk;
};

/// Makes that many folders, each in the one before, below a folder of the host; the lowest one, open.
platform::Descriptor makeLevels(const std::string& hostFolder, int levels) {
    platform::Descriptor folder(open(hostFolder.c_str(), O_RDONLY | O_DIRECTORY | O_CLOEXEC));
    for (int i = 0; i < levels && folder; ++i) {
        mkdirat(folder.number(), "a level of depth", 0777);
        folder = platform::Descriptor(
            openat(folder.number(), "a level of depth", O_RDONLY | O_DIRECTORY | O_CLOEXEC));
    }
    return folder;
}

} // namespace

TEST_F(RemoveForGood, RemovesEntriesOfEveryKindAndFollowsNoLink) {
    disk.make({"~/Documents/kept", "~/.Trash/item/file 10", "~/.Trash/item/.hidden/.deep/file",
               "~/.Trash/item/empty/", "~/.Trash/item/to-folder -> /Users/me/Documents",
               "~/.Trash/item/to-self -> .", "~/.Trash/item/dangling -> nothing",
               "~/.Trash/item/\xFF\n-rf/\xFE", "~/.Trash/item/pipe |", "~/.Trash/link -> ../Documents",
               "~/.Trash/file", "~/.Trash/empty/", "~/.Trash/pipe |"});
    ASSERT_EQ(link(disk.host("~/Documents/kept").c_str(), disk.host("~/.Trash/item/second").c_str()), 0);
    const std::size_t descriptors = openDescriptors();
    for (const char* name : {"item", "link", "file", "empty", "pipe"})
        EXPECT_EQ(remove(std::string("~/.Trash/") + name), "") << name;
    EXPECT_EQ(openDescriptors(), descriptors);
    EXPECT_TRUE(platform::listTrash(disk.disk())->empty());
    EXPECT_TRUE(disk.exists("~/Documents/kept"));
}

TEST_F(RemoveForGood, RefusesWhatIsNotInTheTrash) {
    disk.make(
        {"~/Documents/kept", "~/.Trash/link -> /Users/me/Documents", "~/.Trash/folder/", "~/.Trashed/kept"});
    for (const std::string& path :
         {std::string("~/Documents/kept"), std::string("~/Documents"), std::string("~/.Trash"),
          std::string("~/.Trash/"), std::string("~/.Trashed/kept"), std::string("~/.Trash/../Documents/kept"),
          std::string("~/.Trash/link/"), std::string("~/.Trash/./folder"), std::string(),
          std::string("relative"), std::string("/"), std::string("~/.Trash/folder\0/", 18)})
        EXPECT_EQ(remove(path), "512:22") << path;
    EXPECT_EQ(remove("~/.Trash/link/kept"), "512:20"); // through a link in the Trash
    EXPECT_EQ(remove("~/.Trash/missing"), "4:2");
    for (const char* path : {"~/Documents/kept", "~/.Trash/folder", "~/.Trashed/kept"})
        EXPECT_TRUE(disk.exists(path)) << path;
}

TEST_F(RemoveForGood, RemovesWhatItCanAndNamesTheFirstTrueCause) {
    const OrdinaryUser user;
    disk.make({"~/.Trash/item/a/free", "~/.Trash/item/locked/file", "~/.Trash/item/locked/open/free",
               "~/.Trash/item/z/free", "~/.Trash/item/unreadable/file", "~/.Trash/item/unreadable-empty/"});
    disk.setMode("~/.Trash/item/locked", 0555);
    EXPECT_EQ(remove("~/.Trash/item/locked"), "513:13");
    disk.setMode("~/.Trash/item/unreadable", 0);
    disk.setMode("~/.Trash/item/unreadable-empty", 0);
    EXPECT_EQ(remove("~/.Trash/item"), "513:13");
    for (const char* kept : {"locked/file", "unreadable"})
        EXPECT_TRUE(disk.exists(std::string("~/.Trash/item/") + kept)) << kept;
    for (const char* gone : {"a", "z", "locked/open/free", "unreadable-empty"})
        EXPECT_FALSE(disk.exists(std::string("~/.Trash/item/") + gone)) << gone;
    disk.setMode("~/.Trash/item/locked", 0755);
    disk.setMode("~/.Trash/item/unreadable", 0755);
    EXPECT_EQ(remove("~/.Trash/item"), "");
}

TEST_F(RemoveForGood, TriesOnceWhatCannotGoFarBelow) {
    const OrdinaryUser user;
    constexpr int levels = 200;
    std::string path = "~/.Trash/item";
    for (int i = 0; i < levels; ++i) {
        path += "/a";
        disk.make(path + "/free");
    }
    disk.make(path + "/stuck/file");
    disk.setMode(path + "/stuck", 0555);
    listings = 0;
    EXPECT_EQ(remove("~/.Trash/item"), "513:13");
    // Each listing takes two calls, and a folder that isn't empty in the end is listed twice.
    EXPECT_LE(listings, (levels + 2) * 4);
}

TEST_F(RemoveForGood, LocksStopItUntilTheyAreTaken) {
    disk.make({"~/.Trash/item/deep/.hidden/locked", "~/.Trash/item/deep/pipe |", "~/.Trash/item/free",
               "~/.Trash/folder/"});
    LOCK_OR_SKIP(disk, "~/.Trash/item/deep/.hidden/locked", "~/.Trash/item/deep", "~/.Trash/folder");
    for (const char* path : {"~/.Trash/item", "~/.Trash/folder"}) {
        EXPECT_EQ(remove(path), "513:1") << path;
        EXPECT_FALSE(disk.exists("~/.Trash/item/free"));
        platform::unlock(disk.disk(), at(path));
        EXPECT_EQ(remove(path), "") << path;
    }
}

TEST_F(RemoveForGood, UnlocksInTheTrashOnly) {
    disk.make({"~/kept", "~/.Trash/link -> /Users/me", "~/.Trash/item/to-kept -> /Users/me/kept"});
    LOCK_OR_SKIP(disk, "~/kept");
    for (const char* path : {"~/kept", "~/.Trash/link", "~/.Trash/link/kept", "~/.Trash/item"})
        platform::unlock(disk.disk(), at(path));
    EXPECT_NE(unlink(disk.host("~/kept").c_str()), 0);
}

TEST_F(RemoveForGood, UnlocksNothingElsewhereWhenTheTrashBecomesALinkAtAnyMoment) {
    disk.make({"~/Documents/a/b/locked", "~/.Trash/a/b/file", "~/link -> Documents"});
    LOCK_OR_SKIP(disk, "~/Documents/a/b/locked");
    const auto swap = [&] {
        renameat2(AT_FDCWD, disk.host("~/.Trash").c_str(), AT_FDCWD, disk.host("~/link").c_str(),
                  RENAME_EXCHANGE);
    };
    int calls = 0;
    surprise = [&] {
        ++calls;
    };
    platform::unlock(disk.disk(), at("~/.Trash/a"));
    for (int moment = 0; moment < calls; ++moment) {
        int call = 0;
        surprise = [&] {
            if (call++ == moment)
                swap();
        };
        platform::unlock(disk.disk(), at("~/.Trash/a"));
        surprise = nullptr;
        EXPECT_NE(unlink(disk.host("~/Documents/a/b/locked").c_str()), 0) << "at call " << moment;
        swap();
    }
    EXPECT_GT(calls, 10);
}

TEST_F(RemoveForGood, EntersNoMountedVolume) {
    disk.make({"~/.Trash/item/volume/", "~/.Trash/item/other", "~/.Trash/volume/"});
    const MountedVolume inside(disk.host("~/.Trash/item/volume"));
    SKIP_UNLESS_MOUNTED(inside);
    const MountedVolume itself(disk.host("~/.Trash/volume"));
    disk.make({"~/.Trash/item/volume/kept", "~/.Trash/volume/kept"});
    EXPECT_EQ(remove("~/.Trash/item"), "512:16");
    EXPECT_EQ(remove("~/.Trash/volume"), "512:16");
    EXPECT_FALSE(disk.exists("~/.Trash/item/other"));
    EXPECT_TRUE(disk.exists("~/.Trash/item/volume/kept") && disk.exists("~/.Trash/volume/kept"));
}

TEST_F(RemoveForGood, EntersNoFolderMountedFromTheSameVolume) {
    disk.make(
        {"~/Documents/folder/kept", "~/Documents/locked", "~/.Trash/item/a/Documents/", "~/.Trash/bound/"});
    const MountedVolume inside(disk.host("~/Documents"), disk.host("~/.Trash/item/a/Documents"));
    SKIP_UNLESS_MOUNTED(inside);
    const MountedVolume itself(disk.host("~/Documents"), disk.host("~/.Trash/bound"));
    LOCK_OR_SKIP(disk, "~/Documents/locked");
    for (const char* path : {"~/.Trash/item", "~/.Trash/bound"}) {
        EXPECT_EQ(remove(path), "512:16") << path;
        platform::unlock(disk.disk(), at(path));
        EXPECT_EQ(remove(path), "512:16") << path;
    }
    EXPECT_TRUE(disk.exists("~/Documents/folder/kept"));
    EXPECT_NE(unlink(disk.host("~/Documents/locked").c_str()), 0);
}

TEST_F(RemoveForGood, ReadsAgainWhereAFileSystemPassesOverEntries) {
    for (int i = 0; i < 50; ++i)
        disk.make(
            {"~/.Trash/item/file" + std::to_string(i), "~/.Trash/item/folder" + std::to_string(i) + "/file"});
    listingsEndEarly = true;
    EXPECT_EQ(remove("~/.Trash/item"), "");
}

TEST_F(RemoveForGood, TakesBoundedDescriptorsAndMemoryForHugeTrees) {
    // Sanitizers keep freed memory back.
#if defined(__SANITIZE_ADDRESS__) || defined(__SANITIZE_THREAD__)
    constexpr long allowedKilobytes = std::numeric_limits<long>::max();
#else
    constexpr long allowedKilobytes = 4L * 1024;
#endif
    const TemporaryDisk large(TemporaryDisk::Where::inMemory);
    large.make({"~/.Trash/deep/", "~/.Trash/wide/"});
    ASSERT_TRUE(makeLevels(large.host("~/.Trash/deep"), 10'000));
    const platform::Descriptor wide = makeLevels(large.host("~/.Trash/wide"), 0);
    for (int i = 0; i < 80'000; ++i) {
        const std::string name = "a file of many " + std::to_string(i);
        ASSERT_EQ(mknodat(wide.number(), name.c_str(), S_IFREG | 0644, 0), 0);
    }
    const int outcome = inAnotherProcess([&] {
        const DescriptorLimit limit(128);
        rusage before{};
        rusage after{};
        getrusage(RUSAGE_SELF, &before);
        for (const char* path : {"~/.Trash/deep", "~/.Trash/wide"}) {
            if (!removeForGood(large.disk(), at(path)))
                return 1;
        }
        getrusage(RUSAGE_SELF, &after);
        return after.ru_maxrss - before.ru_maxrss > allowedKilobytes ? 2 : 0;
    });
    EXPECT_EQ(outcome, 0) << "1: not removed, 2: too much memory";
    EXPECT_TRUE(platform::listTrash(large.disk())->empty());
}

TEST_F(RemoveForGood, StopsWhereAClosedFolderIsNoLongerAboveTheOneItHeld) {
    // So deep that the folders above the moved one are closed by the time it is left.
    std::string path = "~/.Trash/item";
    for (int i = 0; i < 300; ++i)
        path += "/a";
    disk.make(path + "/file");
    disk.make("~/Documents/b/kept");
    listings = 0;
    surprise = [this] {
        if (listings == 301)
            rename(disk.host("~/.Trash/item/a/a/a").c_str(), disk.host("~/Documents/a").c_str());
    };
    EXPECT_EQ(remove("~/.Trash/item"), "512:16");
    EXPECT_TRUE(disk.exists("~/Documents/a") && disk.exists("~/Documents/b/kept"));
}

TEST_F(RemoveForGood, NeverLeavesTheTrashWhenAFolderBecomesALinkAtAnyMoment) {
    disk.make("~/.Trash/");
    const char* const kept[]{"~/canary/file", "~/canary/d/file", "~/canary/c/d/file", "~/canary/b/c/d/file"};
    const std::string link = disk.host("~/link");
    for (const char* swapped : {"~/.Trash/a", "~/.Trash/a/b", "~/.Trash/a/b/c", "~/.Trash/a/b/c/d"}) {
        int calls = 1;
        for (int moment = 0; moment < calls; ++moment) {
            disk.make({kept[0], kept[1], kept[2], kept[3], "~/.Trash/a/b/c/d/file"});
            ASSERT_EQ(symlink(disk.host("~/canary").c_str(), link.c_str()),
                      0); // what the kernel would follow
            calls = 0;
            surprise = [&] {
                if (calls++ == moment)
                    renameat2(AT_FDCWD, disk.host(swapped).c_str(), AT_FDCWD, link.c_str(), RENAME_EXCHANGE);
            };
            remove("~/.Trash/a");
            surprise = nullptr;
            for (const char* path : kept)
                EXPECT_TRUE(disk.exists(path)) << path << ", " << swapped << " at call " << moment;
            std::filesystem::remove_all(link);
            std::filesystem::remove_all(disk.host("~/.Trash/a"));
        }
        EXPECT_GT(calls, 10) << swapped;
    }
}
