#include "platform/removal/trash.h"

#include "tests/support/codes.h"
#include "tests/support/mounted_volume.h"
#include "tests/support/temporary_disk.h"

#include <cerrno>
#include <functional>
#include <utility>
#include <vector>

#include <sys/stat.h>
#include <unistd.h>

#include <gtest/gtest.h>

using platform::numberedName;

// The linker redirects the product's system calls to these functions, so that each of them can fail.

namespace {

/// The errno with which each call fails, unlinkat() only once; 0 lets it work.
struct Faults {
    int renameat2 = 0, renameat = 0, linkat = 0, unlinkat = 0;
} faults;

/// Called before each exclusive rename that works and after each link, with the new name.
std::function<void(std::string_view newName)> interfere;

void callInterfere(const char* newName) {
    if (interfere)
        interfere(newName);
}

template <class... Arguments>
int callUnless(int fault, int (*call)(Arguments...), Arguments... arguments) {
    errno = fault;
    return fault != 0 ? -1 : call(arguments...);
}

} // namespace

extern "C" {
int __real_renameat2(int, const char*, int, const char*, unsigned);
int __real_renameat(int, const char*, int, const char*);
int __real_linkat(int, const char*, int, const char*, int);
int __real_unlinkat(int, const char*, int);

int __wrap_renameat2(int a, const char* from, int b, const char* to, unsigned flags) {
    if (faults.renameat2 == 0)
        callInterfere(to);
    return callUnless(faults.renameat2, __real_renameat2, a, from, b, to, flags);
}
int __wrap_renameat(int a, const char* from, int b, const char* to) {
    return callUnless(faults.renameat, __real_renameat, a, from, b, to);
}
int __wrap_linkat(int a, const char* from, int b, const char* to, int flags) {
    const int result = callUnless(faults.linkat, __real_linkat, a, from, b, to, flags);
    if (result == 0)
        callInterfere(to);
    return result;
}
int __wrap_unlinkat(int folder, const char* name, int flags) {
    // The removal of the source fails, not that of the new name.
    return callUnless(std::exchange(faults.unlinkat, 0), __real_unlinkat, folder, name, flags);
}
}

namespace {

struct MoveToTrash : testing::Test {
    void TearDown() override {
        faults = {};
        interfere = nullptr;
    }

    /// Returns the new path, or the codes of the error.
    std::string move(std::string_view path) const {
        const auto source = disk.disk().place(at(path));
        const auto moved = source ? platform::moveToTrash(disk.disk(), *source) : source.error();
        return moved ? at("~/.Trash/") + moved->name : codes(moved);
    }

    /// Puts the entry, which has this name in the Trash, back to ~/back. Returns the codes of the error.
    std::string putBack(const char* name) const {
        const auto inTrash = disk.disk().place(at("~/.Trash/") + name);
        return codes(platform::putBack(disk.disk(), {name, platform::entryId(*inTrash)},
                                       *disk.disk().place(at("~/back"))));
    }

    std::vector<std::string> trash() const { return *platform::listTrash(disk.disk()); }

    void expectRefused(std::string_view path, std::string_view expected) const {
        EXPECT_EQ(move(path), expected) << path;
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
            EXPECT_EQ(move("~/" + name), at("~/.Trash/") + kept);
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
        EXPECT_EQ(move(path), at("~/.Trash/") + name);
        moveToTrash(expected, path, name);
    }
    EXPECT_EQ(move("~/alias/inside"), at("~/.Trash/inside")); // links in the folder's path are followed
    moveToTrash(expected, "~/folder/inside", "inside");
    EXPECT_EQ(disk.entries(), expected);

