#include "app/history/history_store.h"
#include "bench/times.h"
#include "tests/support/temporary_disk.h"

#include <cstdio>

// Measures the recording of many deletions in the history, with the writing of its file.

int main() {
    constexpr int rounds = 9;
    const std::vector<HistoryStore::Deletion> deletions(12'000, {"com.example.application.cache", 123'456});
    std::vector<double> times;
    for (int round = 0; round < rounds; ++round) {
        const TemporaryDisk disk;
        HistoryStore store(disk.disk());
        const auto start = std::chrono::steady_clock::now();
        store.record(deletions);
        times.push_back(millisecondsSince(start));
        if (!disk.exists(store.path()))
            return 1;
    }
    std::printf("12,000 deletions: median %.1f ms, most %.1f ms\n", median(times), quantile(times, 1));
}
