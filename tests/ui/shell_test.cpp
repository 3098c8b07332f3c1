#include "app/models/scan_view_model.h"
#include "tests/ui/window_test.h"

/// The tabs and the language menu.
class ShellTest : public WindowTest {
    Q_OBJECT

private Q_SLOTS:
    void init();

    void showsTheScreenOfEachTab();
    void walksTabsByKeys();
    void choosesALanguageByClicks();
};

void ShellTest::init() {
    WindowTest::init();
    open();
}

void ShellTest::showsTheScreenOfEachTab() {
    const struct {
        const char* tab;
        const char* title;
        const char* subtitle;
    } screens[]{{"tab_uninstall", "uninstall_title", "word_free_space"},
                {"tab_startup", "startup_title", "startup_subtitle"},
                {"tab_duplicates", "duplicates_title", "duplicates_subtitle"},
                {"tab_history", "tab_history", "history_subtitle"}};
    QCOMPARE(window()->minimumSize(), smallest);
    for (const auto& [chosen, title, subtitle] : screens) {
        QVERIFY(m_driver->click(chosen));
        QCOMPARE(m_driver->text("screenTitle"), translated(title));
        QVERIFY(m_driver->text("screenSubtitle").startsWith(translated(subtitle)));
        QTRY_VERIFY(!model<ScanViewModel>()); // a left screen is destroyed
        for (const auto& screen : screens) {
            QCOMPARE(told(screen.tab)->role(), QAccessible::PageTab);
            QCOMPARE(told(screen.tab)->text(QAccessible::Name), translated(screen.tab));
            QCOMPARE(bool(told(screen.tab)->state().selected), screen.tab == chosen);
        }
    }
    QVERIFY(m_driver->click("tab_cleanup"));
    QVERIFY(hasFocus("scanButton"));
}

void ShellTest::walksTabsByKeys() {
    m_driver->item("tab_cleanup")->forceActiveFocus(Qt::TabFocusReason);
    const std::pair<Qt::Key, const char*> steps[]{
        {Qt::Key_Left, "tab_cleanup"}, {Qt::Key_Right, "tab_uninstall"}, {Qt::Key_End, "tab_history"}};
    for (const auto& [key, focused] : steps) {
        m_driver->key(key);
        QVERIFY2(hasFocus(focused) && m_driver->isShown("scanButton"), focused); // arrows only move focus
    }
    m_driver->key(Qt::Key_Return);
    QCOMPARE(m_driver->text("screenTitle"), translated("tab_history"));
    m_driver->key(Qt::Key_Home);
    m_driver->key(Qt::Key_Space);
    for (const char* stop : {"languageMenu", "scanButton"}) { // the tabs are one tab stop
        m_driver->key(Qt::Key_Tab);
        QVERIFY2(hasFocus(stop), stop);
    }
}

void ShellTest::choosesALanguageByClicks() {
    QCOMPARE(told("languageMenu")->text(QAccessible::Name), translated("language_label") + ", English");
    QVERIFY(m_driver->click("languageMenu"));
    QTRY_COMPARE(menuEntries(),
                 (QStringList{"Automatique", "Français", "English*", "Srpski (latinica)", "Српски (ћирилица)",
                              "Deutsch", "Español", "Italiano", "Português", "Русский"}));
    QVERIFY(told(menuEntry("English"))->state().checked && !told(menuEntry("Deutsch"))->state().checked);
    press(told(menuEntry("Deutsch")));
    QTRY_VERIFY(menuEntries().isEmpty());
    QCOMPARE(Localizer::shared().language(), AppLanguage::de);
    for (int i = 0; i < 2; ++i) { // chosen again, it stays chosen
        QVERIFY(m_driver->click("languageMenu"));
        QTRY_VERIFY(menuEntry("Français"));
        m_driver->click(*menuEntry("Français"));
        QTRY_VERIFY(menuEntries().isEmpty());
        QCOMPARE(Localizer::shared().language(), AppLanguage::fr);
        QCOMPARE(Localizer().language(), AppLanguage::fr); // at the next start
        QCOMPARE(m_driver->text("languageMenu"), "Français");
        QCOMPARE(m_driver->text("tab_cleanup"), "Nettoyage");
    }
}

int main(int argc, char** argv) {
    return runTest<ShellTest>(argc, argv);
}

#include "shell_test.moc"
