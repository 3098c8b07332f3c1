#include "core/scan/scanner.h"

#include "platform/path.h"
#include "platform/trash.h"
#include "tests/support/codes.h"
#include "tests/support/temporary_disk.h"

#include <random>
#include <string>
#include <vector>

#include <gtest/gtest.h>

using LumvaleScanner::deletePaths;
using LumvaleScanner::isDeletionAllowed;

namespace {

struct Deletion : testing::Test {
    bool isAllowed(std::string_view path) const { return isDeletionAllowed(at(path), disk.disk()); }

    void expectGuardAllows(bool expected, std::initializer_list<std::string_view> paths) const {
        for (const std::string_view path : paths)
            EXPECT_EQ(isAllowed(path), expected) << path;
    }

    DeletionOutcome deleteOne(std::string_view path) const { return deletePaths({at(path)}, disk.disk()); }

    const TemporaryDisk disk;
};

bool isRefusal(const DeletionFailure& failure) {
    return codes(failure.error) == "Lumvale 1";
}

} // namespace

TEST_F(Deletion, GuardAllowsWhatLiesInAFewPlacesOnly) {
    const std::string tenKilobytes(10000, 'x');
    EXPECT_TRUE(isAllowed("~/" + tenKilobytes));
    EXPECT_FALSE(isAllowed("/" + tenKilobytes));
    expectGuardAllows(true, {"~/Documents/report.pdf", "~/.Trash/old.zip", "~/Documents.old", "~/Documents 2",
                             "~/Libraryx", "~/anything", "~/documents", "/Library/Caches/x",
                             "/Library/Applex", "/Library/Application Support/x", "/Applications/Some.app",
                             "/tmp/x", "/private/tmp/x", "/private/var/folders/ab/x", "~/\xFF"});
    // Folders that hold what may go.
    expectGuardAllows(false, {"/", "~", "~/Documents", "~/Desktop", "~/Downloads", "~/Pictures", "~/Movies"});
    expectGuardAllows(false, {"~/Music", "~/Library", "~/Applications", "~/Public", "~/.Trash", "/Users"});
    expectGuardAllows(false, {"/Applications", "/Library", "/private/var/folders", "/private/tmp", "/tmp"});
    // The system's.
    expectGuardAllows(false, {"/System", "/System/Library/Fonts/x", "/usr/local/bin/tool", "/bin/sh",
                              "/sbin/x", "/private/etc/hosts", "/private/var/db/x", "/Library/Apple",
                              "/Library/Apple/x", "/cores/core.1", "/dev/null"});
    // Anywhere else.
    expectGuardAllows(false,
                      {"/Systemx/file", "/Users/other/file", "/Users/me2/file", "/Users/me.old",
                       "/Volumes/Disk/file", "/var/folders/ab/x", "/private", "/private/var", "/etc/hosts",
                       "/applications/x", "/SYSTEM/x", "", "relative/path", "Users/me/x", " /tmp/x"});
}

TEST_F(Deletion, GuardNormalisesNothing) {
    expectGuardAllows(true, {"/Library/../System/x", "~/../other/x", "~/Library/Caches/../../Documents"});
    expectGuardAllows(false, {"//Library/x", "/./tmp/x"});
}

TEST_F(Deletion, RefusesAProtectedPlaceHoweverItIsSpelt) {
    disk.make({"~/Documents/kept", "~/Library/Caches/", "/System/x", "/Users/other/kept"});
    for (const char* const spelling :
         {"~/Library/Caches/../../Documents", "~/Documents/", "~//Documents/.", "/../../Users/me/Documents",
          "~/x/../Documents//", "/Users/./me", "/tmp/../System/x", "~/../other/kept", "/Library/..",
          "relative", ""}) {
        const std::string given = at(spelling);
        const DeletionOutcome outcome = deletePaths({given}, disk.disk());
        EXPECT_TRUE(outcome.succeeded.empty());
        ASSERT_EQ(outcome.failed.size(), 1U);
        EXPECT_EQ(outcome.failed[0].path, given);
        EXPECT_TRUE(isRefusal(outcome.failed[0]));
        EXPECT_EQ(outcome.failed[0].error.description, "Chemin protégé : Lumvale refuse de le supprimer.");
    }
    for (const char* kept : {"~/Documents/kept", "/System/x", "/Users/other/kept"})
        EXPECT_TRUE(disk.exists(kept));
}

