#include <atomic>
#include <condition_variable>
#include <cstdint>
#include <cstdio>
#include <cstdlib>
#include <cstring>
#include <memory>
#include <mutex>
#include <string>
#include <thread>
#include <vector>

#include <dirent.h>
#include <fcntl.h>
#include <sys/stat.h>
#include <unistd.h>

// The lower bound for walks: only the system calls that a sum of file sizes needs. It recurses, keeps all
// parent folders open and ignores errors, so it isn't suited to real disks. With several threads, a busy
// thread hands folders to an idle one.

namespace {

class Floor {
public:
    std::int64_t sum(int root, unsigned threads) {
        m_waiting.push_back(root);
        std::vector<std::thread> others;
        for (unsigned i = 1; i < threads; ++i)
            others.emplace_back([this] { work(); });
        work();
        for (std::thread& other : others)
            other.join();
        return m_total;
    }

private:
    static constexpr std::size_t bufferSize = std::size_t{64} * 1024;

    struct Reader {
        std::unique_ptr<char[]> buffer = std::make_unique<char[]>(bufferSize);
        std::int64_t bytes = 0;
    };

    void work() {
        Reader reader;
        std::unique_lock lock(m_mutex);
        for (;;) {
            if (!m_waiting.empty()) {
                const int folder = m_waiting.back();
                m_waiting.pop_back();
                ++m_busy;
                lock.unlock();
                visit(reader, folder);
                lock.lock();
                --m_busy;
            } else if (m_busy == 0) {
                m_change.notify_all();
                break;
            } else {
                ++m_hungry;
                m_change.wait(lock);
                --m_hungry;
            }
        }
        m_total += reader.bytes;
    }

    void visit(Reader& reader, int folder) {
        std::string names;
        ssize_t length = 0;
        while ((length = getdents64(folder, reader.buffer.get(), bufferSize)) > 0) {
            for (ssize_t position = 0; position < length;) {
                const auto* entry = reinterpret_cast<const dirent64*>(reader.buffer.get() + position);
                position += entry->d_reclen;
                if (entry->d_type != DT_DIR) {
                    struct stat status {};
                    if (fstatat(folder, entry->d_name, &status, AT_SYMLINK_NOFOLLOW) == 0)
                        reader.bytes += status.st_size;
                } else if (std::strcmp(entry->d_name, ".") != 0 && std::strcmp(entry->d_name, "..") != 0) {
                    names.append(entry->d_name).push_back('\0');
                }
            }
        }
        for (const char* name = names.data(); name < names.data() + names.size();
             name += std::strlen(name) + 1) {
            const int below = openat(folder, name, O_RDONLY | O_DIRECTORY | O_NOFOLLOW | O_CLOEXEC);
            if (below < 0)
                continue;
            if (m_hungry.load(std::memory_order_relaxed) > 0)
                giveAway(below);
            else
                visit(reader, below);
        }
        close(folder);
    }

    void giveAway(int folder) {
        {
            const std::lock_guard lock(m_mutex);
            m_waiting.push_back(folder);
        }
        m_change.notify_one();
    }

    std::mutex m_mutex;
    std::condition_variable m_change;
    std::vector<int> m_waiting;
    int m_busy = 0;
    std::atomic<int> m_hungry = 0;
    std::int64_t m_total = 0;
};

} // namespace

int main(int argc, char** argv) {
    const int threads = argc == 3 ? std::atoi(argv[2]) : 0;
    const int root = argc == 3 ? open(argv[1], O_RDONLY | O_DIRECTORY | O_CLOEXEC) : -1;
    if (threads < 1 || root < 0) {
        std::fputs("usage: bench-walk-floor FOLDER THREADS\n", stderr);
        return 2;
    }
    Floor floor;
    std::printf("%lld\n", static_cast<long long>(floor.sum(root, static_cast<unsigned>(threads))));
}
