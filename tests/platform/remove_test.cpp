#include "platform/removal/remove.h"

#include "platform/removal/trash.h"
#include "tests/support/codes.h"
#include "tests/support/mounted_volume.h"
#include "tests/support/process.h"
#include "tests/support/temporary_disk.h"

#include <algorithm>
#include <cerrno>
#include <filesystem>
#include <functional>
#include <limits>
#include <vector>

#include <fcntl.h>
#include <sys/stat.h>
#include <unistd.h>

#include <gtest/gtest.h>

using platform::removeForGood;

// The linker redirects the product's system calls to these functions, so that a test can change the disk
// before each of them.

namespace {
const auto nothing = [](std::string_view) {
};
std::function<void(std::string_view name)> beforeCall = nothing;
} // namespace

extern "C" {
int __real_openat(int, const char*, int, ...);
int __real_unlinkat(int, const char*, int);

int __wrap_openat(int folder, const char* name, int flags, mode_t mode) {
    beforeCall(name);
    return __real_openat(folder, name, flags, mode);
}
int __wrap_unlinkat(int folder, const char* name, int flags) {
    beforeCall(name);
    return __real_unlinkat(folder, name, flags);
}
}

namespace {

struct RemoveForGood : testing::Test {
    void TearDown() override { beforeCall = nothing; }

    std::string remove(std::string_view path) const { return codes(removeForGood(disk.disk(), at(path))); }

    bool isLocked(std::string_view path) const {
        return unlink(disk.host(path).c_str()) != 0 && errno == EPERM;
    }

    const TemporaryDisk disk;
};

} // namespace

TEST_F(RemoveForGood, RemovesEntriesOfEveryKindAndFollowsNoLink) {
    disk.make({"~/Documents/kept", "~/.Trash/item/file 10", "~/.Trash/item/.hidden/.deep/file",
               "~/.Trash/item/empty/", "~/.Trash/item/to-folder -> /Users/me/Documents",
               "~/.Trash/item/to-self -> .", "~/.Trash/item/\xFF\n-rf/\xFE", "~/.Trash/item/pipe |",
               "~/.Trash/link -> ../Documents", "~/.Trash/file"});
    ASSERT_EQ(link(disk.host("~/Documents/kept").c_str(), disk.host("~/.Trash/item/second").c_str()), 0);
    const std::size_t descriptors = openDescriptors();
    for (const char* name : {"item", "link", "file"})
        EXPECT_EQ(remove(std::string("~/.Trash/") + name), "") << name;
    EXPECT_EQ(openDescriptors(), descriptors);
    EXPECT_TRUE(platform::listTrash(disk.disk())->empty());
    EXPECT_TRUE(disk.exists("~/Documents/kept"));
}

TEST_F(RemoveForGood, RefusesEntriesOutsideTheTrash) {
    disk.make(
        {"~/Documents/kept", "~/.Trash/link -> /Users/me/Documents", "~/.Trash/folder/", "~/.Trashed/kept"});
    const auto before = disk.entries();
    for (const std::string path :
         {"~/Documents/kept", "~/.Trash", "~/.Trash/", "~/.Trashed/kept", "~/.Trash/../Documents/kept",
          "~/.Trash/link/", "~/.Trash/./folder", "relative", "/"})
        EXPECT_EQ(remove(path), "512:22") << path;
    EXPECT_EQ(remove(std::string("~/.Trash/folder\0/", 18)), "512:22");
    EXPECT_EQ(remove("~/.Trash/link/kept"), "512:20");
    EXPECT_EQ(remove("~/.Trash/missing"), "4:2");
    EXPECT_EQ(disk.entries(), before);
}

TEST_F(RemoveForGood, ContinuesAfterAFailureAndReportsItsFirstCause) {
    const OrdinaryUser user;
    disk.make({"~/.Trash/item/a/free", "~/.Trash/item/locked/file", "~/.Trash/item/locked/open/free",
               "~/.Trash/item/z/free", "~/.Trash/item/unreadable/file", "~/.Trash/item/unreadable-empty/"});
    for (const auto& [name, mode] :
         {std::pair("locked", 0555U), {"unreadable", 0U}, {"unreadable-empty", 0U}})
        disk.setMode(std::string("~/.Trash/item/") + name, mode);
    EXPECT_EQ(remove("~/.Trash/item"), "513:13");
    for (const char* kept : {"locked/file", "unreadable"})
        EXPECT_TRUE(disk.exists(std::string("~/.Trash/item/") + kept)) << kept;
    for (const char* removed : {"a", "z", "locked/open/free", "unreadable-empty"})
        EXPECT_FALSE(disk.exists(std::string("~/.Trash/item/") + removed)) << removed;
}

TEST_F(RemoveForGood, FailsOnLockedEntriesUntilTheyAreUnlockedInTheTrash) {
    disk.make({"~/kept", "~/.Trash/item/deep/.hidden/locked", "~/.Trash/item/free",
               "~/.Trash/item/to-kept -> /Users/me/kept", "~/.Trash/link -> /Users/me"});
    LOCK_OR_SKIP(disk, "~/kept", "~/.Trash/item/deep/.hidden/locked", "~/.Trash/item/deep");
    EXPECT_EQ(remove("~/.Trash/item"), "513:1");
    EXPECT_FALSE(disk.exists("~/.Trash/item/free"));
    for (const char* path : {"~/.Trash/item", "~/kept", "~/.Trash/link", "~/.Trash/link/kept"})
        platform::unlock(disk.disk(), at(path));
    EXPECT_EQ(remove("~/.Trash/item"), "");
    EXPECT_TRUE(isLocked("~/kept"));
}

