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

constexpr double secondsOfADay = 86'400;

/// Seconds since 1970; 0 where none is stored.
double lastCheck() {
    const double stored = QSettings().value(lastCheckKey).toDouble();
    return std::isfinite(stored) ? stored : 0;
}

/// One check. It asks on the thread that it is, and shows on the one that made it; then it is gone.
class Check : public QThread {
public:
    Check(QObject* owner, std::function<void(const UpdateAlert&)> show, UpdateChecker::Terms terms,
          double now)
        : QThread(owner), m_show(std::move(show)), m_terms(std::move(terms)), m_now(now) {
        connect(this, &QThread::finished, this, [this] {
            if (m_version)
                QTimer::singleShot(m_terms.delay, this, &Check::show);
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
                                        .mostBytes = UpdateDescription::mostBytes,
                                        .limit = m_terms.limit,
                                        .authorities = m_terms.authorities}
                                .run();
        if (!answer)
            return;
        const auto update =
            decodeUpdateDescription({answer->data(), static_cast<std::size_t>(answer->size())});
        if (!update)
            return;
        const auto page = UpdateChecker::acceptablePage(update->page, m_terms.folder.host());
        if (!page)
            return;

        QSettings settings;
        settings.setValue(lastCheckKey, m_now);
        if (UpdateChecker::isNewer(update->version, m_terms.version.toStdString())
            && settings.value(notifiedVersionKey).toString() != QString::fromStdString(update->version)) {
            m_version = update->version;
            m_page = *page;
        }
    }

private:
    QUrl address() const {
        QUrl address = m_terms.folder;
        address.setPath(address.path() + m_terms.name->toLower() + ".json"_L1);
        return address;
    }

    void show() {
        QSettings().setValue(notifiedVersionKey, QString::fromStdString(*m_version));
        m_show(UpdateChecker::alertIn(UpdateChecker::languageCode(), *m_terms.name, *m_version,
                                      m_terms.version, m_page));
        deleteLater();
    }

    const std::function<void(const UpdateAlert&)> m_show;
    const UpdateChecker::Terms m_terms;
    const double m_now; ///< seconds since 1970

    // What is to be said, once the thread is through.
    std::optional<std::string> m_version;
    QUrl m_page;
};

} // namespace

QUrl UpdateChecker::Terms::ofBuild() {
    return QUrl(u"https://" LUMVALE_UPDATE_HOST u"/maj/"_s);
}

void UpdateChecker::startIfNeeded(QObject* owner, std::function<void(const UpdateAlert&)> show, Terms terms) {
    const double now = platform::secondsSince1970(terms.clock());
    if (now - lastCheck() < secondsOfADay || !terms.name)
        return;
    silenceQt();
    (new Check(owner, std::move(show), std::move(terms), now))->start();
}
