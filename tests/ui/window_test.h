#pragma once

#include "app/execution/qt_executor.h"
#include "app/history/history_store.h"
#include "app/i18n/localizer.h"
#include "tests/support/temporary_disk.h"
#include "tests/ui/driver.h"
#include "ui/shell/lumvale_window.h"

#include <QAccessible>
#include <QGuiApplication>
#include <QTest>

#include <optional>
#include <string>
#include <vector>

/// What tests of the real window share. Each starts in English with an empty disk, real files and no window;
/// what it left open is gone before the next one.
class WindowTest : public QObject {
    Q_OBJECT

protected Q_SLOTS:
    void init();
    void cleanup();

protected:
    static constexpr QSize smallest{820, 700};

    /// Opens the window, in this size, on the disk and its history as they are then. `photos` says what the
    /// program may do with the photo library.
    void open(QSize size = smallest, const platform::Executor& executor = qtExecutor(),
              const platform::PhotoAccess& photos = platform::PhotoAccess::ofSystem());
    void close();
    QQuickWindow* window() const { return m_lumvale->window(); }
    void layOut() const { (void)window()->grabWindow(); } ///< everything that changed

    /// Makes what starts at login, by the label in its property list.
    void makeAgent(const std::string& path, const std::string& label) const;

    /// The screen model of this class; null when no screen has one.
    template <class Model>
    Model* model() const {
        return window()->findChild<Model*>();
    }

    /// Clicks a button that asks first, and then what confirms it; done when the dialog is gone.
    void confirm(const char* button) const;

    QStringList drawn() const; ///< the rows in sight: the texts of each as drawn, joined by " | "
    QString ticks() const;     ///< the rows in sight: "+" for a drawn check mark, "-" for none
    QStringList shown(const char* property) const; ///< by the rows in sight, or the first photo of each
    QString current() const; ///< the name of what keys would press; empty when nothing is shown to be
    bool hasFocus(const char* name) const;
    QStringList menuEntries() const; ///< in the open menu; the chosen one with a "*"
    QQuickItem* menuEntry(const QString& text) const;

    /// What a screen reader is told of a visible item.
    QAccessibleInterface* told(const char* name) const;
    static QAccessibleInterface* told(QQuickItem* item) {
        return QAccessible::queryAccessibleInterface(item);
    }
    /// The text of a visible label that screen readers announce; empty when it isn't shown or announced.
    QString announced(const char* name) const;
    static void press(QAccessibleInterface* control); ///< as a screen reader does

    /// Nothing on the screen is cut off, and no control is silent.
    void checkEverythingIsSaid() const;

    /// Test data: a row for each language, in the column "language".
    static void eachLanguage();

private:
    /// Where keys stop in a row: at its photos, else at the row itself.
    std::vector<const QQuickItem*> stepsOf(const QQuickItem& row) const;

protected:
    std::optional<OrdinaryUser> m_user; ///< so that modes count
    std::optional<TemporaryDisk> m_disk;
    std::optional<HistoryStore> m_history;
    std::optional<LumvaleWindow> m_lumvale;
    std::optional<Driver> m_driver;
};

/// The text of a key in the language of the moment.
QString translated(const char* key);

/// The main function of a test of the window.
template <class Test>
int runTest(int argc, char** argv) {
    const OwnSettings settings;
    const QGuiApplication application(argc, argv);
    QAccessible::setActive(true); // as with a screen reader
    Test test;
    return QTest::qExec(&test, argc, argv);
}
