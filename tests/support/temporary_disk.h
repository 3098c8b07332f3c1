#pragma once

#include "platform/base/date.h"
#include "platform/files/disk.h"

#include <cstdint>
#include <initializer_list>
#include <map>
#include <optional>
#include <set>
#include <string>
#include <string_view>
#include <vector>

/// A Mac's disk made of real files in a temporary folder, with the home /Users/me; gone with the object,
/// whatever flags and modes its entries have. In paths given to it "~" stands for the home.
class TemporaryDisk {
public:
    /// Where its files are. In memory, where the machine has such a place, large trees are made quickly, and
    /// files may be nearly 2^63 bytes long.
    enum class Where { anywhere, inMemory };

    explicit TemporaryDisk(Where where = Where::anywhere);
    ~TemporaryDisk();
    TemporaryDisk(const TemporaryDisk&) = delete;
    TemporaryDisk& operator=(const TemporaryDisk&) = delete;

    const platform::Disk& disk() const { return *m_disk; }

    /// Makes entries, and the folders above them, from one line each: "~/file" (empty), "~/file 100" (that
    /// many bytes, sparse), "~/folder/", "~/link -> target" (the target as it stands), "~/pipe |".
    void make(std::initializer_list<std::string_view> lines) const;
    void make(std::string_view line) const;

    void write(std::string_view path, std::string_view content) const;
    std::string read(std::string_view path) const; ///< of a regular file
    void setModified(std::string_view path, platform::Date date) const;
    void setMode(std::string_view path, unsigned mode) const;

    /// Sets or clears the immutable flag; false where this machine cannot.
    [[nodiscard]] bool setImmutable(std::string_view path, bool immutable) const;

    bool exists(std::string_view path) const; ///< the entry itself, a link that leads nowhere included

    /// Every entry by its path on the disk, with what stays the same wherever it is moved: which one it is,
    /// its type and mode, its size and date unless it is a folder.
    std::map<std::string, std::string> entries() const;

    /// The path on the disk, "~" put in place, and the same on the host.
    static std::string path(std::string_view path);
    std::string host(std::string_view path) const;

private:
    std::string m_root;
    std::optional<platform::Disk> m_disk;
};

/// While it lives, this thread and those that it starts meet files as an ordinary user who owns what was made
/// meanwhile: permissions count. For root a real change of identity, for others none.
class OrdinaryUser {
public:
    OrdinaryUser();
    ~OrdinaryUser();
    OrdinaryUser(const OrdinaryUser&) = delete;
    OrdinaryUser& operator=(const OrdinaryUser&) = delete;
};

/// Paths on the disk: TemporaryDisk::path() for one, for several.
inline std::string at(std::string_view path) {
    return TemporaryDisk::path(path);
}
std::vector<std::string> at(std::initializer_list<std::string_view> paths);
std::set<std::string> setAt(std::initializer_list<std::string_view> paths);

/// Makes entries() what they are once the entry at `path` lies in the Trash under this name.
void moveToTrash(std::map<std::string, std::string>& entries, std::string_view path, std::string_view name);

/// Sets the immutable flag of entries of the disk, or skips the test.
#define LOCK_OR_SKIP(disk, ...)                                                                              \
    for (const char* const entry : {__VA_ARGS__})                                                            \
        if (!(disk).setImmutable(entry, true))                                                               \
    GTEST_SKIP() << "no immutable flag here"
