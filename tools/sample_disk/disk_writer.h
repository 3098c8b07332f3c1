#pragma once

#include <chrono>
#include <cstddef>
#include <cstdint>
#include <ctime>
#include <string>
#include <string_view>
#include <unordered_map>

namespace sample_disk {

inline constexpr std::string_view homePath = "/Users/camille";
inline constexpr std::string_view userCachePath = "/private/var/folders/4k/x7q2m0ld5wz8v3c1_r6tjb9h0000gn/C";

/// Writes entries below a folder of the host that stands for the "/" of a disk.
///
/// Paths are relative to that folder; "~/" at their beginning stands for the user's home. Missing folders on
/// the way are made. Ages are in days before `today`. All functions throw std::system_error.
class DiskWriter {
public:
    DiskWriter(std::string hostFolder, std::chrono::sys_days today);

    /// Makes a folder unless it exists; then its age stays as it is.
    void folder(std::string_view path, int ageDays);

    /// Makes a sparse file of `bytes` bytes that begins with `content`.
    void file(std::string_view path, std::int64_t bytes, int ageDays, std::string_view content = {});
    void text(std::string_view path, std::string_view content, int ageDays);
    void symbolicLink(std::string_view path, const std::string& target, int ageDays);

    void setMode(std::string_view path, unsigned mode);
    void lock(std::string_view path); ///< sets the immutable flag, where the user and the file system can

    /// Returns the path on the host of an entry, its parent folders made. For entries that the caller writes.
    std::string hostPath(std::string_view path, int ageDays);
    void setAge(std::string_view path, int ageDays); ///< of an entry that the caller has written

    /// Sets the dates of the folders, which change whenever an entry is made in them. Call it once, last.
    void finish();

    std::size_t entryCount() const { return m_entryCount; }
    std::time_t today() const { return m_today; }

private:
    std::string onDisk(std::string_view path) const;
    void makeFolder(const std::string& path, int ageDays);
    void setDate(const std::string& hostPath, int ageDays) const;

    std::string m_root;
    std::time_t m_today;
    std::unordered_map<std::string, int> m_folderAges; ///< by path on the disk, without "~"
    std::size_t m_entryCount = 0;
};

} // namespace sample_disk
