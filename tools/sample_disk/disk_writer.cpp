#include "tools/sample_disk/disk_writer.h"

#include "platform/files/descriptor.h"
#include "tools/sample_disk/immutable_flag.h"

#include <cerrno>
#include <system_error>
#include <utility>

#include <fcntl.h>
#include <sys/stat.h>
#include <unistd.h>

namespace sample_disk {

namespace {

void check(bool succeeded, const std::string& hostPath) {
    if (!succeeded)
        throw std::system_error(errno, std::generic_category(), hostPath);
}

} // namespace

DiskWriter::DiskWriter(std::string hostFolder, std::chrono::sys_days today)
    : m_root(std::move(hostFolder) + '/'), m_today(std::chrono::system_clock::to_time_t(today)) {}

void DiskWriter::folder(std::string_view path, int ageDays) {
    makeFolder(onDisk(path), ageDays);
}

void DiskWriter::file(std::string_view path, std::int64_t bytes, int ageDays, std::string_view content) {
    const std::string made = hostPath(path, ageDays);
    const platform::Descriptor file(open(made.c_str(), O_WRONLY | O_CREAT | O_EXCL | O_CLOEXEC, 0644));
    check(static_cast<bool>(file), made);
    const auto length = static_cast<ssize_t>(content.size());
    check(length == 0 || write(file.number(), content.data(), content.size()) == length, made);
    check(bytes == length || ftruncate(file.number(), bytes) == 0, made);
    setDate(made, ageDays);
    ++m_entryCount;
}

void DiskWriter::text(std::string_view path, std::string_view content, int ageDays) {
    file(path, static_cast<std::int64_t>(content.size()), ageDays, content);
}

void DiskWriter::symbolicLink(std::string_view path, const std::string& target, int ageDays) {
    const std::string made = hostPath(path, ageDays);
    check(symlink(target.c_str(), made.c_str()) == 0, made);
    setDate(made, ageDays);
    ++m_entryCount;
}

void DiskWriter::setMode(std::string_view path, unsigned mode) {
    const std::string changed = m_root + onDisk(path);
    check(chmod(changed.c_str(), static_cast<mode_t>(mode)) == 0, changed);
}

void DiskWriter::lock(std::string_view path) {
    const platform::Descriptor file(open((m_root + onDisk(path)).c_str(), O_RDONLY | O_CLOEXEC));
    if (file)
        setImmutable(file.number(), true);
}

std::string DiskWriter::hostPath(std::string_view path, int ageDays) {
    const std::string full = onDisk(path);
    if (const std::size_t slash = full.rfind('/'); slash != std::string::npos)
        makeFolder(full.substr(0, slash), ageDays);
    return m_root + full;
}

void DiskWriter::setAge(std::string_view path, int ageDays) {
    setDate(m_root + onDisk(path), ageDays);
    ++m_entryCount;
}

void DiskWriter::finish() {
    for (const auto& [path, ageDays] : m_folderAges)
        setDate(m_root + path, ageDays);
}

std::string DiskWriter::onDisk(std::string_view path) const {
    if (path.starts_with("~/"))
        return std::string(homePath.substr(1)).append(path.substr(1));
    return std::string(path);
}

void DiskWriter::makeFolder(const std::string& path, int ageDays) {
    if (m_folderAges.contains(path))
        return;
    if (const std::size_t slash = path.rfind('/'); slash != std::string::npos)
        makeFolder(path.substr(0, slash), ageDays);
    check(mkdir((m_root + path).c_str(), 0755) == 0, m_root + path);
    m_folderAges.emplace(path, ageDays);
    ++m_entryCount;
}

void DiskWriter::setDate(const std::string& hostPath, int ageDays) const {
    constexpr std::time_t secondsPerDay = 86'400;
    const std::time_t date = m_today - secondsPerDay * ageDays;
    const timespec times[2] = {{date, 0}, {date, 0}};
    check(utimensat(AT_FDCWD, hostPath.c_str(), times, AT_SYMLINK_NOFOLLOW) == 0, hostPath);
}

} // namespace sample_disk
