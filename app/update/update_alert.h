#pragma once

#include <string_view>

#include <QObject>
#include <QString>
#include <QUrl>

/// What is said of a newer version, in one language.
struct UpdateAlert {
    Q_GADGET
    Q_PROPERTY(QString title MEMBER title)
    Q_PROPERTY(QString message MEMBER message)
    Q_PROPERTY(QString download MEMBER download)
    Q_PROPERTY(QString later MEMBER later)
    Q_PROPERTY(QUrl page MEMBER page)

public:
    QString title;
    QString message;
    QString download; ///< the button that opens the page
    QString later;    ///< the button that does nothing
    QUrl page;
};

namespace UpdateChecker {

/// What is said in the language of this code, in French for one that it doesn't know. `version` is what the
/// maker calls it, which may be any text: what would harm the reading is left out.
UpdateAlert alertIn(const QString& languageCode, const QString& name, std::string_view version,
                    const QString& current, const QUrl& page);

} // namespace UpdateChecker
