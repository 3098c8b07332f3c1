#include "core/scan/reason_key.h"

#include "core/scan/permissions.h"
#include "core/scan/scanner.h"
#include "platform/trash.h"
#include "tests/support/mounted_volume.h"
#include "tests/support/temporary_disk.h"

#include <gtest/gtest.h>

using LumvaleScanner::emptyTrash;
using LumvaleScanner::reasonKey;
using platform::Error;

namespace {

Error error(std::string_view domain, int code, std::shared_ptr<const Error> underlying = nullptr) {
    return {std::string(domain), code, "", std::move(underlying)};
}

Error cocoa(int code) {
    return error(platform::cocoaDomain, code);
}

Error posix(int code) {
    return error(platform::posixDomain, code);
}

Error wrapped(int cocoaCode, Error cause) {
    return error(platform::cocoaDomain, cocoaCode, std::make_shared<const Error>(std::move(cause)));
}

} // namespace

TEST(TrashFailures, AreExplainedByThePosixCodeOrElseTheCocoaCode) {
    const std::pair<Error, const char*> cases[]{
        {posix(1), "permission"},
        {posix(2), "already_gone"},
        {posix(16), "busy"},
        {posix(66), "not_empty"},
        {posix(39), "unknown"},
        {posix(4), "unknown"}, // Cocoa's codes are not POSIX's
        {cocoa(4), "already_gone"},
        {cocoa(513), "permission"},
        {cocoa(16), "unknown"},
        {wrapped(513, posix(16)), "busy"},      // the cause decides
        {wrapped(513, posix(5)), "permission"}, // unless it says nothing
        {wrapped(512, cocoa(513)), "unknown"},
        {error("Lumvale", 1), "unknown"},
        {error("Lumvale", 7, std::make_shared<const Error>(posix(2))), "already_gone"}};
    for (const auto& [error, key] : cases)
        EXPECT_EQ(reasonKey(error), std::string("err_trash_") + key) << error.domain << " " << error.code;
}

TEST(EmptyTrash, RemovesAndCountsEveryEntry) {
    const TemporaryDisk disk;
    disk.make({"~/Documents/kept 1000", "~/.Trash/file 100", "~/.Trash/.DS_Store 10", "~/.Trash/empty",
               "~/.Trash/folder/inside 1000", "~/.Trash/folder/.hidden 5",
               "~/.Trash/link -> /Users/me/Documents"});
    const TrashReport report = emptyTrash(disk.disk());
    EXPECT_EQ(report.succeeded, 5);
    EXPECT_EQ(report.failed, 0);
    EXPECT_EQ(report.bytesFreed, 1110);
    EXPECT_FALSE(report.couldNotAccess);
    EXPECT_TRUE(report.failedDetails.empty());
    EXPECT_TRUE(platform::listTrash(disk.disk())->empty());
    EXPECT_TRUE(disk.exists("~/Documents/kept"));

    const TrashReport again = emptyTrash(disk.disk());
    EXPECT_EQ(again.succeeded + again.failed, 0);
    EXPECT_FALSE(again.couldNotAccess);
}

TEST(EmptyTrash, SaysWhenTheTrashCannotBeListed) {
    const OrdinaryUser user;
    for (const char* trash : {"~/nothing", "~/.Trash", "~/.Trash -> Documents", "~/.Trash/closed"}) {
        const TemporaryDisk disk;
        disk.make({"~/Documents/kept", trash});
        if (disk.exists("~/.Trash/closed"))
            disk.setMode("~/.Trash", 0300);
        const TrashReport report = emptyTrash(disk.disk());
        EXPECT_TRUE(report.couldNotAccess) << trash;
        EXPECT_EQ(report.succeeded + report.failed + report.bytesFreed, 0) << trash;
        EXPECT_TRUE(disk.exists("~/Documents/kept")) << trash;
    }
}

