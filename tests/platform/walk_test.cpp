#include "platform/walk/walk.h"

#include "tests/support/process.h"
#include "tests/support/temporary_disk.h"

#include <filesystem>
#include <functional>
#include <limits>
#include <set>

#include <fcntl.h>
#include <unistd.h>

#include <gtest/gtest.h>

using namespace platform;

namespace {

using Sizes = std::vector<std::int64_t>;

constexpr auto inMemory = TemporaryDisk::Where::inMemory;

/// Collects the paths that a walk visits. Does not descend into folders named "closed".
struct Collector {
    std::function<void(std::string_view)> atName = [](auto) {
    };
    std::multiset<std::string> paths{};

    Descend visit(const WalkEntry& entry) {
        paths.insert(entry.path());
        atName(entry.name);
        return entry.name == "closed" ? Descend::no : Descend::yes;
    }
    void merge(Collector other) { paths.merge(other.paths); }
};

} // namespace

TEST(Measure, SumsVisibleFilesAndLinksInReadableFolders) {
    const OrdinaryUser user;
    const TemporaryDisk disk;
    disk.make({"~/file 100", "~/folder/a 10", "~/folder/sub/App.app/Contents/b 20", "~/folder/.hidden 1000",
               "~/folder/.cache/deep/d 1000", "~/folder/link -> four", "~/folder/again -> sub",
               "~/folder/pipe |", "~/only-hidden/.a 5", "~/.hidden-root/a 7", "~/names/line\nbreak/\xff 1",
               "~/to-file -> folder/a", "~/to-folder -> folder", "~/loop -> loop", "~/tree/open/a 1",
               "~/tree/unreadable/b 10", "~/tree/unsearchable/c 100", "~/tree/closed/d 9"});
    for (const auto& [name, mode] : {std::pair("unreadable", 0300U), {"unsearchable", 0600U}, {"closed", 0U}})
        disk.setMode(std::string("~/tree/") + name, mode);
    constexpr std::int64_t folderBytes = 10 + 20 + 4 + 3; // links count their own length
    const std::pair<std::string, std::int64_t> cases[]{{"~/file", 100},
                                                       {"~/folder/", folderBytes},
                                                       {"~/only-hidden", 0},
                                                       {"~/.hidden-root", 7},
                                                       {"~/names", 1},
                                                       {"~/to-file", 8},
                                                       {"~/to-folder", 0},
                                                       {"~/loop", 0},
                                                       {"~/to-folder/sub/App.app", 20},
                                                       {"~/tree", 1},
                                                       {"~/tree/unreadable/b", 10},
                                                       {"relative", 0},
                                                       {"/", 100 + folderBytes + 1 + 8 + 6 + 4 + 1},
                                                       {std::string("~/file\0", 7), 0}};
    const std::size_t descriptors = openDescriptors();
    for (const auto& [path, bytes] : cases)
        EXPECT_EQ(measure(disk.disk(), std::vector{at(path)}), Sizes{bytes}) << path;
    EXPECT_EQ(openDescriptors(), descriptors);
}

TEST(Measure, SumsDoNotOverflow) {
    constexpr std::int64_t largest = std::numeric_limits<std::int64_t>::max();
    const TemporaryDisk disk(inMemory);
    disk.make({"~/two/a", "~/two/b", "~/two/c"});
    for (const char* file : {"~/two/a", "~/two/b", "~/two/c"})
        if (truncate(disk.host(file).c_str(), largest / 2) != 0)
            GTEST_SKIP() << "no file system for sparse files of nearly 2^62 bytes here";
    EXPECT_EQ(measure(disk.disk(), at({"~/two"})), Sizes{largest});
}

TEST(Measure, ReachesEveryLevelOfDeepTreesWithFewDescriptors) {
    const TemporaryDisk disk(inMemory);
    disk.make("~/deep/");
    const std::string name(200, 'x');
    Descriptor folder(open(disk.host("~/deep").c_str(), O_RDONLY | O_CLOEXEC));
    for (int level = 0; level < 1000; ++level) {
        for (const char* made : {name.c_str(), "side", "twin"})
            ASSERT_EQ(mkdirat(folder.number(), made, 0755), 0);
        for (const char* made : {"file", "side/file", "twin/file"}) {
            const Descriptor file(openat(folder.number(), made, O_WRONLY | O_CREAT | O_CLOEXEC, 0644));
            ASSERT_EQ(ftruncate(file.number(), 1), 0);
        }
        folder = Descriptor(openat(folder.number(), name.c_str(), O_RDONLY | O_CLOEXEC));
    }
    for (const unsigned workers : {1U, 4U, 16U}) {
        const DescriptorLimit limit(128);
        EXPECT_EQ(measure(disk.disk(), at({"~/deep"}), nullptr, Hidden::skip, workers), Sizes{3000})
            << workers << " workers";
    }
}

