#include "core/removal/trash.h"

#include "core/removal/deletion.h"
#include "core/removal/permissions.h"
#include "tests/support/mounted_volume.h"
#include "tests/support/removal_hook.h"
#include "tests/support/temporary_disk.h"

#include <gtest/gtest.h>

using core::LumvaleScanner::emptyTrash;

namespace {

/// Returns "2 removed, 1 kept, 30 bytes", and each failure's name with the last word of its reason key.
std::string text(const core::TrashReport& report) {
    if (report.couldNotAccess)
        return "no access";
    std::string line = std::to_string(report.succeeded) + " removed, " + std::to_string(report.failed)
                       + " kept, " + std::to_string(report.bytesFreed) + " bytes";
    for (const core::TrashFailure& failure : report.failedDetails)
        line += ", " + failure.name + ": " + failure.reasonKey.substr(failure.reasonKey.rfind('_') + 1);
    return line;
}

} // namespace

TEST(EmptyTrash, RemovesAndCountsEveryEntryAndFollowsNoLink) {
    const TemporaryDisk disk;
    disk.make({"~/Documents/kept 1000", "~/.Trash/file 100", "~/.Trash/.DS_Store 10", "~/.Trash/empty",
               "~/.Trash/folder/inside 1000", "~/.Trash/folder/.hidden/.deep/file 5",
               "~/.Trash/link -> /Users/me/Documents"});
    platform::Progress progress;
    EXPECT_EQ(text(emptyTrash(disk.disk(), &progress)), "5 removed, 0 kept, 1110 bytes");
    EXPECT_EQ(progress.totalEntries(), 9);
    EXPECT_EQ(progress.entries(), 9);
    EXPECT_EQ(text(emptyTrash(disk.disk())), "0 removed, 0 kept, 0 bytes");
    EXPECT_TRUE(disk.exists("~/Documents/kept"));
}

TEST(EmptyTrash, ReportsWhatItCouldNotRemoveOrList) {
    const OrdinaryUser user;
    const TemporaryDisk disk;
    disk.make({"~/.Trash/a 1", "~/.Trash/b/closed/file 10", "~/.Trash/b/free 100", "~/.Trash/c 1000"});
    disk.setMode("~/.Trash/b/closed", 0555);
    const core::TrashReport report = emptyTrash(disk.disk());
    EXPECT_EQ(text(report), "2 removed, 1 kept, 1001 bytes, b: permission");
    EXPECT_NE(report.failedDetails.at(0).rawTechnical.find("Permission denied"), std::string::npos);
    EXPECT_FALSE(disk.exists("~/.Trash/b/free"));
    disk.setMode("~/.Trash", 0300);
    EXPECT_EQ(text(emptyTrash(disk.disk())), "no access");
}

TEST(EmptyTrash, UnlocksLockedEntriesAndTriesOnceMore) {
    const TemporaryDisk disk;
    disk.make({"~/.Trash/locked 7", "~/.Trash/folder/deep/.hidden/locked 70", "~/.Trash/free 700"});
    LOCK_OR_SKIP(disk, "~/.Trash/locked", "~/.Trash/folder/deep/.hidden/locked", "~/.Trash/folder");
    EXPECT_EQ(text(emptyTrash(disk.disk())), "3 removed, 0 kept, 707 bytes"); // hidden bytes don't count

    // The first attempt fails on a lock, the second one on a mounted volume: the first reason is reported.
    disk.make({"~/.Trash/used/locked", "~/.Trash/used/volume/"});
    LOCK_OR_SKIP(disk, "~/.Trash/used/locked");
    const MountedVolume volume(disk.host("~/.Trash/used/volume"));
    SKIP_UNLESS_MOUNTED(volume);
    EXPECT_EQ(text(emptyTrash(disk.disk())), "0 removed, 1 kept, 0 bytes, used: permission");
    EXPECT_FALSE(disk.exists("~/.Trash/used/locked"));
}

TEST(EmptyTrash, StopsInsideAFolderAsDeletePathsDoes) {
    const TemporaryDisk disk;
    disk.make({"~/.Trash/a 1", "~/.Trash/b/1 10", "~/.Trash/b/2 10", "~/.Trash/b/3 10", "~/.Trash/b/4 10",
               "~/.Trash/c 1000", "~/Library/Logs/d 5"});
    int removals = 0;
    platform::Progress emptying;
    beforeRemoval = [&] {
        if (++removals == 3)
            emptying.stop();
    };
    const core::TrashReport report = emptyTrash(disk.disk(), &emptying);
    EXPECT_EQ(text(report), "1 removed, 0 kept, 21 bytes");
    EXPECT_EQ(report.left, at({"~/.Trash/b", "~/.Trash/c"}));
    EXPECT_EQ(report.partial->bytesFreed, 20);
    EXPECT_EQ(emptying.totalEntries(), 7);
    EXPECT_EQ(emptying.entries(), 3);
    EXPECT_EQ(text(emptyTrash(disk.disk(), &emptying)), "0 removed, 0 kept, 0 bytes"); // stopped before

    disk.make({"~/.Trash/b/5 10", "~/.Trash/b/6 10"});
    platform::Progress deleting;
    beforeRemoval = [&] {
        if (++removals == 6)
            deleting.stop();
    };
    const std::vector<std::string> paths = at({"~/.Trash/b", "~/.Trash/c", "~/Library/Logs/d"});
    const core::DeletionOutcome outcome = core::LumvaleScanner::deletePaths(paths, disk.disk(), &deleting);
    beforeRemoval = nullptr;
    EXPECT_TRUE(outcome.succeeded.empty() && outcome.failed.empty());
    EXPECT_EQ(outcome.left, paths);
    EXPECT_EQ(outcome.partial->path + ' ' + std::to_string(outcome.partial->bytesFreed), paths[0] + " 30");
    EXPECT_EQ(deleting.totalEntries(), 7);
    EXPECT_TRUE(disk.exists("~/.Trash/c") && disk.exists("~/Library/Logs/d"));
}

TEST(FullDiskAccess, RequiresAReadableMailFolder) {
    const OrdinaryUser user;
    const TemporaryDisk disk;
    EXPECT_FALSE(core::LumvalePermissions::hasFullDiskAccess(disk.disk()));
    disk.make("~/Library/Mail/");
    EXPECT_TRUE(core::LumvalePermissions::hasFullDiskAccess(disk.disk()));
    disk.setMode("~/Library/Mail", 0);
    EXPECT_FALSE(core::LumvalePermissions::hasFullDiskAccess(disk.disk()));
}
