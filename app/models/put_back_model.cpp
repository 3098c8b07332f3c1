#include "app/models/put_back_model.h"

#include "app/execution/qt_executor.h"
#include "app/i18n/localizer.h"
#include "app/text/outcome_text.h"

#include <QPointer>

#include <memory>
#include <set>
#include <string>
#include <utility>

using namespace Qt::StringLiterals;

namespace {

/// Returns the paths of the entries that were not put back, except those that have left the Trash.
std::set<std::string> stillInTrash(const core::PutBackOutcome& outcome) {
    std::set<std::string> paths(outcome.left.begin(), outcome.left.end());
    for (const core::PutBackFailure& failure : outcome.failed)
        if (!outcome::isGone(failure.error))
            paths.insert(failure.path);
    return paths;
}

} // namespace

PutBackModel::PutBackModel(platform::Disk disk, HistoryStore& history, platform::Executor executor,
                           BackgroundTask& task, QObject* parent)
    : QObject(parent),
      m_disk(std::move(disk)),
      m_history(history),
      m_executor(std::move(executor)),
      m_task(task) {
    connect(&Localizer::shared(), &Localizer::languageChanged, this, &PutBackModel::changed);
    connect(&m_task, &BackgroundTask::runningChanged, this, [this] {
        if (m_task.isRunning() || !std::exchange(m_isRunning, false))
            return;
        Q_EMIT changed();
    });
}

void PutBackModel::offer(std::vector<core::MovedEntry> moved, std::vector<RecordedDeletion> recorded) {
    discard(m_executor, std::exchange(m_moved, std::move(moved)));
    discard(m_executor, std::exchange(m_recorded, std::move(recorded)));
    m_outcome.reset();
    Q_EMIT changed();
}

void PutBackModel::start() {
    if (!isOffered() || m_task.isRunning())
        return;
    struct Done {
        core::PutBackOutcome outcome;
        std::vector<core::MovedEntry> remaining;
    };
    auto recorded = std::make_shared<std::vector<RecordedDeletion>>(std::exchange(m_recorded, {}));
    m_task.runRemoval(
        m_executor,
        [moved = std::exchange(m_moved, {}), disk = m_disk](platform::Progress& progress) mutable {
            core::PutBackOutcome outcome = core::LumvaleScanner::putBack(moved, disk, &progress);
            std::erase_if(moved, [inTrash = stillInTrash(outcome)](const core::MovedEntry& entry) {
                return !inTrash.contains(entry.path);
            });
            return Done{std::move(outcome), std::move(moved)};
        },
        [recorded, history = QPointer(&m_history)](const Done& done) {
            if (history)
                *recorded = recordPutBack(*history, std::move(*recorded), done.outcome);
        },
        [this, recorded](Done done) {
            m_moved = std::move(done.remaining);
            m_recorded = std::move(*recorded);
            m_outcome = std::move(done.outcome);
            Q_EMIT changed();
            Q_EMIT finished(*m_outcome);
        });
    m_isRunning = true;
    Q_EMIT changed();
}

QString PutBackModel::doneText() const {
    return m_outcome && !m_outcome->succeeded.empty()
               ? outcome::counted(u"put_back_done"_s, static_cast<std::int64_t>(m_outcome->succeeded.size()))
               : QString();
}

QString PutBackModel::failedText() const {
    return m_outcome ? outcome::notPutBack(*m_outcome) : QString();
}
