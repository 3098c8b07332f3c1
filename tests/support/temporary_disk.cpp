#include "tests/support/temporary_disk.h"

#include <cmath>
#include <cstdio>
#include <cstdlib>
#include <filesystem>
#include <fstream>
#include <iterator>

#include <fcntl.h>
#include <linux/fs.h>
#include <sys/fsuid.h>
#include <sys/ioctl.h>
#include <sys/stat.h>
#include <unistd.h>

#include <gtest/gtest.h>

namespace fs = std::filesystem;

namespace {

constexpr unsigned nobody = 65534;

void check(bool succeeded, const std::string& what) {
    if (succeeded)
        return;
    std::perror(what.c_str());
    std::abort();
}

bool setImmutableFlag(const std::string& hostPath, bool immutable) {
    const platform::Descriptor file(open(hostPath.c_str(), O_RDONLY | O_NONBLOCK | O_NOFOLLOW | O_CLOEXEC));
    int flags = 0;
    if (!file || ioctl(file.number(), FS_IOC_GETFLAGS, &flags) != 0)
        return false;
    flags = immutable ? flags | FS_IMMUTABLE_FL : flags & ~FS_IMMUTABLE_FL;
    return ioctl(file.number(), FS_IOC_SETFLAGS, &flags) == 0;
}

} // namespace

TemporaryDisk::TemporaryDisk(Where where) {
    const bool isInMemory = where == Where::inMemory && access("/dev/shm", W_OK | X_OK) == 0;
    std::string pattern = (isInMemory ? "/dev/shm" : fs::temp_directory_path()) / "lumvale-test-XXXXXX";
    check(mkdtemp(pattern.data()) != nullptr, pattern);
    m_root = pattern;
    fs::create_directories(host("~"));
    for (const char* folder : {"/", "/Users", "/Users/me"})
        check(chmod(host(folder).c_str(), 0777) == 0, folder);
    auto disk = platform::Disk::open(m_root, path("~"));
    check(static_cast<bool>(disk), m_root);
    m_disk = *disk;
}

TemporaryDisk::~TemporaryDisk() {
    // The shell's tool, not the product's: a fault in what is tested must not hide behind the clean-up.
    const std::string command = "chattr -R -f -i '" + m_root + "' 2>/dev/null; chmod -R u+rwx '" + m_root
                                + "' 2>/dev/null; rm -rf '" + m_root + "'";
    if (std::system(command.c_str()) != 0)
        std::fprintf(stderr, "left behind: %s\n", m_root.c_str());
}

void TemporaryDisk::make(std::initializer_list<std::string_view> lines) const {
    for (const std::string_view line : lines)
        make(line);
}

void TemporaryDisk::make(std::string_view line) const {
    /// Makes the entry at `path`, and the folders above it, in this way.
    const auto makeAt = [&](std::string_view path, auto way) {
        const std::string made = host(path);
        fs::create_directories(fs::path(made).parent_path());
        check(way(made.c_str()), made);
    };
    constexpr std::string_view arrow = " -> ";
    const std::size_t target = line.find(arrow);
    const std::size_t beforeSize = line.find_last_not_of("0123456789");
    if (line.ends_with(" |")) {
        makeAt(line.substr(0, line.size() - 2), [](const char* path) { return mkfifo(path, 0666) == 0; });
    } else if (target != std::string_view::npos) {
        const std::string to(line.substr(target + arrow.size()));
        makeAt(line.substr(0, target), [&](const char* path) { return symlink(to.c_str(), path) == 0; });
    } else if (line.ends_with('/')) {
        fs::create_directories(host(line.substr(0, line.size() - 1)));
    } else {
        const bool hasSize = beforeSize + 1 < line.size() && line[beforeSize] == ' ';
        const std::int64_t size = hasSize ? std::stoll(std::string(line.substr(beforeSize + 1))) : 0;
        makeAt(hasSize ? line.substr(0, beforeSize) : line, [&](const char* path) {
            const platform::Descriptor file(open(path, O_WRONLY | O_CREAT | O_CLOEXEC, 0644));
            return file && ftruncate(file.number(), size) == 0;
        });
    }
}

void TemporaryDisk::write(std::string_view path, std::string_view content) const {
    const std::string file = host(path);
    fs::create_directories(fs::path(file).parent_path());
    std::ofstream stream(file, std::ios::binary);
    stream << content;
    check(stream.good(), file);
}

std::string TemporaryDisk::read(std::string_view path) const {
    std::ifstream stream(host(path), std::ios::binary);
    return {std::istreambuf_iterator<char>(stream), {}};
}

void TemporaryDisk::setModified(std::string_view path, platform::Date date) const {
    const double seconds = platform::secondsSince1970(date);
    const double whole = std::floor(seconds);
    timespec times[2]{};
    times[0].tv_nsec = UTIME_OMIT;
    times[1] = {static_cast<time_t>(whole), static_cast<long>((seconds - whole) * 1e9)};
    check(utimensat(AT_FDCWD, host(path).c_str(), times, AT_SYMLINK_NOFOLLOW) == 0, host(path));
}

void TemporaryDisk::setMode(std::string_view path, unsigned mode) const {
    check(chmod(host(path).c_str(), mode) == 0, host(path));
}

bool TemporaryDisk::setImmutable(std::string_view path, bool immutable) const {
    return setImmutableFlag(host(path), immutable);
}

bool TemporaryDisk::exists(std::string_view path) const {
    struct stat status {};
    return lstat(host(path).c_str(), &status) == 0;
}

std::map<std::string, std::string> TemporaryDisk::entries() const {
    std::map<std::string, std::string> found;
    for (const fs::directory_entry& entry : fs::recursive_directory_iterator(m_root)) {
        struct stat status {};
        check(lstat(entry.path().c_str(), &status) == 0, entry.path());
        std::string facts = std::to_string(status.st_ino) + ' ' + std::to_string(status.st_mode);
        if (!S_ISDIR(status.st_mode))
            facts += ' ' + std::to_string(status.st_size) + ' ' + std::to_string(status.st_mtim.tv_sec) + '.'
                     + std::to_string(status.st_mtim.tv_nsec);
        found[entry.path().string().substr(m_root.size())] = facts;
    }
    return found;
}

std::string TemporaryDisk::path(std::string_view path) {
    return path.starts_with('~') ? "/Users/me" + std::string(path.substr(1)) : std::string(path);
}

std::string TemporaryDisk::host(std::string_view path) const {
    return m_root + TemporaryDisk::path(path);
}

std::vector<std::string> at(std::initializer_list<std::string_view> paths) {
    std::vector<std::string> result;
    for (const std::string_view path : paths)
        result.push_back(at(path));
    return result;
}

std::set<std::string> setAt(std::initializer_list<std::string_view> paths) {
    const std::vector<std::string> all = at(paths);
    return {all.begin(), all.end()};
}

void moveToTrash(std::map<std::string, std::string>& entries, std::string_view path, std::string_view name) {
    const std::string from = at(path);
    std::map<std::string, std::string> after;
    for (const auto& [where, facts] : entries) {
        const bool goes = where == from || where.starts_with(from + "/");
        after[goes ? at("~/.Trash/").append(name) + where.substr(from.size()) : where] = facts;
    }
    entries = after;
}

OrdinaryUser::OrdinaryUser() {
    if (geteuid() == 0) {
        setfsgid(nobody);
        setfsuid(nobody);
    }
}

OrdinaryUser::~OrdinaryUser() {
    if (geteuid() == 0) {
        setfsuid(0);
        setfsgid(0);
    }
}
