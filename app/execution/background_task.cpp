#include "app/execution/background_task.h"

#include "app/i18n/localizer.h"
#include "app/text/display.h"

#include <algorithm>
#include <chrono>

using namespace std::chrono_literals;
using namespace Qt::StringLiterals;

BackgroundTask::BackgroundTask(QObject* parent) : QObject(parent) {
    m_refresh.setInterval(200ms);
    connect(&m_refresh, &QTimer::timeout, this, &BackgroundTask::progressChanged);
}

BackgroundTask::~BackgroundTask() {
    if (m_progress)
        m_progress->stop();
}

double BackgroundTask::share() const {
    if (!m_progress || m_progress->totalEntries() == 0)
        return -1;
    const auto processed = static_cast<double>(m_progress->entries());
    return std::min(1.0, processed / static_cast<double>(m_progress->totalEntries()));
}

QString BackgroundTask::text() const {
    if (platform::isStopped(m_progress.get()))
        return ::tr(u"stopping"_s);
    if (!m_progress || m_progress->entries() == 0)
        return {};
    if (const std::int64_t total = m_progress->totalEntries(); total != 0)
        return ::tr(u"progress_of_total"_s, total)
            .arg(display::count(std::min(m_progress->entries(), total)), display::count(total));
    return ::tr(u"progress_so_far"_s, m_progress->entries())
        .arg(display::count(m_progress->entries()), display::size(m_progress->bytes()));
}

void BackgroundTask::stop() {
    if (!m_progress)
        return;
    m_progress->stop();
    if (m_isRemoval)
        Q_EMIT progressChanged();
    else
        end();
}

std::shared_ptr<platform::Progress> BackgroundTask::begin(bool isRemoval) {
    const bool wasRunning = isRunning();
    if (wasRunning)
        m_progress->stop();
    m_progress = std::make_shared<platform::Progress>();
    m_isRemoval = isRemoval;
    m_refresh.start();
    Q_EMIT progressChanged();
    if (!wasRunning)
        Q_EMIT runningChanged();
    return m_progress;
}

void BackgroundTask::end() {
    m_progress = nullptr;
    m_refresh.stop();
    Q_EMIT runningChanged();
}
