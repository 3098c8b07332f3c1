#pragma once

#include "tools/sample_disk/disk_writer.h"

#include <chrono>
#include <cstddef>
#include <cstdint>
#include <functional>
#include <string>

/// A believable disk of a Mac, made of real files. `./run` shows it, and benchmarks read it. Its files are
/// sparse: they are tens of gigabytes long and use a few megabytes of the host.
namespace sample_disk {

struct Options {
    std::uint64_t seed = 1;
    /// Ages count back from here. A whole day, so that two disks made on one day have the same dates.
    std::chrono::sys_days today = std::chrono::floor<std::chrono::days>(std::chrono::system_clock::now());
    std::function<void(DiskWriter&)> addMore = {}; ///< adds entries at the end; may be empty
};

struct Outcome {
    enum class Kind {
        made,
        refused, ///< the folder has content that isn't a sample: nothing was changed
        failed,  ///< the file system of the host refused; the folder is an incomplete sample
    };
    Kind kind = Kind::made;
    std::size_t entryCount = 0; ///< below the folder, when made
    std::string message;        ///< one English sentence, when not
};

/// Makes the disk in `hostFolder`, which must be missing, empty or an earlier sample. Everything in an
/// earlier sample is removed first, locked and unreadable entries included. The same options give the same
/// names, sizes, content and dates.
[[nodiscard]] Outcome build(const std::string& hostFolder, const Options& options = {});

/// Prints the outcome of build() and returns the exit status of the program.
int report(const Outcome& outcome);

} // namespace sample_disk
