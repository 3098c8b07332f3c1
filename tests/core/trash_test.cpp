#include "core/removal/permissions.h"
#include "core/removal/reason_key.h"
#include "core/removal/trash.h"
#include "platform/removal/trash.h"
#include "tests/support/mounted_volume.h"
#include "tests/support/temporary_disk.h"

#include <gtest/gtest.h>

using core::LumvaleScanner::emptyTrash;
using platform::Error;

namespace {

Error cocoa(int code) {
    return {std::string(platform::cocoaDomain), code, "", nullptr};
}

Error posix(int code) {
    return {std::string(platform::posixDomain), code, "", nullptr};
}

Error wrapped(Error error, const Error& cause) {
    error.underlying = std::make_shared<const Error>(cause);
    return error;
}

/// "2 gone, 1 kept, 30 bytes", and each failure's name with the last word of its reason.
std::string text(const core::TrashReport& report) {
    if (report.couldNotAccess)
        return "no access";
    std::string line = std::to_string(report.succeeded) + " gone, " + std::to_string(report.failed)
                       + " kept, " + std::to_string(report.bytesFreed) + " bytes";
    for (const core::TrashFailure& failure : report.failedDetails)
        line += ", " + failure.name + ": " + failure.reasonKey.substr(failure.reasonKey.rfind('_') + 1);
    return line;
}

} // namespace

TEST(TrashFailures, AreExplainedByThePosixCodeOrElseTheCocoaCode) {
    const Error ours{"Lumvale", 1, "", nullptr};
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
        {wrapped(cocoa(513), posix(16)), "busy"},      // the cause decides
        {wrapped(cocoa(513), posix(5)), "permission"}, // unless it says nothing
        {wrapped(cocoa(512), cocoa(513)), "unknown"},
        {ours, "unknown"},
        {wrapped(ours, posix(2)), "already_gone"}};
    for (const auto& [error, key] : cases)
        EXPECT_EQ(core::LumvaleScanner::reasonKey(error), std::string("err_trash_") + key)
            << error.domain << " " << error.code;
}

TEST(EmptyTrash, RemovesAndCountsEveryEntry) {
    const TemporaryDisk disk;
    disk.make({"~/Documents/kept 1000", "~/.Trash/file 100", "~/.Trash/.DS_Store 10", "~/.Trash/empty",
               "~/.Trash/folder/inside 1000", "~/.Trash/folder/.hidden 5",
               "~/.Trash/link -> /Users/me/Documents"});
    EXPECT_EQ(text(emptyTrash(disk.disk())), "5 gone, 0 kept, 1110 bytes");
    EXPECT_EQ(text(emptyTrash(disk.disk())), "0 gone, 0 kept, 0 bytes");
    EXPECT_TRUE(platform::listTrash(disk.disk())->empty());
    EXPECT_TRUE(disk.exists("~/Documents/kept"));
}

TEST(EmptyTrash, SaysWhenTheTrashCannotBeListed) {
    const OrdinaryUser user;
    for (const char* trash : {"~/nothing", "~/.Trash", "~/.Trash -> Documents", "~/.Trash/closed"}) {
        const TemporaryDisk disk;
        disk.make({"~/Documents/kept", trash});
        if (disk.exists("~/.Trash/closed"))
            disk.setMode("~/.Trash", 0300);
        EXPECT_EQ(text(emptyTrash(disk.disk())), "no access") << trash;
        EXPECT_TRUE(disk.exists("~/Documents/kept")) << trash;
    }
}

TEST(EmptyTrash, GoesOnPastWhatFailsAndTellsWhy) {
    const OrdinaryUser user;
    const TemporaryDisk disk;
    disk.make({"~/.Trash/a 1", "~/.Trash/b/locked/file 10", "~/.Trash/b/free 100", "~/.Trash/c 1000",
               "~/.Trash/\xFF/locked/file"});
    disk.setMode("~/.Trash/b/locked", 0555);
    disk.setMode("~/.Trash/\xFF/locked", 0555);
    const core::TrashReport report = emptyTrash(disk.disk());
    EXPECT_EQ(text(report), "2 gone, 2 kept, 1001 bytes, b: permission, \xFF: permission");
    EXPECT_NE(report.failedDetails[0].rawTechnical.find("Permission denied"), std::string::npos);
    EXPECT_FALSE(disk.exists("~/.Trash/b/free"));
    disk.setMode("~/.Trash", 0444); // can be listed only
    EXPECT_EQ(text(emptyTrash(disk.disk())), "0 gone, 2 kept, 0 bytes, b: permission, \xFF: permission");
}

TEST(EmptyTrash, UnlocksWhatIsLockedAndTriesOnceMore) {
    const TemporaryDisk disk;
    disk.make({"~/.Trash/locked 7", "~/.Trash/folder/deep/.hidden/locked 70", "~/.Trash/free 700"});
    LOCK_OR_SKIP(disk, "~/.Trash/locked", "~/.Trash/folder/deep/.hidden/locked", "~/.Trash/folder");
    // What is hidden in a folder isn't measured.
    EXPECT_EQ(text(emptyTrash(disk.disk())), "3 gone, 0 kept, 707 bytes");

    // At first a lock is in the way, then a volume that is in use: the first reason counts.
    disk.make({"~/.Trash/used/locked", "~/.Trash/used/volume/"});
    LOCK_OR_SKIP(disk, "~/.Trash/used/locked");
    const MountedVolume volume(disk.host("~/.Trash/used/volume"));
    SKIP_UNLESS_MOUNTED(volume);
    EXPECT_EQ(text(emptyTrash(disk.disk())), "0 gone, 1 kept, 0 bytes, used: permission");
    EXPECT_FALSE(disk.exists("~/.Trash/used/locked"));
}

TEST(FullDiskAccess, IsThereWhenTheMailFolderCanBeListed) {
    const OrdinaryUser user;
    const TemporaryDisk disk;
    EXPECT_FALSE(core::LumvalePermissions::hasFullDiskAccess(disk.disk()));
    disk.make("~/Library/Mail/");
    EXPECT_TRUE(core::LumvalePermissions::hasFullDiskAccess(disk.disk())); // empty as it is
    disk.setMode("~/Library/Mail", 0);
    EXPECT_FALSE(core::LumvalePermissions::hasFullDiskAccess(disk.disk()));
}
