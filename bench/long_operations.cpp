#include "bench/times.h"
#include "core/removal/put_back.h"
#include "core/removal/trash.h"
#include "core/scan/scanner.h"
#include "platform/files/descriptor.h"
#include "platform/removal/remove.h"
#include "tests/support/temporary_disk.h"

#include <atomic>
#include <charconv>
#include <cmath>
#include <cstdio>
#include <cstring>
#include <functional>
#include <string>
#include <string_view>
#include <thread>

#include <fcntl.h>
#include <sys/stat.h>
#include <unistd.h>

// Measures on a temporary disk with many small files what counting costs a removal, how soon removals and
// scans end after they are stopped, and how long it takes to put entries back.

namespace {

using std::chrono::milliseconds;
using std::chrono::steady_clock;

constexpr int rounds = 3; ///< of removals
constexpr int stops = 11; ///< of each operation

/// Folders for the files: one for all of them, or one for each.
enum class Folders { one, each };

const char* name(Folders folders) {
    return folders == Folders::one ? "in one folder" : "in a folder each";
}

/// Makes files of one byte below a folder.
void makeFiles(const TemporaryDisk& disk, const std::string& path, int files, Folders folders) {
    disk.make(path + "/");
    const platform::Descriptor all(open(disk.host(path).c_str(), O_DIRECTORY | O_RDONLY | O_CLOEXEC));
    for (int i = 0; i < files; ++i) {
        std::string file = std::to_string(i);
        if (folders == Folders::each) {
            mkdirat(all.number(), file.c_str(), 0755);
            file += "/file";
        }
        const platform::Descriptor made(
            openat(all.number(), file.c_str(), O_WRONLY | O_CREAT | O_CLOEXEC, 0644));
        if (!made || ftruncate(made.number(), 1) != 0) {
            std::perror(file.c_str());
            std::abort();
        }
    }
}

Cost removal(const TemporaryDisk& disk, int files, Folders folders, platform::Progress* progress) {
    makeFiles(disk, "~/.Trash/item", files, folders);
    const double processor = threadMilliseconds();
    const auto start = steady_clock::now();
    if (!platform::removeForGood(disk.disk(), at("~/.Trash/item"), progress))
        std::abort();
    return {millisecondsSince(start), threadMilliseconds() - processor};
}

/// Compares removals that count with removals that don't, in turn.
void printRemovals(const TemporaryDisk& disk, int files, Folders folders) {
    std::vector<double> wall[2];
    std::vector<double> processor[2];
    for (int round = 0; round < 2 * rounds; ++round) {
        platform::Progress progress;
        const auto counts = static_cast<std::size_t>(round % 2);
        const Cost cost = removal(disk, files, folders, counts == 1 ? &progress : nullptr);
        wall[counts].push_back(cost.wall);
        processor[counts].push_back(cost.processor);
    }
    std::printf("| files %s | %.0f | %.0f | %.3f | %.0f | %.0f | %.3f |\n", name(folders), median(wall[0]),
                median(wall[1]), median(wall[1]) / median(wall[0]), median(processor[0]),
                median(processor[1]), median(processor[1]) / median(processor[0]));
    std::fflush(stdout);
}

/// An operation, and whether to stop it for the `stop`th time now that it has run for some milliseconds.
struct Stopped {
    std::string what;
    std::function<void(platform::Progress&)> work;
    std::function<bool(const platform::Progress&, int stop, double ran)> isReached;
};

void printStops(const Stopped& operation) {
    std::vector<double> latencies;
    double later = 0; // CPU time of the process after 100 ms, the most of all stops
    for (int stop = 0; stop < stops; ++stop) {
        platform::Progress progress;
        steady_clock::time_point end;
        std::atomic<bool> isDone = false;
        const auto start = steady_clock::now();
        std::thread worker([&] {
            operation.work(progress);
            end = steady_clock::now();
            isDone = true;
        });
        while (!isDone && !operation.isReached(progress, stop, millisecondsSince(start)))
            std::this_thread::sleep_for(milliseconds(1));
        const auto stopped = steady_clock::now();
        progress.stop();
        std::this_thread::sleep_until(stopped + milliseconds(100));
        const double before = processorMilliseconds();
        worker.join();
        later = std::max(later, processorMilliseconds() - before);
        latencies.push_back(std::max(0.0, std::chrono::duration<double, std::milli>(end - stopped).count()));
    }
    std::printf("| %s | %.1f | %.1f | %.1f |\n", operation.what.c_str(), median(latencies),
                quantile(latencies, 1), later);
    std::fflush(stdout);
}

/// Returns a condition that holds once a small share of the files was removed.
auto whileRemoving(int files) {
    return [files](const platform::Progress& progress, int, double) {
        return progress.totalEntries() != 0 && progress.entries() >= files / (4 * stops);
    };
}

void printRemovalStops(const TemporaryDisk& disk, int files, Folders folders) {
    const auto empty = [&](platform::Progress& progress) {
        (void)core::LumvaleScanner::emptyTrash(disk.disk(), &progress);
    };
    const auto remove = [&](platform::Progress& progress) {
        progress.beginPhase(1);
        (void)platform::removeForGood(disk.disk(), at("~/.Trash/item"), &progress);
    };
    makeFiles(disk, "~/.Trash/item", files, folders);
    printStops({std::string("emptying, files ") + name(folders), empty, whileRemoving(files)});
    printStops({std::string("its removal alone, files ") + name(folders), remove, whileRemoving(files)});
    if (folders == Folders::one) {
        makeFiles(disk, "~/.Trash", files, folders);
        printStops({"emptying, each file an entry of the Trash", empty, whileRemoving(files)});
    }
}

void printScanStops(const TemporaryDisk& disk, int files, Folders folders) {
    const auto scan = [&](platform::Progress& progress) {
        (void)core::LumvaleScanner::scan(disk.disk(), &progress);
    };
    const auto print = [&](const std::string& what) {
        const auto start = steady_clock::now();
        (void)core::LumvaleScanner::scan(disk.disk());
        const double duration = millisecondsSince(start);
        const auto isReached = [&](const platform::Progress&, int stop, double ran) {
            return ran >= duration * stop / stops;
        };
        printStops({what + " (whole: " + std::to_string(std::lround(duration)) + " ms)", scan, isReached});
    };
    makeFiles(disk, "~/Documents/item", files, folders);
    print(std::string("scan of a home, files ") + name(folders));
    if (folders == Folders::one) {
        makeFiles(disk, "~/.Trash", files, folders);
        print("the same, and each file an entry of the Trash");
    }
}

void printPutBack(const TemporaryDisk& disk, int entries) {
    makeFiles(disk, "~/Library/Caches", entries, Folders::one);
    std::vector<std::string> paths;
    for (int i = 0; i < entries; ++i)
        paths.push_back(at("~/Library/Caches/") + std::to_string(i));
    std::vector<double> wall;
    for (int round = 0; round < rounds; ++round) {
        const core::DeletionOutcome deleted = core::LumvaleScanner::deletePaths(paths, disk.disk());
        const auto start = steady_clock::now();
        if (core::LumvaleScanner::putBack(deleted.moved, disk.disk()).succeeded.size() != paths.size())
            std::abort();
        wall.push_back(millisecondsSince(start));
    }
    std::printf("| %.1f | %.1f |\n", median(wall), quantile(wall, 1));
}

} // namespace

