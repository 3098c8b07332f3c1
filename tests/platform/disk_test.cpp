#include "platform/attributes.h"
#include "platform/disk.h"
#include "platform/folder.h"
#include "tests/support/codes.h"
#include "tests/support/process.h"
#include "tests/support/temporary_disk.h"

#include <sys/socket.h>
#include <sys/stat.h>
#include <sys/sysmacros.h>
#include <sys/un.h>
#include <unistd.h>

#include <gtest/gtest.h>

using namespace platform;

namespace {

/// The beginning of the file there, or the code of the error.
std::string contentAt(const TemporaryDisk& disk, std::string_view path) {
    const Result<Descriptor> file = disk.disk().openFile(at(path));
    char buffer[64];
    return file ? std::string(buffer, static_cast<std::size_t>(read(file->number(), buffer, sizeof buffer)))
                : codes(file);
}

TEST(Disk, FollowsLinksInsideItselfOnly) {
    const TemporaryDisk disk;
    disk.write("~/real/file", "inside");
    disk.write("/etc/passwd", "the disk's own");
    disk.make({"~/relative -> real", "~/absolute -> /Users/me/real", "~/outside -> /etc/passwd",
               "~/up -> ../../../../../../etc/passwd", "~/twice -> absolute/file",
               "~/folder/back -> ../relative/file", "/private/var/", "/var -> private/var",
               "~/through -> /var/../var/../../Users/me/real/file", "~/dangling -> missing", "~/self -> self",
               "~/here -> ."});
    // Codes are the Mac's: 2 missing, 20 not a folder, 21 a folder, 22 invalid, 62 too many links.
    const std::pair<std::string, std::string> cases[]{
        {"~/relative/file", "inside"},
        {"~/twice", "inside"},
        {"~/folder/back", "inside"},
        {"~/through", "inside"},
        {"~/here/here/here/real/file", "inside"},
        {"//Users///me/./real/file", "inside"},
        {"~/relative/../real/file", "inside"}, // ".." of the folder that the link leads to
        {"~/outside", "the disk's own"},
        {"~/up", "the disk's own"},
        {"~/../../../../etc/passwd", "the disk's own"},
        {"~/dangling", "2"},
        {"~/twice/below", "20"},
        {"~/absolute", "21"},
        {"/", "21"},
        {"~/self/file", "62"},
        {"", "2"},
        {"relative", "22"},
        {std::string("/Users/me/real/file\0", 20), "22"},
        {"~/" + std::string(300, 'x'), "63"}};
    const std::size_t before = openDescriptors();
    for (const auto& [path, expected] : cases)
        EXPECT_EQ(contentAt(disk, path), expected) << path;
    EXPECT_EQ(openDescriptors(), before);
}

TEST(Disk, PassesFortyLinksAndNoMore) {
    const TemporaryDisk disk;
    disk.write("~/link0", "end");
    for (int i = 1; i <= 41; ++i)
        disk.make("~/link" + std::to_string(i) + " -> link" + std::to_string(i - 1));
    EXPECT_EQ(contentAt(disk, "~/link40"), "end");
    EXPECT_EQ(contentAt(disk, "~/link41"), "62");
}

TEST(Disk, ReachesDeeperThanItHasDescriptors) {
    const TemporaryDisk disk;
    std::string deep = "~";
    for (int level = 0; level < 300; ++level)
        deep += "/d";
    disk.write(deep + "/file", "far down");
    disk.make({deep + "/up -> ../../../d/d/d/file", "~/all-the-way -> " + deep.substr(2) + "/file"});
    const DescriptorLimit limit(70);
    for (const std::string& path : {deep + "/file", deep + "/up", std::string("~/all-the-way")})
        EXPECT_EQ(contentAt(disk, path), "far down") << path;
    EXPECT_TRUE(disk.disk().place(at(deep + "/file")));
}

TEST(Disk, OpensNothingThatCouldBlock) {
    const TemporaryDisk disk;
    disk.make({"~/pipe |", "~/to-pipe -> pipe"});
    const Descriptor listener(socket(AF_UNIX, SOCK_STREAM | SOCK_CLOEXEC, 0));
    sockaddr_un address{AF_UNIX, {}};
    disk.host("~/socket").copy(address.sun_path, sizeof address.sun_path - 1);
    ASSERT_EQ(bind(listener.number(), reinterpret_cast<const sockaddr*>(&address), sizeof address), 0);
    std::vector<const char*> paths{"~/pipe", "~/to-pipe", "~/socket"};
    if (mknod(disk.host("~/device").c_str(), S_IFCHR | 0600, makedev(1, 5)) == 0) // root's alone
        paths.push_back("~/device");
    alarm(20);
    for (const char* path : paths) {
        EXPECT_EQ(contentAt(disk, path), "22") << path;
        EXPECT_EQ(codes(disk.disk().openFolder(at(path))), "20") << path;
        EXPECT_EQ(kindOf(disk.disk(), at(path)), Kind::file) << path;
    }
    alarm(0);
}

TEST(Disk, GivesThePlaceOfTheEntryItself) {
    const TemporaryDisk disk;
    disk.make({"~/folder/file", "~/link -> folder", "~/dangling -> missing", "/private/tmp/",
               "/tmp -> private/tmp"});
    const struct {
        const char *path, *folder, *name;
    } cases[]{
        {"~/link/file", "~/folder", "file"}, {"~/link/", "~", "link"},     {"~/dangling", "~", "dangling"},
        {"~/not-yet", "~", "not-yet"},       {"/tmp", "/", "tmp"},         {"/tmp/x", "/private/tmp", "x"},
        {"/../Users", "/", "Users"},         {"~/link/../new", "~", "new"}};
    for (const auto& [path, folder, name] : cases) {
        const Result<Place> place = disk.disk().place(at(path));
        ASSERT_TRUE(place) << path;
        struct stat found {};
        struct stat wanted {};
        fstat(place->folder.number(), &found);
        lstat(disk.host(folder).c_str(), &wanted);
        EXPECT_EQ(found.st_ino, wanted.st_ino) << path;
        EXPECT_EQ(place->name, name) << path;
    }
    for (const char* path : {"/", "//", "/..", "~/missing/x", "~/dangling/x", "~/folder/file/x", "x", ""})
        EXPECT_FALSE(disk.disk().place(at(path))) << path;

    // Folders on the way need not be readable.
    const OrdinaryUser user;
    disk.write("~/passable/file", "passed");
    disk.setMode("~/passable", 0300);
    EXPECT_TRUE(disk.disk().place(at("~/passable/file")));
    EXPECT_EQ(contentAt(disk, "~/passable/file"), "passed");
    EXPECT_EQ(codes(disk.disk().openFolder(at("~/passable"))), "13");
}

TEST(Disk, OpensOnlyWithItsRootAndHome) {
    const TemporaryDisk disk;
    disk.make({"~/file", "/Users/link -> me"});
    const std::string root = disk.host("/");
    EXPECT_TRUE(Disk::open(root, "/Users/link"));
    EXPECT_EQ(Disk::open(root, "/Users/./x/../me/")->home(), "/Users/me");
    for (const char* home : {"/Users/other", "/Users/me/file", ""})
        EXPECT_FALSE(Disk::open(root, home)) << home;
    {
        const OrdinaryUser user;
        const TemporaryDisk closed;
        closed.make("/Users/closed/file");
        closed.setMode("/Users/closed", 0311);
        EXPECT_TRUE(Disk::open(closed.host("/"), "/Users/closed")) << "a home that may not be listed";
        closed.setMode("/Users/closed", 0755);
    }
    for (const char* noRoot : {"/missing", "~/file"})
        EXPECT_FALSE(Disk::open(disk.host(noRoot), "/")) << noRoot;
    EXPECT_FALSE(disk.disk().isOfThisMachine());
    EXPECT_TRUE(Disk::open("/proc/self/root", "/")->isOfThisMachine());
}

TEST(Attributes, AreOfTheEntryAndItsKindOfWhatItLeadsTo) {
    const TemporaryDisk disk;
    disk.make({"~/file 10", "~/folder/", "~/to-file -> file", "~/to-folder -> folder",
               "~/dangling -> missing", "~/loop -> loop", "~/pipe |"});
    const struct {
        const char* path;
        EntryType type;
        std::int64_t bytes;
        Kind kind;
    } cases[]{
        {"~/file", EntryType::file, 10, Kind::file},       {"~/folder", EntryType::folder, 0, Kind::folder},
        {"~/to-file", EntryType::link, 4, Kind::file},     {"~/to-folder", EntryType::link, 6, Kind::folder},
        {"~/dangling", EntryType::link, 7, Kind::missing}, {"~/loop", EntryType::link, 4, Kind::missing},
        {"~/pipe", EntryType::other, 0, Kind::file},       {"/", EntryType::folder, 0, Kind::folder}};
    for (const auto& [path, type, bytes, kind] : cases) {
        const std::optional<Attributes> attributes = attributesOf(disk.disk(), at(path));
        ASSERT_TRUE(attributes) << path;
        EXPECT_EQ(attributes->type, type) << path;
        EXPECT_EQ(attributes->sizeBytes, bytes) << path;
        EXPECT_EQ(kindOf(disk.disk(), at(path)), kind) << path;
    }
    const OrdinaryUser user;
    disk.make("~/closed/file");
    disk.setMode("~/closed", 0);
    EXPECT_EQ(kindOf(disk.disk(), at("~/closed")), Kind::folder);
    for (const char* path : {"~/missing", "~/file/x", "", "relative", "~/closed/file"}) {
        EXPECT_FALSE(attributesOf(disk.disk(), at(path))) << path;
        EXPECT_EQ(kindOf(disk.disk(), at(path)), Kind::missing) << path;
    }
}

TEST(Attributes, KeepTheFractionOfDatesBefore1970Too) {
    const TemporaryDisk disk;
    disk.make("~/link -> missing");
    for (const double seconds : {-86400.75, 0.0, 1700000000.25}) {
        disk.setModified("~/link", Date(std::chrono::duration<double>(seconds)));
        EXPECT_EQ(secondsSince1970(attributesOf(disk.disk(), at("~/link"))->modified), seconds);
    }
}

TEST(Folder, ListsNamesInTheOrderOfTheirBytes) {
    const TemporaryDisk disk;
    disk.make({"~/f/b", "~/f/B", "~/f/.hidden", "~/f/..two", "~/f/\xff", "~/f/\xc3\xa9", "~/f/a\nb",
               "~/f/dir/x", "~/f/link -> missing", "~/to-f -> f"});
    const std::vector<std::string> visible{"B", "a\nb", "b", "dir", "link", "\xc3\xa9", "\xff"};
    std::vector<std::string> all{"..two", ".hidden"};
    all.insert(all.end(), visible.begin(), visible.end());
    EXPECT_EQ(*listFolder(disk.disk(), at("~/to-f")), all);
    EXPECT_EQ(*listFolder(disk.disk(), at("~/f"), Hidden::skip), visible);

    const OrdinaryUser user;
    disk.make("~/closed/file");
    disk.setMode("~/closed", 0);
    for (const auto& [path, code] :
         {std::pair("~/missing", "260:2"), {"~/closed", "257:13"}, {"~/f/b", "512:20"}})
        EXPECT_EQ(codes(listFolder(disk.disk(), at(path))), code) << path;
}

} // namespace
