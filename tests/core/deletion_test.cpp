#include "core/removal/deletion.h"
#include "core/removal/deletion_guard.h"
#include "platform/files/path.h"
#include "platform/removal/trash.h"
#include "tests/support/codes.h"
#include "tests/support/temporary_disk.h"

#include <random>
#include <string>
#include <vector>

#include <gtest/gtest.h>

using core::LumvaleScanner::deletePaths;
using core::LumvaleScanner::isDeletionAllowed;

namespace {

using namespace std::string_literals;
using Lines = std::vector<std::string>;

struct Deletion : testing::Test {
    void expectGuardAllows(bool expected, std::initializer_list<std::string_view> paths) const {
        for (const std::string_view path : paths)
            EXPECT_EQ(isDeletionAllowed(at(path), disk.disk()), expected) << path;
    }

    const TemporaryDisk disk;
};

} // namespace

TEST_F(Deletion, GuardAllowsOnlyEntriesBelowUserPlaces) {
    const std::string longName(10000, 'x');
    expectGuardAllows(true,
                      {"~/Documents/report.pdf", "~/.Trash/old.zip", "~/Documents 2", "~/Libraryx",
                       "~/documents", "/Library/Caches/x", "/Library/Applex", "/Applications/Some.app",
                       "/tmp/x", "/private/tmp/x", "/private/var/folders/ab/x", "~/\xFF", "~/" + longName});
    expectGuardAllows(false, {"/", "~", "~/Documents", "~/Desktop", "~/Downloads", "~/Pictures", "~/Movies",
                              "~/Music", "~/Library", "~/Applications", "~/Public", "~/.Trash", "/Users",
                              "/Applications", "/Library", "/private/var/folders", "/private/tmp", "/tmp"});
    // System folders, and everything outside the allowed places.
    expectGuardAllows(false,
                      {"/System/Library/Fonts/x", "/usr/local/bin/tool", "/private/etc/hosts",
                       "/Library/Apple", "/Library/Apple/x", "/Systemx/file", "/Applicationsx/file",
                       "/Users/other/file", "/Users/me2/file", "/Volumes/Disk/file", "/var/folders/ab/x",
                       "/applications/x", "", "relative/path", "Users/me/x", " /tmp/x", "/" + longName});
    // The guard does not normalize paths.
    expectGuardAllows(true, {"/Library/../System/x", "~/Library/Caches/../../Documents"});
    expectGuardAllows(false, {"//Library/x", "/./tmp/x"});
}

TEST_F(Deletion, GuardHoldsForUnusualHomes) {
    const struct {
        const char *home, *path;
        bool isAllowed;
    } cases[]{{"/Users/me/", "/Users/me", false}, {"/Users/me/", "/Users/me/x", true},
              {"/", "/Volumes/x", false},         {"/", "/tmp/x", true},
              {"/Users", "/Users/me", true},      {"/Users", "/Users", false},
              {"/tmp/home", "/tmp/home", false},  {"/tmp/home", "/tmp/home/Music", false}};
    disk.make("/tmp/home/");
    for (const auto& [home, path, isAllowed] : cases)
        EXPECT_EQ(isDeletionAllowed(path, *platform::Disk::open(disk.disk().hostRoot(), home)), isAllowed)
            << home << " " << path;
}

