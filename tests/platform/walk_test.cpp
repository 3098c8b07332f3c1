#include "platform/walk.h"

#include "platform/path.h"
#include "platform/system.h"
#include "tests/support/temporary_disk.h"

#include <algorithm>
#include <atomic>
#include <limits>
#include <mutex>
#include <set>
#include <thread>

#include <fcntl.h>
#include <sys/resource.h>
#include <sys/stat.h>
#include <unistd.h>

#include <gtest/gtest.h>

using namespace platform;

namespace {

constexpr std::int64_t largest = std::numeric_limits<std::int64_t>::max();

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

std::int64_t sizeOf(const Disk& disk, std::string_view path, unsigned workers = defaultWalkWorkers) {
    const std::vector<std::string> paths{TemporaryDisk::path(path)};
    return measure(disk, paths, workers).front();
}

/// While it lives, the process may have this many descriptors open.
class DescriptorLimit {
public:
    explicit DescriptorLimit(rlim_t limit) {
        getrlimit(RLIMIT_NOFILE, &m_before);
        const rlimit lower{limit, m_before.rlim_max};
        setrlimit(RLIMIT_NOFILE, &lower);
    }
    ~DescriptorLimit() { setrlimit(RLIMIT_NOFILE, &m_before); }
    DescriptorLimit(const DescriptorLimit&) = delete;
    DescriptorLimit& operator=(const DescriptorLimit&) = delete;

private:
    rlimit m_before{};
};

/// A chain of folders, each with a file of one byte and `sideFolders` folders that hold such a file too.
/// Gives the bytes made.
std::int64_t makeChain(const std::string& hostFolder, int levels, int sideFolders) {
    const auto makeFile = [](int folder, const char* name) {
        const Descriptor file(openat(folder, name, O_WRONLY | O_CREAT | O_CLOEXEC, 0644));
        return ftruncate(file.number(), 1) == 0 ? 1 : 0;
    };
    std::int64_t bytes = 0;
    Descriptor folder(open(hostFolder.c_str(), O_RDONLY | O_DIRECTORY | O_CLOEXEC));
    for (int level = 0; level < levels; ++level) {
        bytes += makeFile(folder.number(), "file");
        for (int side = 0; side < sideFolders; ++side) {
            const std::string name = "side" + std::to_string(side);
            mkdirat(folder.number(), name.c_str(), 0755);
            bytes += makeFile(folder.number(), (name + "/file").c_str());
        }
        constexpr const char* next = "seventeen-letters";
        mkdirat(folder.number(), next, 0755);
        folder = Descriptor(openat(folder.number(), next, O_RDONLY | O_DIRECTORY | O_CLOEXEC));
    }
    return bytes;
}

TEST(Measure, CountsWhatLiesBelow) {
    const TemporaryDisk disk;
    disk.make({
        "~/file 100",
        "~/folder/a 10",
        "~/folder/sub/b 20",
        "~/folder/sub/App.app/Contents/c 30",
        "~/folder/.hidden 1000",
        "~/folder/.cache/deep/d 1000",
        "~/folder/link -> four",
        "~/folder/up -> ..",
        "~/folder/self -> .",
        "~/folder/root -> /",
        "~/only-hidden/.a 5",
        "~/empty/",
        "~/.hidden-root/a 7",
        "~/names/line\nbreak 1",
        "~/names/\xff\xfe invalid 2",
        "~/names/-rf 4",
        "~/names/dir\nwith break/file 8",
        "~/names/\xc3\xa9 16",
        "~/names/e\xcc\x81 32",
        "~/to-file -> folder/a",
        "~/to-folder -> folder",
        "~/to-nowhere -> missing",
        "~/to-itself -> to-itself",
        "~/to-outside -> /../../../../etc",
        "~/through -> folder/sub",
    });
    ASSERT_EQ(mkfifo(disk.host("~/fifo").c_str(), 0600), 0);
    ASSERT_EQ(mkfifo(disk.host("~/folder/fifo").c_str(), 0600), 0);
    constexpr std::int64_t folderBytes = 10 + 20 + 30 + 4 + 2 + 1 + 1; // the links count their own length

    const std::vector<std::pair<std::string, std::int64_t>> cases{
        {"~/file", 100},
        {"~/folder", folderBytes},
        {"~/folder/", folderBytes},
        {"~/./folder/../folder", folderBytes},
        {"~/only-hidden", 0},
        {"~/empty", 0},
        {"~/.hidden-root", 7},
        {"~/names", 63},
        {"~/names/\xff\xfe invalid", 2},
        {"~/missing", 0},
        {"~/missing/file", 0},
        {"~/file/below", 0},
        {"~/to-file", 8},
        {"~/to-folder", 0},
        {"~/to-nowhere", 0},
        {"~/to-itself", 0},
        {"~/to-outside", 0},
        {"~/through/b", 20},
        {"~/through/App.app", 30},
        {"~/fifo", 0},
        {"", 0},
        {"relative", 0},
        {"/", 100 + folderBytes + 63 + 8 + 6 + 7 + 9 + 16 + 10},
        {std::string("~/file\0", 7), 0},
    };
    std::vector<std::string> paths;
    for (const auto& [path, bytes] : cases)
        paths.push_back(TemporaryDisk::path(path));
    for (const unsigned workers : {1U, 2U, 4U, 16U}) {
        const std::size_t before = openDescriptors();
        const std::vector<std::int64_t> sizes = measure(disk.disk(), paths, workers);
        EXPECT_EQ(openDescriptors(), before);
        ASSERT_EQ(sizes.size(), cases.size());
        for (std::size_t i = 0; i < cases.size(); ++i)
            EXPECT_EQ(sizes[i], cases[i].second) << cases[i].first << " with " << workers << " workers";
    }
}

TEST(Measure, SumsStopAtTheLargestValue) {
    // Memory file systems take sparse files of nearly 2^63 bytes; most disks' do not.
    const char* const before = getenv("TMPDIR");
    const std::string temporary = before ? before : "";
    setenv("TMPDIR", "/dev/shm", 1);
    {
        const TemporaryDisk disk;
        for (const char* path : {"~/two/a", "~/two/b", "~/three/a", "~/three/sub/b", "~/three/sub/c"}) {
            disk.make(path);
            if (truncate(disk.host(path).c_str(), (std::int64_t{1} << 62) - 1) != 0)
                GTEST_SKIP() << "no file system for huge sparse files here";
        }
        EXPECT_EQ(sizeOf(disk.disk(), "~/two"), largest - 1);
        EXPECT_EQ(sizeOf(disk.disk(), "~/three"), largest);
    }
    before ? setenv("TMPDIR", temporary.c_str(), 1) : unsetenv("TMPDIR");
}

TEST(Measure, PassesOverWhatMayNotBeRead) {
    const OrdinaryUser user;
    const TemporaryDisk disk;
    disk.make({"~/tree/open/a 1", "~/tree/unreadable/b 10", "~/tree/unsearchable/c 100",
               "~/tree/locked/sub/d 1000"});
    disk.setMode("~/tree/unreadable", 0300);
    disk.setMode("~/tree/unsearchable", 0600);
    disk.setMode("~/tree/locked", 0);
    EXPECT_EQ(sizeOf(disk.disk(), "~/tree"), 1);
    EXPECT_EQ(sizeOf(disk.disk(), "~/tree/unreadable/b"), 10);
    EXPECT_EQ(sizeOf(disk.disk(), "~/tree/locked"), 0);
}

TEST(Measure, ReachesEveryLevelWithFewDescriptors) {
    const TemporaryDisk disk;
    const std::int64_t chain = makeChain((disk.make("~/chain/"), disk.host("~/chain")), 5000, 0);
    const std::int64_t bushy = makeChain((disk.make("~/bushy/"), disk.host("~/bushy")), 5000, 2);
    ASSERT_EQ(chain, 5000);
    ASSERT_EQ(bushy, 15000);
    const std::size_t before = openDescriptors();
    for (const unsigned workers : {1U, 4U, 16U}) {
        const DescriptorLimit limit(before + 128);
        EXPECT_EQ(sizeOf(disk.disk(), "~/chain", workers), chain) << workers << " workers";
        EXPECT_EQ(sizeOf(disk.disk(), "~/bushy", workers), bushy) << workers << " workers";
    }
    EXPECT_EQ(openDescriptors(), before);
}

TEST(Measure, TakesManyRootsAtOnce) {
    const TemporaryDisk disk;
    std::vector<std::string> paths;
    for (int i = 0; i < 2000; ++i) {
        const std::string folder = "~/caches/" + std::to_string(i);
        disk.make({folder + "/a/b/file 1", folder + "/c/file 2"});
        paths.push_back(TemporaryDisk::path(folder));
        disk.make("~/downloads/" + std::to_string(i) + " 5");
        paths.push_back(TemporaryDisk::path("~/downloads/" + std::to_string(i)));
    }
    const DescriptorLimit limit(openDescriptors() + 128);
    for (const unsigned workers : {1U, 4U}) {
        const std::vector<std::int64_t> sizes = measure(disk.disk(), paths, workers);
        for (std::size_t i = 0; i < paths.size(); ++i)
            ASSERT_EQ(sizes[i], i % 2 == 0 ? 3 : 5) << paths[i];
    }
}

TEST(Walk, MeetsEveryEntryOnceWhateverTheNumberOfWorkers) {
    const TemporaryDisk disk;
    disk.make({"~/a/closed/inside", "~/a/.hidden/inside 3", "~/a/link -> closed", "~/b/\xff/file 5"});
    std::multiset<std::string> expected;
    for (const char* path :
         {"~/a/closed", "~/a/.hidden", "~/a/.hidden/inside", "~/a/link", "~/b/\xff", "~/b/\xff/file"})
        expected.insert(TemporaryDisk::path(path));
    std::int64_t bytes = 3 + 5 + 6;
    for (int i = 0; i < 60; ++i) {
        for (int j = 0; j < 40; ++j) {
            const std::string folder = "~/a/wide/" + std::to_string(i) + "/" + std::to_string(j);
            disk.make(folder + "/file 2");
            expected.insert(TemporaryDisk::path(folder));
            expected.insert(TemporaryDisk::path(folder + "/file"));
            bytes += 2;
        }
        expected.insert(TemporaryDisk::path("~/a/wide/" + std::to_string(i)));
    }
    expected.insert(TemporaryDisk::path("~/a/wide"));
    // Paths on the way are put together from anchors here.
    makeChain((disk.make("~/b/deep/"), disk.host("~/b/deep")), 200, 1);
    expected.insert(TemporaryDisk::path("~/b/deep"));
    std::string folder = TemporaryDisk::path("~/b/deep");
    for (int level = 0; level < 200; ++level) {
        for (const char* name : {"/file", "/side0", "/side0/file", "/seventeen-letters"})
            expected.insert(folder + name);
        folder += "/seventeen-letters";
        bytes += 2;
    }

    const std::vector<std::string> roots{TemporaryDisk::path("~/a/"), TemporaryDisk::path("~/missing"),
                                         TemporaryDisk::path("~/b")};
    for (const unsigned workers : {1U, 2U, 3U, 4U, 16U}) {
        const Collector found = walk(disk.disk(), roots, Hidden::include, Collector{}, workers);
        EXPECT_EQ(found.paths, expected) << workers << " workers";
        EXPECT_EQ(found.bytes, bytes) << workers << " workers";
    }
}

TEST(Walk, ReadsAFolderOfManyEntries) {
    const TemporaryDisk disk;
    disk.make("~/wide/");
    const Descriptor folder(open(disk.host("~/wide").c_str(), O_RDONLY | O_DIRECTORY | O_CLOEXEC));
    constexpr int entries = 100'000;
    for (int i = 0; i < entries; ++i) {
        const std::string name = std::to_string(i);
        if (i % 2 == 0)
            ASSERT_EQ(mkdirat(folder.number(), name.c_str(), 0755), 0);
        else
            ASSERT_TRUE(
                Descriptor(openat(folder.number(), name.c_str(), O_WRONLY | O_CREAT | O_CLOEXEC, 0644)));
    }
    struct Counter {
        int folders = 0;
        int files = 0;
        Descend visit(const WalkEntry& entry) {
            (entry.type == EntryType::folder ? folders : files) += 1;
            return Descend::yes;
        }
        void merge(const Counter& other) {
            folders += other.folders;
            files += other.files;
        }
    };
    const std::vector<std::string> roots{TemporaryDisk::path("~/wide")};
    for (const unsigned workers : {1U, 4U}) {
        const Counter counter = walk(disk.disk(), roots, Hidden::skip, Counter{}, workers);
        EXPECT_EQ(counter.folders, entries / 2);
        EXPECT_EQ(counter.files, entries / 2);
    }
}

TEST(Walk, IsNotLedOutByAFolderSwappedForALink) {
    const TemporaryDisk disk;
    // The canary has the shape of the tree, so that a path resolved through the link would find its files.
    for (const char* tree : {"~/tree/middle", "~/canary"}) {
        for (int i = 0; i < 30; ++i)
            disk.make(std::string(tree) + "/sub/" + std::to_string(i) + "/file 1");
    }
    disk.make("~/tree-link -> canary");
    for (int i = 0; i < 30; ++i)
        disk.make("~/canary/sub/" + std::to_string(i) + "/canary 1");

    std::atomic<bool> done = false;
    std::thread swapper([&] {
        const std::string middle = disk.host("~/tree/middle");
        const std::string link = disk.host("~/tree-link");
        while (!done)
            renameat2(AT_FDCWD, middle.c_str(), AT_FDCWD, link.c_str(), RENAME_EXCHANGE);
    });
    const std::vector<std::string> roots{TemporaryDisk::path("~/tree")};
    bool sawTree = false;
    for (int round = 0; round < 2000; ++round) {
        const Collector found = walk(disk.disk(), roots, Hidden::include, Collector{}, 2);
        for (const std::string& path : found.paths) {
            sawTree = sawTree || path.ends_with("/file");
            ASSERT_FALSE(path.ends_with("/canary")) << path;
        }
    }
    done = true;
    swapper.join();
    EXPECT_TRUE(sawTree);
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
            for (int i = 0; i < 20; ++i) {
                const std::string folder = disk.host("~/tree/" + std::to_string(i));
                unlink((folder + "/sub/file").c_str());
                rmdir((folder + "/sub").c_str());
                rmdir(folder.c_str());
            }
            unlink(disk.host("~/tree/moved/file").c_str());
            rmdir(disk.host("~/tree/moved").c_str());
        }
    });
    for (int round = 0; round < 500; ++round) {
        const std::int64_t bytes = sizeOf(disk.disk(), "~/tree");
        EXPECT_GE(bytes, 1);
        EXPECT_EQ(bytes % 1000, 1);
    }
    done = true;
    changer.join();
}

TEST(OpenFolderBelow, PassesThroughNoLink) {
    const TemporaryDisk disk;
    disk.make({"~/a/b/c/file", "~/a/link -> b", "~/a/b/up -> ..", "~/a/b/last -> c"});
    const Descriptor folder(open(disk.host("~/a").c_str(), O_RDONLY | O_DIRECTORY | O_CLOEXEC));
    const std::vector<std::pair<const char*, bool>> cases{
        {"b", true},       {"b/c", true},       {"link", false},     {"link/c", false},    {"b/up", false},
        {"b/last", false}, {"b/up/b/c", false}, {"b/c/file", false}, {"missing/c", false},
    };
    for (const auto& [path, opens] : cases)
        EXPECT_EQ(static_cast<bool>(system::openFolderBelow(folder.number(), path)), opens) << path;
}

} // namespace
