#include "tests/app/hand_cranked.h"
#include "tests/ui/window_test.h"

#include <cmath>
#include <string>

/// The uninstall screen as its user meets it: the real window, clicks and keys, real files.
class UninstallTest : public WindowTest {
    Q_OBJECT

private Q_SLOTS:
    void init();

    void movesWhatIsTickedAndOnlyThat();
    void showsAnApplicationThatKeepsNothingElsewhere();
    void isWalkedByKeys();
    void leavesTheKeyboardWhereTheUserTookItMeanwhile();
    void tellsAScreenReaderWhatIsSeen();

private:
    /// Opens the window, and the uninstall screen in it by a click.
    void openUninstall(const platform::Executor& executor = qtExecutor());
    // Wait for these lists.
    void apps();
    void files();
    void pick(const char* app);

    QString selection(const QString& size, int count) const;
    QString banner(const QString& app) const {
        return "✓ « " + app + " » " + translated("uninstalled_suffix");
    }
};

void UninstallTest::init() {
    WindowTest::init();
    m_disk->make({"/Applications/Notes.app/x 1000", "/Applications/Paint.app/x 2000",
                  "/Applications/Solo.app/x 300", "~/Library/Caches/notes/x 10", "~/Library/Logs/notes 200",
                  "~/Library/Logs/paint 30", "~/Library/Preferences/com.paint-notes.plist 4",
                  "~/Library/Preferences/other 9"});
}

void UninstallTest::openUninstall(const platform::Executor& executor) {
    open(smallest, executor);
    QVERIFY(m_driver->click("tab_uninstall"));
}

void UninstallTest::apps() {
    QTRY_VERIFY(m_driver->isShown("appsList"));
    layOut();
}

void UninstallTest::files() {
    QTRY_VERIFY(m_driver->isShown("filesList"));
    layOut();
}

void UninstallTest::pick(const char* app) {
    m_driver->click(*m_driver->row(app));
    files();
    QCOMPARE(shown("name").value(0), app);
}

QString UninstallTest::selection(const QString& size, int count) const {
    return QString::number(count) + ' ' + translated("selected_count_suffix") + " · " + size;
}

void UninstallTest::movesWhatIsTickedAndOnlyThat() {
    openUninstall();
    apps();
    QCOMPARE(shown("name"), (QStringList{"Notes", "Paint", "Solo"}));
    QCOMPARE(shown("size"), (QStringList{"1 KB", "2 KB", "300 bytes"}));
    QVERIFY(m_driver->text("screenSubtitle").startsWith(translated("word_free_space") + " : "));
    QVERIFY(!m_driver->isShown("uninstalledLabel") && !m_driver->isShown("backButton"));

    // What was unticked is forgotten on the way back.
    for (const bool isAgain : {false, true}) {
        pick("Notes");
        QCOMPARE(shown("name"), (QStringList{"Notes", "notes", "com.paint-notes.plist", "notes"}));
        QCOMPARE(shown("checked"), QStringList(4, "true"));
        QCOMPARE(m_driver->text("selectionLabel"), selection("1 KB", 4));
        m_driver->click(*m_driver->rows().at(3));
        m_driver->click(*m_driver->rows().at(0));
        QCOMPARE(shown("checked"), (QStringList{"false", "true", "true", "false"}));
        QCOMPARE(m_driver->text("selectionLabel"), selection("14 bytes", 2));
        if (!isAgain)
            QVERIFY(m_driver->click("backButton") && hasFocus("appsList"));
        QCOMPARE(current(), QString()); // no ring for who works by clicks
    }
    QCOMPARE(shown("explanation").value(0), "app_itself");
    QVERIFY(shown("date").value(0).isEmpty() && !shown("date").value(1).isEmpty());
    QVERIFY(m_driver->isShown("filesHeading") && !m_driver->isShown("noFiles"));
    m_driver->click(*m_driver->rows().at(0));

    QVERIFY(m_driver->click("deleteButton"));
    QTRY_VERIFY(m_driver->isShown("cancel"));
    QCOMPARE(window()->findChild<QObject*>("uninstallDialog")->property("message"),
             "« Notes » : " + selection("1 KB", 3) + '\n' + translated("alert_confirm_delete_message"));
    QVERIFY(m_driver->click("confirm"));
    QTRY_VERIFY(!m_driver->isShown("confirm"));
    for (const char* moved : {"~/.Trash/Notes.app/x", "~/.Trash/notes/x", "~/.Trash/com.paint-notes.plist",
                              "~/Library/Logs/notes", "~/Library/Logs/paint", "/Applications/Paint.app/x"})
        QVERIFY2(m_disk->exists(moved), moved);
    QVERIFY(!m_disk->exists("/Applications/Notes.app"));
    QCOMPARE(m_history->entries().size(), 1u);
    QCOMPARE(m_driver->text("uninstalledLabel"), banner("Notes"));
    QCOMPARE(m_driver->text("uninstalledFreeSpace"), m_driver->text("screenSubtitle"));
    QTRY_COMPARE(shown("name"), (QStringList{"Paint", "Solo"}));
}

void UninstallTest::showsAnApplicationThatKeepsNothingElsewhere() {
    openUninstall();
    apps();
    pick("Solo");
    QCOMPARE(shown("name"), QStringList{"Solo"});
    QCOMPARE(m_driver->text("noFiles"), translated("no_leftovers_found"));
    QVERIFY(!m_driver->isShown("filesHeading"));
    m_driver->click(*m_driver->rows().at(0));
    QCOMPARE(m_driver->text("selectionLabel"), selection("Zero KB", 0));
    QVERIFY(!m_driver->isEnabled("deleteButton"));
    QVERIFY(m_driver->click("backButton"));

    // The banner stays until the next one, and the last leaves a list that says so.
    for (const char* app : {"Solo", "Notes", "Paint"}) {
        pick(app);
        confirm("deleteButton");
        QCOMPARE(m_driver->text("uninstalledLabel"), banner(app));
        QVERIFY(m_disk->exists("~/.Trash/" + std::string(app) + ".app/x"));
    }
    QVERIFY(m_driver->rows().empty() && !m_driver->isShown("appsList"));
    QCOMPARE(m_driver->text("emptyPrompt"), translated("storage_breakdown_empty"));
}

