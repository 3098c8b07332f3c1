#include "platform/remove.h"

#include "platform/trash.h"
#include "tests/support/mounted_volume.h"
#include "tests/support/temporary_disk.h"

#include <atomic>
#include <cerrno>
#include <chrono>
#include <cstring>
#include <functional>
#include <limits>
#include <thread>
#include <utility>

#include <fcntl.h>
#include <linux/fs.h>
#include <sys/socket.h>
#include <sys/stat.h>
#include <sys/un.h>
#include <sys/wait.h>
#include <unistd.h>

#include <gtest/gtest.h>

using platform::removeForGood;

// The linker sends the product's listing of folders here, so that it can be counted, end early as that of a
// file system which passes over entries while others are removed, and be the moment for a surprise.

namespace {
bool listingsEndEarly = false;
int listings = 0;
std::function<void()> surprise; // at the next listing
} // namespace

extern "C" {
ssize_t __real_getdents64(int, void*, size_t);

ssize_t __wrap_getdents64(int folder, void* buffer, size_t size) {
    static bool isAtEnd = false;
    ++listings;
    if (surprise)
        std::exchange(surprise, nullptr)();
    if (!listingsEndEarly)
        return __real_getdents64(folder, buffer, size);
    isAtEnd = !isAtEnd;
    return isAtEnd ? __real_getdents64(folder, buffer, 256) : 0;
}
}

namespace {

struct RemoveForGood : testing::Test {
    void TearDown() override {
        listingsEndEarly = false;
        surprise = nullptr;
    }

    platform::Result<void> remove(std::string_view path) const {
        return removeForGood(disk.disk(), TemporaryDisk::path(path));
    }

    void expectFailure(std::string_view path, int cocoa, int posix) const {
        const auto removed = remove(path);
        ASSERT_FALSE(removed) << path;
        EXPECT_EQ(removed.error().code, cocoa) << path;
        ASSERT_TRUE(removed.error().underlying);
        EXPECT_EQ(removed.error().underlying->code, posix) << path << ": " << removed.error().description;
    }

    const TemporaryDisk disk;
};

/// The descriptors that a removal may have at a time.
constexpr std::size_t allowedDescriptors = 128;

/// The memory that a removal may take more, of a tree of any size. Sanitizers keep freed memory back.
#if defined(__SANITIZE_ADDRESS__) || defined(__SANITIZE_THREAD__)
constexpr long allowedKilobytes = std::numeric_limits<long>::max();
#else
constexpr long allowedKilobytes = 8L * 1024;
#endif

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
               "~/.Trash/item/\xFF\n-rf/\xFE", "~/.Trash/link -> ../Documents", "~/.Trash/file",
               "~/.Trash/empty/"});
    ASSERT_EQ(mkfifo(disk.host("~/.Trash/item/pipe").c_str(), 0666), 0);
    ASSERT_EQ(mkfifo(disk.host("~/.Trash/pipe").c_str(), 0666), 0);
    ASSERT_EQ(link(disk.host("~/Documents/kept").c_str(), disk.host("~/.Trash/item/second").c_str()), 0);
    const std::size_t descriptors = openDescriptors();
    for (const char* path :
         {"~/.Trash/item", "~/.Trash/link", "~/.Trash/file", "~/.Trash/empty", "~/.Trash/pipe"})
        EXPECT_TRUE(remove(path)) << path;
    EXPECT_EQ(openDescriptors(), descriptors);
    EXPECT_TRUE(platform::listTrash(disk.disk())->empty());
    EXPECT_TRUE(disk.exists("~/Documents/kept"));
}

TEST_F(RemoveForGood, RefusesWhatIsNotInTheTrash) {
    disk.make(
        {"~/Documents/kept", "~/.Trash/link -> /Users/me/Documents", "~/.Trash/folder/", "~/.Trashed/kept"});
    const std::string refused[]{"~/Documents/kept",
                                "~/Documents",
                                "~/.Trash",
                                "~/.Trash/",
                                "~/.Trashed/kept",
                                "~/.Trash/../Documents/kept",
                                "~/.Trash/link/",
                                "~/.Trash/./folder",
                                "",
                                "relative",
                                "/",
                                std::string("~/.Trash/folder\0/", 18)};
    for (const std::string& path : refused)
        expectFailure(path, 512, 22);
    expectFailure("~/.Trash/link/kept", 512, 20); // through a link in the Trash
    expectFailure("~/.Trash/missing", 4, 2);
    EXPECT_TRUE(disk.exists("~/Documents/kept"));
    EXPECT_TRUE(disk.exists("~/.Trash/folder"));
    EXPECT_TRUE(disk.exists("~/.Trashed/kept"));
}

