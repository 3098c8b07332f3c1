#include "platform/files/attributes.h"
#include "platform/files/disk.h"
#include "platform/files/folder.h"
#include "tests/support/codes.h"
#include "tests/support/process.h"
#include "tests/support/temporary_disk.h"

#include <filesystem>

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

std::filesystem::path hostPathOf(const Descriptor& folder) {
    return std::filesystem::read_symlink("/proc/self/fd/" + std::to_string(folder.number())) / "";
}

TEST(Disk, FollowsLinksInsideItselfOnly) {
    const TemporaryDisk disk;
    disk.write("~/real/file", "inside");
    disk.write("/etc/passwd", "the disk's own");
    disk.make({"~/relative -> real", "~/absolute -> /Users/me/real", "~/outside -> /etc/passwd",
               "~/up -> ../../../../../../etc/passwd", "~/twice -> absolute/file",
               "~/folder/back -> ../relative/file", "/private/var/", "/var -> private/var",
               "~/through -> /var/../var/../../Users/me/real/file", "~/dangling -> missing", "~/self -> self",
               "~/here -> .", "~/link0 -> real/file", "~/pipe |", "~/to-pipe -> pipe"});
    for (int i = 1; i <= 40; ++i)
        disk.make("~/link" + std::to_string(i) + " -> link" + std::to_string(i - 1));
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
        {"~/link39", "inside"}, // by forty links
        {"~/link40", "62"},
        {"~/pipe", "22"}, // which would block
        {"~/to-pipe", "22"},
        {"", "2"},
        {"relative", "22"},
        {std::string("/Users/me/real/file\0", 20), "22"},
        {"~/" + std::string(300, 'x'), "63"}};
    const std::size_t before = openDescriptors();
    for (const auto& [path, expected] : cases)
        EXPECT_EQ(contentAt(disk, path), expected) << path;
    EXPECT_EQ(openDescriptors(), before);
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
        EXPECT_EQ(hostPathOf(place->folder), std::filesystem::path(disk.host(folder)) / "") << path;
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
    const OrdinaryUser user;
    const TemporaryDisk disk;
    disk.make({"~/file", "/Users/link -> me", "/Users/closed/file"});
    const std::string root = disk.host("/");
    EXPECT_EQ(Disk::open(root, "/Users/./x/../me/")->home(), "/Users/me");
    for (const char* home : {"/Users/other", "/Users/me/file", ""})
        EXPECT_FALSE(Disk::open(root, home)) << home;
    disk.setMode("/Users/closed", 0311); // a home that may not be listed is one
    for (const char* home : {"/Users/link", "/Users/closed"})
        EXPECT_TRUE(Disk::open(root, home)) << home;
    for (const char* noRoot : {"/missing", "~/file"})
        EXPECT_FALSE(Disk::open(disk.host(noRoot), "/")) << noRoot;
    EXPECT_FALSE(disk.disk().isOfThisMachine());
    EXPECT_TRUE(Disk::open("/proc/self/root", "/")->isOfThisMachine());
}

TEST(Attributes, AreOfTheEntryAndItsKindOfWhatItLeadsTo) {
    const OrdinaryUser user;
    const TemporaryDisk disk;
    disk.make({"~/file 10", "~/folder/", "~/to-file -> file", "~/to-folder -> folder",
               "~/dangling -> missing", "~/loop -> loop", "~/pipe |", "~/closed/file"});
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
    disk.setMode("~/closed", 0);
    EXPECT_EQ(kindOf(disk.disk(), at("~/closed")), Kind::folder);
    for (const char* path : {"~/missing", "~/file/x", "", "relative", "~/closed/file"}) {
        EXPECT_FALSE(attributesOf(disk.disk(), at(path))) << path;
        EXPECT_EQ(kindOf(disk.disk(), at(path)), Kind::missing) << path;
    }
    for (const double seconds : {-86400.75, 0.0, 1700000000.25}) { // before 1970 too
        disk.setModified("~/dangling", Date(std::chrono::duration<double>(seconds)));
        EXPECT_EQ(secondsSince1970(attributesOf(disk.disk(), at("~/dangling"))->modified), seconds);
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
