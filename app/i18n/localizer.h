#pragma once

#include "app/i18n/app_language.h"
#include "core/items/scan_category.h"

#include <atomic>

#include <QObject>
#include <QString>
#include <QStringList>

/// The interface language. The user's choice is stored in QSettings. Written on the interface thread only.
class Localizer : public QObject {
    Q_OBJECT
    Q_PROPERTY(int language READ languageIndex WRITE setLanguageIndex NOTIFY languageChanged)
    Q_PROPERTY(QString languageName READ languageName NOTIFY languageChanged)
    Q_PROPERTY(QStringList languageNames READ languageNames CONSTANT)

public:
    /// Reads the stored choice; writes nothing.
    explicit Localizer(QObject* parent = nullptr);
    static Localizer& shared(); ///< created by the first call, which must be on the interface thread

    AppLanguage language() const { return m_language; }
    void setLanguage(AppLanguage language); ///< stores it, then emits languageChanged()

    /// Returns the language in use: the choice, or the system's preferred language for automatic. Never
    /// returns automatic. Any thread.
    AppLanguage effective() const;

    /// Returns the text of `key` in the effective language; see Translations::text(). Any thread.
    QString text(const QString& key) const;
    QString text(const QString& key, std::int64_t number) const; ///< in the plural form for this number

    // For QML. Indexes are positions in allAppLanguages.
    int languageIndex() const { return static_cast<int>(language()); }
    void setLanguageIndex(int index);
    QString languageName() const; ///< name of the choice
    QStringList languageNames() const;

    /// Returns text(key). `language` is ignored: a binding that passes the property is evaluated again when
    /// the language changes.
    Q_INVOKABLE QString tr(int language, const QString& key) const;

Q_SIGNALS:
    void languageChanged();

private:
    std::atomic<AppLanguage> m_language;
};

/// Returns the language in use for a choice and the system's preferred languages (BCP 47 tags, most preferred
/// first); French if none is supported.
AppLanguage effectiveLanguage(AppLanguage choice, const std::vector<std::string>& preferred);

/// Returns the text of `key` in the interface language. Any thread.
QString tr(const QString& key);
QString tr(const QString& key, std::int64_t number); ///< in the plural form for this number

/// Returns the category's name in the interface language. Any thread.
QString localizedCategoryName(core::ScanCategory category);
