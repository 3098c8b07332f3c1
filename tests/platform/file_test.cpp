#include "platform/files/file.h"

#include "platform/base/error.h"
#include "platform/files/places.h"
#include "platform/system/volume.h"
#include "tests/support/codes.h"
#include "tests/support/mounted_volume.h"
#include "tests/support/temporary_disk.h"

#include <cerrno>
#include <cstring>

#include <gtest/gtest.h>

using platform::FileAction;
using platform::readFile;
using platform::writeFile;

namespace {

constexpr std::size_t limit = 1000;

std::string writing(const TemporaryDisk& disk, std::string_view path, std::string_view content) {
    return codes(writeFile(disk.disk(), at(path), content));
}

} // namespace

TEST(ReadFile, GivesTheBytesOfARegularFileUpToTheLimit) {
    const TemporaryDisk disk;
    for (const std::string& content : {std::string(), std::string("\0\xFF\n", 3), std::string(limit, 'x')}) {
        disk.write("~/file", content);
        const auto read = readFile(disk.disk(), at("~/file"), limit);
        ASSERT_TRUE(read);
        EXPECT_EQ(*read, content);
    }
    disk.make({"~/longer 1001", "~/huge 1000000000000", "~/folder/", "~/dangling -> nothing", "~/pipe |"});
    const std::pair<const char*, const char*> refused[]{{"~/longer", "512:27"},  {"~/huge", "512:27"},
                                                        {"~/folder", "512:21"},  {"~/pipe", "512:22"},
                                                        {"~/dangling", "260:2"}, {"~/missing", "260:2"}};
    for (const auto& [name, code] : refused)
        EXPECT_EQ(codes(readFile(disk.disk(), at(name), limit)), code) << name;
}

TEST(WriteFile, MakesTheFileItsFoldersAndReplacesWhatWasThere) {
    const TemporaryDisk disk;
    const std::string path = platform::applicationSupportFolder(disk.disk()) + "/Lumvale/notes.json";
    EXPECT_EQ(path, "/Users/me/Library/Application Support/Lumvale/notes.json");
    for (const char* content : {"first and longest", "second", "", "third"}) {
        EXPECT_EQ(writing(disk, path, content), "");
        EXPECT_EQ(disk.read(path), content);
    }
    disk.make({"~/other/", "~/link -> /Users/me/other"});
    EXPECT_EQ(writing(disk, "~/link/deep/file", "through"), "");
    EXPECT_EQ(disk.read("~/other/deep/file"), "through");
}

TEST(WriteFile, RefusesWhatIsNoFileOfTheUsersAndTouchesNothing) {
    const OrdinaryUser user;
    const TemporaryDisk disk;
    disk.make({"~/target 7", "~/folder/", "~/link -> target", "~/dangling -> elsewhere",
               "~/nowhere -> lost/folder", "~/pipe |", "~/mine/locked"});
    disk.setMode("~/mine/locked", 0444);
    disk.setMode("~/mine", 0555);
    const auto before = disk.entries();
    const std::pair<std::string, const char*> refused[]{{"~/folder", "512:21"},
                                                        {"~/link", "512:62"},
                                                        {"~/dangling", "512:62"},
                                                        {"~/pipe", "512:22"},
                                                        {"~/target/x", "512:20"},
                                                        {"~/nowhere/x", "4:2"},
                                                        {"~/mine/new", "513:13"},
                                                        {"~/mine/locked", "513:13"},
                                                        {"~/mine/folder/new", "513:13"},
                                                        {"", "4:2"},
                                                        {"relative", "512:22"},
                                                        {"/", "512:22"},
                                                        {std::string("/a\0b", 4), "512:22"}};
    for (const auto& [name, code] : refused)
        EXPECT_EQ(writing(disk, name, "no"), code) << name;
    EXPECT_EQ(disk.entries(), before);
}

TEST(WriteFile, SaysWhenTheVolumeIsFullOrReadOnly) {
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
    EXPECT_EQ(writing(disk, "~/volume/file", std::string(100'000, 'x')), "640:28");
    ASSERT_TRUE(volume.makeReadOnly());
    EXPECT_EQ(writing(disk, "~/volume/file", "new"), "642:30");
}

TEST(Errors, SayWhatWasDoneAndWhyInTheMacsNumbers) {
    const struct {
        FileAction action;
        int host;
        const char* codes;
    } cases[]{
        {FileAction::remove, ENOENT, "4:2"},    {FileAction::read, ENOENT, "260:2"},
        {FileAction::remove, EACCES, "513:13"}, {FileAction::move, EPERM, "513:1"},
        {FileAction::read, EPERM, "257:1"},     {FileAction::move, EEXIST, "516:17"},
        {FileAction::write, ENOSPC, "640:28"},  {FileAction::remove, EROFS, "642:30"},
        {FileAction::remove, EBUSY, "512:16"},  {FileAction::remove, ENOTEMPTY, "512:66"},
        {FileAction::move, EXDEV, "512:18"},    {FileAction::read, ELOOP, "512:62"},
        {FileAction::write, EDQUOT, "640:69"},  {FileAction::read, ENAMETOOLONG, "512:63"},
        {FileAction::read, EAGAIN, "512:35"},   {FileAction::read, 199, "512:5"}}; // a number of nobody's
    for (const auto& [action, host, expected] : cases) {
        const platform::Error error = platform::fileError(action, host, "x.txt");
        EXPECT_EQ(codes(error), expected) << std::strerror(host);
        EXPECT_NE(error.description.find("x.txt"), std::string::npos);
        EXPECT_NE(error.description.find(error.underlying->description), std::string::npos);
    }
}
