#include "platform/walk/walk.h"

#include "platform/system/system.h"
#include "tests/support/process.h"
#include "tests/support/temporary_disk.h"

#include <algorithm>
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
#include <sys/stat.h>
#include <sys/syscall.h>
#include <unistd.h>

#include <gtest/gtest.h>

using namespace platform;

namespace {

/// Collects what a walk meets.
struct Collector {
    std::multiset<std::string> paths;
    std::int64_t bytes = 0;

    Descend visit(const WalkEntry& entry) {
        paths.insert(entry.path());
        bytes += entry.sizeBytes;
        return entry.name == "closed" ? Descend::no : Descend::yes;
    }
    void merge(Collector other) {
        paths.merge(other.paths);
        bytes += other.bytes;
    }
};

using Sizes = std::vector<std::int64_t>;

Sizes sizesOf(const TemporaryDisk& disk, std::initializer_list<std::string_view> paths) {
    return measure(disk.disk(), at(paths));
}

constexpr auto inMemory = TemporaryDisk::Where::inMemory;

/// A chain of folders called `name`, each with a file of one byte, and folders beside it that hold such a
/// file too. Adds their paths where they are wanted.
void makeChain(const TemporaryDisk& disk, std::string path, int levels, const std::string& name,
               const std::vector<std::string>& beside = {}, std::multiset<std::string>* paths = nullptr) {
    Descriptor folder(open(disk.host(path).c_str(), O_RDONLY | O_DIRECTORY | O_CLOEXEC));
    const auto make = [&](const std::string& made, bool isFolder) {
        const Descriptor file(
            isFolder ? -1 : openat(folder.number(), made.c_str(), O_WRONLY | O_CREAT | O_CLOEXEC, 0644));
        EXPECT_EQ(isFolder ? mkdirat(folder.number(), made.c_str(), 0755) : ftruncate(file.number(), 1), 0);
        if (paths != nullptr)
            paths->insert(at(path) + "/" + made);
    };
    for (int level = 0; level < levels; ++level) {
        make("file", false);
        make(name, true);
        for (const std::string& other : beside) {
            make(other, true);
            make(other + "/file", false);
        }
        folder = Descriptor(openat(folder.number(), name.c_str(), O_RDONLY | O_DIRECTORY | O_CLOEXEC));
        path += paths != nullptr ? "/" + name : "";
    }
}

TEST(Measure, CountsWhatLiesBelow) {
    const TemporaryDisk disk;
    disk.make({"~/file 100", "~/folder/a 10", "~/folder/sub/App.app/Contents/b 20", "~/folder/.hidden 1000",
               "~/folder/.cache/deep/d 1000", "~/folder/link -> four", "~/folder/up -> ..",
               "~/folder/root -> /", "~/folder/pipe |", "~/only-hidden/.a 5", "~/.hidden-root/a 7"});
    disk.make({"~/names/line\nbreak/file 1", "~/names/\xff\xfe 2", "~/names/\xc3\xa9 4",
               "~/names/e\xcc\x81 8", "~/to-file -> folder/a", "~/to-folder -> folder", "~/loop -> loop",
               "~/through -> folder/sub", "~/pipe |"});
    constexpr std::int64_t folderBytes = 10 + 20 + 4 + 2 + 1; // the links count their own length
    const std::pair<std::string, std::int64_t> cases[]{{"~/file", 100},
                                                       {"~/folder/", folderBytes},
                                                       {"~/./folder/../folder", folderBytes},
                                                       {"~/only-hidden", 0},
                                                       {"~/.hidden-root", 7},
                                                       {"~/names", 15},
                                                       {"~/names/\xff\xfe", 2},
                                                       {"~/file/below", 0},
                                                       {"~/to-file", 8},
                                                       {"~/to-folder", 0},
                                                       {"~/loop", 0},
                                                       {"~/through/App.app", 20},
                                                       {"~/pipe", 0},
                                                       {"relative", 0},
                                                       {"/", 100 + folderBytes + 15 + 8 + 6 + 4 + 10},
                                                       {std::string("~/file\0", 7), 0}};
    std::vector<std::string> paths;
    for (const auto& [path, bytes] : cases)
        paths.push_back(at(path));
    for (const unsigned workers : {1U, 2U, 4U, 16U}) {
        const std::size_t before = openDescriptors();
        const std::vector<std::int64_t> sizes = measure(disk.disk(), paths, workers);
        EXPECT_EQ(openDescriptors(), before);
        ASSERT_EQ(sizes.size(), std::size(cases));
        for (std::size_t i = 0; i < std::size(cases); ++i)
            EXPECT_EQ(sizes[i], cases[i].second) << cases[i].first << " with " << workers << " workers";
    }
}

TEST(Measure, SumsStopAtTheLargestValue) {
    constexpr std::int64_t largest = std::numeric_limits<std::int64_t>::max();
    const TemporaryDisk disk(inMemory);
    std::vector<std::string> files{"~/two/a", "~/two/b"};
    for (int i = 0; i < 1000; ++i) // so many that several workers take part
        files.push_back("~/many/" + std::to_string(i) + "/file");
    for (const std::string& file : files) {
        disk.make(file);
        if (truncate(disk.host(file).c_str(), largest / 2) != 0)
            GTEST_SKIP() << "no file system for sparse files of nearly 2^62 bytes here";
    }
    EXPECT_EQ(sizesOf(disk, {"~/two", "~/many"}), (Sizes{largest - 1, largest}));
}

TEST(Measure, PassesOverWhatMayNotBeRead) {
    const OrdinaryUser user;
    const TemporaryDisk disk;
    disk.make({"~/tree/open/a 1", "~/tree/unreadable/b 10", "~/tree/unsearchable/c 100",
               "~/tree/locked/sub/d 1000"});
    disk.setMode("~/tree/unreadable", 0300);
    disk.setMode("~/tree/unsearchable", 0600);
    disk.setMode("~/tree/locked", 0);
    EXPECT_EQ(sizesOf(disk, {"~/tree", "~/tree/unreadable/b", "~/tree/locked"}), (Sizes{1, 10, 0}));
}

TEST(Measure, ReachesEveryLevelAndManyRootsWithFewDescriptors) {
    const TemporaryDisk disk(inMemory);
    disk.make({"~/deep/", "~/long/"});
    std::vector<std::string> roots{at("~/deep"), at("~/long")};
    std::vector<std::int64_t> expected{3000, 3 * 1000};
    makeChain(disk, "~/deep", 3000, "seventeen-letters");
    // More of its folders have to be reached again from far above than can be kept open.
    makeChain(disk, "~/long", 1000, std::string(200, 'x'), {"side", "twin"});
    for (int i = 0; i < 500; ++i) {
        const std::string root = "~/roots/" + std::to_string(i);
        disk.make({root + "/a/b/file 1", root + "/c/file 2"});
        roots.push_back(at(root));
        expected.push_back(3);
    }
    for (const unsigned workers : {1U, 4U, 16U}) {
        const DescriptorLimit limit(128);
        EXPECT_EQ(measure(disk.disk(), roots, workers), expected) << workers << " workers";
    }
}

TEST(Walk, MeetsEveryEntryOnceWhateverTheNumberOfWorkers) {
    const TemporaryDisk disk(inMemory);
    disk.make(
        {"~/a/closed/inside", "~/a/.hidden/inside 3", "~/a/link -> closed", "~/b/\xff/file 5", "~/b/deep/"});
    // Paths on the way are put together from anchors here.
    std::multiset<std::string> expected;
    makeChain(disk, "~/b/deep", 50, std::string(200, 'x'), {"side", "twin"}, &expected);
    std::int64_t bytes = 3 + 5 + 6 + 3 * 50;
    for (const char* path : {"~/a/closed", "~/a/.hidden", "~/a/.hidden/inside", "~/a/link", "~/a/wide",
                             "~/b/\xff", "~/b/\xff/file", "~/b/deep"})
        expected.insert(at(path));
    for (int i = 0; i < 2'500; ++i) { // more than one reading of a folder gives
        const std::string folder = "~/a/wide/" + std::to_string(i);
        disk.make(folder + "/file 2");
        expected.insert({at(folder), at(folder + "/file")});
        bytes += 2;
    }
    for (const unsigned workers : {1U, 2U, 3U, 4U, 16U}) {
        const Collector found =
            walk(disk.disk(), at({"~/a/", "~/missing", "~/b"}), Hidden::include, Collector{}, workers);
        EXPECT_EQ(found.paths, expected) << workers << " workers";
        EXPECT_EQ(found.bytes, bytes) << workers << " workers";
    }
}

/// Swaps an entry for another at the moment when the walk has met a folder and not yet opened it.
struct Swapper {
    std::string atName, one, other;
    bool* swapped = nullptr;
    std::set<std::string> names;

