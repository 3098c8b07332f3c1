#pragma once

#include <chrono>
#include <cstddef>
#include <cstdint>
#include <string>
#include <string_view>

/// A believable Mac's disk, made of real files: what the window shows without risk, and what tests,
/// benchmarks and pictures work on. Files are sparse, so its tens of gigabytes take next to no room.
namespace SampleDisk {

/// The one user's home on the disk, and that user's folder of temporary caches.
inline constexpr std::string_view homePath = "/Users/camille";
inline constexpr std::string_view userCachePath = "/private/var/folders/4k/x7q2m0ld5wz8v3c1_r6tjb9h0000gn/C";

struct Options {
    std::size_t entries = 0; ///< how many to make in all; fewer than the demo's own makes just the demo
    std::uint64_t seed = 1;
    /// Ages count back from here. A whole day, so that two disks made on one day are the same.
    std::chrono::sys_days today = std::chrono::floor<std::chrono::days>(std::chrono::system_clock::now());
};

struct Outcome {
    enum class Kind {
        made,
        refused, ///< the folder holds something that isn't ours: nothing was touched
        failed,  ///< the host's file system refused; what was made so far stays and counts as ours
    };
    Kind kind = Kind::made;
    std::size_t entryCount = 0; ///< below the folder, when made
    std::string message;        ///< one English sentence, when not
};

/// Makes the disk in `hostFolder`, which must be missing, empty, or an earlier sample; of an earlier one
/// everything is removed first, locked and unreadable entries included. Same options, same disk: names,
/// sizes, structure and dates.
[[nodiscard]] Outcome build(const std::string& hostFolder, const Options& options = {});

} // namespace SampleDisk