TEST_F(Deletion, DecidesEveryPathAsTheGuardDoesItsStandardisedForm) {
    const char* const protectedPlaces[]{
        "/System/x", "/usr/x", "/Library/Apple/x", "/private/etc/x", "/private/var/db/x", "/Users/other/x"};
    for (const char* place : protectedPlaces)
        disk.make(place);
    const std::string pieces[]{"Users",
                               "Users",
                               "me",
                               "me",
                               "other",
                               "Documents",
                               "Library",
                               "Apple",
                               "Applications",
                               ".Trash",
                               "System",
                               "usr",
                               "private",
                               "etc",
                               "var",
                               "db",
                               "folders",
                               "tmp",
                               "x",
                               "",
                               ".",
                               "..",
                               "..",
                               "...",
                               "\xFF",
                               std::string("a\0", 2)};
    std::mt19937 random(20240607);
    const auto below = [&](std::size_t count) {
        return std::uniform_int_distribution<std::size_t>(0, count - 1)(random);
    };
    int allowed = 0;
    for (int i = 0; i < 20'000; ++i) {
        std::string path = below(20) == 0 ? "" : "/";
        for (std::size_t count = below(8); count > 0; --count)
            path += pieces[below(std::size(pieces))] + (count == 1 && i % 2 == 0 ? "" : "/");
        const bool isAllowedHere = isDeletionAllowed(platform::standardized(path), disk.disk());
        const DeletionOutcome outcome = deletePaths({path}, disk.disk());
        ASSERT_EQ(!outcome.failed.empty() && isRefusal(outcome.failed[0]), !isAllowedHere) << path;
        allowed += isAllowedHere ? 1 : 0;
    }
    EXPECT_GT(allowed, 500); // or the rest proves little
    for (const char* place : protectedPlaces)
        EXPECT_TRUE(disk.exists(place)) << place;
}

TEST_F(Deletion, MovesToTheTrashAndRemovesForGoodWhatIsThere) {
    disk.make({"~/Library/Caches/a/inside", "~/Downloads/b", "~/.Trash/old/inside", "~/.Trash/c"});
    std::vector<std::string> paths = at({"~/Library/Caches/a/", "~/missing", "/System/x", "~/.Trash/./old",
                                         "~/Downloads/b", "~/Downloads/b"});
    paths.emplace_back("/tmp/a\0b", 8);
    const DeletionOutcome outcome = deletePaths(paths, disk.disk());
    EXPECT_EQ(outcome.succeeded, at({"~/Library/Caches/a", "~/.Trash/old", "~/Downloads/b"}));
    std::vector<std::string> failed;
    for (const DeletionFailure& failure : outcome.failed)
        failed.push_back(failure.path);
    EXPECT_EQ(failed,
              (std::vector<std::string>{at("~/missing"), "/System/x", at("~/Downloads/b"), paths[6]}));
    EXPECT_EQ(codes(outcome.failed[0].error), "4:2");
    EXPECT_EQ(*platform::listTrash(disk.disk()), (std::vector<std::string>{"a", "b", "c"}));
}

TEST_F(Deletion, NeverRemovesForGoodWhatLiesElsewhere) {
    disk.make({"~/Documents/kept", "~/.Trash/link -> ../Documents"});
    EXPECT_EQ(deleteOne("~/.Trash/link/kept").failed.size(), 1U);
    EXPECT_EQ(deleteOne("~/.Trash/link").succeeded.size(), 1U); // the link itself
    EXPECT_TRUE(disk.exists("~/Documents/kept"));

    const TemporaryDisk linked;
    linked.make({"~/Documents/kept", "~/other", "~/.Trash -> Documents"});
    for (const char* path : {"~/.Trash/kept", "~/other"})
        EXPECT_EQ(deletePaths({at(path)}, linked.disk()).failed.size(), 1U) << path;
    EXPECT_TRUE(linked.exists("~/Documents/kept") && linked.exists("~/other"));
}

TEST_F(Deletion, UnlocksNothing) {
    disk.make({"~/locked", "~/.Trash/locked"});
    LOCK_OR_SKIP(disk, "~/locked", "~/.Trash/locked");
    for (const char* path : {"~/locked", "~/.Trash/locked"}) {
        const DeletionOutcome outcome = deleteOne(path);
        ASSERT_EQ(outcome.failed.size(), 1U);
        EXPECT_EQ(codes(outcome.failed[0].error), "513:1");
        EXPECT_TRUE(disk.exists(path));
    }
}

TEST(DeletionGuard, HoldsForHomesInOddPlaces) {
    const TemporaryDisk disk;
    const struct {
        const char* home;
        const char* path;
        bool isAllowed;
    } cases[]{{"/Users/me/", "/Users/me", false},
              {"/Users/me/", "/Users/me/x", true},
              {"/Users/me/", "/Users/me/Music", false},
              {"/", "/Volumes/x", false},
              {"/", "/tmp/x", true},
              {"/", "/Users/me/x", false},
              {"/Users", "/Users/me", true},
              {"/Users", "/Users", false}};
    for (const auto& [home, path, isAllowed] : cases) {
        const auto other = platform::Disk::open(disk.disk().hostRoot(), home);
        ASSERT_TRUE(other);
        EXPECT_EQ(isDeletionAllowed(path, *other), isAllowed) << home << " " << path;
    }
}
