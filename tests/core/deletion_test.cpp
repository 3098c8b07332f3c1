#include "core/scan/scanner.h"

#include "platform/path.h"
#include "platform/trash.h"
#include "tests/support/temporary_disk.h"

#include <algorithm>
#include <random>
#include <set>
#include <string>
#include <vector>

#include <gtest/gtest.h>

using LumvaleScanner::deletePaths;
using LumvaleScanner::isDeletionAllowed;

namespace {

struct Deletion : testing::Test {
    bool isAllowed(std::string_view path) const {
        return isDeletionAllowed(TemporaryDisk::path(path), disk.disk());
    }

    void expectGuardAllows(bool expected, std::initializer_list<std::string_view> paths) const {
        for (const std::string_view path : paths)
            EXPECT_EQ(isAllowed(path), expected) << path;
    }

    DeletionOutcome deleteOne(std::string_view path) const {
        return deletePaths({TemporaryDisk::path(path)}, disk.disk());
    }

    const TemporaryDisk disk;
};

bool isRefusal(const DeletionFailure& failure) {
    return failure.error.domain == "Lumvale" && failure.error.code == 1;
}

/// What the guard is to say, written again and differently: as one long rule over the names of a path.
bool isExpectedToBeAllowed(const std::vector<std::string>& names) {
    const auto begins = [&](std::vector<std::string> place) {
        return names.size() >= place.size() && std::equal(place.begin(), place.end(), names.begin());
    };
    for (const char* const name : {"System", "usr", "bin", "sbin", "cores", "dev"}) {
        if (begins({name}))
            return false;
    }
    if (begins({"private", "etc"}) || begins({"private", "var", "db"}) || begins({"Library", "Apple"}))
        return false;
    if (begins({"Users", "me"}) && names.size() == 3) {
        const std::set<std::string> kept{"Documents", "Desktop", "Downloads",    "Pictures", "Movies",
                                         "Music",     "Library", "Applications", "Public",   ".Trash"};
        return !kept.contains(names[2]);
    }
    return (begins({"Users", "me"}) && names.size() > 2) || (begins({"Applications"}) && names.size() > 1)
           || (begins({"Library"}) && names.size() > 1) || (begins({"tmp"}) && names.size() > 1)
           || (begins({"private", "tmp"}) && names.size() > 2)
           || (begins({"private", "var", "folders"}) && names.size() > 3);
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
        const std::string given = TemporaryDisk::path(spelling);
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
    const std::vector<std::string> refusedPlaces{
        "/System/x", "/usr/x", "/Library/Apple/x", "/private/etc/x", "/private/var/db/x", "/Users/other/x"};
    const std::vector<std::string> pieces{"Users",        "Users",     "me",      "me",
                                          "other",        "Documents", "Library", "Apple",
                                          "Applications", ".Trash",    "System",  "usr",
                                          "private",      "etc",       "var",     "db",
                                          "folders",      "tmp",       "x",       "Px",
                                          "dev",          "",          ".",       "..",
                                          "..",           "...",       "\xFF",    std::string("a\0", 2),
                                          "Documents "};
    for (const std::string& place : refusedPlaces)
        disk.make(place);
    std::mt19937 random(20240607);
    const auto below = [&](std::size_t count) {
        return std::uniform_int_distribution<std::size_t>(0, count - 1)(random);
    };
    int allowed = 0;
    for (int i = 0; i < 20000; ++i) {
        std::string path = below(20) == 0 ? "" : "/";
        std::vector<std::string> names; // of the standardised form
        for (std::size_t count = below(8); count > 0; --count) {
            const std::string& piece = pieces[below(pieces.size())];
            path += piece + (below(10) == 0 ? "//" : "/");
            if (piece == "..") {
                if (!names.empty())
                    names.pop_back();
            } else if (!piece.empty() && piece != ".") {
                names.push_back(piece);
            }
        }
        if (below(2) == 0 && path.size() > 1)
            path.pop_back();
        const bool expected = path.starts_with('/') && isExpectedToBeAllowed(names);
        EXPECT_EQ(isDeletionAllowed(platform::standardized(path), disk.disk()), expected) << path;
        const DeletionOutcome outcome = deletePaths({path}, disk.disk());
        const bool wasRefused = !outcome.failed.empty() && isRefusal(outcome.failed[0]);
        ASSERT_EQ(wasRefused, !expected) << path;
        allowed += expected ? 1 : 0;
    }
    EXPECT_GT(allowed, 500); // or the rest proves little
    for (const std::string& place : refusedPlaces)
        EXPECT_TRUE(disk.exists(place)) << place;
}

TEST_F(Deletion, MovesToTheTrashAndRemovesForGoodWhatIsThere) {
    disk.make({"~/Library/Caches/a/inside", "~/Downloads/b", "~/.Trash/old/inside", "~/.Trash/c"});
    const std::vector<std::string> paths{TemporaryDisk::path("~/Library/Caches/a/"),
                                         TemporaryDisk::path("~/missing"),
                                         "/System/x",
                                         TemporaryDisk::path("~/.Trash/./old"),
                                         TemporaryDisk::path("~/Downloads/b"),
                                         TemporaryDisk::path("~/Downloads/b"),
                                         std::string("/tmp/a\0b", 8)};
    const DeletionOutcome outcome = deletePaths(paths, disk.disk());
    EXPECT_EQ(outcome.succeeded, (std::vector<std::string>{"/Users/me/Library/Caches/a",
                                                           "/Users/me/.Trash/old", "/Users/me/Downloads/b"}));
    ASSERT_EQ(outcome.failed.size(), 4U);
    EXPECT_EQ(outcome.failed[0].path, "/Users/me/missing");
    EXPECT_EQ(outcome.failed[0].error.domain, platform::cocoaDomain);
    EXPECT_EQ(outcome.failed[0].error.code, 4);
    EXPECT_EQ(outcome.failed[1].path, "/System/x");
    EXPECT_EQ(outcome.failed[2].path, "/Users/me/Downloads/b");
    EXPECT_EQ(outcome.failed[3].path, paths[6]);
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
        EXPECT_EQ(deletePaths({TemporaryDisk::path(path)}, linked.disk()).failed.size(), 1U) << path;
    EXPECT_TRUE(linked.exists("~/Documents/kept"));
    EXPECT_TRUE(linked.exists("~/other"));
}

TEST_F(Deletion, UnlocksNothing) {
    disk.make({"~/locked", "~/.Trash/locked"});
    if (!disk.setImmutable("~/locked", true) || !disk.setImmutable("~/.Trash/locked", true))
        GTEST_SKIP() << "no immutable flag here";
    for (const char* path : {"~/locked", "~/.Trash/locked"}) {
        const DeletionOutcome outcome = deleteOne(path);
        ASSERT_EQ(outcome.failed.size(), 1U);
        EXPECT_EQ(outcome.failed[0].error.code, 513);
        EXPECT_TRUE(disk.exists(path));
    }
}

TEST(DeletionGuard, HoldsForHomesInOddPlaces) {
    const TemporaryDisk disk;
    struct Case {
        const char* home;
        const char* path;
        bool isAllowed;
    };
    const Case cases[]{{"/Users/me/", "/Users/me", false},
                       {"/Users/me/", "/Users/me/x", true},
                       {"/Users/me/", "/Users/me/Music", false},
                       {"/", "/Volumes/x", false},
                       {"/", "/tmp/x", true},
                       {"/", "/Users/me/x", false},
                       {"/Users", "/Users/me", true},
                       {"/Users", "/Users", false}};
    for (const Case& c : cases) {
        const auto other = platform::Disk::open(disk.disk().hostRoot(), c.home);
        ASSERT_TRUE(other);
        EXPECT_EQ(isDeletionAllowed(c.path, *other), c.isAllowed) << c.home << " " << c.path;
    }
    EXPECT_FALSE(platform::Disk::open(disk.disk().hostRoot(), ""));
}
