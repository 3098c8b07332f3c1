#include "platform/walk.h"

#include "platform/path.h"
#include "platform/system.h"
#include "tests/support/temporary_disk.h"

#include <algorithm>
#include <atomic>
#include <cerrno>
#include <cstddef>
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
#include <sys/wait.h>
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

/// While it lives, disks are made on a memory file system where there is one: large trees are made faster
/// there, and files may be nearly 2^63 bytes long.
class InMemory {
public:
    InMemory() {
        if (access("/dev/shm", W_OK | X_OK) == 0)
            setenv("TMPDIR", "/dev/shm", 1);
    }
    ~InMemory() { m_before.empty() ? unsetenv("TMPDIR") : setenv("TMPDIR", m_before.c_str(), 1); }
    InMemory(const InMemory&) = delete;
    InMemory& operator=(const InMemory&) = delete;

private:
    std::string m_before = getenv("TMPDIR") ? getenv("TMPDIR") : "";
};

/// A chain of folders called `name`, each with a file of one byte and, if asked, a folder beside it that
/// holds such a file too. Gives the bytes made.
enum class SideFolders { no, yes };
std::int64_t makeChain(const std::string& hostFolder, int levels, const std::string& name, SideFolders side) {
    const auto makeFile = [](int parent, const char* path) {
        const Descriptor file(openat(parent, path, O_WRONLY | O_CREAT | O_CLOEXEC, 0644));
        return ftruncate(file.number(), 1) == 0 ? 1 : 0;
    };
    std::int64_t bytes = 0;
    Descriptor folder(open(hostFolder.c_str(), O_RDONLY | O_DIRECTORY | O_CLOEXEC));
    for (int level = 0; level < levels; ++level) {
        bytes += makeFile(folder.number(), "file");
        for (const std::string& made : {std::string("side"), name, std::string("twin")}) {
            if (made != name && side == SideFolders::no)
                continue;
            mkdirat(folder.number(), made.c_str(), 0755);
            if (made != name)
                bytes += makeFile(folder.number(), (made + "/file").c_str());
        }
        folder = Descriptor(openat(folder.number(), name.c_str(), O_RDONLY | O_DIRECTORY | O_CLOEXEC));
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
    const InMemory memory;
    const TemporaryDisk disk;
    for (const char* path : {"~/two/a", "~/two/b", "~/three/a", "~/three/sub/b", "~/three/sub/c"}) {
        disk.make(path);
        if (truncate(disk.host(path).c_str(), (std::int64_t{1} << 62) - 1) != 0)
            GTEST_SKIP() << "no file system for sparse files of nearly 2^62 bytes here";
    }
    for (int i = 0; i < 1000; ++i) { // so many that several workers take part
        disk.make("~/many/" + std::to_string(i) + "/file");
        ASSERT_EQ(truncate(disk.host("~/many/" + std::to_string(i) + "/file").c_str(), largest / 2), 0);
    }
    EXPECT_EQ(sizeOf(disk.disk(), "~/two"), largest - 1);
    EXPECT_EQ(sizeOf(disk.disk(), "~/three"), largest);
    EXPECT_EQ(sizeOf(disk.disk(), "~/many"), largest);
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
    const InMemory memory;
    const TemporaryDisk disk;
    disk.make({"~/deep/", "~/long/"});
    const std::int64_t deep = makeChain(disk.host("~/deep"), 5000, "seventeen-letters", SideFolders::no);
    // More of its folders have to be reached again from far above than can be kept open.
    const std::int64_t longNames =
        makeChain(disk.host("~/long"), 1000, std::string(200, 'x'), SideFolders::yes);
    ASSERT_EQ(deep, 5000);
    ASSERT_EQ(longNames, 3000);
    const std::size_t before = openDescriptors();
    for (const unsigned workers : {1U, 4U, 16U}) {
        const DescriptorLimit limit(128);
        EXPECT_EQ(sizeOf(disk.disk(), "~/deep", workers), deep) << workers << " workers";
        EXPECT_EQ(sizeOf(disk.disk(), "~/long", workers), longNames) << workers << " workers";
    }
    EXPECT_EQ(openDescriptors(), before);
}

TEST(Measure, TakesManyRootsAtOnce) {
    const InMemory memory;
    const TemporaryDisk disk;
    std::vector<std::string> paths;
    for (int i = 0; i < 500; ++i) {
        const std::string folder = "~/caches/" + std::to_string(i);
        disk.make({folder + "/a/b/file 1", folder + "/c/file 2"});
        paths.push_back(TemporaryDisk::path(folder));
        disk.make("~/downloads/" + std::to_string(i) + " 5");
        paths.push_back(TemporaryDisk::path("~/downloads/" + std::to_string(i)));
    }
    const DescriptorLimit limit(128);
    for (const unsigned workers : {1U, 4U}) {
        const std::vector<std::int64_t> sizes = measure(disk.disk(), paths, workers);
        for (std::size_t i = 0; i < paths.size(); ++i)
            ASSERT_EQ(sizes[i], i % 2 == 0 ? 3 : 5) << paths[i];
    }
}

TEST(Walk, MeetsEveryEntryOnceWhateverTheNumberOfWorkers) {
    const InMemory memory;
    const TemporaryDisk disk;
    disk.make({"~/a/closed/inside", "~/a/.hidden/inside 3", "~/a/link -> closed", "~/b/\xff/file 5"});
    std::multiset<std::string> expected;
    for (const char* path :
         {"~/a/closed", "~/a/.hidden", "~/a/.hidden/inside", "~/a/link", "~/b/\xff", "~/b/\xff/file"})
        expected.insert(TemporaryDisk::path(path));
    std::int64_t bytes = 3 + 5 + 6;
    for (int i = 0; i < 30; ++i) {
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
    disk.make("~/b/deep/");
    makeChain(disk.host("~/b/deep"), 50, std::string(200, 'x'), SideFolders::yes);
    expected.insert(TemporaryDisk::path("~/b/deep"));
    std::string folder = TemporaryDisk::path("~/b/deep");
    for (int level = 0; level < 50; ++level) {
        for (const char* name : {"/file", "/side", "/side/file", "/twin", "/twin/file"})
            expected.insert(folder + name);
        folder += "/" + std::string(200, 'x');
        expected.insert(folder);
        bytes += 3;
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
    const InMemory memory;
    const TemporaryDisk disk;
    disk.make("~/wide/");
    const Descriptor folder(open(disk.host("~/wide").c_str(), O_RDONLY | O_DIRECTORY | O_CLOEXEC));
    constexpr int entries = 20'000;
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
        const InMemory memory;
        const TemporaryDisk disk;
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
            const std::vector<std::string> roots{TemporaryDisk::path("~/tree")};
            const Swapper found = walk(disk.disk(), roots, Hidden::include, swapper, 1);
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

/// Makes the calling process one whose kernel has no openat2.
bool forgetOpenat2() {
    sock_filter program[]{
        BPF_STMT(BPF_LD | BPF_W | BPF_ABS, offsetof(seccomp_data, nr)),
        BPF_JUMP(BPF_JMP | BPF_JEQ | BPF_K, SYS_openat2, 0, 1),
        BPF_STMT(BPF_RET | BPF_K, SECCOMP_RET_ERRNO | ENOSYS),
        BPF_STMT(BPF_RET | BPF_K, SECCOMP_RET_ALLOW),
    };
    const sock_fprog filter{std::size(program), program};
    return prctl(PR_SET_NO_NEW_PRIVS, 1, 0, 0, 0) == 0
           && prctl(PR_SET_SECCOMP, SECCOMP_MODE_FILTER, &filter) == 0;
}

TEST(OpenFolderBelow, PassesThroughNoLink) {
    const TemporaryDisk disk;
    disk.make({"~/a/b/c/file", "~/a/link -> b", "~/a/b/up -> ..", "~/a/b/last -> c"});
    const Descriptor folder(open(disk.host("~/a").c_str(), O_RDONLY | O_DIRECTORY | O_CLOEXEC));
    const std::vector<std::pair<const char*, bool>> cases{
        {"b", true},       {"b/c", true},     {"link", false},     {"link/c", false},   {"b/up", false},
        {"b/last", false}, {"b/up/b", false}, {"b/last/x", false}, {"b/c/file", false}, {"missing/c", false},
    };
    const auto wrongCases = [&] {
        return std::count_if(cases.begin(), cases.end(), [&](const auto& one) {
            return static_cast<bool>(system::openFolderBelow(folder.number(), one.first)) != one.second;
        });
    };
    EXPECT_EQ(wrongCases(), 0);

    const pid_t child = fork();
    if (child == 0)
        _exit(forgetOpenat2() ? static_cast<int>(wrongCases()) : 100);
    int status = 0;
    ASSERT_EQ(waitpid(child, &status, 0), child);
    if (WEXITSTATUS(status) == 100)
        GTEST_SKIP() << "no system call can be taken away here";
    EXPECT_EQ(status, 0);
}

} // namespace
