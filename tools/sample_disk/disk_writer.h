#pragma once

#include "platform/files/descriptor.h"

#include <chrono>
#include <cstddef>
#include <cstdint>
#include <ctime>
#include <string>
#include <string_view>

namespace SampleDisk {

class DiskWriter;

/// An open folder of the sample, in which entries are made. Making something in a folder changes its date on
/// the file system; a Folder puts its own back when it goes, so a folder keeps its age whatever is added to
/// it later, as long as it goes after the folders made through it.
///
/// Paths are relative, folders on the way are made where they are missing. Ages are in days before the
/// sample's today. All operations throw std::system_error.
class Folder {
public:
    Folder(Folder&& other) noexcept;
    Folder& operator=(Folder&&) = delete;
    ~Folder();

    /// The folder at `path`, made unless it is there; `ageDays` is for those that are made.
    Folder folder(std::string_view path, int ageDays);

    void file(std::string_view path, std::int64_t bytes, int ageDays); ///< sparse
    void text(std::string_view path, std::string_view content, int ageDays);

    /// A file that begins with `content`, and is a hole from there to its length.
    void file(std::string_view path, std::string_view content, std::int64_t bytes, int ageDays);

    void link(std::string_view path, const std::string& target, int ageDays);

    /// A file whose name not every file system takes; false, and nothing made, where this one refuses it.
    bool oddFile(std::string_view name, std::int64_t bytes, int ageDays);

    /// Sets the immutable flag of the file at `path`, where user and file system can; comes last.
    void lock(std::string_view path);
    void setMode(unsigned mode);

    int ageDays() const;
    std::time_t today() const; ///< the sample's

private:
    friend class DiskWriter;
    Folder(DiskWriter& writer, platform::Descriptor folder, std::time_t modified);

    Folder child(const std::string& name, int ageDays);
    Folder parentOf(std::string_view& path, int ageDays);
    void makeFile(const std::string& name, std::int64_t bytes, int ageDays);

    DiskWriter* m_writer;
    platform::Descriptor m_folder;
    std::time_t m_modified;
};

/// What the folders of one sample share: its root, its today, and how many entries it has so far.
class DiskWriter {
public:
    DiskWriter(const std::string& hostFolder, std::chrono::sys_days today);

    Folder root();
    std::size_t entryCount() const { return m_entryCount; }

private:
    friend class Folder;
    std::time_t date(int ageDays) const { return m_today - std::time_t{ageDays} * secondsPerDay; }

    static constexpr std::time_t secondsPerDay = 86'400;

    platform::Descriptor m_root;
    std::time_t m_today;
    std::size_t m_entryCount = 1; // the marker that was there before
};

} // namespace SampleDisk
