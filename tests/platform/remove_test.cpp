#include "platform/removal/remove.h"

#include "platform/removal/trash.h"
#include "tests/support/codes.h"
#include "tests/support/mounted_volume.h"
#include "tests/support/process.h"
#include "tests/support/temporary_disk.h"

#include <algorithm>
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
const auto none = [] {
};
std::function<void()> surprise = none; // before each call
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
    surprise();
    if (!listingsEndEarly)
        return __real_getdents64(folder, buffer, size);
    isAtEnd = !isAtEnd;
    return isAtEnd ? __real_getdents64(folder, buffer, 256) : 0;
}
int __wrap_openat(int folder, const char* name, int flags, mode_t mode) {
    surprise();
    return __real_openat(folder, name, flags, mode);
}
int __wrap_unlinkat(int folder, const char* name, int flags) {
    surprise();
    return __real_unlinkat(folder, name, flags);
}
}

namespace {

struct RemoveForGood : testing::Test {
    void TearDown() override {
        listingsEndEarly = false;
        surprise = none;
    }

    std::string remove(std::string_view path) const { return codes(removeForGood(disk.disk(), at(path))); }

    void exchange(std::string_view one, std::string_view other) const {
        renameat2(AT_FDCWD, disk.host(one).c_str(), AT_FDCWD, disk.host(other).c_str(), RENAME_EXCHANGE);
    }

