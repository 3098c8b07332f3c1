#pragma once

#include "app/i18n/app_language.h"
#include "core/items/scan_category.h"

#include <atomic>

#include <QObject>
#include <QString>
#include <QStringList>

/// The language of the interface: the user's choice, kept among the program's settings. One for the whole
/// run; written on the interface thread only.
class Localizer : public QObject {
    Q_OBJECT
    Q_PROPERTY(int language READ languageIndex WRITE setLanguageIndex NOTIFY languageChanged)
    Q_PROPERTY(QString languageName READ languageName NOTIFY languageChanged)
    Q_PROPERTY(QStringList languageNames READ languageNames CONSTANT)

public:
    /// Reads the stored choice; writes nothing.
    explicit Localizer(QObject* parent = nullptr);
    static Localizer& shared(); ///< made by the first call, which the interface thread makes

    AppLanguage language() const { return m_language; }
    void setLanguage(AppLanguage language); ///< stores it, then tells

    /// The language of the texts: the choice, or the first that the system prefers. Never automatic. Any
    /// thread.
    AppLanguage effective() const;

    /// The text of `key` in the effective language, else in French, else the key. Any thread.
    QString text(const QString& key) const;

    // What screens bind to: languages by their place in the menu.
    int languageIndex() const { return static_cast<int>(language()); }
    void setLanguageIndex(int index);
    QString languageName() const; ///< of the choice
    QStringList languageNames() const;

    /// The text of `key`. `language` is not looked at: naming the property in a binding makes the binding
    /// follow it.
    Q_INVOKABLE QString tr(int language, const QString& key) const;

Q_SIGNALS:
    void languageChanged();

private:
    std::atomic<AppLanguage> m_language;
};

/// The effective language for a choice and the system's preferred languages.
AppLanguage effectiveLanguage(AppLanguage choice, const std::vector<std::string>& preferred);

/// The text of `key` in the interface language. Any thread.
QString tr(const QString& key);

QString localizedCategoryName(core::ScanCategory category);
