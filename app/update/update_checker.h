#pragma once

#include "app/i18n/localizer.h"
#include "app/identity.h"
#include "app/update/update_alert.h"
#include "platform/base/date.h"

#include <chrono>
#include <functional>
#include <optional>

#include <QByteArray>
#include <QObject>
#include <QString>
#include <QUrl>

/// Checks for a newer version at most once a day, and announces each new version once. Errors, such as a
/// missing network connection, are ignored. Interface thread only.
namespace UpdateChecker {

/// Returns the code of the language of the announcement, as alertIn() takes it. Called when the announcement
/// is shown. By default it is the interface language at that moment.
inline std::function<QString()> languageCode = [] {
    return rawValue(Localizer::shared().effective());
};

/// The options of a check. The defaults are those of the build.
struct Options {
    std::optional<QString> name = Identity::name();
    QString version = Identity::version();
    QUrl folder = defaultFolder(); ///< of the descriptions; pages must be on its host or a subdomain
    QByteArray authorities = {};   ///< trusted certificate authorities as PEM; the system's if empty
    std::function<platform::Date()> clock = platform::now;
    std::chrono::milliseconds timeout = std::chrono::seconds(10); ///< of the request
    std::chrono::milliseconds delay = std::chrono::seconds(8); ///< between the response and the announcement

    static QUrl defaultFolder();
};

/// Starts a check in the background if the last successful one was at least a day ago, and returns
/// immediately. Calls `show` on this thread at most once, if there is a newer version that has not been
/// announced yet. The check is aborted when `owner` is destroyed.
void startIfNeeded(QObject* owner, std::function<void(const UpdateAlert&)> show, Options options = {});

} // namespace UpdateChecker
