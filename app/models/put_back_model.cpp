#include "app/models/put_back_model.h"

#include "app/i18n/localizer.h"
#include "app/text/outcome_text.h"

#include <QPointer>

#include <utility>

using namespace Qt::StringLiterals;

PutBackModel::PutBackModel(platform::Disk disk, HistoryStore& history, platform::Executor executor,
                           BackgroundTask& task, QObject* parent)
    : QObject(parent),
      m_disk(std::move(disk)),
      m_history(history),
      m_executor(std::move(executor)),
      m_task(task) {
    connect(&Localizer::shared(), &Localizer::languageChanged, this, &PutBackModel::changed);
}

void PutBackModel::offer(std::vector<core::MovedEntry> moved, std::vector<RecordedDeletion> recorded) {
    m_moved = std::move(moved);
    m_recorded = std::move(recorded);
    m_outcome.reset();
    Q_EMIT changed();
}

void PutBackModel::start() {
    if (!isOffered() || m_task.isRunning())
        return;
    m_task.runRemoval(
        m_executor,
        [moved = std::exchange(m_moved, {}), disk = m_disk](platform::Progress& progress) {
            return core::LumvaleScanner::putBack(moved, disk, &progress);
        },
        [recorded = std::exchange(m_recorded, {}),
         history = QPointer(&m_history)](const core::PutBackOutcome& outcome) {
            if (history)
                recordPutBack(*history, recorded, outcome);
        },
        [this](core::PutBackOutcome outcome) {
            m_outcome = std::move(outcome);
            m_isRunning = false;
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
