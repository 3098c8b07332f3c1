#pragma once

#include "platform/date.h"
#include "platform/disk.h"

#include <cstdint>
#include <initializer_list>
#include <optional>
#include <string>
#include <string_view>

#include <sys/resource.h>

/// A Mac's disk made of real files in a temporary folder, with the home /Users/me; gone with the object,
/// whatever flags and modes its entries have. In paths given to it "~" stands for the home.
class TemporaryDisk {
public:
    TemporaryDisk();
    ~TemporaryDisk();
    TemporaryDisk(const TemporaryDisk&) = delete;
    TemporaryDisk& operator=(const TemporaryDisk&) = delete;

    const platform::Disk& disk() const { return *m_disk; }

    /// Makes entries, and the folders above them, from one line each: "~/file" (empty), "~/file 100" (that
    /// many bytes, sparse), "~/folder/", "~/link -> target" (the target as it stands).
    void make(std::initializer_list<std::string_view> lines) const;
    void make(std::string_view line) const;

    void write(std::string_view path, std::string_view content) const;
    std::string read(std::string_view path) const; ///< of a regular file
    void setModified(std::string_view path, platform::Date date) const;
    void setMode(std::string_view path, unsigned mode) const;

    /// Sets or clears the immutable flag; false where this machine cannot.
    [[nodiscard]] bool setImmutable(std::string_view path, bool immutable) const;

    bool exists(std::string_view path) const; ///< the entry itself, a link that leads nowhere included

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

/// While it lives, the process may have this many descriptors more open than it has.
class DescriptorLimit {
public:
    explicit DescriptorLimit(std::size_t more);
    ~DescriptorLimit();
    DescriptorLimit(const DescriptorLimit&) = delete;
    DescriptorLimit& operator=(const DescriptorLimit&) = delete;

private:
    rlimit m_before{};
};

/// How many descriptors the process has open.
std::size_t openDescriptors();
