#include "platform/removal/trash.h"

#include "tests/support/codes.h"
#include "tests/support/mounted_volume.h"
#include "tests/support/temporary_disk.h"

#include <cerrno>
#include <cstring>
#include <functional>
#include <set>
#include <vector>

#include <sys/stat.h>
#include <sys/wait.h>
#include <unistd.h>

#include <gtest/gtest.h>

using platform::numberedName;

// The linker redirects the product's system calls to these functions, so that each of them can fail.

namespace {

int renameFault = 0; // the errno with which renameat2 fails; 0 lets it work
int unlinkFault = 0;
std::function<void()> afterLink;

int fail(int failure) {
    errno = failure;
    return -1;
}

} // namespace

extern "C" {
int __real_renameat2(int, const char*, int, const char*, unsigned);
int __real_linkat(int, const char*, int, const char*, int);
int __real_unlinkat(int, const char*, int);

int __wrap_renameat2(int a, const char* from, int b, const char* to, unsigned flags) {
    return renameFault != 0 ? fail(renameFault) : __real_renameat2(a, from, b, to, flags);
}
int __wrap_linkat(int a, const char* from, int b, const char* to, int flags) {
    const int result = __real_linkat(a, from, b, to, flags);
    if (result == 0 && afterLink)
        afterLink();
    return result;
}
int __wrap_unlinkat(int folder, const char* name, int flags) {
    // Only the removal of the source fails, not that of a reserved name.
    return unlinkFault != 0 && std::strcmp(name, "source") == 0 ? fail(unlinkFault)
                                                                : __real_unlinkat(folder, name, flags);
}
}

namespace {

struct MoveToTrash : testing::Test {
    void TearDown() override {
        renameFault = unlinkFault = 0;
        afterLink = nullptr;
    }

    platform::Result<std::string> move(std::string_view path) const {
        return platform::moveToTrash(disk.disk(), at(path));
    }

    std::vector<std::string> trash() const { return *platform::listTrash(disk.disk()); }

    void expectRefused(std::string_view path, std::string_view expected) const {
        EXPECT_EQ(codes(move(path)), expected) << path;
        EXPECT_TRUE(disk.exists(path)) << path;
    }

    const TemporaryDisk disk;
};

} // namespace

TEST_F(MoveToTrash, KeepsEveryByteOfNameAndContent) {
    const std::string longest(255, 'x');
    for (const std::string name :
         {"new\nline", "quo\"te's", "-rf", "\xFF\xFE", "e\u0301", "\u00E9", ".hidden", longest.c_str()}) {
        for (const std::string& kept : {name, numberedName(name, 2)}) {
            disk.write("~/" + name, kept);
            const auto moved = move("~/" + name);
            ASSERT_TRUE(moved) << moved.error().description;
            EXPECT_EQ(*moved, platform::trashFolder(disk.disk()) + "/" + kept);
            EXPECT_FALSE(disk.exists("~/" + name));
        }
    }
    for (const std::string& name : trash())
        EXPECT_EQ(disk.read("~/.Trash/" + name), name);
}

TEST_F(MoveToTrash, ReplacesNothingAndMovesLinksThemselves) {
    disk.make({"~/.Trash/x/", "~/.Trash/y.txt/", "~/x/", "~/y.txt", "~/folder/inside",
               "~/to-folder -> folder", "~/to-nothing -> nothing", "~/alias -> folder"});
    auto expected = disk.entries();
    for (const auto& [path, name] : {std::pair("~/x", "x 2"), // an empty folder onto an empty folder
                                     {"~/y.txt", "y 2.txt"},
                                     {"~/to-folder", "to-folder"},
                                     {"~/to-nothing", "to-nothing"}}) {
        EXPECT_TRUE(move(path)) << path;
        moveToTrash(expected, path, name);
    }
    EXPECT_TRUE(move("~/alias/inside")); // links in the folder's path are followed
    moveToTrash(expected, "~/folder/inside", "inside");
    EXPECT_EQ(disk.entries(), expected);
}

TEST_F(MoveToTrash, KeepsAllItemsOfOneNameMovedByEightProcesses) {
    constexpr int processes = 8;
    constexpr int items = 100;
    for (int p = 0; p < processes; ++p) {
        const std::string path = "~/" + std::to_string(p) + "/same.txt";
        if (fork() == 0) {
            bool succeeded = true;
            for (int i = 0; i < items; ++i) {
                disk.write(path, std::to_string(p * items + i));
                succeeded = move(path) && succeeded;
            }
            _exit(succeeded ? 0 : 1);
        }
    }
    for (int p = 0; p < processes; ++p) {
        int status = 0;
        wait(&status);
        EXPECT_EQ(status, 0);
    }
    std::set<std::string> contents;
    for (const std::string& name : trash())
        contents.insert(disk.read("~/.Trash/" + name));
    EXPECT_EQ(contents.size(), std::size_t{processes * items});
}

