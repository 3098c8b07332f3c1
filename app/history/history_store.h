#pragma once

#include "app/history/history_entry.h"
#include "platform/files/disk.h"

#include <QObject>

/// The deletions of the last 30 days, newest first, at most 100,000, stored in a file on the disk. Interface
/// thread only. Errors of reading or writing the file are ignored; the entries in memory remain valid.
class HistoryStore : public QObject {
    Q_OBJECT

public:
    /// Loads the file; never writes it.
    explicit HistoryStore(platform::Disk disk, QObject* parent = nullptr);
    static HistoryStore& shared(); ///< the store of the current disk, created by the first call

    const std::vector<HistoryEntry>& entries() const { return m_entries; }

    struct Deletion {
        std::string_view name; ///< any bytes
        std::int64_t sizeBytes = 0;
    };

    /// Inserts an entry with the current date for each deletion in front, so that the last one comes first.
    /// Prunes and saves once. Returns the entries in the order of the deletions.
    std::vector<HistoryEntry> record(const std::vector<Deletion>& deletions);
    HistoryEntry record(std::string_view name, std::int64_t sizeBytes) {
        return record({{name, sizeBytes}}).front();
    }

    struct Correction {
        HistoryEntry recorded;
        std::optional<HistoryEntry> remaining; ///< absent if nothing of it is deleted any more
    };

    /// Replaces or removes, for each correction, one entry that is equal to the recorded one. Saves once, if
    /// anything changed.
    void correct(const std::vector<Correction>& corrections);

    /// Sorts newest first and removes entries older than 30 days or beyond the greatest number. Does not
    /// write the file.
    void prune(platform::Date now = platform::now());
    void save() const; ///< writes the file

    /// Returns the path of the file on the disk.
    std::string path() const;

Q_SIGNALS:
    void entriesChanged();

private:
    platform::Disk m_disk;
    std::vector<HistoryEntry> m_entries;
};