TEST_F(RemoveForGood, RemovesWhatItCanAndNamesTheFirstTrueCause) {
    const OrdinaryUser user;
    disk.make({"~/.Trash/item/a/free", "~/.Trash/item/locked/file", "~/.Trash/item/locked/open/free",
               "~/.Trash/item/z/free", "~/.Trash/item/unreadable/file", "~/.Trash/item/unreadable-empty/"});
    disk.setMode("~/.Trash/item/locked", 0555);
    expectFailure("~/.Trash/item/locked", 513, 13);
    disk.setMode("~/.Trash/item/unreadable", 0);
    disk.setMode("~/.Trash/item/unreadable-empty", 0);
    expectFailure("~/.Trash/item", 513, 13);
    EXPECT_TRUE(disk.exists("~/.Trash/item/locked/file"));
    EXPECT_TRUE(disk.exists("~/.Trash/item/unreadable"));
    for (const char* path : {"a", "z", "locked/open/free", "unreadable-empty"})
        EXPECT_FALSE(disk.exists(std::string("~/.Trash/item/") + path)) << path;
    disk.setMode("~/.Trash/item/locked", 0755);
    disk.setMode("~/.Trash/item/unreadable", 0755);
    EXPECT_TRUE(remove("~/.Trash/item"));
}

TEST_F(RemoveForGood, TriesOnceWhatCannotGoFarBelow) {
    const OrdinaryUser user;
    constexpr int levels = 200;
    disk.make("~/.Trash/item/");
    std::string path = "~/.Trash/item";
    for (int i = 0; i < levels; ++i) {
        path += "/a";
        disk.make(path + "/free");
    }
    disk.make(path + "/stuck/file");
    disk.setMode(path + "/stuck", 0555);
    listings = 0;
    expectFailure("~/.Trash/item", 513, 13);
    // Each listing takes two calls, and a folder that isn't empty in the end is listed twice.
    EXPECT_LE(listings, (levels + 2) * 4);
}

TEST_F(RemoveForGood, LocksStopItUntilTheyAreTaken) {
    disk.make({"~/.Trash/item/deep/.hidden/locked", "~/.Trash/item/free", "~/.Trash/item/folder/"});
    ASSERT_EQ(mkfifo(disk.host("~/.Trash/item/deep/pipe").c_str(), 0666), 0);
    if (!disk.setImmutable("~/.Trash/item/deep/.hidden/locked", true)
        || !disk.setImmutable("~/.Trash/item/deep", true) || !disk.setImmutable("~/.Trash/item/folder", true))
        GTEST_SKIP() << "no immutable flag here";
    expectFailure("~/.Trash/item", 513, 1);
    EXPECT_FALSE(disk.exists("~/.Trash/item/free"));
    expectFailure("~/.Trash/item/folder", 513, 1);
    platform::unlock(disk.disk(), TemporaryDisk::path("~/.Trash/item/folder"));
    EXPECT_TRUE(remove("~/.Trash/item/folder"));
    platform::unlock(disk.disk(), TemporaryDisk::path("~/.Trash/item"));
    EXPECT_TRUE(remove("~/.Trash/item"));
}

TEST_F(RemoveForGood, UnlocksInTheTrashOnly) {
    disk.make({"~/kept", "~/.Trash/link -> /Users/me", "~/.Trash/item/to-kept -> /Users/me/kept"});
    if (!disk.setImmutable("~/kept", true))
        GTEST_SKIP() << "no immutable flag here";
    for (const char* path : {"~/kept", "~/.Trash/link", "~/.Trash/link/kept", "~/.Trash/item"})
        platform::unlock(disk.disk(), TemporaryDisk::path(path));
    EXPECT_NE(unlink(disk.host("~/kept").c_str()), 0);
}

TEST_F(RemoveForGood, EntersNoMountedVolume) {
    disk.make({"~/.Trash/item/volume/", "~/.Trash/item/other", "~/.Trash/volume/"});
    const MountedVolume inside(disk.host("~/.Trash/item/volume"));
    SKIP_UNLESS_MOUNTED(inside);
    const MountedVolume itself(disk.host("~/.Trash/volume"));
    disk.make({"~/.Trash/item/volume/kept", "~/.Trash/volume/kept"});
    expectFailure("~/.Trash/item", 512, 16);
    expectFailure("~/.Trash/volume", 512, 16);
    EXPECT_FALSE(disk.exists("~/.Trash/item/other"));
    EXPECT_TRUE(disk.exists("~/.Trash/item/volume/kept"));
    EXPECT_TRUE(disk.exists("~/.Trash/volume/kept"));
}

TEST_F(RemoveForGood, ReadsAgainWhereAFileSystemPassesOverEntries) {
    for (int i = 0; i < 50; ++i)
        disk.make(
            {"~/.Trash/item/file" + std::to_string(i), "~/.Trash/item/folder" + std::to_string(i) + "/file"});
    listingsEndEarly = true;
    EXPECT_TRUE(remove("~/.Trash/item"));
}