TEST(Measure, GoesOnWithFewDescriptorsAndCountsFoldersThatItCouldNotRead) {
    const TemporaryDisk disk(inMemory);
    std::string deep = "~/tree";
    for (int level = 0; level < 30; ++level) {
        disk.make({deep + "/before/file 1", deep + "/next/file 1", deep + "/after/file 1"});
        deep += "/next";
    }
    const struct {
        std::size_t descriptors;
        Sizes sizes;
        std::int64_t unread;
    } cases[]{{12, {90}, 0}, {4, {90}, 0}, {2, {0}, 1}};
    for (const auto& [descriptors, sizes, unread] : cases) {
        const DescriptorLimit limit(descriptors);
        Progress progress;
        EXPECT_EQ(measure(disk.disk(), at({"~/tree"}), &progress), sizes) << descriptors;
        EXPECT_EQ(progress.unreadFolders(), unread) << descriptors;
    }
}

TEST(Walk, LeavesOutEntriesThatAreRemovedMeanwhile) {
    const TemporaryDisk disk(inMemory);
    disk.make({"~/tree/folder/file", "~/tree/files/1", "~/tree/files/2"});
    const auto remove = [&](std::string_view name) {
        if (name != "files")
            std::filesystem::remove_all(disk.host(name == "folder" ? "~/tree/folder" : "~/tree/files"));
    };
    const auto found =
        walk(disk.disk(), at({"~/tree"}), Hidden::include, Collector{remove}, nullptr, 1).paths;
    EXPECT_EQ(found.size(), 3U) << testing::PrintToString(found); // both folders and one of the files
}

TEST(Walk, VisitsEveryEntryOnceWithAnyNumberOfWorkers) {
    const TemporaryDisk disk(inMemory);
    disk.make({"~/a/closed/inside", "~/a/.hidden/inside", "~/a/link -> closed", "~/b/\xff/file"});
    std::multiset<std::string> expected;
    for (const char* path : {"~/a/closed", "~/a/.hidden", "~/a/.hidden/inside", "~/a/link", "~/a/wide",
                             "~/b/\xff", "~/b/\xff/file"})
        expected.insert(at(path));
    for (int i = 0; i < 2'500; ++i) { // more than one system call lists
        const std::string folder = "~/a/wide/" + std::to_string(i);
        disk.make(folder + "/file");
        expected.insert({at(folder), at(folder + "/file")});
    }
    for (const unsigned workers : {1U, 2U, 4U, 16U}) {
        SCOPED_TRACE(workers);
        Progress progress;
        const auto paths = at({"~/a/", "~/missing", "~/b"});
        EXPECT_EQ(walk(disk.disk(), paths, Hidden::include, Collector{}, &progress, workers).paths, expected);
        EXPECT_EQ(static_cast<std::size_t>(progress.entries()), expected.size());
        // Stopped within the wide folder, the walk leaves it.
        const Collector stopping{[&](auto) {
            progress.stop();
        }};
        EXPECT_LT(walk(disk.disk(), paths, Hidden::include, stopping, &progress, workers).paths.size(),
                  1'000U);
    }
}

TEST(Walk, DoesNotFollowALinkThatReplacesAFolder) {
    for (const int levels : {0, 100}) { // below 100 levels, folders are opened again from far above
        const TemporaryDisk disk(inMemory);
        std::string folder = "~/tree";
        for (int level = 0; level < levels; ++level) {
            disk.make({folder + "/before/", folder + "/next/", folder + "/zlast/"});
            folder += "/next";
        }
        folder += "/folder";
        disk.make({folder + "/sub/inner/file", "~/canary/sub/inner/canary", "~/canary/canary"});
        disk.make("~/link -> " + disk.host("~/canary"));
        for (const char* visited : {"folder", "sub", "inner"}) {
            bool isReplaced = false;
            const auto replace = [&](std::string_view name) {
                if (name == visited)
                    isReplaced = disk.exchange(folder, "~/link");
            };
            auto found = walk(disk.disk(), at({"~/tree"}), Hidden::include, Collector{replace}, nullptr, 1);
            ASSERT_TRUE(isReplaced) << visited;
            EXPECT_EQ(std::erase_if(found.paths, [](auto& path) { return path.ends_with("canary"); }), 0U)
                << visited << " below " << levels << " levels";
            disk.exchange(folder, "~/link");
        }
    }
}
