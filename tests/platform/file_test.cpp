#include "platform/file.h"

#include "platform/places.h"
#include "platform/volume.h"
#include "tests/support/mounted_volume.h"
#include "tests/support/temporary_disk.h"

#include <sys/stat.h>

#include <gtest/gtest.h>

using platform::readFile;
using platform::writeFile;

namespace {

constexpr std::size_t limit = 1000;

int posixCode(const platform::Error& error) {
    return error.underlying ? error.underlying->code : 0;
}

const std::string file = TemporaryDisk::path("~/file");

} // namespace

TEST(ReadFile, GivesTheBytesUpToTheLimit) {
    const TemporaryDisk disk;
    const std::string odd("\0\xFF\n", 3);
    for (const std::string& content : {std::string(), odd, std::string(limit, 'x')}) {
        disk.write("~/file", content);
        const auto read = readFile(disk.disk(), file, limit);
        ASSERT_TRUE(read);
        EXPECT_EQ(*read, content);
    }
    disk.make("~/longer 1001");
    disk.make("~/huge 1000000000000");
    for (const char* name : {"~/longer", "~/huge"}) {
        const auto read = readFile(disk.disk(), TemporaryDisk::path(name), limit);
        ASSERT_FALSE(read);
        EXPECT_EQ(posixCode(read.error()), 27) << name;
    }
}

TEST(ReadFile, RefusesWhatIsNoRegularFileWithoutBlocking) {
    const TemporaryDisk disk;
    disk.make({"~/folder/", "~/dangling -> nothing"});
    ASSERT_EQ(mkfifo(disk.host("~/pipe").c_str(), 0666), 0);
    const std::pair<const char*, int> cases[]{
        {"~/folder", 21}, {"~/pipe", 22}, {"~/dangling", 2}, {"~/missing", 2}};
    for (const auto& [name, code] : cases) {
        const auto read = readFile(disk.disk(), TemporaryDisk::path(name), limit);
        ASSERT_FALSE(read) << name;
        EXPECT_EQ(posixCode(read.error()), code) << name;
    }
}

TEST(WriteFile, MakesTheFileItsFoldersAndReplacesWhatWasThere) {
    const TemporaryDisk disk;
    const std::string path = platform::applicationSupportFolder(disk.disk()) + "/Lumvale/notes.json";
    EXPECT_EQ(path, "/Users/me/Library/Application Support/Lumvale/notes.json");
    for (const char* content : {"first and longest", "second", "", "third"}) {
        EXPECT_TRUE(writeFile(disk.disk(), path, content));
        EXPECT_EQ(disk.read(path), content);
    }
    disk.make({"~/other/", "~/link -> /Users/me/other"});
    EXPECT_TRUE(writeFile(disk.disk(), TemporaryDisk::path("~/link/deep/file"), "through"));
    EXPECT_EQ(disk.read("~/other/deep/file"), "through");
}

TEST(WriteFile, LeavesEverythingElseAlone) {
    const TemporaryDisk disk;
    disk.write("~/target", "precious");
    disk.make({"~/folder/", "~/link -> target", "~/dangling -> elsewhere", "~/nowhere -> lost/folder",
               "~/up -> ../../../../escape"});
    ASSERT_EQ(mkfifo(disk.host("~/pipe").c_str(), 0666), 0);
    const std::pair<const char*, int> cases[]{
        {"~/folder", 21}, {"~/link", 62},     {"~/dangling", 62},
        {"~/pipe", 22},   {"~/target/x", 20}, {"~/nowhere/x", 2},
    };
    for (const auto& [name, code] : cases) {
        const auto written = writeFile(disk.disk(), TemporaryDisk::path(name), "no");
        ASSERT_FALSE(written) << name;
        EXPECT_EQ(posixCode(written.error()), code) << name;
    }
    for (const std::string& path :
         {std::string(), std::string("relative"), std::string("/"), std::string("/a\0b", 4)})
        EXPECT_FALSE(writeFile(disk.disk(), path, "no")) << path;
    EXPECT_EQ(disk.read("~/target"), "precious");
    EXPECT_FALSE(disk.exists("~/elsewhere"));
    EXPECT_FALSE(disk.exists("~/lost"));
}

TEST(WriteFile, SaysWhatItMayNotWrite) {
    const OrdinaryUser user;
    const TemporaryDisk disk;
    disk.make({"~/mine/", "~/mine/locked"});
    disk.setMode("~/mine/locked", 0444);
    disk.setMode("~/mine", 0555);
    for (const char* name : {"~/mine/new", "~/mine/locked", "~/mine/folder/new"}) {
        const auto written = writeFile(disk.disk(), TemporaryDisk::path(name), "no");
        ASSERT_FALSE(written) << name;
        EXPECT_EQ(written.error().code, 513);
        EXPECT_EQ(posixCode(written.error()), 13);
    }
}

TEST(WriteFile, SaysWhenTheVolumeIsFullOrReadOnly) {
    const TemporaryDisk disk;
    disk.make("~/volume/");
    const MountedVolume volume(disk.host("~/volume"));
    SKIP_UNLESS_MOUNTED(volume);
    const std::string path = TemporaryDisk::path("~/volume/file");
    ASSERT_TRUE(writeFile(disk.disk(), path, "old"));
    const auto full = writeFile(disk.disk(), path, std::string(100000, 'x'));
    ASSERT_FALSE(full);
    EXPECT_EQ(full.error().code, 640);
    ASSERT_TRUE(volume.makeReadOnly());
    const auto readOnly = writeFile(disk.disk(), path, "new");
    ASSERT_FALSE(readOnly);
    EXPECT_EQ(readOnly.error().code, 642);
}

TEST(Volume, TellsItsCapacity) {
    const TemporaryDisk disk;
    EXPECT_FALSE(platform::volumeCapacity(disk.disk(), "/missing"));
    disk.make("~/volume/");
    const MountedVolume volume(disk.host("~/volume"));
    SKIP_UNLESS_MOUNTED(volume);
    disk.make("~/volume/folder/");
    disk.write("~/volume/file", std::string(16384, 'x'));
    const auto capacity = platform::volumeCapacity(disk.disk(), TemporaryDisk::path("~/volume/folder"));
    ASSERT_TRUE(capacity);
    EXPECT_EQ(capacity->totalBytes, 65536);
    EXPECT_EQ(capacity->availableBytes, 65536 - 16384);
}
