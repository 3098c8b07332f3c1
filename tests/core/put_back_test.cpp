#include "core/removal/put_back.h"

#include "core/removal/reason_key.h"
#include "tests/support/process.h"
#include "tests/support/temporary_disk.h"

#include <cerrno>
#include <chrono>
#include <filesystem>
#include <functional>
#include <thread>

#include <unistd.h>

#include <gtest/gtest.h>

namespace fs = std::filesystem;
using namespace std::chrono_literals;

namespace {

/// Called before each exclusive rename, while set. Returns the errno with which it fails; 0 lets it work.
std::function<int()> beforeRename;

/// Called after each exclusive rename that works, with the new name, while set.
std::function<void(std::string_view newName)> afterRename;

} // namespace

extern "C" {
int __real_renameat2(int, const char*, int, const char*, unsigned);
int __wrap_renameat2(int a, const char* from, int b, const char* to, unsigned flags) {
    const int fault = beforeRename ? beforeRename() : 0;
    errno = fault;
    const int result = fault != 0 ? -1 : __real_renameat2(a, from, b, to, flags);
    if (result == 0 && afterRename)
        afterRename(to);
    return result;
}
}

namespace {

using Lines = std::vector<std::string>;

struct PutBack : testing::Test {
    PutBack() { disk.make("~/.Trash/"); }
    void TearDown() override {
        beforeRename = nullptr;
        afterRename = nullptr;
    }

    std::vector<core::MovedEntry> moved(std::initializer_list<std::string_view> paths) const {
        return core::LumvaleScanner::deletePaths(at(paths), disk.disk()).moved;
    }

    /// Returns the paths that were put back, then the others with "left" or the key of their reason.
    Lines putBack(const std::vector<core::MovedEntry>& moved, platform::Progress* progress = nullptr) const {
        core::PutBackOutcome outcome = core::LumvaleScanner::putBack(moved, disk.disk(), progress);
        for (const auto& [path, error] : outcome.failed)
            outcome.succeeded.push_back(path + ' '
                                        + std::string(core::LumvaleScanner::putBackReasonKey(error)));
        for (const std::string& path : outcome.left)
            outcome.succeeded.push_back(path + " left");
        return outcome.succeeded;
    }

    const TemporaryDisk disk;
};

} // namespace

TEST_F(PutBack, RestoresEveryEntryWhateverItsNameAndOrder) {
    disk.make({"~/a/x 1", "~/b/x 2", "~/b/empty/", "~/b/link -> nothing", "~/b/\xFF\n 3", "~/real/y 4",
               "~/alias -> real", "~/.Trash/x"});
    const auto before = disk.entries();
    for (const int unsupported : {0, EINVAL}) {
        // A file system without exclusive renames cannot move links exclusively.
        const char* const link = unsupported == 0 ? "~/b/link" : "~/b/empty";
        const auto entries = moved({"~/a/x", "~/b/x", link, "~/b/\xFF\n", "~/alias/y", "~/b"});
        EXPECT_EQ(entries.size(), 6U);
        beforeRename = [=] {
            return unsupported;
        };
        EXPECT_EQ(putBack(entries), at({"~/b", "~/alias/y", "~/b/\xFF\n", link, "~/b/x", "~/a/x"}));
        EXPECT_EQ(disk.entries(), before);
    }
}