    Descend visit(const WalkEntry& entry) {
        names.emplace(entry.name);
        if (entry.name == atName && !*swapped)
            *swapped = renameat2(AT_FDCWD, one.c_str(), AT_FDCWD, other.c_str(), RENAME_EXCHANGE) == 0;
        return Descend::yes;
    }
    void merge(Swapper more) { names.merge(more.names); }
};

TEST(Walk, IsNotLedOutByAFolderSwappedForALink) {
    for (const int levelsAbove : {0, 100}) { // so many, too, that folders have to be reached from far above
        const TemporaryDisk disk(inMemory);
        std::string top = "~/tree";
        for (int level = 0; level < levelsAbove; ++level) {
            disk.make({top + "/before/", top + "/next/", top + "/zlast/"});
            top += "/next";
        }
        disk.make({top + "/middle/sub/inner/file", "~/canary/sub/inner/canary", "~/canary/canary"});
        disk.make("~/link -> " + disk.host("~/canary"));
        for (const char* met : {"middle", "sub", "inner"}) {
            bool swapped = false;
            const Swapper swapper{met, disk.host(top + "/middle"), disk.host("~/link"), &swapped, {}};
            const Swapper found = walk(disk.disk(), at({"~/tree"}), Hidden::include, swapper, 1);
            ASSERT_TRUE(swapped) << met;
            EXPECT_FALSE(found.names.contains("canary")) << met << " below " << levelsAbove << " levels";
            ASSERT_EQ(
                renameat2(AT_FDCWD, swapper.one.c_str(), AT_FDCWD, swapper.other.c_str(), RENAME_EXCHANGE),
                0);
        }
    }
}

TEST(Walk, SurvivesEntriesThatComeAndGo) {
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
        EXPECT_EQ(sizesOf(disk, {"~/tree"})[0] % 1000, 1);
    done = true;
    changer.join();
}

/// Makes the calling process one whose kernel has no openat2.
bool forgetOpenat2() {
    sock_filter program[]{BPF_STMT(BPF_LD | BPF_W | BPF_ABS, offsetof(seccomp_data, nr)),
                          BPF_JUMP(BPF_JMP | BPF_JEQ | BPF_K, SYS_openat2, 0, 1),
                          BPF_STMT(BPF_RET | BPF_K, SECCOMP_RET_ERRNO | ENOSYS),
                          BPF_STMT(BPF_RET | BPF_K, SECCOMP_RET_ALLOW)};
    const sock_fprog filter{std::size(program), program};
    return prctl(PR_SET_NO_NEW_PRIVS, 1, 0, 0, 0) == 0
           && prctl(PR_SET_SECCOMP, SECCOMP_MODE_FILTER, &filter) == 0;
}

TEST(OpenFolderBelow, PassesThroughNoLink) {
    const TemporaryDisk disk;
    disk.make({"~/a/b/c/file", "~/a/link -> b", "~/a/b/up -> ..", "~/a/b/last -> c"});
    const Descriptor folder(open(disk.host("~/a").c_str(), O_RDONLY | O_DIRECTORY | O_CLOEXEC));
    const std::pair<const char*, bool> cases[]{
        {"b", true},       {"b/c", true},     {"link", false},     {"link/c", false},   {"b/up", false},
        {"b/last", false}, {"b/up/b", false}, {"b/last/x", false}, {"b/c/file", false}, {"missing/c", false}};
    const auto wrongCases = [&] {
        return static_cast<int>(std::count_if(std::begin(cases), std::end(cases), [&](const auto& one) {
            return static_cast<bool>(system::openFolderBelow(folder.number(), one.first)) != one.second;
        }));
    };
    EXPECT_EQ(wrongCases(), 0);
    const int wrongWithout = inAnotherProcess([&] { return forgetOpenat2() ? wrongCases() : 100; });
    if (wrongWithout == 100)
        GTEST_SKIP() << "no system call can be taken away here";
    EXPECT_EQ(wrongWithout, 0);
}

} // namespace
