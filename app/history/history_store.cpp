#include "app/history/history_store.h"

#include "platform/files/file.h"
#include "platform/files/path.h"
#include "platform/files/places.h"
#include "platform/text/text.h"

#include <algorithm>
#include <iterator>
#include <map>
#include <string_view>
#include <tuple>

namespace {

constexpr std::chrono::seconds maxAge{30 * 86'400};

// Parsed fast enough for the interface thread.
constexpr std::size_t maxFileBytes = std::size_t{64} * 1024 * 1024;

// The file then has at most half of the greatest size, even if all names have 255 bytes.
constexpr std::size_t maxEntries = 100'000;

bool isNewer(const HistoryEntry& a, const HistoryEntry& b) {
    return a.secondsSince2001 > b.secondsSince2001;
}

} // namespace

HistoryStore::HistoryStore(platform::Disk disk, QObject* parent) : QObject(parent), m_disk(std::move(disk)) {
    const platform::Result<std::string> json = platform::readFile(m_disk, path(), maxFileBytes);
    if (!json)
        return;
    if (auto entries = decodeHistory(*json)) {
        m_entries = std::move(*entries);
        prune();
    }
}

HistoryStore& HistoryStore::shared() {
    static HistoryStore store(platform::Disk::current());
    return store;
}

std::vector<HistoryEntry> HistoryStore::record(const std::vector<Deletion>& deletions) {
    if (deletions.empty())
        return {};
    const platform::Date now = platform::now();
    std::vector<HistoryEntry> entries;
    entries.reserve(deletions.size() + m_entries.size());
    for (auto deletion = deletions.rbegin(); deletion != deletions.rend(); ++deletion)
        entries.emplace_back(now, platform::displayed(deletion->name), deletion->sizeBytes);
    std::vector<HistoryEntry> recorded(entries.rbegin(), entries.rend());
    std::move(m_entries.begin(), m_entries.end(), std::back_inserter(entries));
    m_entries = std::move(entries);
    prune();
    save();
    return recorded;
}

void HistoryStore::correct(const std::vector<Correction>& corrections) {
    const auto key = [](const HistoryEntry& entry) {
        return std::tuple(entry.secondsSince2001, std::string_view(entry.name), entry.sizeBytes);
    };
    std::multimap<decltype(key(HistoryEntry())), const Correction*> pending;
    for (const Correction& correction : corrections)
        pending.emplace(key(correction.recorded), &correction);
    std::vector<HistoryEntry> entries;
    for (HistoryEntry& entry : m_entries) {
        const auto found = pending.find(key(entry));
        if (found == pending.end())
            entries.push_back(std::move(entry));
        else if (const auto& [recorded, remaining] = *pending.extract(found).mapped(); remaining)
            entries.push_back(*remaining);
    }
    m_entries = std::move(entries);
    if (pending.size() == corrections.size())
        return;
    Q_EMIT entriesChanged();
    save();
}

void HistoryStore::prune(platform::Date now) {
    const platform::Date cutOff = now - maxAge;
    // Negated so that NaN is removed as well.
    std::erase_if(m_entries, [&](const HistoryEntry& entry) { return !(entry.date() >= cutOff); });
    if (!std::is_sorted(m_entries.begin(), m_entries.end(), isNewer))
        std::stable_sort(m_entries.begin(), m_entries.end(), isNewer);
    m_entries.resize(std::min(m_entries.size(), maxEntries));
    Q_EMIT entriesChanged();
}

void HistoryStore::save() const {
    (void)platform::writeFile(m_disk, path(), encodeHistory(m_entries));
}

std::string HistoryStore::path() const {
    return platform::joined(platform::applicationSupportFolder(m_disk), "Lumvale/historique.json");
}
