#pragma once

#include "app/execution/background_task.h"
#include "app/history/recorded_deletion.h"
#include "core/removal/put_back.h"
#include "platform/base/executor.h"
#include "platform/files/disk.h"

#include <QObject>

#include <optional>
#include <vector>

/// Offers to put back what the last removal of a screen moved to the Trash. Interface thread only. Entries
/// are put back in the background; what was put back leaves the history even if the model has been destroyed.
class PutBackModel : public QObject {
    Q_OBJECT
    Q_PROPERTY(bool isOffered READ isOffered NOTIFY changed)
    Q_PROPERTY(bool isRunning READ isRunning NOTIFY changed)
    Q_PROPERTY(QString doneText READ doneText NOTIFY changed)
    Q_PROPERTY(QString failedText READ failedText NOTIFY changed)

public:
    /// Runs as a removal of `task`, which belongs to the same view model.
    PutBackModel(platform::Disk disk, HistoryStore& history, platform::Executor executor,
                 BackgroundTask& task, QObject* parent);

    /// Offers these entries instead of earlier ones, and resets the texts.
    void offer(std::vector<core::MovedEntry> moved, std::vector<RecordedDeletion> recorded);
    void withdraw() { offer({}, {}); }

    /// Starts to put back what is offered. At the end, offers again what is still in the Trash. Does nothing
    /// during a removal.
    Q_INVOKABLE void start();

    bool isOffered() const { return !m_moved.empty(); }
    bool isRunning() const { return m_isRunning; } ///< until the task ends
    QString doneText() const;                      ///< how many entries were put back; empty if none was
    QString failedText() const;                    ///< how many were not and why; empty if all were

Q_SIGNALS:
    void changed();
    void finished(const core::PutBackOutcome& outcome); ///< before the task ends, which may be continued

private:
    platform::Disk m_disk;
    HistoryStore& m_history;
    platform::Executor m_executor;
    BackgroundTask& m_task;
    std::vector<core::MovedEntry> m_moved;
    std::vector<RecordedDeletion> m_recorded;
    bool m_isRunning = false;
    std::optional<core::PutBackOutcome> m_outcome;
};
