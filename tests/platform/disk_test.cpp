#include "platform/files/disk.h"

#include "platform/files/folder.h"
#include "platform/system/system.h"
#include "tests/support/codes.h"
#include "tests/support/process.h"
#include "tests/support/temporary_disk.h"

#include <cerrno>
#include <filesystem>

#include <fcntl.h>
#include <sys/syscall.h>
#include <unistd.h>

#include <gtest/gtest.h>

using namespace platform;

// The linker redirects the product's system calls to this function, so that a kernel can lack openat2.
static bool hasOpenat2 = true;
extern "C" long __real_syscall(long, ...);
extern "C" long __wrap_syscall(long number, long a, long b, long c, long d, long e) {
    if (number != SYS_openat2 || hasOpenat2)
        return __real_syscall(number, a, b, c, d, e);
    errno = ENOSYS;
    return -1;
}

namespace {

/// Returns the first bytes of the file, or the codes of the error.
std::string contentAt(const TemporaryDisk& disk, std::string_view path) {
    const Result<Descriptor> file = disk.disk().openFile(at(path));
    char buffer[64];
    return file ? std::string(buffer, static_cast<std::size_t>(read(file->number(), buffer, sizeof buffer)))
                : codes(file);
}

} // namespace

TEST(Disk, FollowsSymbolicLinksOnlyInsideItself) {
    const TemporaryDisk disk;
    disk.write("~/real/file", "inside");
    disk.write("/etc/passwd", "the disk's own");
    disk.make({"~/relative -> real", "~/absolute -> /Users/me/real", "~/outside -> /etc/passwd",
               "~/up -> ../../../../../../etc/passwd", "~/twice -> absolute/file", "/private/var/",
               "/var -> private/var", "~/through -> /var/../var/../../Users/me/real/file",
               "~/dangling -> missing", "~/self -> self", "~/link0 -> real/file", "~/pipe |"});
    for (int i = 1; i <= 40; ++i)
        disk.make("~/link" + std::to_string(i) + " -> link" + std::to_string(i - 1));
    // Codes are the Mac's: 2 missing, 20 not a folder, 21 a folder, 22 invalid, 62 too many links, 63 too
    // long. The last file that can be opened is reached through forty links; opening the pipe would block.
    const std::pair<const char*, std::vector<std::string>> cases[]{
        {"inside",
         {"~/relative/file", "~/twice", "~/through", "//Users///me/./real/file", "~/relative/../real/file",
          "~/link39"}},
        {"the disk's own", {"~/outside", "~/up", "~/../../../../etc/passwd"}},
        {"2", {"~/dangling"}},
        {"20", {"~/twice/below"}},
        {"21", {"~/absolute"}},
        {"22", {"~/pipe", "relative", std::string("/Users/me/real/file\0", 20)}},
        {"62", {"~/self/file", "~/link40"}},
        {"63", {"~/" + std::string(300, 'x')}}};
    const std::size_t before = openDescriptors();
    for (const auto& [expected, paths] : cases)
        for (const std::string& path : paths)
            EXPECT_EQ(contentAt(disk, path), expected) << path;
    EXPECT_EQ(openDescriptors(), before);
}

TEST(Disk, ResolvesDeepPathsWithFewDescriptors) {
    const TemporaryDisk disk;
    std::string deep = "~";
    for (int level = 0; level < 300; ++level)
        deep += "/d";
    disk.write(deep + "/file", "deep");
    disk.make({deep + "/up -> ../../../d/d/d/file", "~/link -> " + deep.substr(2) + "/file"});
    const DescriptorLimit limit(70);
    for (const std::string& path : {deep + "/file", deep + "/up", std::string("~/link")})
        EXPECT_EQ(contentAt(disk, path), "deep") << path;
}

TEST(Disk, PlaceIsTheEntryItselfAndItsRealFolder) {
    const TemporaryDisk disk;
    disk.make({"~/folder/file", "~/link -> folder", "~/dangling -> missing", "/private/tmp/",
               "/tmp -> private/tmp"});
    const struct {
        const char *path, *folder, *name;
    } cases[]{
        {"~/link/file", "~/folder", "file"}, {"~/link/", "~", "link"},     {"~/dangling", "~", "dangling"},
        {"~/missing", "~", "missing"},       {"/tmp", "/", "tmp"},         {"/tmp/x", "/private/tmp", "x"},
        {"/../Users", "/", "Users"},         {"~/link/../new", "~", "new"}};
    for (const auto& [path, folder, name] : cases) {
        const Result<Place> place = disk.disk().place(at(path));
        ASSERT_TRUE(place) << path;
        const std::string descriptor = "/proc/self/fd/" + std::to_string(place->folder.number());
        EXPECT_TRUE(std::filesystem::equivalent(descriptor, disk.host(folder))) << path;
        EXPECT_EQ(place->name, name) << path;
    }
    for (const char* path : {"/", "//", "/..", "~/missing/x", "~/dangling/x", "~/folder/file/x", "x", ""})
        EXPECT_FALSE(disk.disk().place(at(path))) << path;

    const OrdinaryUser user;
    disk.write("~/passable/file", "passed");
    disk.setMode("~/passable", 0300); // may be passed through but not listed
    EXPECT_EQ(contentAt(disk, "~/passable/file"), "passed");
    EXPECT_EQ(codes(disk.disk().openFolder(at("~/passable"))), "13");
}

TEST(Folder, IsListedInByteOrderWithOrWithoutHiddenEntries) {
    const OrdinaryUser user;
    const TemporaryDisk disk;
    disk.make({"~/f/b", "~/f/B", "~/f/.hidden", "~/f/..two", "~/f/\xff", "~/f/a\nb", "~/f/dir/x",
               "~/f/link -> missing", "~/to-f -> f", "~/closed/file"});
    EXPECT_EQ(*listFolder(disk.disk(), at("~/to-f")),
              (std::vector<std::string>{"..two", ".hidden", "B", "a\nb", "b", "dir", "link", "\xff"}));
    EXPECT_EQ(listFolder(disk.disk(), at("~/f"), Hidden::skip)->at(0), "B");
    disk.setMode("~/closed", 0);
    for (const auto& [path, code] :
         {std::pair("~/missing", "260:2"), {"~/closed", "257:13"}, {"~/f/b", "512:20"}})
        EXPECT_EQ(codes(listFolder(disk.disk(), at(path))), code) << path;
}

TEST(OpenFolderBelow, RefusesSymbolicLinksWithAndWithoutOpenat2) {
    const TemporaryDisk disk;
    disk.make({"~/a/b/c/file", "~/a/link -> b", "~/a/b/up -> ..", "~/a/b/last -> c"});
    const Descriptor folder(open(disk.host("~/a").c_str(), O_PATH | O_CLOEXEC));
    for (const bool isAvailable : {true, false}) {
        hasOpenat2 = isAvailable;
        EXPECT_TRUE(system::openFolderBelow(folder.number(), "b/c"));
        for (const char* path : {"link", "link/c", "b/up", "b/last", "b/up/b", "b/c/file", "missing/c"})
            EXPECT_FALSE(system::openFolderBelow(folder.number(), path)) << path << hasOpenat2;
    }
}
