#pragma once

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

/// Asks the maker, once a day at most, whether there is a newer version, and says so once of each. Nothing
/// else is ever said: whoever is offline doesn't notice. Interface thread only.
namespace UpdateChecker {

/// Gives the code of the language of the texts; asked when they are shown. Set before the check is started.
inline std::function<QString()> languageCode = [] {
    return QStringLiteral("fr");
};

/// What a check needs to know; as it stands, what the build says.
struct Terms {
    std::optional<QString> name = Identity::name();
    QString version = Identity::version();
    QUrl folder = ofBuild();     ///< where descriptions lie; a page to download from is on its host or below
    QByteArray authorities = {}; ///< who vouches for it, as PEM; the system's where empty
    std::function<platform::Date()> clock = platform::now;
    std::chrono::milliseconds limit = std::chrono::seconds(10); ///< for the answer
    std::chrono::milliseconds delay = std::chrono::seconds(8);  ///< for whoever has just started the program

    static QUrl ofBuild();
};

/// Starts the check, if it is due, and returns at once: all that takes time is done in the background. `show`
/// is called later, once or not at all, on this thread. The check goes with `owner`, at the latest.
void startIfNeeded(QObject* owner, std::function<void(const UpdateAlert&)> show, Terms terms = {});

} // namespace UpdateChecker
