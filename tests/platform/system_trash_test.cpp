#include "platform/removal/system_trash.h"

#include "platform/removal/trash.h"
#include "tests/support/codes.h"
#include "tests/support/mounted_volume.h"
#include "tests/support/temporary_disk.h"

#include <filesystem>
#include <functional>

#include <gtest/gtest.h>

namespace fs = std::filesystem;

namespace {

const std::string unknown; // a new path that isn't reported

/// Moves entries by a service that acts as a test tells it.
struct MoveByService : testing::Test {
    using Act = std::function<platform::Result<std::string>(const std::string& hostPath)>;

    std::string move(std::string_view path, const Act& act) const {
        return codes(platform::moveToTrash(disk.disk(), *disk.disk().place(at(path)), act));
    }

    /// The service as it should be.
    std::string rename(const std::string& hostPath) const {
        fs::rename(hostPath, arrived);
        return arrived;
    }

    const TemporaryDisk disk;
    const std::string arrived = disk.host("~/.Trash/x 2");
};

} // namespace

TEST_F(MoveByService, SucceedsOnlyIfTheEntryItselfHasMoved) {
    const auto swap = [this] {
        fs::rename(disk.host("~/x"), disk.host("~/away"));
        disk.write("~/x", "another");
    };
    const platform::Error locked{"NSCocoaErrorDomain", 513, "…", nullptr};
    const platform::Error foreign{"NSOSStatusErrorDomain", 13, "…", nullptr};
    const struct {
        const char* what;
        Act act;
        const char* expected;
    } cases[]{{"moved", [&](auto& path) { return rename(path); }, ""},
              {"moved to an unreadable place", [&](auto& path) { return rename(path), unknown; }, ""},
              {"moved, and made again by its program",
               [&](auto& path) {
                   rename(path);
                   disk.write("~/x", "new");
                   return arrived;
               },
               ""},
              {"swapped in between", [&](auto& path) { return swap(), rename(path); }, "512:16"},
              {"not moved at all", [](auto&) { return unknown; }, "512:16"},
              {"a Cocoa error", [&](auto&) { return locked; }, "513"},
              {"another error", [&](auto&) { return foreign; }, "512:NSOSStatusErrorDomain 13"}};
    for (const auto& [what, act, expected] : cases) {
        fs::remove_all(disk.host("~/.Trash"));
        disk.write("~/x", "its own");
        EXPECT_EQ(move("~/x", act), expected) << what;
    }
    EXPECT_EQ(disk.read("~/away"), "its own");
}

TEST_F(MoveByService, ReturnsTheEntryOnlyIfItCanBeExaminedInTheTrash) {
    const auto move = [this](const Act& act) {
        disk.write("~/x", "its own");
        return *platform::moveToTrash(disk.disk(), *disk.disk().place(at("~/x")), act);
    };
    EXPECT_FALSE(move([&](auto& path) { return rename(path), unknown; }).id);
    EXPECT_FALSE(move([&](auto& path) {
                     fs::rename(path, disk.host("~/another Trash"));
                     return disk.host("~/another Trash");
                 }).id);
    const platform::TrashEntry entry = move([&](auto& path) { return rename(path); });
    EXPECT_EQ(codes(platform::putBack(disk.disk(), entry, *disk.disk().place(at("~/back")))), "");
    EXPECT_EQ(disk.read("~/back"), "its own");
}

TEST_F(MoveByService, IsRefusedLikeARename) {
    disk.make({"~/x", "~/volume/", "~/elsewhere/"});
    const auto never = [](auto&) {
        ADD_FAILURE() << "the service was called";
        return unknown;
    };
    EXPECT_EQ(move("~/missing", never), "4:2");
    for (const char* const trash : {"~/.Trash", "~/.Trash -> elsewhere"}) {
        fs::remove_all(disk.host("~/.Trash"));
        disk.make(trash);
        EXPECT_EQ(move("~/x", never), "512:20") << trash;
    }
    fs::remove(disk.host("~/.Trash"));
    const MountedVolume volume(disk.host("~/volume"));
    SKIP_UNLESS_MOUNTED(volume);
    disk.make("~/volume/file");
    EXPECT_EQ(move("~/volume/file", never), "512:18");
    EXPECT_EQ(move("~/volume", never), "512:16");
}
