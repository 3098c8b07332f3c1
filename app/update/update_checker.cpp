#include "app/update/update_checker.h"

#include "app/qt_log.h"
#include "app/update/secure_fetch.h"
#include "app/update/update_description.h"
#include "app/update/update_page.h"
#include "app/update/version.h"

#include <QSettings>
#include <QThread>
#include <QTimer>

#include <cmath>
#include <string>
#include <utility>

using namespace Qt::StringLiterals;

namespace {

const QString lastCheckKey = u"orvane.update.lastCheck"_s;
const QString notifiedVersionKey = u"orvane.update.notifiedVersion"_s;

constexpr double secondsPerDay = 86'400;

/// Returns the time of the last successful check in seconds since 1970; 0 if there was none.
double lastCheck() {
    const double stored = QSettings().value(lastCheckKey).toDouble();
    return std::isfinite(stored) ? stored : 0;
}

/// A check. Sends the request on its own thread, calls `show` on the thread that created it, then deletes
/// itself.
class Check : public QThread {
public:
    Check(QObject* owner, std::function<void(const UpdateAlert&)> show, UpdateChecker::Options options,
          double now)
        : QThread(owner), m_show(std::move(show)), m_options(std::move(options)), m_now(now) {
        connect(this, &QThread::finished, this, [this] {
            if (m_version)
                QTimer::singleShot(m_options.delay, this, &Check::show);
            else
                deleteLater();
        });
    }

    ~Check() override {
        quit();
        wait();
    }

protected:
    void run() override {
        const auto answer = SecureFetch{.url = address(),
                                        .maxBytes = UpdateDescription::maxBytes,
                                        .timeout = m_options.timeout,
                                        .authorities = m_options.authorities}
                                .run();
        if (!answer)
            return;
        const auto update =
            decodeUpdateDescription({answer->data(), static_cast<std::size_t>(answer->size())});
        if (!update)
            return;
        const auto page = UpdateChecker::acceptablePage(update->page, m_options.folder.host());
        if (!page)
            return;

        QSettings settings;
        settings.setValue(lastCheckKey, m_now);
        if (UpdateChecker::isNewer(update->version, m_options.version.toStdString())
            && settings.value(notifiedVersionKey).toString() != QString::fromStdString(update->version)) {
            m_version = update->version;
            m_page = *page;
        }
    }

private:
    QUrl address() const {
        QUrl address = m_options.folder;
        address.setPath(address.path() + m_options.name->toLower() + ".json"_L1);
        return address;
    }

    void show() {
        QSettings().setValue(notifiedVersionKey, QString::fromStdString(*m_version));
        m_show(UpdateChecker::alertIn(UpdateChecker::languageCode(), *m_options.name, *m_version,
                                      m_options.version, m_page));
        deleteLater();
    }

    const std::function<void(const UpdateAlert&)> m_show;
    const UpdateChecker::Options m_options;
    const double m_now; ///< seconds since 1970

    // The new version to announce, set by the thread before it finishes.
    std::optional<std::string> m_version;
    QUrl m_page;
};

} // namespace

QUrl UpdateChecker::Options::defaultFolder() {
    return QUrl(u"https://" LUMVALE_UPDATE_HOST u"/maj/"_s);
}

void UpdateChecker::startIfNeeded(QObject* owner, std::function<void(const UpdateAlert&)> show,
                                  Options options) {
    const double now = platform::secondsSince1970(options.clock());
    if (now - lastCheck() < secondsPerDay || !options.name)
        return;
    silenceQt();
    (new Check(owner, std::move(show), std::move(options), now))->start();
}