TEST_F(RemoveForGood, TakesBoundedDescriptorsAndMemoryForHugeTrees) {
    disk.make("~/.Trash/");
    // In memory, where this user can have that: a disk takes a minute to make so many entries.
    const MountedVolume memory(disk.host("~/.Trash"), "mode=0777");
    const int levels = 20000;
    const int entries = memory ? 200000 : 5000;
    disk.make({"~/.Trash/deep/", "~/.Trash/wide/"});
    ASSERT_TRUE(makeLevels(disk.host("~/.Trash/deep"), levels));
    const platform::Descriptor wide(
        open(disk.host("~/.Trash/wide").c_str(), O_RDONLY | O_DIRECTORY | O_CLOEXEC));
    for (int i = 0; i < entries; ++i) {
        const std::string name = "a file of many " + std::to_string(i);
        ASSERT_EQ(mknodat(wide.number(), name.c_str(), S_IFREG | 0644, 0), 0);
    }
    const pid_t child = fork();
    if (child == 0) {
        const DescriptorLimit limit(allowedDescriptors);
        rusage before{};
        rusage after{};
        getrusage(RUSAGE_SELF, &before);
        const bool succeeded = remove("~/.Trash/deep") && remove("~/.Trash/wide");
        getrusage(RUSAGE_SELF, &after);
        const long grownKilobytes = after.ru_maxrss - before.ru_maxrss;
        _exit(!succeeded ? 1 : grownKilobytes > allowedKilobytes ? 2 : 0);
    }
    int status = 0;
    ASSERT_EQ(waitpid(child, &status, 0), child);
    EXPECT_EQ(WEXITSTATUS(status), 0) << "1: not removed, 2: too much memory";
    EXPECT_TRUE(platform::listTrash(disk.disk())->empty());
}

TEST_F(RemoveForGood, StopsWhereAClosedFolderIsNoLongerAboveTheOneItHeld) {
    // So deep that the folders above the moved one are closed by the time it is left.
    std::string path = "~/.Trash/item";
    for (int i = 0; i < 300; ++i)
        path += "/a";
    disk.make(path + "/file");
    disk.make("~/Documents/b/kept");
    int folders = 0;
    std::function<void()> atTheLowest = [&] {
        if (++folders < 301)
            surprise = atTheLowest;
        else
            rename(disk.host("~/.Trash/item/a/a/a").c_str(), disk.host("~/Documents/a").c_str());
    };
    surprise = atTheLowest;
    expectFailure("~/.Trash/item", 512, 16);
    EXPECT_TRUE(disk.exists("~/Documents/a"));
    EXPECT_TRUE(disk.exists("~/Documents/b/kept"));
}

TEST_F(RemoveForGood, NeverLeavesTheTrashWhenFoldersAreSwappedForLinks) {
    constexpr int wantedSwaps = 10000;
    const char* const kept[]{"~/canary/file", "~/canary/below/file", "~/canary/below/folder/file"};
    for (const char* path : kept)
        disk.make(path);
    disk.make({"~/.Trash/", "~/used/"});
    // A folder, or one above it, becomes a link for a moment while it is being emptied.
    const std::string swapped[]{
        disk.host("~/.Trash/item"),
        disk.host("~/.Trash/item/parent"),
        disk.host("~/.Trash/item/parent/below"),
        disk.host("~/.Trash/item/parent/below/folder"),
    };
    const std::string link = disk.host("~/link");
    const std::string canary = disk.host("~/canary"); // what the kernel itself would follow
    std::atomic<int> swaps = 0;
    std::atomic<bool> isOver = false;
    std::thread swapper([&] {
        const auto exchange = [&](const std::string& folder) {
            return renameat2(AT_FDCWD, folder.c_str(), AT_FDCWD, link.c_str(), RENAME_EXCHANGE) == 0;
        };
        for (int i = 0; !isOver && swaps < wantedSwaps; ++i) {
            static_cast<void>(symlink(canary.c_str(), link.c_str()));
            const std::string& folder = swapped[static_cast<std::size_t>(i) % std::size(swapped)];
            if (!exchange(folder))
                continue;
            ++swaps;
            if (i % 2 == 0)
                std::this_thread::yield();
            if (!exchange(folder)) // the link is gone, as it may be; the folder makes place for a new one
                rename(link.c_str(), disk.host("~/used/" + std::to_string(i)).c_str());
        }
    });
    const auto end = std::chrono::steady_clock::now() + std::chrono::seconds(20);
    while (swaps < wantedSwaps && std::chrono::steady_clock::now() < end) {
        for (const std::string& folder : swapped)
            mkdir(folder.c_str(), 0777);
        static_cast<void>(mknod((swapped[3] + "/file").c_str(), S_IFREG | 0644, 0));
        static_cast<void>(remove("~/.Trash/item"));
    }
    isOver = true;
    swapper.join();
    EXPECT_GE(swaps, wantedSwaps) << "the race was hardly run";
    for (const char* path : kept)
        EXPECT_TRUE(disk.exists(path)) << path;
}