void UninstallTest::isWalkedByKeys() {
    for (int i = 100; i < 160; ++i)
        m_disk->make("~/Applications/App " + std::to_string(i) + ".app/");
    openUninstall();
    apps();
    QQuickItem* list = m_driver->item("appsList");
    list->forceActiveFocus(Qt::TabFocusReason);
    m_driver->key(Qt::Key_End);
    m_driver->key(Qt::Key_Up);
    layOut();
    const double place = list->property("contentY").toDouble();
    for (const Qt::Key opens : {Qt::Key_Return, Qt::Key_Space}) {
        m_driver->key(opens);
        files();
        QVERIFY(hasFocus("filesList"));
        m_driver->key(Qt::Key_Escape); // the way back leads to where one was
        layOut();
        QVERIFY(list->hasActiveFocus());
        QCOMPARE(current(), "Paint");
        QVERIFY(std::abs(list->property("contentY").toDouble() - place) < 1);
    }
    m_driver->key(Qt::Key_Return);
    files();
    // The application itself is a row like the files below it.
    const struct {
        Qt::Key walks;
        const char* to;
        Qt::Key ticks;
        QStringList ticked;
    } steps[] = {{Qt::Key_Home, "Paint", Qt::Key_Space, {"false", "true", "true"}},
                 {Qt::Key_Down, "com.paint-notes.plist", Qt::Key_Return, {"false", "false", "true"}},
                 {Qt::Key_End, "paint", Qt::Key_Space, {"false", "false", "false"}},
                 {Qt::Key_Home, "Paint", Qt::Key_Return, {"true", "false", "false"}}};
    for (const auto& [walks, to, ticks, ticked] : steps) {
        m_driver->key(walks);
        QCOMPARE(current(), to);
        m_driver->key(ticks);
        QCOMPARE(shown("checked"), ticked);
    }
    // The pointer hides where the keys were, the next key shows it again.
    for (const char* row : {"paint", "Paint"})
        m_driver->click(*m_driver->row(row));
    QCOMPARE(current(), QString());
    m_driver->key(Qt::Key_Space);
    QCOMPARE(current(), "Paint");
    QCOMPARE(shown("checked"), (QStringList{"true", "false", "true"}));

    m_driver->key(Qt::Key_Backtab);
    QVERIFY(hasFocus("backButton"));
    m_driver->key(Qt::Key_Return);
    QCOMPARE(current(), "Paint");
    m_driver->key(Qt::Key_Return);
    files();
    m_driver->key(Qt::Key_Tab);
    m_driver->key(Qt::Key_Return);
    QTRY_VERIFY(hasFocus("cancel"));
    m_driver->key(Qt::Key_Tab);
    m_driver->key(Qt::Key_Return);
    QTRY_VERIFY(!m_driver->isShown("cancel"));
    QTRY_VERIFY(hasFocus("appsList"));
    QCOMPARE(current(), "Solo"); // what has taken its place
}

void UninstallTest::leavesTheKeyboardWhereTheUserTookItMeanwhile() {
    HandCranked jobs;
    openUninstall(jobs.executor());
    m_driver->item("languageMenu")->forceActiveFocus(Qt::TabFocusReason);
    jobs.run();
    apps();
    QVERIFY(hasFocus("languageMenu"));
    m_driver->key(Qt::Key_Tab);
    QCOMPARE(current(), "Notes");
    m_driver->key(Qt::Key_Return);
    QCOMPARE(m_driver->text("loadingIndicator", "label"), translated("loading_leftovers"));
    QCOMPARE(m_driver->text("loadingIndicator", "subtitle"), "Notes");
    QVERIFY(m_driver->rows().empty() && !m_driver->isShown("deleteButton"));
    m_driver->key(Qt::Key_Backtab);
    QVERIFY(hasFocus("backButton"));
    jobs.run();
    files();
    QVERIFY(hasFocus("backButton"));
    m_driver->key(Qt::Key_Tab);
    QCOMPARE(current(), "Notes");
}

void UninstallTest::tellsAScreenReaderWhatIsSeen() {
    openUninstall();
    apps();
    auto* app = QAccessible::queryAccessibleInterface(m_driver->row("Paint"));
    QCOMPARE(app->text(QAccessible::Name), "Paint, 2 KB");
    app->actionInterface()->doAction(QAccessibleActionInterface::pressAction());
    files();
    for (QQuickItem* row : {m_driver->rows().at(0), m_driver->rows().at(1)}) {
        auto* box = QAccessible::queryAccessibleInterface(row);
        for (const bool checked : {false, true}) {
            box->actionInterface()->doAction(checked ? QAccessibleActionInterface::toggleAction()
                                                     : QAccessibleActionInterface::pressAction());
            QCOMPARE(bool(box->state().checked), checked);
            QCOMPARE(row->property("checked").toBool(), checked);
        }
    }
    confirm("deleteButton");
    QCOMPARE(told("uninstalledLabel")->role(), QAccessible::AlertMessage);
    QCOMPARE(told("uninstalledLabel")->text(QAccessible::Name), banner("Paint"));
}

int main(int argc, char** argv) {
    return runTest<UninstallTest>(argc, argv);
}

#include "uninstall_test.moc"
