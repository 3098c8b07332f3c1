#include "app/models/scan_view_model.h"
#include "tests/ui/window_test.h"

/// What stands round the screens: the tabs, the language, the window itself.
class ShellTest : public WindowTest {
    Q_OBJECT

private Q_SLOTS:
    void init();

    void showsTheScreenOfEachTab();
    void walksTheTabsByKeysAndChoosesOnlyWhenTold();
    void choosesALanguageByClicks();
    void choosesALanguageByKeys();
    void choosesALanguageByAScreenReader();
};

void ShellTest::init() {
    WindowTest::init();
    open();
}

void ShellTest::showsTheScreenOfEachTab() {
    const struct {
        const char* tab;
        const char* title;
        QString subtitle;
    } screens[] = {{"tab_uninstall", "uninstall_title", translated("word_free_space")},
                   {"tab_startup", "startup_title", translated("startup_subtitle")},
                   {"tab_duplicates", "duplicates_title", translated("duplicates_subtitle")},
                   {"tab_history", "tab_history", translated("history_subtitle")}};
    QCOMPARE(window()->minimumSize(), smallest);
    QVERIFY(model<ScanViewModel>());
    for (const auto& [chosen, title, subtitle] : screens) {
        QVERIFY(m_driver->click(chosen));
        QCOMPARE(m_driver->text("screenTitle"), translated(title));
        QVERIFY(m_driver->text("screenSubtitle").startsWith(subtitle));
        QTRY_VERIFY(!model<ScanViewModel>()); // what is left is discarded
        for (const auto& screen : screens) {
            QCOMPARE(told(screen.tab)->role(), QAccessible::PageTab);
            QCOMPARE(told(screen.tab)->text(QAccessible::Name), translated(screen.tab));
            QCOMPARE(bool(told(screen.tab)->state().selected), screen.tab == chosen);
        }
    }
    QVERIFY(m_driver->click("tab_cleanup"));
    QVERIFY(m_driver->isShown("scanButton"));
    QVERIFY(hasFocus("scanButton")); // a click leaves the keyboard where the screen wants it
}

void ShellTest::walksTheTabsByKeysAndChoosesOnlyWhenTold() {
    m_driver->item("tab_cleanup")->forceActiveFocus(Qt::TabFocusReason);
    m_driver->key(Qt::Key_Left); // there is nothing
    QVERIFY(hasFocus("tab_cleanup"));
    m_driver->key(Qt::Key_Right);
    m_driver->key(Qt::Key_Right);
    QVERIFY(hasFocus("tab_startup"));
    QVERIFY(m_driver->isShown("scanButton"));
    m_driver->key(Qt::Key_End);
    m_driver->key(Qt::Key_Return);
    QCOMPARE(m_driver->text("screenTitle"), translated("tab_history"));
    QVERIFY(hasFocus("tab_history"));
    m_driver->key(Qt::Key_Home);
    m_driver->key(Qt::Key_Space);
    QVERIFY(m_driver->isShown("scanButton"));
    // One stop among the tabs, then the language, then the screen.
    for (const char* stop : {"languageMenu", "scanButton"}) {
        m_driver->key(Qt::Key_Tab);
        QVERIFY(hasFocus(stop));
    }
}

void ShellTest::choosesALanguageByClicks() {
    QCOMPARE(m_driver->text("languageMenu"), "English");
    QVERIFY(m_driver->click("languageMenu"));
    QTRY_COMPARE(menuEntries(),
                 (QStringList{"Automatique", "Français", "English*", "Srpski (latinica)", "Српски (ћирилица)",
                              "Deutsch", "Español", "Italiano", "Português", "Русский"}));
    // Chosen once more, the present one stays chosen.
    for (int i = 0; i < 2; ++i) {
        m_driver->click(*menuEntry("Français"));
        QTRY_VERIFY(menuEntries().isEmpty());
        QCOMPARE(Localizer::shared().language(), AppLanguage::fr);
        QCOMPARE(Localizer().language(), AppLanguage::fr); // as the next start finds it
        QCOMPARE(m_driver->text("languageMenu"), "Français");
        QCOMPARE(m_driver->text("tab_cleanup"), "Nettoyage");
        QVERIFY(m_driver->click("languageMenu"));
        QTRY_VERIFY(menuEntries().contains("Français*") && menuEntries().contains("English"));
    }
    // Its button closes it, too.
    QVERIFY(m_driver->click("languageMenu"));
    QTRY_VERIFY(menuEntries().isEmpty());
}

void ShellTest::choosesALanguageByKeys() {
    m_driver->item("languageMenu")->forceActiveFocus(Qt::TabFocusReason);
    const struct {
        Qt::Key opens;
        Qt::Key answers;
        AppLanguage chosen;
    } cases[] = {{Qt::Key_Space, Qt::Key_Escape, AppLanguage::en},
                 {Qt::Key_Down, Qt::Key_Return, AppLanguage::fr}};
    for (const auto& [opens, answers, chosen] : cases) {
        m_driver->key(opens);
        QTRY_VERIFY(menuEntry("English") && menuEntry("English")->property("highlighted").toBool());
        m_driver->key(Qt::Key_Up);
        m_driver->key(answers);
        QTRY_VERIFY(menuEntries().isEmpty());
        QCOMPARE(Localizer::shared().language(), chosen);
        QVERIFY(hasFocus("languageMenu"));
        QVERIFY(m_driver->item("languageMenu")->property("visualFocus").toBool());
    }
}

void ShellTest::choosesALanguageByAScreenReader() {
    const auto toldOf = [this](const char* language) {
        return QAccessible::queryAccessibleInterface(menuEntry(language));
    };
    const auto press = [](QAccessibleInterface* control) {
        control->actionInterface()->doAction(QAccessibleActionInterface::pressAction());
    };
    QCOMPARE(told("languageMenu")->role(), QAccessible::Button);
    QCOMPARE(told("languageMenu")->text(QAccessible::Name), translated("language_label") + ", English");
    for (int i = 0; i < 2; ++i) {
        press(told("languageMenu"));
        QTRY_COMPARE(menuEntries().size(), 10);
        QVERIFY(toldOf("English")->state().checkable && toldOf("Deutsch")->state().checkable);
        QCOMPARE(bool(toldOf("English")->state().checked), i == 0);
        QCOMPARE(bool(toldOf("Deutsch")->state().checked), i == 1);
        press(toldOf("Deutsch"));
        QTRY_VERIFY(menuEntries().isEmpty());
        QCOMPARE(Localizer::shared().language(), AppLanguage::de);
    }
}

int main(int argc, char** argv) {
    return runTest<ShellTest>(argc, argv);
}

#include "shell_test.moc"