TEST_F(RemoveForGood, ChangesNothingElsewhereWhenAFolderIsReplacedByALink) {
    std::vector<std::string> kept{"~/canary/file", "~/canary/d/file", "~/canary/c/d/file",
                                  "~/canary/b/c/d/file", "~/canary/a/b/c/d/file"};
    for (const std::string& path : kept)
        disk.make(path);
    kept.emplace_back("~/canary");
    for (const bool unlocks : {false, true}) {
        for (const std::string& path : kept)
            if (unlocks)
                LOCK_OR_SKIP(disk, path.c_str());
        for (const char* replaced :
             {"~/.Trash", "~/.Trash/a", "~/.Trash/a/b", "~/.Trash/a/b/c", "~/.Trash/a/b/c/d"}) {
            int calls = 0; // found by a first run without a replacement
            for (int call = -1; call < calls; ++call) {
                disk.make({"~/.Trash/a/b/c/d/file", "~/link -> " + disk.host("~/canary")});
                int done = 0;
                beforeCall = [&](std::string_view) {
                    if (done++ == call)
                        disk.exchange(replaced, "~/link");
                };
                if (unlocks)
                    platform::unlock(disk.disk(), at("~/.Trash/a"));
                else
                    remove("~/.Trash/a");
                beforeCall = nothing;
                calls = std::max(calls, done);
                for (const std::string& path : kept)
                    ASSERT_TRUE(unlocks ? isLocked(path) : disk.exists(path))
                        << path << ", " << replaced << " at call " << call;
                for (const char* left : {"~/link", "~/.Trash"})
                    std::filesystem::remove_all(disk.host(left));
            }
            EXPECT_GT(calls, 10) << replaced;
        }
    }
}

TEST_F(RemoveForGood, StopsWhenAFolderWasMovedOutOfItsClosedParent) {
    // So deep that the descriptors of the upper folders are closed before they are left.
    std::string path = "~/.Trash/item";
    for (int i = 0; i < 300; ++i)
        path += "/a";
    disk.make(path + "/file");
    disk.make("~/Documents/b/kept");
    beforeCall = [this](std::string_view name) {
        if (name == "file")
            rename(disk.host("~/.Trash/item/a/a/a").c_str(), disk.host("~/Documents/a").c_str());
    };
    EXPECT_EQ(remove("~/.Trash/item"), "512:16");
    EXPECT_TRUE(disk.exists("~/Documents/a") && disk.exists("~/Documents/b/kept"));
}

TEST_F(RemoveForGood, EntersNoMountPoint) {
    disk.make({"~/Documents/kept", "~/.Trash/a/volume/", "~/.Trash/a/other", "~/.Trash/volume/",
               "~/.Trash/b/c/Documents/"});
    const MountedVolume volumes[]{
        MountedVolume(disk.host("~/.Trash/volume")), MountedVolume(disk.host("~/.Trash/a/volume")),
        // On the same volume as the Trash.
        MountedVolume(disk.host("~/.Trash/b/c/Documents"), disk.host("~/Documents"))};
    SKIP_UNLESS_MOUNTED(volumes[0]);
    disk.make({"~/.Trash/volume/kept", "~/.Trash/a/volume/kept"});
    for (const char* path : {"~/.Trash/volume", "~/.Trash/a", "~/.Trash/b"})
        EXPECT_EQ(remove(path), "512:16") << path;
    for (const char* kept : {"~/Documents/kept", "~/.Trash/volume/kept", "~/.Trash/a/volume/kept"})
        EXPECT_TRUE(disk.exists(kept)) << kept;
    EXPECT_FALSE(disk.exists("~/.Trash/a/other"));
    LOCK_OR_SKIP(disk, "~/Documents/kept");
    platform::unlock(disk.disk(), at("~/.Trash/b"));
    EXPECT_TRUE(isLocked("~/Documents/kept"));
}

TEST_F(RemoveForGood, RemovesHugeTreesWithFewDescriptorsAndLittleMemory) {
#if defined(__SANITIZE_ADDRESS__) || defined(__SANITIZE_THREAD__)
    constexpr long maxKilobytes = std::numeric_limits<long>::max(); // sanitizers don't reuse freed memory
#else
    constexpr long maxKilobytes = 4L * 1024;
#endif
    const TemporaryDisk large(TemporaryDisk::Where::inMemory);
    large.make({"~/.Trash/item/deep/", "~/.Trash/item/wide/"});
    using platform::Descriptor;
    Descriptor deep(open(large.host("~/.Trash/item/deep").c_str(), O_PATH | O_CLOEXEC));
    for (int i = 0; i < 10'000; ++i) {
        ASSERT_EQ(mkdirat(deep.number(), "a level of depth", 0777), 0);
        deep = Descriptor(openat(deep.number(), "a level of depth", O_PATH | O_CLOEXEC));
    }
    const Descriptor wide(open(large.host("~/.Trash/item/wide").c_str(), O_PATH | O_CLOEXEC));
    for (int i = 0; i < 80'000; ++i)
        mknodat(wide.number(), ("a file of many " + std::to_string(i)).c_str(), S_IFREG | 0644, 0);
    const DescriptorLimit limit(128);
    rusage before{};
    rusage after{};
    getrusage(RUSAGE_SELF, &before);
    EXPECT_EQ(codes(removeForGood(large.disk(), at("~/.Trash/item"))), "");
    getrusage(RUSAGE_SELF, &after);
    EXPECT_LE(after.ru_maxrss - before.ru_maxrss, maxKilobytes);
}
