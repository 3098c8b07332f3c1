#pragma once

#include "platform/base/date.h"
#include "platform/files/disk.h"

#include <initializer_list>
#include <map>
#include <optional>
#include <set>
#include <string>
#include <string_view>
#include <vector>

/// Return paths on the disk, with "~" replaced by the home.
std::string at(std::string_view path);
std::vector<std::string> at(std::initializer_list<std::string_view> paths);
std::set<std::string> setAt(std::initializer_list<std::string_view> paths);

/// A Mac's disk made of real files in a temporary folder, with the home /Users/me. The destructor removes it,
/// whatever modes and flags its entries have. Paths may begin with "~", which stands for the home. A failure
/// to make or change an entry ends the program.
class TemporaryDisk {
public:
    /// The location of the files. `inMemory` uses /dev/shm where it exists: large trees are made quickly
    /// there, and files may be nearly 2^63 bytes long.
    enum class Where { anywhere, inMemory };

    explicit TemporaryDisk(Where where = Where::anywhere);
    ~TemporaryDisk();
    TemporaryDisk(const TemporaryDisk&) = delete;
    TemporaryDisk& operator=(const TemporaryDisk&) = delete;

    const platform::Disk& disk() const { return *m_disk; }

    /// Makes an entry per line, and the folders above it: "~/file" (empty), "~/file 100" (100 bytes, sparse),
    /// "~/folder/", "~/link -> target" (the target is not translated), "~/pipe |".
    void make(std::initializer_list<std::string_view> lines) const;
    void make(std::string_view line) const;

    void write(std::string_view path, std::string_view content) const;
    std::string read(std::string_view path) const;
    void setModified(std::string_view path, platform::Date date) const;
    void setMode(std::string_view path, unsigned mode) const;

    /// Sets the immutable flag. Returns false where the file system or the user cannot.
    [[nodiscard]] bool lock(std::string_view path) const;

    /// Exchanges two entries. Returns false when one of them is missing.
    bool exchange(std::string_view path, std::string_view other) const;

    /// Returns whether the entry exists. A symbolic link is not followed.
    bool exists(std::string_view path) const;

    /// Returns every entry by its path on the disk, with the facts that a move preserves: inode, mode, and
    /// for other entries than folders size and modification date.
    std::map<std::string, std::string> entries() const;

    /// Returns the path of the real file on this machine.
    std::string host(std::string_view path) const { return m_root + at(path); }

private:
    std::string m_root;
    std::optional<platform::Disk> m_disk;
};

/// Makes the process access files as an ordinary user until destroyed, so that permissions count. Has an
/// effect for root only.
class OrdinaryUser {
public:
    OrdinaryUser() { accessFilesAs(65534); } // without privileges
    ~OrdinaryUser() { accessFilesAs(0); }
    OrdinaryUser(const OrdinaryUser&) = delete;
    OrdinaryUser& operator=(const OrdinaryUser&) = delete;

private:
    static void accessFilesAs(unsigned user);
};

/// Changes the result of entries() as moving the entry at `path` to the Trash under `name` does.
void moveToTrash(std::map<std::string, std::string>& entries, std::string_view path, std::string_view name);

/// Sets the immutable flag of entries of the disk, or skips the test.
#define LOCK_OR_SKIP(disk, ...)                                                                              \
    for (const char* const entry : {__VA_ARGS__})                                                            \
        if (!(disk).lock(entry))                                                                             \
    GTEST_SKIP() << "no immutable flag here"
