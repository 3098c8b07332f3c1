#pragma once

#include "app/execution/qt_executor.h"
#include "app/history/history_store.h"
#include "app/i18n/localizer.h"
#include "tests/support/temporary_disk.h"
#include "tests/ui/driver.h"
#include "ui/shell/lumvale_window.h"

#include <QAccessible>
#include <QGuiApplication>

#include <optional>
#include <string>

/// Base of tests of the real window. Each test starts in English with an empty disk of real files, after the
/// introduction and without a window.
class WindowTest : public QObject {
    Q_OBJECT

public Q_SLOTS:
    void take(const QUrl& address) { m_opened.append(address.toString()); } ///< instead of the system

protected Q_SLOTS:
    void init();
    void cleanup();

protected:
    static constexpr QSize smallest{820, 700};

    static platform::PhotoAuthorization authorized(const platform::Disk& /*disk*/) {
        return platform::PhotoAuthorization::authorized;
    }

    /// Opens the window in this size on the disk, with access to the photo library unless `photos` differs.
    void open(QSize size = smallest, const std::optional<platform::Executor>& executor = {},
              const platform::PhotoAccess& photos = {authorized, authorized});
    void close();

    /// Holds back the background jobs of screens opened without an executor, and starts those held back.
    void holdJobs() { m_areJobsHeld = true; }
    void releaseJobs();
    QQuickWindow* window() const { return m_lumvale->window(); }
    void layOut() const { (void)window()->grabWindow(); } ///< renders a frame

    /// Creates a launch agent's property list with this label.
    void makeAgent(const std::string& path, const std::string& label) const;

    /// Returns the view model of this class; null if no screen has one.
    template <class Model>
    Model* model() const {
        return window()->findChild<Model*>();
    }

    void scan() const; ///< clicks the button and waits for rows
    /// Clicks a button that opens a dialog, confirms it and waits until it is closed and rows have left.
    void confirm(const char* button) const;

    QStringList drawn() const; ///< the rows in sight: the texts of each as drawn, joined by " | "
    QString ticks() const;     ///< the rows in sight: "+" for a drawn check mark, "-" for none
    QString current() const;   ///< name of the row or photo with visual focus; empty if none
    bool hasFocus(const char* name) const { return m_driver->text(name, "activeFocus") == "true"; }
    QStringList menuEntries() const; ///< of the open menu; the current one with a "*"
    QQuickItem* menuEntry(const QString& text) const { return m_driver->itemInSight("menuEntry", text); }

    /// Returns the accessible interface of a visible item.
    QAccessibleInterface* told(const char* name) const { return told(m_driver->item(name)); }
    static QAccessibleInterface* told(QQuickItem* item) {
        return QAccessible::queryAccessibleInterface(item);
    }
    /// The text of a visible label that screen readers announce; empty when it isn't shown or announced.
    QString announced(const char* name) const;
    static void press(QAccessibleInterface* control) { ///< as a screen reader does
        control->actionInterface()->doAction(QAccessibleActionInterface::pressAction());
    }

    std::optional<OrdinaryUser> m_user; ///< file permissions do not apply to root
    std::optional<TemporaryDisk> m_disk;
    std::optional<HistoryStore> m_history;
    std::optional<LumvaleWindow> m_lumvale;
    std::optional<Driver> m_driver;
    bool m_areJobsHeld = false;
    std::vector<platform::Executor::Job> m_heldJobs;
    QStringList m_opened; ///< web pages and system settings that were opened
};

/// Returns the text of a key in the current language.
inline QString translated(const char* key) {
    return tr(QLatin1String(key));
}

/// Runs a window test with its own settings and application object.
template <class Test>
int runTest(int argc, char** argv) {
    const OwnSettings settings;
    const QGuiApplication application(argc, argv);
    QAccessible::setActive(true); // as with a screen reader
    Test test;
    return QTest::qExec(&test, argc, argv);
}
