#pragma once

#include "app/history/history_store.h"
#include "app/i18n/app_language.h"
#include "platform/files/disk.h"
#include "tests/ui/driver.h"
#include "tools/tour/restricted_folder.h"

#include <QDir>
#include <QImage>
#include <QList>
#include <QSize>
#include <QString>

#include <filesystem>
#include <functional>
#include <optional>
#include <string>
#include <utility>

class ScanViewModel;

/// Drives the window through all screens with mouse clicks, on one disk, and saves a picture of each state.
/// Ends the program with an error message if something unexpected happens. Requires a QGuiApplication and
/// OwnSettings.
class Tour {
public:
    /// An invalid `size` keeps the window's default size.
    Tour(const platform::Disk& disk, QDir pictures, QSize size);

    /// Opens a new window in this language and visits all screens. The files are named
    /// LANGUAGE-NUMBER-STATE.png.
    void run(AppLanguage language);

private:
    void finishOnboarding();
    void scan();
    void showStorageBreakdown();
    void showPath();
    void toggleRow();
    void deleteSelection();
    void failToEmptyTrash();
    void emptyTrash();
    void uninstallApp();
    void disableStartupItem();
    void deleteDuplicates();
    void showHistory();

    void waitFor(const std::string& expectation, const std::function<bool()>& condition) const;

    /// Clicks a button, unless it is null, confirms the dialog that opens and waits until it has closed.
    void confirm(const char* button, const std::string& state);

    /// Takes a picture after `delay` milliseconds, by default enough for transitions. Checks that no text is
    /// clipped.
    void takePicture(const std::string& state, int delay = 200);

    std::size_t trashEntryCount() const;

    platform::Disk m_disk;
    QDir m_folder;
    QSize m_size;
    QList<std::pair<QString, QImage>> m_pictures; ///< not saved yet
    std::optional<RestrictedFolder> m_restrictedTrash;
    std::filesystem::path m_trash;
    std::filesystem::path m_mail;
    HistoryStore m_history;
    QString m_language;
    int m_number = 0;
    QQuickWindow* m_window = nullptr;
    ScanViewModel* m_model = nullptr;
    std::optional<Driver> m_driver;
};
