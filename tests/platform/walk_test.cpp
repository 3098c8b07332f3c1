#include "platform/walk/walk.h"

#include "platform/system/system.h"
#include "tests/support/process.h"
#include "tests/support/temporary_disk.h"

#include <atomic>
#include <cstddef>
#include <filesystem>
#include <iterator>
#include <limits>
#include <set>
#include <thread>

#include <fcntl.h>
#include <linux/filter.h>
#include <linux/seccomp.h>
#include <sys/prctl.h>
#include <sys/syscall.h>
#include <unistd.h>

#include <gtest/gtest.h>

using namespace platform;

namespace {

using Sizes = std::vector<std::int64_t>;

constexpr auto inMemory = TemporaryDisk::Where::inMemory;

/// Makes a chain of folders with long names, each with a file of one byte and two folders that hold one.
/// Returns the number of entries.
std::size_t makeChain(const TemporaryDisk& disk, const std::string& path, int levels) {
    const std::string name(200, 'x');
    Descriptor folder(open(disk.host(path).c_str(), O_PATH | O_CLOEXEC));
    for (int level = 0; level < levels; ++level) {
        for (const std::string& made : {name, std::string("side"), std::string("twin")})
            EXPECT_EQ(mkdirat(folder.number(), made.c_str(), 0755), 0);
        for (const char* made : {"file", "side/file", "twin/file"}) {
            const Descriptor file(openat(folder.number(), made, O_WRONLY | O_CREAT | O_CLOEXEC, 0644));
            EXPECT_EQ(ftruncate(file.number(), 1), 0);
        }
        folder = Descriptor(openat(folder.number(), name.c_str(), O_PATH | O_CLOEXEC));
    }
    return 6 * static_cast<std::size_t>(levels);
}

/// Collects the paths that a walk visits. Does not descend into folders named "closed".
struct Collector {
    std::multiset<std::string> paths;

    Descend visit(const WalkEntry& entry) {
        paths.insert(entry.path());
        return entry.name == "closed" ? Descend::no : Descend::yes;
    }
    void merge(Collector other) { paths.merge(other.paths); }
};

/// Exchanges two entries when the walk has visited a folder but not opened it yet.
struct Exchanger {
    std::string atName, one, other;
    bool* exchanged = nullptr;
    std::set<std::string> names;

    Descend visit(const WalkEntry& entry) {
        names.emplace(entry.name);
        if (entry.name == atName && !*exchanged)
            *exchanged = renameat2(AT_FDCWD, one.c_str(), AT_FDCWD, other.c_str(), RENAME_EXCHANGE) == 0;
        return Descend::yes;
    }
    void merge(Exchanger more) { names.merge(more.names); }
};

/// Makes openat2 fail in this process as on a kernel without it.
bool disableOpenat2() {
    sock_filter program[]{BPF_STMT(BPF_LD | BPF_W | BPF_ABS, offsetof(seccomp_data, nr)),
                          BPF_JUMP(BPF_JMP | BPF_JEQ | BPF_K, SYS_openat2, 0, 1),
                          BPF_STMT(BPF_RET | BPF_K, SECCOMP_RET_ERRNO | ENOSYS),
                          BPF_STMT(BPF_RET | BPF_K, SECCOMP_RET_ALLOW)};
    const sock_fprog filter{std::size(program), program};
    return prctl(PR_SET_NO_NEW_PRIVS, 1, 0, 0, 0) == 0
           && prctl(PR_SET_SECCOMP, SECCOMP_MODE_FILTER, &filter) == 0;
}

} // namespace

