#include "platform/files/file.h"

#include "platform/system/volume.h"
#include "tests/support/codes.h"
#include "tests/support/mounted_volume.h"
#include "tests/support/temporary_disk.h"

#include <gtest/gtest.h>

using platform::readFile;

namespace {

std::string writing(const TemporaryDisk& disk, std::string_view path, std::string_view content) {
    return codes(platform::writeFile(disk.disk(), at(path), content));
}

} // namespace

TEST(ReadFile, ReturnsRegularFilesUpToTheLimit) {
    const TemporaryDisk disk;
    const std::string content("\0\xFF\n", 3);
    disk.write("~/file", content);
    EXPECT_EQ(*readFile(disk.disk(), at("~/file"), 3), content);
    disk.make({"~/huge 1000000000000", "~/folder/", "~/dangling -> nothing", "~/pipe |"});
    for (const auto& [name, code] : {std::pair("~/file", "512:27"),
                                     {"~/huge", "512:27"},
                                     {"~/folder", "512:21"},
                                     {"~/pipe", "512:22"},
                                     {"~/dangling", "260:2"}})
        EXPECT_EQ(codes(readFile(disk.disk(), at(name), 2)), code) << name;
}

TEST(WriteFile, CreatesFoldersAndReplacesOnlyWritableRegularFiles) {
    const OrdinaryUser user;
    const TemporaryDisk disk;
    disk.make({"~/other/", "~/link -> /Users/me/other"});
    EXPECT_EQ(writing(disk, "~/link/deep/file", "x"), "");
    EXPECT_EQ(disk.read("~/other/deep/file"), "x");
    disk.make("~/other/deep/to-new -> ../../other/deep/new"); // its target is missing at first
    for (const char* content : {"first and longest", "second", ""}) {
        EXPECT_EQ(writing(disk, "~/link/deep/to-new", content), "");
        EXPECT_EQ(disk.read("~/other/deep/new"), content);
        disk.setMode("~/other/deep/new", 0602); // which a usual umask doesn't allow
    }
    EXPECT_EQ(writing(disk, "~/other/deep/new", ""), "");
    EXPECT_TRUE(disk.entries()[at("~/other/deep/new")].find(std::to_string(0100602)) != std::string::npos);
    disk.make({"~/target 7", "~/folder/", "~/to-folder -> folder", "~/loop -> loop",
               "~/nowhere -> lost/folder", "~/pipe |", "~/mine/locked"});
    disk.setMode("~/mine/locked", 0444);
    disk.setMode("~/mine", 0555);
    const auto before = disk.entries();
    const std::pair<std::string, const char*> refused[]{
        {"~/folder", "512:21"},   {"~/to-folder", "512:21"},
        {"~/loop", "512:62"},     {"~/pipe", "512:22"},
        {"~/target/x", "512:20"}, {"~/nowhere/x", "4:2"},
        {"~/mine/new", "513:13"}, {"~/mine/locked", "513:13"},
        {"relative", "512:22"},   {std::string("/a\0b", 4), "512:22"}};
    for (const auto& [name, code] : refused)
        EXPECT_EQ(writing(disk, name, "no"), code) << name;
    EXPECT_EQ(disk.entries(), before);
}

TEST(WriteFile, ReportsAFullAndAReadOnlyVolume) {
    const TemporaryDisk disk;
    disk.make("~/volume/");
    EXPECT_FALSE(platform::volumeCapacity(disk.disk(), "/missing"));
    const MountedVolume volume(disk.host("~/volume"));
    SKIP_UNLESS_MOUNTED(volume);
    EXPECT_EQ(writing(disk, "~/volume/folder/file", std::string(16384, 'x')), "");
    const auto capacity = platform::volumeCapacity(disk.disk(), at("~/volume/folder"));
    ASSERT_TRUE(capacity);
    EXPECT_EQ(capacity->totalBytes, 65536);
    EXPECT_EQ(capacity->availableBytes, 65536 - 16384);
    // The old content stays, and nothing else.
    const auto before = disk.entries();
    EXPECT_EQ(writing(disk, "~/volume/folder/file", std::string(100'000, 'x')), "640:28");
    EXPECT_EQ(disk.entries(), before);
    ASSERT_TRUE(volume.makeReadOnly());
    EXPECT_EQ(writing(disk, "~/volume/file", "new"), "642:30");
}
