#include "tests/support/temporary_disk.h"

#include "platform/system/system.h"
#include "tests/support/process.h"

#include <cerrno>
#include <cmath>
#include <cstdio>
#include <cstdlib>
#include <filesystem>
#include <fstream>
#include <iterator>

#include <fcntl.h>
#include <sys/stat.h>
#include <unistd.h>

namespace fs = std::filesystem;

namespace {

void check(bool succeeded, const std::string& path) {
    if (succeeded)
        return;
    std::perror(path.c_str());
    std::abort();
}

} // namespace

TemporaryDisk::TemporaryDisk(Where where) {
    const bool isInMemory = where == Where::inMemory && access("/dev/shm", W_OK | X_OK) == 0;
    // A Mac's temporary folder is below a symbolic link, /var.
    m_root = fs::canonical(isInMemory ? "/dev/shm" : fs::temp_directory_path()) / "lumvale-test-XXXXXX";
    check(mkdtemp(m_root.data()) != nullptr, m_root);
    fs::create_directories(host("~"));
    for (const char* folder : {"/", "/Users", "/Users/me"})
        setMode(folder, 0777);
    m_disk = *platform::Disk::open(m_root, at("~"));
}

TemporaryDisk::~TemporaryDisk() {
    // Uses the shell's tools, so that a fault of the product cannot hide in the removal.
    const std::string root = "'" + m_root + "'";
    if (!runInShell("chattr -R -f -i " + root + " || chflags -R nouchg " + root + "; chmod -R u+rwx " + root
                    + "; rm -rf " + root))
        std::fprintf(stderr, "could not remove %s\n", m_root.c_str());
}

void TemporaryDisk::make(std::initializer_list<std::string_view> lines) const {
    for (const std::string_view line : lines)
        make(line);
}

void TemporaryDisk::make(std::string_view line) const {
    constexpr std::string_view arrow = " -> ";
    const std::size_t target = line.find(arrow);
    const std::size_t space = line.rfind(' ');
    const bool isPipe = line.ends_with(" |");
    const bool hasSize = target == line.npos && space < line.size() - 1
                         && line.find_first_not_of("0123456789", space + 1) == line.npos;
    const std::string made = host(line.substr(0, isPipe || hasSize ? space : target));
    fs::create_directories(fs::path(made).parent_path());
    if (isPipe) {
        check(mkfifo(made.c_str(), 0666) == 0, made);
    } else if (target != line.npos) {
        fs::create_symlink(line.substr(target + arrow.size()), made);
    } else if (!line.ends_with('/')) {
        check(static_cast<bool>(std::ofstream(made)), made);
        fs::resize_file(made, hasSize ? std::stoull(std::string(line.substr(space + 1))) : 0);
    }
}

void TemporaryDisk::write(std::string_view path, std::string_view content) const {
    const std::string file = host(path);
    fs::create_directories(fs::path(file).parent_path());
    check(static_cast<bool>(std::ofstream(file, std::ios::binary) << content << std::flush), file);
}

std::string TemporaryDisk::read(std::string_view path) const {
    std::ifstream stream(host(path), std::ios::binary);
    return {std::istreambuf_iterator<char>(stream), {}};
}

void TemporaryDisk::setModified(std::string_view path, platform::Date date) const {
    const double seconds = platform::secondsSince1970(date);
    const double whole = std::floor(seconds);
    const timespec times[2]{{0, UTIME_OMIT},
                            {static_cast<time_t>(whole), static_cast<long>((seconds - whole) * 1e9)}};
    check(utimensat(AT_FDCWD, host(path).c_str(), times, AT_SYMLINK_NOFOLLOW) == 0, host(path));
}

void TemporaryDisk::setMode(std::string_view path, unsigned mode) const {
    check(chmod(host(path).c_str(), static_cast<mode_t>(mode)) == 0, host(path));
}

bool TemporaryDisk::lock(std::string_view path) const {
    const std::string file = "'" + host(path) + "'";
    return runInShell("chattr +i " + file + " || chflags uchg " + file);
}

bool TemporaryDisk::exchange(std::string_view path, std::string_view other) const {
    if (!exists(path) || !exists(other))
        return false;
    const std::string aside = host("/aside");
    fs::rename(host(path), aside);
    fs::rename(host(other), host(path));
    fs::rename(aside, host(other));
    return true;
}

bool TemporaryDisk::exists(std::string_view path) const {
    return faccessat(AT_FDCWD, host(path).c_str(), F_OK, AT_SYMLINK_NOFOLLOW) == 0;
}

std::map<std::string, std::string> TemporaryDisk::entries() const {
    std::map<std::string, std::string> found;
    for (const fs::directory_entry& entry : fs::recursive_directory_iterator(m_root)) {
        struct stat status {};
        if (lstat(entry.path().c_str(), &status) != 0) { // such as SQLite's journal, removed since
            check(errno == ENOENT, entry.path());
            continue;
        }
        std::string& facts = found[entry.path().string().substr(m_root.size())];
        facts = std::to_string(status.st_ino) + ' ' + std::to_string(status.st_mode);
        const timespec modified = platform::system::modificationTime(status);
        if (!S_ISDIR(status.st_mode))
            facts += ' ' + std::to_string(status.st_size) + ' ' + std::to_string(modified.tv_sec) + '.'
                     + std::to_string(modified.tv_nsec);
    }
    return found;
}

std::string at(std::string_view path) {
    return path.starts_with('~') ? "/Users/me" + std::string(path.substr(1)) : std::string(path);
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
        const bool moves = where == from || where.starts_with(from + "/");
        after[moves ? at("~/.Trash/").append(name) + where.substr(from.size()) : where] = facts;
    }
    entries = after;
}

void OrdinaryUser::accessFilesAs(unsigned user) {
    if (getuid() == 0)
        check(seteuid(0) == 0 && setegid(user) == 0 && seteuid(user) == 0, "the effective user");
}