    /// Does the work, exchanging the two before its call of this number. How many calls it made.
    int exchangingAt(int moment, std::string_view one, std::string_view other,
                     const std::function<void()>& work) const {
        int calls = 0;
        surprise = [&] {
            if (calls++ == moment)
                exchange(one, other);
        };
        work();
        surprise = none;
        return calls;
    }

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
    const auto before = disk.entries();
    for (const std::string path :
         {"~/Documents/kept", "~/Documents", "~/.Trash", "~/.Trash/", "~/.Trashed/kept",
          "~/.Trash/../Documents/kept", "~/.Trash/link/", "~/.Trash/./folder", "", "relative", "/"})
        EXPECT_EQ(remove(path), "512:22") << path;
    EXPECT_EQ(remove(std::string("~/.Trash/folder\0/", 18)), "512:22");
    EXPECT_EQ(remove("~/.Trash/link/kept"), "512:20"); // through a link in the Trash
    EXPECT_EQ(remove("~/.Trash/missing"), "4:2");
    EXPECT_EQ(disk.entries(), before);
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

TEST_F(RemoveForGood, LocksStopItUntilTheyAreTakenWhichIsPossibleInTheTrashOnly) {
    disk.make({"~/kept", "~/.Trash/item/deep/.hidden/locked", "~/.Trash/item/deep/pipe |",
               "~/.Trash/item/free", "~/.Trash/item/to-kept -> /Users/me/kept", "~/.Trash/folder/",
               "~/.Trash/link -> /Users/me"});
    LOCK_OR_SKIP(disk, "~/kept", "~/.Trash/item/deep/.hidden/locked", "~/.Trash/item/deep",
                 "~/.Trash/folder");
    for (const char* path : {"~/.Trash/item", "~/.Trash/folder"}) {
        EXPECT_EQ(remove(path), "513:1") << path;
        EXPECT_FALSE(disk.exists("~/.Trash/item/free"));
        platform::unlock(disk.disk(), at(path));
        EXPECT_EQ(remove(path), "") << path;
    }
    for (const char* path : {"~/kept", "~/.Trash/link", "~/.Trash/link/kept"})
        platform::unlock(disk.disk(), at(path));
    EXPECT_NE(unlink(disk.host("~/kept").c_str()), 0);
}

TEST_F(RemoveForGood, UnlocksNothingElsewhereWhenTheTrashBecomesALinkAtAnyMoment) {
    disk.make({"~/Documents/a/b/locked", "~/.Trash/a/b/file", "~/link -> Documents"});
    LOCK_OR_SKIP(disk, "~/Documents/a/b/locked");
    const auto unlocking = [&](int moment) {
        return exchangingAt(moment, "~/.Trash", "~/link",
                            [&] { platform::unlock(disk.disk(), at("~/.Trash/a")); });
    };
    const int calls = unlocking(-1);
    EXPECT_GT(calls, 10);
    for (int moment = 0; moment < calls; ++moment) {
        unlocking(moment);
        EXPECT_NE(unlink(disk.host("~/Documents/a/b/locked").c_str()), 0) << "at call " << moment;
        exchange("~/.Trash", "~/link");
    }
}

TEST_F(RemoveForGood, EntersNothingThatIsMounted) {
    disk.make({"~/Documents/kept", "~/Documents/locked", "~/.Trash/a/volume/", "~/.Trash/a/other",
               "~/.Trash/volume/", "~/.Trash/b/c/Documents/", "~/.Trash/bound/"});
    const std::string documents = disk.host("~/Documents");
    const MountedVolume first(disk.host("~/.Trash/volume"));
    SKIP_UNLESS_MOUNTED(first);
    const MountedVolume others[]{MountedVolume(disk.host("~/.Trash/a/volume")),
                                 // These are on the same volume as the Trash.
                                 MountedVolume(documents, disk.host("~/.Trash/b/c/Documents")),
                                 MountedVolume(documents, disk.host("~/.Trash/bound"))};
    disk.make({"~/.Trash/volume/kept", "~/.Trash/a/volume/kept"});
    const bool isLocked = disk.setImmutable("~/Documents/locked", true); // where there is such a flag
    for (const char* path : {"~/.Trash/volume", "~/.Trash/a", "~/.Trash/b", "~/.Trash/bound"}) {
        EXPECT_EQ(remove(path), "512:16") << path;
        platform::unlock(disk.disk(), at(path));
        EXPECT_EQ(remove(path), "512:16") << path;
    }
    for (const char* kept : {"~/Documents/kept", "~/.Trash/volume/kept", "~/.Trash/a/volume/kept"})
        EXPECT_TRUE(disk.exists(kept)) << kept;
    EXPECT_FALSE(disk.exists("~/.Trash/a/other"));
    EXPECT_EQ(unlink(disk.host("~/Documents/locked").c_str()) != 0, isLocked);
}

TEST_F(RemoveForGood, ReadsAgainWhereAFileSystemPassesOverEntries) {
    for (int i = 0; i < 50; ++i)
        disk.make({"~/.Trash/item/file" + std::to_string(i), "~/.Trash/item/" + std::to_string(i) + "/file"});
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
    for (int i = 0; i < 80'000; ++i)
        mknodat(wide.number(), ("a file of many " + std::to_string(i)).c_str(), S_IFREG | 0644, 0);
    const int outcome = inAnotherProcess([&] {
        const DescriptorLimit limit(128);
        rusage before{};
        rusage after{};
        getrusage(RUSAGE_SELF, &before);
        for (const char* path : {"~/.Trash/deep", "~/.Trash/wide"})
            if (!removeForGood(large.disk(), at(path)))
                return 1;
        getrusage(RUSAGE_SELF, &after);
        return after.ru_maxrss - before.ru_maxrss > allowedKilobytes ? 2 : 0;
    });
    EXPECT_EQ(outcome, 0) << "1: not removed, 2: too much memory";
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
    disk.make({"~/canary/file", "~/canary/d/file", "~/canary/c/d/file", "~/canary/b/c/d/file"});
    for (const char* swapped : {"~/.Trash/a", "~/.Trash/a/b", "~/.Trash/a/b/c", "~/.Trash/a/b/c/d"}) {
        int calls = 0; // at first of a removal that nobody disturbs
        for (int moment = -1; moment < calls; ++moment) {
            disk.make(
                {"~/.Trash/a/b/c/d/file", "~/link -> " + disk.host("~/canary")}); // as the kernel reads it
            const int made = exchangingAt(moment, swapped, "~/link", [&] { remove("~/.Trash/a"); });
            calls = std::max(calls, made);
            for (const char* kept :
                 {"~/canary/file", "~/canary/d/file", "~/canary/c/d/file", "~/canary/b/c/d/file"})
                ASSERT_TRUE(disk.exists(kept)) << kept << ", " << swapped << " at call " << moment;
            std::filesystem::remove_all(disk.host("~/link"));
            std::filesystem::remove_all(disk.host("~/.Trash/a"));
        }
        EXPECT_GT(calls, 10) << swapped;
    }
}
