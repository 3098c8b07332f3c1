#pragma once

#include "app/history/history_entry.h"
#include "platform/files/disk.h"

#include <QObject>

/// What was deleted during the last 30 days, newest first, kept in a file on the disk. One for the whole run;
/// interface thread only. A file that cannot be read or written is passed over in silence: the list in memory
/// stays right.
class HistoryStore : public QObject {
    Q_OBJECT

public:
    /// Loads the file; never writes it.
    explicit HistoryStore(platform::Disk disk, QObject* parent = nullptr);
    static HistoryStore& shared(); ///< of the current disk

    const std::vector<HistoryEntry>& entries() const { return m_entries; }

    /// Puts an entry dated now in front, drops what is too old, and writes the file. `name` may be any bytes.
    void record(std::string_view name, std::int64_t sizeBytes);

    void prune(platform::Date now = platform::now()); ///< memory only
    void save() const;

    /// Where the file lies, as a path of the disk.
    std::string path() const;

Q_SIGNALS:
    void entriesChanged();

private:
    platform::Disk m_disk;
    std::vector<HistoryEntry> m_entries;
};