TEST_F(MoveToTrash, RefusesATrashThatIsNoFolderAndCreatesAMissingOneWithMode0700) {
    disk.make({"~/x", "~/elsewhere/"});
    for (const char* const trash : {"~/.Trash", "~/.Trash -> elsewhere", "~/.Trash -> nothing"}) {
        disk.make(trash);
        const auto before = disk.entries();
        expectRefused("~/x", "512:20");
        EXPECT_FALSE(platform::listTrash(disk.disk()));
        EXPECT_FALSE(platform::placeInTrash(disk.disk(), at("~/.Trash/y")));
        EXPECT_EQ(disk.entries(), before);
        ASSERT_EQ(unlink(disk.host("~/.Trash").c_str()), 0);
    }
    EXPECT_TRUE(move("~/x"));
    struct stat status {};
    ASSERT_EQ(stat(disk.host("~/.Trash").c_str(), &status), 0);
    EXPECT_EQ(status.st_mode & 0777, 0700U);
}

TEST_F(MoveToTrash, LeavesEntriesThatItMayNotMove) {
    const OrdinaryUser user;
    disk.make({"~/kept/file", "~/folder/", "~/inner/locked/file", "~/.Trash/"});
    disk.setMode("~/kept", 0555);
    disk.setMode("~/inner/locked", 0555);
    expectRefused("~/kept/file", "513:13");
    EXPECT_TRUE(move("~/inner")) << "the modes of entries inside a folder don't matter";
    disk.setMode("~/.Trash", 0555);
    expectRefused("~/folder", "513:13");
    EXPECT_EQ(codes(move("~/folder/missing")), "4:2");
}

TEST_F(MoveToTrash, RefusesEntriesOfAnotherVolumeAndLockedOnes) {
    disk.make({"~/volume/", "~/locked"});
    const MountedVolume volume(disk.host("~/volume"));
    SKIP_UNLESS_MOUNTED(volume);
    disk.make("~/volume/folder/inside");
    expectRefused("~/volume/folder", "512:18");
    expectRefused("~/volume", "512:16");
    EXPECT_TRUE(disk.exists("~/volume/folder/inside"));
    LOCK_OR_SKIP(disk, "~/locked");
    expectRefused("~/locked", "513:1");
    EXPECT_TRUE(trash().empty());
}

TEST_F(MoveToTrash, MovesCompletelyOrNotAtAllWhicheverCallFails) {
    disk.make("~/.Trash/source"); // so that a second name is needed
    const struct {
        const char* made;
        int renameFault, unlinkFault;
    } cases[]{{"~/source/", EIO, 0}, {"~/source", EINVAL, EACCES}, {"~/source -> target", EINVAL, 0}};
    for (const auto& injected : cases) {
        SCOPED_TRACE(injected.made);
        disk.make(injected.made);
        renameFault = injected.renameFault;
        unlinkFault = injected.unlinkFault;
        EXPECT_FALSE(move("~/source"));
        TearDown();
        EXPECT_TRUE(disk.exists("~/source"));
        EXPECT_EQ(trash(), std::vector<std::string>{"source"});
        ASSERT_EQ(::remove(disk.host("~/source").c_str()), 0);
    }
}

TEST_F(MoveToTrash, ReservesANameWithoutExclusiveRename) {
    disk.make({"~/.Trash/file", "~/.Trash/folder/", "~/folder/inside", "~/file 7", "~/home -> /Users/me"});
    auto expected = disk.entries();
    renameFault = EINVAL;
    EXPECT_TRUE(move("~/file"));
    moveToTrash(expected, "~/file", "file 2");
    EXPECT_TRUE(move("~/folder"));
    moveToTrash(expected, "~/folder", "folder 2");
    EXPECT_FALSE(move("~/home/.Trash")) << "the Trash into itself";
    EXPECT_EQ(disk.entries(), expected);

    disk.make("~/file");
    disk.write("~/new version", "newer");
    afterLink = [this] {
        rename(disk.host("~/new version").c_str(), disk.host("~/file").c_str());
    };
    expectRefused("~/file", "512:16");
    EXPECT_EQ(disk.read("~/file"), "newer");
}

TEST(NumberedName, KeepsTheExtensionWithin255Bytes) {
    const std::string x(255, 'x');
    std::string accents; // two bytes each
    for (int i = 0; i < 127; ++i)
        accents += "é";
    const std::pair<std::string, std::string> cases[]{
        {"a.tar.gz", "a.tar 2.gz"},
        {".hidden", ".hidden 2"},
        {x.substr(0, 251) + ".txt", x.substr(0, 249) + " 2.txt"},
        {accents, accents.substr(0, 252) + " 2"},
        {"x" + accents.substr(0, 250) + ".txt", "x" + accents.substr(0, 248) + " 2.txt"},
        {"a." + x.substr(0, 253), "a." + x.substr(0, 251) + " 2"}, // an extension too long to keep
        {std::string(255, '\x80'), std::string(253, '\x80') + " 2"}};
    for (const auto& [name, expected] : cases) {
        EXPECT_EQ(numberedName(name, 2), expected);
        EXPECT_LE(numberedName(name, 123456789).size(), 255U);
    }
}