TEST(EmptyTrash, TellsOfEveryEntryOfATrashThatCanBeListedOnly) {
    const OrdinaryUser user;
    const TemporaryDisk disk;
    disk.make({"~/.Trash/a", "~/.Trash/b/c"});
    disk.setMode("~/.Trash", 0444);
    const TrashReport report = emptyTrash(disk.disk());
    EXPECT_FALSE(report.couldNotAccess);
    EXPECT_EQ(report.failed, 2);
    for (const TrashFailure& failure : report.failedDetails)
        EXPECT_EQ(failure.reasonKey, "err_trash_permission") << failure.name;
}

TEST(EmptyTrash, GoesOnPastWhatFailsAndTellsWhy) {
    const OrdinaryUser user;
    const TemporaryDisk disk;
    disk.make({"~/.Trash/a 1", "~/.Trash/b/locked/file 10", "~/.Trash/b/free 100", "~/.Trash/c 1000",
               "~/.Trash/\xFF/locked/file"});
    disk.setMode("~/.Trash/b/locked", 0555);
    disk.setMode("~/.Trash/\xFF/locked", 0555);
    const TrashReport report = emptyTrash(disk.disk());
    EXPECT_EQ(report.succeeded, 2);
    EXPECT_EQ(report.failed, 2);
    EXPECT_EQ(report.bytesFreed, 1001);
    ASSERT_EQ(report.failedDetails.size(), 2U);
    EXPECT_EQ(report.failedDetails[0].name, "b");
    EXPECT_EQ(report.failedDetails[0].reasonKey, "err_trash_permission");
    EXPECT_NE(report.failedDetails[0].rawTechnical.find("Permission denied"), std::string::npos);
    EXPECT_EQ(report.failedDetails[1].name, "\xFF");
    EXPECT_FALSE(disk.exists("~/.Trash/b/free"));
}

TEST(EmptyTrash, UnlocksWhatIsLockedAndTriesOnceMore) {
    const TemporaryDisk disk;
    disk.make({"~/.Trash/locked 7", "~/.Trash/folder/deep/.hidden/locked 70", "~/.Trash/free 700"});
    LOCK_OR_SKIP(disk, "~/.Trash/locked", "~/.Trash/folder/deep/.hidden/locked", "~/.Trash/folder");
    const TrashReport report = emptyTrash(disk.disk());
    EXPECT_EQ(report.succeeded, 3);
    EXPECT_EQ(report.failed, 0);
    EXPECT_EQ(report.bytesFreed, 707); // what is hidden in a folder isn't measured
    EXPECT_TRUE(platform::listTrash(disk.disk())->empty());
}

TEST(EmptyTrash, KeepsTheReasonOfTheFirstAttempt) {
    const TemporaryDisk disk;
    disk.make({"~/.Trash/folder/locked", "~/.Trash/folder/volume/"});
    const MountedVolume volume(disk.host("~/.Trash/folder/volume"));
    SKIP_UNLESS_MOUNTED(volume);
    LOCK_OR_SKIP(disk, "~/.Trash/folder/locked");
    // At first the lock is in the way, at the second attempt a volume that is in use.
    const TrashReport report = emptyTrash(disk.disk());
    ASSERT_EQ(report.failedDetails.size(), 1U);
    EXPECT_EQ(report.failedDetails[0].reasonKey, "err_trash_permission");
    EXPECT_FALSE(disk.exists("~/.Trash/folder/locked"));
}

TEST(FullDiskAccess, IsThereWhenTheMailFolderCanBeListed) {
    const TemporaryDisk disk;
    EXPECT_FALSE(LumvalePermissions::hasFullDiskAccess(disk.disk()));
    const OrdinaryUser user;
    disk.make("~/Library/Mail/");
    EXPECT_TRUE(LumvalePermissions::hasFullDiskAccess(disk.disk())); // empty as it is
    disk.setMode("~/Library/Mail", 0);
    EXPECT_FALSE(LumvalePermissions::hasFullDiskAccess(disk.disk()));
}