TEST_F(Deletion, DecidesOnEveryPathAsTheGuardDoesOnItsStandardizedForm) {
    const Lines outside{"/System/x",         "/usr/x",        "/Library/Apple/x", "/private/etc/x",
                        "/private/var/db/x", "/Users/other/x"};
    for (const std::string& path : outside)
        disk.make(path);
    const Lines pieces{"Users", "Users",        "me",      "me",     "other", "Documents", "Library",
                       "Apple", "Applications", ".Trash",  "System", "usr",   "private",   "etc",
                       "var",   "db",           "folders", "tmp",    "x",     "",          ".",
                       "..",    "..",           "...",     "\xFF",   "a\0"s};
    std::mt19937 random(20240607);
    const auto below = [&](std::size_t count) {
        return std::uniform_int_distribution<std::size_t>(0, count - 1)(random);
    };
    int allowed = 0;
    for (int i = 0; i < 20'000; ++i) {
        std::string path = below(20) == 0 ? "" : "/";
        for (std::size_t count = below(8); count > 0; --count)
            path += pieces[below(pieces.size())] + (count == 1 && i % 2 == 0 ? "" : "/");
        const bool isAllowedHere = isDeletionAllowed(platform::standardized(path), disk.disk());
        const Lines refused = failures(deletePaths({path}, disk.disk()));
        ASSERT_EQ(!refused.empty() && refused[0].ends_with("Lumvale 1"), !isAllowedHere) << path;
        allowed += isAllowedHere ? 1 : 0;
    }
    EXPECT_GT(allowed, 500); // otherwise the paths are too uniform to prove anything
    for (const std::string& path : outside)
        EXPECT_TRUE(disk.exists(path)) << path;
}

TEST_F(Deletion, MovesEntriesToTheTrashAndRemovesThoseInTheTrash) {
    disk.make({"~/Library/Caches/a/inside", "~/Downloads/b", "~/Documents/kept", "~/.Trash/old/inside",
               "~/.Trash/c", "~/.Trash/link -> ../Documents"});
    Lines paths = at({"~/Library/Caches/a/", "~//missing", "~/x/../Documents//", "~/.Trash/./old",
                      "~/Downloads/b", "~/Downloads/b", "~/.Trash/link/kept", "~/.Trash/link"});
    paths.push_back("/tmp/a\0b"s);
    const core::DeletionOutcome outcome = deletePaths(paths, disk.disk());
    EXPECT_EQ(outcome.succeeded,
              at({"~/Library/Caches/a", "~/.Trash/old", "~/Downloads/b", "~/.Trash/link"}));
    EXPECT_EQ(failures(outcome),
              (Lines{at("~/missing 4:2"), at("~/x/../Documents// Lumvale 1"), at("~/Downloads/b 4:2"),
                     at("~/.Trash/link/kept 512:20"), paths.back() + " 512:22"}));
    EXPECT_EQ(outcome.failed[1].error.description, "Chemin protégé : Lumvale refuse de le supprimer.");
    EXPECT_EQ(*platform::listTrash(disk.disk()), (Lines{"a", "b", "c"}));
    EXPECT_TRUE(disk.exists("~/Documents/kept"));
}

TEST_F(Deletion, JudgesTheRealFolderBehindSymbolicLinks) {
    disk.make({"/System/Library/x", "/Library/Apple/x", "~/Library/apple -> /Library/Apple",
               "/Volumes/Disk/x", "/private/tmp/x", "~/Documents/Mail/x", "~/Library/a/x",
               "~/Library/system -> /System/Library", "~/Library/volume -> /Volumes/Disk",
               "~/Library/documents -> ../Documents", "~/Library/mail -> documents/Mail",
               "~/Library/home -> ..", "~/Library/b -> a", "~/Documents/m -> Mail", "/tmp -> private/tmp"});
    const Lines refused =
        at({"~/Library/system/x", "~/Library/apple/x", "~/Library/volume/x", "~/Library/documents/Mail",
            "~/Library/mail/x", "~/Library/home/Documents", "~/Library/home/Library"});
    Lines expected = refused;
    for (std::string& line : expected)
        line += " Lumvale 1";
    const auto before = disk.entries();
    EXPECT_EQ(failures(deletePaths(refused, disk.disk())), expected);
    EXPECT_EQ(disk.entries(), before);
    const Lines allowed = at({"~/Library/b/x", "~/Documents/m/x", "/tmp/x", "~/Library/documents"});
    EXPECT_EQ(deletePaths(allowed, disk.disk()).succeeded, allowed);
}
