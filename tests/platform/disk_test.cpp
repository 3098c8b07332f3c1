#include "platform/attributes.h"
#include "platform/disk.h"
#include "platform/folder.h"
#include "tests/support/temporary_disk.h"

#include <cerrno>

#include <sys/socket.h>
#include <sys/stat.h>
#include <sys/sysmacros.h>
#include <sys/un.h>
#include <unistd.h>

#include <gtest/gtest.h>

using namespace platform;

namespace {

int codeOf(const Result<Descriptor>& result) {
    return result ? 0 : result.error().code;
}

std::string contentOf(const Descriptor& file) {
    char buffer[64];
    const ssize_t length = read(file.number(), buffer, sizeof buffer);
    return {buffer, static_cast<std::size_t>(std::max<ssize_t>(length, 0))};
}

bool isSameEntry(int descriptor, const std::string& hostPath) {
    struct stat ours {};
    struct stat other {};
    return fstat(descriptor, &ours) == 0 && lstat(hostPath.c_str(), &other) == 0
           && ours.st_dev == other.st_dev && ours.st_ino == other.st_ino;
}

TEST(Disk, FollowsLinksInsideItselfOnly) {
    const TemporaryDisk disk;
    disk.write("~/real/file", "inside");
    disk.write("/etc/passwd", "the disk's own");
    disk.make({
        "~/relative -> real",
        "~/absolute -> /Users/me/real",
        "~/slashes -> //Users/./me//real/",
        "~/up -> ../../../../../../etc/passwd",
        "~/outside -> /etc/passwd",
        "~/twice -> absolute/file",
        "~/folder/back -> ../relative/file",
        "/private/var/",
        "/var -> private/var",
        "~/through -> /var/../var/../../Users/me/real/file",
        "~/dangling -> missing",
        "~/self -> self",
        "~/here -> .",
    });
    const std::vector<std::pair<std::string, std::string>> readable{
        {"~/real/file", "inside"},
        {"~/relative/file", "inside"},
        {"~/absolute/file", "inside"},
        {"~/slashes/file", "inside"},
        {"~/twice", "inside"},
        {"~/folder/back", "inside"},
        {"~/through", "inside"},
        {"~/here/here/here/real/file", "inside"},
        {"//Users///me/./real/file", "inside"},
        {"~/relative/../real/file", "inside"}, // ".." of the folder that the link leads to
        {"~/up", "the disk's own"},
        {"~/outside", "the disk's own"},
        {"/../../etc/passwd", "the disk's own"},
        {"~/../../../../etc/passwd", "the disk's own"},
    };
    for (const auto& [path, content] : readable) {
        const Result<Descriptor> file = disk.disk().openFile(TemporaryDisk::path(path));
        ASSERT_TRUE(file) << path << ": " << file.error().description;
        EXPECT_EQ(contentOf(*file), content) << path;
    }
    // Codes are the Mac's: 2 missing, 20 not a folder, 21 a folder, 22 invalid, 62 too many links.
    const std::vector<std::pair<std::string, int>> refused{
        {"~/missing", 2},
        {"~/missing/file", 2},
        {"~/dangling", 2},
        {"~/real/file/below", 20},
        {"~/twice/below", 20},
        {"~/real", 21},
        {"~/absolute", 21},
        {"/", 21},
        {"~/here", 21},
        {"~/..", 21},
        {"~/self", 62},
        {"~/self/file", 62},
        {"", 2},
        {"relative", 22},
        {std::string("/Users/me/real/file\0", 20), 22},
        {"~/" + std::string(300, 'x'), 63},
    };
    const std::size_t before = openDescriptors();
    for (const auto& [path, code] : refused)
        EXPECT_EQ(codeOf(disk.disk().openFile(TemporaryDisk::path(path))), code) << path;
    EXPECT_EQ(openDescriptors(), before);
}

TEST(Disk, PassesFortyLinksAndNoMore) {
    const TemporaryDisk disk;
    disk.write("~/link0", "end");
    for (int i = 1; i <= 41; ++i)
        disk.make("~/link" + std::to_string(i) + " -> link" + std::to_string(i - 1));
    disk.make({"~/a -> b", "~/b -> a"});
    EXPECT_EQ(codeOf(disk.disk().openFile(TemporaryDisk::path("~/link40"))), 0);
    EXPECT_EQ(codeOf(disk.disk().openFile(TemporaryDisk::path("~/link41"))), 62);
    EXPECT_EQ(codeOf(disk.disk().openFolder(TemporaryDisk::path("~/a"))), 62);
}

TEST(Disk, ReachesDeeperThanItHasDescriptors) {
    const TemporaryDisk disk;
    std::string deep = "~";
    for (int level = 0; level < 300; ++level)
        deep += "/d";
    disk.write(deep + "/file", "far down");
    disk.make(deep + "/up -> ../../../d/d/d/file");
    disk.make("~/all-the-way -> " + deep.substr(2) + "/file");
    const DescriptorLimit limit(70);
    for (const std::string& path : {deep + "/file", deep + "/up", std::string("~/all-the-way")}) {
        const Result<Descriptor> file = disk.disk().openFile(TemporaryDisk::path(path));
        ASSERT_TRUE(file) << path << ": " << file.error().description;
        EXPECT_EQ(contentOf(*file), "far down") << path;
    }
    EXPECT_TRUE(disk.disk().place(TemporaryDisk::path(deep + "/file")));
}

TEST(Disk, OpensNothingThatCouldBlock) {
    const TemporaryDisk disk;
    ASSERT_EQ(mkfifo(disk.host("~/fifo").c_str(), 0600), 0);
    disk.make("~/to-fifo -> fifo");
    const Descriptor listener(socket(AF_UNIX, SOCK_STREAM | SOCK_CLOEXEC, 0));
    sockaddr_un address{AF_UNIX, {}};
    disk.host("~/socket").copy(address.sun_path, sizeof address.sun_path - 1);
    ASSERT_EQ(bind(listener.number(), reinterpret_cast<const sockaddr*>(&address), sizeof address), 0);
    std::vector<const char*> paths{"~/fifo", "~/to-fifo", "~/socket"};
    if (mknod(disk.host("~/device").c_str(), S_IFCHR | 0600, makedev(1, 5)) == 0) // root's alone
        paths.push_back("~/device");
    alarm(20);
    for (const char* path : paths) {
        EXPECT_EQ(codeOf(disk.disk().openFile(TemporaryDisk::path(path))), EINVAL) << path;
        EXPECT_EQ(codeOf(disk.disk().openFolder(TemporaryDisk::path(path))), ENOTDIR) << path;
        EXPECT_EQ(kindOf(disk.disk(), TemporaryDisk::path(path)), Kind::file) << path;
    }
    alarm(0);
}

TEST(Disk, GivesThePlaceOfTheEntryItself) {
    const TemporaryDisk disk;
    disk.make({"~/folder/file", "~/link -> folder", "~/dangling -> missing", "/private/tmp/",
               "/tmp -> private/tmp"});
    struct Case {
        std::string path, folder, name;
    };
    const std::vector<Case> cases{
        {"~/folder/file", "~/folder", "file"},
        {"~/link/file", "~/folder", "file"},
        {"~/link", "~", "link"},
        {"~/link/", "~", "link"},
        {"~/dangling", "~", "dangling"},
        {"~/not-yet", "~", "not-yet"},
        {"/tmp", "/", "tmp"},
        {"/tmp/x", "/private/tmp", "x"},
        {"/../Users", "/", "Users"},
        {"~/link/../new", "~", "new"},
    };
    for (const auto& [path, folder, name] : cases) {
        const Result<Place> place = disk.disk().place(TemporaryDisk::path(path));
        ASSERT_TRUE(place) << path;
        EXPECT_TRUE(isSameEntry(place->folder.number(), disk.host(folder))) << path;
        EXPECT_EQ(place->name, name) << path;
    }
    for (const char* path : {"/", "//", "/..", "~/missing/x", "~/dangling/x", "~/folder/file/x", "x", ""})
        EXPECT_FALSE(disk.disk().place(TemporaryDisk::path(path))) << path;

    // Folders on the way need not be readable.
    const OrdinaryUser user;
    disk.make("~/passable/file");
    disk.setMode("~/passable", 0300);
    EXPECT_TRUE(disk.disk().place(TemporaryDisk::path("~/passable/file")));
    EXPECT_EQ(codeOf(disk.disk().openFile(TemporaryDisk::path("~/passable/file"))), 0);
    EXPECT_EQ(codeOf(disk.disk().openFolder(TemporaryDisk::path("~/passable"))), EACCES);
}

TEST(Disk, OpensOnlyWithItsRootAndHome) {
    const TemporaryDisk disk;
    disk.make({"~/file", "/Users/link -> me"});
    const std::string root = disk.host("/");
    EXPECT_TRUE(Disk::open(root, "/Users/me"));
    EXPECT_TRUE(Disk::open(root, "/Users/link"));
    EXPECT_EQ(Disk::open(root, "/Users/./x/../me/")->home(), "/Users/me");
    EXPECT_FALSE(Disk::open(root, "/Users/other"));
    EXPECT_FALSE(Disk::open(root, "/Users/me/file"));
    EXPECT_FALSE(Disk::open(root, ""));
    EXPECT_FALSE(Disk::open(root + "missing", "/Users/me"));
    EXPECT_FALSE(Disk::open(disk.host("~/file"), "/"));
    EXPECT_FALSE(disk.disk().isOfThisMachine());
    EXPECT_TRUE(Disk::open("/", "/")->isOfThisMachine());
    EXPECT_TRUE(Disk::open("/proc/self/root", "/")->isOfThisMachine());
}

TEST(Attributes, AreOfTheEntryAndItsKindOfWhatItLeadsTo) {
    const TemporaryDisk disk;
    disk.make(
        {"~/file 10", "~/folder/", "~/to-file -> file", "~/to-folder -> folder", "~/dangling -> missing"});
    disk.make("~/loop -> loop");
    ASSERT_EQ(mkfifo(disk.host("~/fifo").c_str(), 0600), 0);
    struct Case {
        const char* path;
        EntryType type;
        std::int64_t bytes;
        Kind kind;
    };
    const std::vector<Case> cases{
        {"~/file", EntryType::file, 10, Kind::file},       {"~/folder", EntryType::folder, 0, Kind::folder},
        {"~/to-file", EntryType::link, 4, Kind::file},     {"~/to-folder", EntryType::link, 6, Kind::folder},
        {"~/dangling", EntryType::link, 7, Kind::missing}, {"~/loop", EntryType::link, 4, Kind::missing},
        {"~/fifo", EntryType::other, 0, Kind::file},       {"/", EntryType::folder, 0, Kind::folder},
    };
    for (const auto& [path, type, bytes, kind] : cases) {
        const std::optional<Attributes> attributes = attributesOf(disk.disk(), TemporaryDisk::path(path));
        ASSERT_TRUE(attributes) << path;
        EXPECT_EQ(attributes->type, type) << path;
        EXPECT_EQ(attributes->sizeBytes, bytes) << path;
        EXPECT_EQ(kindOf(disk.disk(), TemporaryDisk::path(path)), kind) << path;
    }
    for (const char* path : {"~/missing", "~/file/x", "", "relative"}) {
        EXPECT_FALSE(attributesOf(disk.disk(), TemporaryDisk::path(path))) << path;
        EXPECT_EQ(kindOf(disk.disk(), TemporaryDisk::path(path)), Kind::missing) << path;
    }

    // The date is the link's own, before 1970 too, and keeps its fraction.
    for (const double seconds : {-86400.75, 0.0, 1700000000.25}) {
        disk.setModified("~/to-file", Date(std::chrono::duration<double>(seconds)));
        EXPECT_EQ(secondsSince1970(attributesOf(disk.disk(), TemporaryDisk::path("~/to-file"))->modified),
                  seconds);
    }
    EXPECT_GT(attributesOf(disk.disk(), TemporaryDisk::path("~/file"))->modified, Date());

    const OrdinaryUser user;
    disk.make("~/closed/file");
    disk.setMode("~/closed", 0);
    EXPECT_EQ(kindOf(disk.disk(), TemporaryDisk::path("~/closed")), Kind::folder);
    EXPECT_EQ(kindOf(disk.disk(), TemporaryDisk::path("~/closed/file")), Kind::missing);
}

TEST(Folder, ListsNamesInTheOrderOfTheirBytes) {
    const TemporaryDisk disk;
    disk.make(
        {"~/f/b", "~/f/B", "~/f/.hidden", "~/f/..two", "~/f/\xff", "~/f/\xc3\xa9", "~/f/a\nb", "~/f/dir/x"});
    disk.make({"~/f/link -> missing", "~/to-f -> f"});
    const std::vector<std::string> visible{"B", "a\nb", "b", "dir", "link", "\xc3\xa9", "\xff"};
    std::vector<std::string> all{"..two", ".hidden"};
    all.insert(all.end(), visible.begin(), visible.end());
    EXPECT_EQ(*listFolder(disk.disk(), TemporaryDisk::path("~/f")), all);
    EXPECT_EQ(*listFolder(disk.disk(), TemporaryDisk::path("~/to-f")), all);
    EXPECT_EQ(*listFolder(disk.disk(), TemporaryDisk::path("~/f"), Hidden::skip), visible);

    const OrdinaryUser user;
    disk.make("~/closed/file");
    disk.setMode("~/closed", 0);
    const std::vector<std::tuple<const char*, int, int>> failures{
        {"~/missing", 260, 2}, {"~/closed", 257, 13}, {"~/f/b", 512, 20}};
    for (const auto& [path, cocoa, posix] : failures) {
        const auto names = listFolder(disk.disk(), TemporaryDisk::path(path));
        ASSERT_FALSE(names) << path;
        EXPECT_EQ(names.error().domain, cocoaDomain) << path;
        EXPECT_EQ(names.error().code, cocoa) << path;
        EXPECT_EQ(names.error().underlying->code, posix) << path;
    }
}

} // namespace