    disk.make("~/late");
    interfere = [this](auto) {
        disk.write("~/.Trash/late", "another's");
    };
    EXPECT_EQ(move("~/late"), at("~/.Trash/late 2"));
    EXPECT_EQ(disk.read("~/.Trash/late"), "another's");
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
    EXPECT_EQ(move("~/x"), at("~/.Trash/x"));
    struct stat status {};
    ASSERT_EQ(stat(disk.host("~/.Trash").c_str(), &status), 0);
    EXPECT_EQ(status.st_mode & 0777, 0700U);
}

TEST_F(MoveToTrash, LeavesEntriesThatItMayNotMove) {
    const OrdinaryUser user;
    disk.make({"~/kept/file", "~/folder/", "~/inner/locked/file", "~/.Trash/", "~/volume/", "~/locked"});
    for (const char* path : {"~/kept", "~/inner/locked"})
        disk.setMode(path, 0555);
    expectRefused("~/kept/file", "513:13");
    EXPECT_EQ(move("~/inner"), at("~/.Trash/inner")) << "the modes of entries inside a folder don't matter";
    EXPECT_EQ(move("~/folder/missing"), "4:2");
    disk.setMode("~/.Trash", 0555);
    expectRefused("~/folder", "513:13");
    disk.setMode("~/.Trash", 0755);
    const MountedVolume volume(disk.host("~/volume"));
    SKIP_UNLESS_MOUNTED(volume);
    disk.make("~/volume/folder/inside");
    expectRefused("~/volume/folder", "512:18");
    expectRefused("~/volume", "512:16");
    EXPECT_TRUE(disk.exists("~/volume/folder/inside"));
    LOCK_OR_SKIP(disk, "~/locked");
    expectRefused("~/locked", "513:1");
    EXPECT_EQ(trash(), std::vector<std::string>{"inner"});
}

TEST_F(MoveToTrash, MovesBothWaysCompletelyOrNotAtAllWhicheverCallFails) {
    disk.make("~/.Trash/source"); // so that a second name is needed
    const struct {
        const char* made;
        Faults faults;
        std::string error;
    } cases[]{{"~/source", {.renameat2 = EIO}, "512:5"},
              {"~/source/", {.renameat2 = ENOSYS, .renameat = ENOSPC}, "640:28"},
              {"~/source", {.renameat2 = EINVAL, .linkat = EPERM}, "513:1"},
              {"~/source", {.renameat2 = EINVAL, .unlinkat = EACCES}, "513:13"},
              {"~/source -> target", {.renameat2 = EINVAL}, "512:45"}};
    for (const auto& [made, injected, error] : cases) {
        disk.make(made);
        faults = injected;
        expectRefused("~/source", error);
        faults = {};
        EXPECT_EQ(trash(), std::vector<std::string>{"source"});

        EXPECT_EQ(move("~/source"), at("~/.Trash/source 2"));
        const auto before = disk.entries();
        faults = injected;
        EXPECT_EQ(putBack("source 2"), error.substr(error.find(':') + 1));
        faults = {};
        EXPECT_EQ(disk.entries(), before);
        ASSERT_EQ(::remove(disk.host("~/.Trash/source 2").c_str()), 0);
    }
}

TEST_F(MoveToTrash, UndoesALinkInTheOldPlaceButKeepsTheFileOfAnotherProcessThere) {
    disk.write("~/source", "older");
    move("~/source");
    faults.renameat2 = EINVAL;
    interfere = [](std::string_view newName) {
        if (newName == "back")
            faults.unlinkat = EACCES;
    };
    EXPECT_EQ(putBack("source"), "13");
    EXPECT_FALSE(disk.exists("~/back"));
    interfere = [this](std::string_view newName) {
        disk.write("~/new version", "newer");
        if (newName == "back")
            rename(disk.host("~/new version").c_str(), disk.host("~/back").c_str());
    };
    EXPECT_EQ(putBack("source"), "17");
    EXPECT_EQ(disk.read("~/back"), "newer");
    EXPECT_EQ(disk.read("~/.Trash/source"), "older");
}

TEST_F(MoveToTrash, ReservesANameWithoutExclusiveRename) {
    disk.make({"~/.Trash/file", "~/.Trash/folder/", "~/folder/inside", "~/file 7", "~/home -> /Users/me"});
    auto expected = disk.entries();
    faults.renameat2 = EINVAL;
    EXPECT_EQ(move("~/file"), at("~/.Trash/file 2"));
    moveToTrash(expected, "~/file", "file 2");
    EXPECT_EQ(move("~/folder"), at("~/.Trash/folder 2"));
    moveToTrash(expected, "~/folder", "folder 2");
    EXPECT_EQ(move("~/home/.Trash"), "512:22") << "the Trash into itself";
    EXPECT_EQ(disk.entries(), expected);

    // Another process saves a file by a rename to the old or the new name.
    for (const auto& [saved, error] : {std::pair("~/file", "512:16"), {"~/.Trash/file 3", ""}}) {
        disk.write("~/file", "older");
        disk.write("~/new version", "newer");
        interfere = [&, path = saved](auto) {
            rename(disk.host("~/new version").c_str(), disk.host(path).c_str());
        };
        EXPECT_EQ(move("~/file"), *error != 0 ? error : at("~/.Trash/file 4")) << saved;
        EXPECT_EQ(disk.read(saved), "newer");
    }
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
