#pragma once

#include <string_view>

#include <QObject>
#include <QString>
#include <QUrl>

/// The texts of the dialog that announces a newer version.
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
    QString download; ///< label of the button that opens the page
    QString later;    ///< label of the button that closes the dialog
    QUrl page;        ///< download page
};

namespace UpdateChecker {

/// Returns the texts in the language of `languageCode`: a rawValue() of AppLanguage, or "sr" or "sr-Cyrl" for
/// Serbian; French for any other code. `name` is the program's, `version` the new version, which may be any
/// bytes and is made displayable, and `current` the version that is running.
UpdateAlert alertIn(const QString& languageCode, const QString& name, std::string_view version,
                    const QString& current, const QUrl& page);

} // namespace UpdateChecker
