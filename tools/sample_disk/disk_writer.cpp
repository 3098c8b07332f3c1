#include "tools/sample_disk/disk_writer.h"

#include <cerrno>
#include <system_error>
#include <utility>

#include <fcntl.h>
#include <linux/fs.h>
#include <sys/ioctl.h>
#include <sys/stat.h>
#include <unistd.h>

namespace SampleDisk {

namespace {

using platform::Descriptor;

void check(bool succeeded, std::string_view what) {
    if (!succeeded)
        throw std::system_error(errno, std::generic_category(), std::string(what));
}

Descriptor openFolder(int parent, const std::string& name, int follow) {
    Descriptor folder(openat(parent, name.c_str(), O_RDONLY | O_DIRECTORY | O_CLOEXEC | follow));
    check(static_cast<bool>(folder), name);
    return folder;
}

Descriptor duplicate(const Descriptor& descriptor) {
    Descriptor copy(fcntl(descriptor.number(), F_DUPFD_CLOEXEC, 0));
    check(static_cast<bool>(copy), "fcntl");
    return copy;
}

std::time_t modified(const Descriptor& folder) {
    struct stat status {};
    check(fstat(folder.number(), &status) == 0, "fstat");
    return status.st_mtim.tv_sec;
}

} // namespace

Folder::Folder(DiskWriter& writer, Descriptor folder, std::time_t modified)
    : m_writer(&writer), m_folder(std::move(folder)), m_modified(modified) {}

Folder::Folder(Folder&& other) noexcept = default;

Folder::~Folder() {
    if (!m_folder)
        return;
    const timespec times[2] = {{m_modified, 0}, {m_modified, 0}};
    futimens(m_folder.number(), times);
}

Folder Folder::folder(std::string_view path, int ageDays) {
    if (path.find('/') == std::string_view::npos)
        return child(std::string(path), ageDays);
    Folder parent = parentOf(path, ageDays);
    return parent.child(std::string(path), ageDays);
}

void Folder::file(std::string_view path, std::int64_t bytes, int ageDays) {
    if (path.find('/') == std::string_view::npos)
        return makeFile(std::string(path), bytes, ageDays);
    parentOf(path, ageDays).makeFile(std::string(path), bytes, ageDays);
}

void Folder::text(std::string_view path, std::string_view content, int ageDays) {
    file(path, content, static_cast<std::int64_t>(content.size()), ageDays);
}

void Folder::file(std::string_view path, std::string_view content, std::int64_t bytes, int ageDays) {
    Folder parent = parentOf(path, ageDays);
    const std::string name(path);
    const Descriptor made(
        openat(parent.m_folder.number(), name.c_str(), O_WRONLY | O_CREAT | O_EXCL | O_CLOEXEC, 0644));
    const auto length = static_cast<ssize_t>(content.size());
    check(made && write(made.number(), content.data(), content.size()) == length, name);
    check(bytes == length || ftruncate(made.number(), bytes) == 0, name);
    const std::time_t date = m_writer->date(ageDays);
    const timespec times[2] = {{date, 0}, {date, 0}};
    check(futimens(made.number(), times) == 0, name);
    ++m_writer->m_entryCount;
}

void Folder::link(std::string_view path, const std::string& target, int ageDays) {
    Folder parent = parentOf(path, ageDays);
    const std::string name(path);
    const int folder = parent.m_folder.number();
    check(symlinkat(target.c_str(), folder, name.c_str()) == 0, name);
    const std::time_t date = m_writer->date(ageDays);
    const timespec times[2] = {{date, 0}, {date, 0}};
    check(utimensat(folder, name.c_str(), times, AT_SYMLINK_NOFOLLOW) == 0, name);
    ++m_writer->m_entryCount;
}

bool Folder::oddFile(std::string_view name, std::int64_t bytes, int ageDays) {
    try {
        makeFile(std::string(name), bytes, ageDays);
        return true;
    } catch (const std::system_error& error) {
        const int cause = error.code().value();
        // EEXIST: a file system that takes two spellings of a name for one.
        if (cause == EILSEQ || cause == EINVAL || cause == ENAMETOOLONG || cause == EEXIST)
            return false;
        throw;
    }
}

void Folder::lock(std::string_view path) {
    const Descriptor file(
        openat(m_folder.number(), std::string(path).c_str(), O_RDONLY | O_NOFOLLOW | O_CLOEXEC));
    int flags = 0;
    if (!file || ioctl(file.number(), FS_IOC_GETFLAGS, &flags) != 0)
        return;
    flags |= FS_IMMUTABLE_FL;
    ioctl(file.number(), FS_IOC_SETFLAGS, &flags);
}

void Folder::setMode(unsigned mode) {
    check(fchmod(m_folder.number(), mode) == 0, "fchmod");
}

int Folder::ageDays() const {
    return static_cast<int>((m_writer->m_today - m_modified) / DiskWriter::secondsPerDay);
}

std::time_t Folder::today() const {
    return m_writer->m_today;
}

Folder Folder::child(const std::string& name, int ageDays) {
    const bool made = mkdirat(m_folder.number(), name.c_str(), 0755) == 0;
    check(made || errno == EEXIST, name);
    Descriptor folder = openFolder(m_folder.number(), name, O_NOFOLLOW); // never out by a link of ours
    if (made)
        ++m_writer->m_entryCount;
    const std::time_t date = made ? m_writer->date(ageDays) : modified(folder);
    return {*m_writer, std::move(folder), date};
}

/// The folder that holds the last name of `path`, which is cut down to that name.
Folder Folder::parentOf(std::string_view& path, int ageDays) {
    Folder parent(*m_writer, duplicate(m_folder), m_modified);
    for (std::size_t slash; (slash = path.find('/')) != std::string_view::npos;
         path.remove_prefix(slash + 1)) {
        Folder next = parent.child(std::string(path.substr(0, slash)), ageDays);
        std::swap(parent.m_folder, next.m_folder);
        std::swap(parent.m_modified, next.m_modified);
    }
    return parent;
}

void Folder::makeFile(const std::string& name, std::int64_t bytes, int ageDays) {
    const int folder = m_folder.number();
    const std::time_t date = m_writer->date(ageDays);
    const timespec times[2] = {{date, 0}, {date, 0}};
    if (bytes == 0) { // two calls in place of four: most of a million entries are such files
        check(mknodat(folder, name.c_str(), S_IFREG | 0644, 0) == 0, name);
        check(utimensat(folder, name.c_str(), times, AT_SYMLINK_NOFOLLOW) == 0, name);
    } else {
        const Descriptor made(openat(folder, name.c_str(), O_WRONLY | O_CREAT | O_EXCL | O_CLOEXEC, 0644));
        check(made && ftruncate(made.number(), bytes) == 0, name);
        check(futimens(made.number(), times) == 0, name);
    }
    ++m_writer->m_entryCount;
}

DiskWriter::DiskWriter(const std::string& hostFolder, std::chrono::sys_days today)
    : m_root(openFolder(AT_FDCWD, hostFolder, 0)), m_today(std::chrono::system_clock::to_time_t(today)) {}

Folder DiskWriter::root() {
    return {*this, duplicate(m_root), m_today};
}

} // namespace SampleDisk