int main(int argc, char** argv) {
    int files = 0;
    const std::string_view operation = argc == 3 ? argv[2] : "";
    if (argc == 3)
        std::from_chars(argv[1], argv[1] + std::strlen(argv[1]), files);
    if (files == 0
        || (operation != "removal" && operation != "stop-removal" && operation != "stop-scan"
            && operation != "put-back")) {
        std::fputs("usage: bench-long-operations FILES removal|stop-removal|stop-scan|put-back\n", stderr);
        return 2;
    }
    if (operation == "put-back") {
        std::puts("| ms to put back: median | most |\n|---:|---:|");
        printPutBack(TemporaryDisk(), files);
        return 0;
    }
    if (operation == "removal")
        std::puts("| removal | ms | counting | ratio | CPU ms | counting | ratio |\n"
                  "|---|---:|---:|---:|---:|---:|---:|");
    else
        std::puts("| stopped | ms to the end: median | most | CPU ms after 100 ms: most |\n"
                  "|---|---:|---:|---:|");
    for (const Folders folders : {Folders::one, Folders::each}) {
        const TemporaryDisk disk;
        if (operation == "removal")
            printRemovals(disk, files, folders);
        else if (operation == "stop-removal")
            printRemovalStops(disk, files, folders);
        else
            printScanStops(disk, files, folders);
    }
}