TEST(Measure, SumsVisibleFilesAndLinks) {
    const TemporaryDisk disk;
    disk.make({"~/file 100", "~/folder/a 10", "~/folder/sub/App.app/Contents/b 20", "~/folder/.hidden 1000",
               "~/folder/.cache/deep/d 1000", "~/folder/link -> four", "~/folder/root -> /",
               "~/folder/pipe |", "~/only-hidden/.a 5", "~/.hidden-root/a 7", "~/names/line\nbreak/\xff 1",
               "~/to-file -> folder/a", "~/to-folder -> folder", "~/loop -> loop"});
    constexpr std::int64_t folderBytes = 10 + 20 + 4 + 1; // links count their own length
    const std::pair<std::string, std::int64_t> cases[]{{"~/file", 100},
                                                       {"~/folder/", folderBytes},
                                                       {"~/only-hidden", 0},
                                                       {"~/.hidden-root", 7},
                                                       {"~/names", 1},
                                                       {"~/to-file", 8},
                                                       {"~/to-folder", 0},
                                                       {"~/loop", 0},
                                                       {"~/to-folder/sub/App.app", 20},
                                                       {"relative", 0},
                                                       {"/", 100 + folderBytes + 1 + 8 + 6 + 4},
                                                       {std::string("~/file\0", 7), 0}};
    std::vector<std::string> paths;
    Sizes expected;
    for (const auto& [path, bytes] : cases) {
        paths.push_back(at(path));
        expected.push_back(bytes);
    }
    const std::size_t descriptors = openDescriptors();
    EXPECT_EQ(measure(disk.disk(), paths), expected);
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

TEST(Measure, SkipsUnreadableFolders) {
    const OrdinaryUser user;
    const TemporaryDisk disk;
    disk.make(
        {"~/tree/open/a 1", "~/tree/unreadable/b 10", "~/tree/unsearchable/c 100", "~/tree/locked/d 9"});
    disk.setMode("~/tree/unreadable", 0300);
    disk.setMode("~/tree/unsearchable", 0600);
    disk.setMode("~/tree/locked", 0);
    EXPECT_EQ(measure(disk.disk(), at({"~/tree", "~/tree/unreadable/b"})), (Sizes{1, 10}));
}

TEST(Measure, ReachesEveryLevelOfDeepTreesWithFewDescriptors) {
    const TemporaryDisk disk(inMemory);
    disk.make("~/deep/");
    makeChain(disk, "~/deep", 1000);
    for (const unsigned workers : {1U, 4U, 16U}) {
        const DescriptorLimit limit(128);
        EXPECT_EQ(measure(disk.disk(), at({"~/deep"}), workers), Sizes{3000}) << workers << " workers";
    }
}

TEST(Measure, CountsAllUnchangedEntriesWhileOthersChange) {
    const TemporaryDisk disk;
    disk.make("~/tree/stays/file 1");
    std::atomic<bool> done = false;
    std::thread changer([&] {
        while (!done) {
            for (int i = 0; i < 20; ++i)
                disk.make("~/tree/" + std::to_string(i) + "/sub/file 1000");
            std::rename(disk.host("~/tree/0/sub").c_str(), disk.host("~/tree/moved").c_str());
            std::filesystem::remove_all(disk.host("~/tree/moved"));
            for (int i = 0; i < 20; ++i)
                std::filesystem::remove_all(disk.host("~/tree/" + std::to_string(i)));
        }
    });
    for (int round = 0; round < 500; ++round)
        EXPECT_EQ(measure(disk.disk(), at({"~/tree"}))[0] % 1000, 1);
    done = true;
    changer.join();
}

TEST(Walk, VisitsEveryEntryOnceWithAnyNumberOfWorkers) {
    const TemporaryDisk disk(inMemory);
    disk.make(
        {"~/a/closed/inside", "~/a/.hidden/inside", "~/a/link -> closed", "~/b/\xff/file", "~/b/deep/"});
    std::multiset<std::string> expected;
    for (const char* path : {"~/a/closed", "~/a/.hidden", "~/a/.hidden/inside", "~/a/link", "~/a/wide",
                             "~/b/\xff", "~/b/\xff/file", "~/b/deep"})
        expected.insert(at(path));
    for (int i = 0; i < 2'500; ++i) { // more than one system call lists
        const std::string folder = "~/a/wide/" + std::to_string(i);
        disk.make(folder + "/file");
        expected.insert({at(folder), at(folder + "/file")});
    }
    const std::size_t below = makeChain(disk, "~/b/deep", 50);
    const std::string deep = at("~/b/deep/");
    for (const unsigned workers : {1U, 2U, 4U, 16U}) {
        auto found =
            walk(disk.disk(), at({"~/a/", "~/missing", "~/b"}), Hidden::include, Collector{}, workers);
        EXPECT_EQ(std::set(found.paths.begin(), found.paths.end()).size(), found.paths.size());
        EXPECT_EQ(std::erase_if(found.paths, [&](const auto& path) { return path.starts_with(deep); }),
                  below);
        EXPECT_EQ(found.paths, expected) << workers << " workers";
    }
}

TEST(Walk, DoesNotFollowALinkThatReplacesAFolder) {
    for (const int levelsAbove : {0, 100}) { // 100 levels: folders are opened again from far above
        const TemporaryDisk disk(inMemory);
        std::string top = "~/tree";
        for (int level = 0; level < levelsAbove; ++level) {
            disk.make({top + "/before/", top + "/next/", top + "/zlast/"});
            top += "/next";
        }
        disk.make({top + "/middle/sub/inner/file", "~/canary/sub/inner/canary", "~/canary/canary"});
        disk.make("~/link -> " + disk.host("~/canary"));
        for (const char* visited : {"middle", "sub", "inner"}) {
            bool exchanged = false;
            const std::string middle = disk.host(top + "/middle");
            const Exchanger exchanger{visited, middle, disk.host("~/link"), &exchanged, {}};
            const Exchanger found = walk(disk.disk(), at({"~/tree"}), Hidden::include, exchanger, 1);
            ASSERT_TRUE(exchanged) << visited;
            EXPECT_FALSE(found.names.contains("canary")) << visited << " below " << levelsAbove << " levels";
            renameat2(AT_FDCWD, middle.c_str(), AT_FDCWD, exchanger.other.c_str(), RENAME_EXCHANGE);
        }
    }
}

TEST(OpenFolderBelow, RefusesSymbolicLinksWithAndWithoutOpenat2) {
    const TemporaryDisk disk;
    disk.make({"~/a/b/c/file", "~/a/link -> b", "~/a/b/up -> ..", "~/a/b/last -> c"});
    const Descriptor folder(open(disk.host("~/a").c_str(), O_RDONLY | O_DIRECTORY | O_CLOEXEC));
    const auto wrongCases = [&] {
        int wrong = 0;
        for (const auto& [path, isOpened] : {std::pair("b", true),
                                             {"b/c", true},
                                             {"link", false},
                                             {"link/c", false},
                                             {"b/up", false},
                                             {"b/last", false},
                                             {"b/up/b", false},
                                             {"b/c/file", false},
                                             {"missing/c", false}})
            wrong += system::openFolderBelow(folder.number(), path) ? !isOpened : isOpened;
        return wrong;
    };
    EXPECT_EQ(wrongCases(), 0);
    const int wrongWithout = inAnotherProcess([&] { return disableOpenat2() ? wrongCases() : 100; });
    if (wrongWithout == 100)
        GTEST_SKIP() << "no system call can be disabled here";
    EXPECT_EQ(wrongWithout, 0);
}