TEST_F(PutBack, LeavesWhatItCannotPutBackAndTellsWhy) {
    const auto inTrash = disk.host("~/.Trash/x");
    const auto parent = disk.host("~/folder");
    const struct {
        const char* what;
        std::function<void()> act;
        const char* reason;
    } cases[]{
        {"a file in its place", [&] { disk.write("~/folder/x", "new"); }, "err_place_taken"},
        {"a dangling link", [&] { disk.make("~/folder/x -> nothing"); }, "err_place_taken"},
        {"no parent", [&] { fs::remove(parent); }, "err_folder_gone"},
        {"a parent that is a file",
         [&] {
             fs::remove(parent);
             disk.make("~/folder");
         },
         "err_folder_gone"},
        {"a parent that was moved into documents, and a link to it",
         [&] {
             fs::rename(parent, disk.host("~/Documents/folder"));
             disk.make("~/folder -> Documents/folder");
         },
         "err_protected"},
        {"a parent that leads to another folder",
         [&] {
             fs::remove(parent);
             disk.make({"~/other/", "~/folder -> other"});
         },
         "err_folder_gone"},
        {"a parent without write permission", [&] { disk.setMode("~/folder", 0555); }, "err_not_allowed"},
        {"nothing in the Trash", [&] { fs::remove(inTrash); }, "err_not_in_trash"},
        {"another file in the Trash",
         [&] {
             std::this_thread::sleep_for(20ms); // to another time of creation
             fs::remove(inTrash);
             disk.write("~/.Trash/x", "its own"); // may get the same inode
         },
         "err_not_in_trash"},
        {"no Trash", [&] { fs::rename(disk.host("~/.Trash"), disk.host("~/old")); }, "err_not_in_trash"},
        {"a link in place of the Trash",
         [&] {
             fs::rename(disk.host("~/.Trash"), disk.host("~/old"));
             disk.make("~/.Trash -> old");
         },
         "err_trash_unknown"}};
    const OrdinaryUser user;
    for (const auto& [what, act, reason] : cases) {
        for (const char* const made : {"~/.Trash", "~/old", "~/folder", "~/Documents", "~/other", "~/y"})
            fs::remove_all(disk.host(made));
        disk.make({"~/Documents/", "~/y"});
        disk.write("~/folder/x", "its own");
        const auto entries = moved({"~/folder/x", "~/y"});
        act();
        auto expected = disk.entries();
        const Lines lines = putBack(entries);
        EXPECT_EQ(lines.back(), at("~/folder/x ") + reason) << what;
        if (fs::is_directory(fs::symlink_status(disk.host("~/.Trash")))) { // the others are put back
            EXPECT_EQ(lines.front(), at("~/y")) << what;
            expected[at("~/y")] = expected[at("~/.Trash/y")];
            expected.erase(at("~/.Trash/y"));
        }
        EXPECT_EQ(disk.entries(), expected) << what;
        if (fs::is_directory(parent))
            disk.setMode("~/folder", 0755);
    }
}

TEST_F(PutBack, KeepsEveryEntryWholeWhicheverRenameFails) {
    const std::pair<int, const char*> faults[]{{ENOSPC, "err_trash_unknown"},
                                               {EROFS, "err_read_only"},
                                               {EEXIST, "err_place_taken"},
                                               {ENOENT, "err_folder_gone"}, // of the two names, this one
                                               {EXDEV, "err_other_volume"}};
    disk.make({"~/a 1", "~/b/inside", "~/c"});
    const auto entries = moved({"~/a", "~/b", "~/c"});
    const auto before = disk.entries();
    for (const auto& [fault, reason] : faults) {
        // Each entry is renamed to a free name in the Trash, to its place, and then to its name in the Trash.
        beforeRename = [failing = fault, count = 0]() mutable {
            return ++count % 3 == 2 ? failing : 0;
        };
        const std::string key = std::string(" ") + reason;
        EXPECT_EQ(putBack(entries), (Lines{at("~/c") + key, at("~/b") + key, at("~/a") + key}));
        EXPECT_EQ(disk.entries(), before);
    }

    // A crash between two renames.
    const int status = inAnotherProcess([&] {
        beforeRename = [count = 0]() mutable {
            if (++count == 4)
                _exit(7);
            return 0;
        };
        return static_cast<int>(putBack(entries).size());
    });
    EXPECT_EQ(status, 7);
    EXPECT_TRUE(disk.exists("~/c") && disk.exists("~/.Trash/b 2/inside") && disk.exists("~/.Trash/a"));
}

TEST_F(PutBack, MovesNoEntryOfAnotherProcess) {
    disk.make({"~/a", "~/b"});
    const auto entries = moved({"~/a", "~/b"});
    // The entry in the Trash is replaced after the first look at it, the other one once it is in its place.
    beforeRename = [&, count = 0]() mutable {
        if (++count == 1) {
            fs::rename(disk.host("~/.Trash/b"), disk.host("~/away"));
            disk.write("~/.Trash/b", "another");
        }
        return 0;
    };
    afterRename = [this](std::string_view newName) {
        if (newName == "a") {
            disk.write("~/new", "its program's");
            fs::rename(disk.host("~/new"), disk.host("~/a"));
        }
    };
    EXPECT_EQ(putBack(entries), at({"~/a", "~/b err_not_in_trash"}));
    EXPECT_EQ(disk.read("~/a"), "its program's");
    EXPECT_EQ(disk.read("~/.Trash/b"), "another");
    EXPECT_TRUE(disk.exists("~/away") && !disk.exists("~/b"));
}

TEST_F(PutBack, CountsEntriesAndLeavesTheOthersWhenStopped) {
    disk.make({"~/a", "~/b", "~/c"});
    const auto entries = moved({"~/a", "~/b", "~/c"});
    platform::Progress progress;
    beforeRename = [&] {
        if (progress.entries() == 1)
            progress.stop();
        return 0;
    };
    EXPECT_EQ(putBack(entries, &progress), at({"~/c", "~/b", "~/a left"}));
    EXPECT_EQ(progress.entries(), 2);
    EXPECT_EQ(progress.totalEntries(), 3);
}
