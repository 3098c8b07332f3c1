#include "app/models/scan_view_model.h"
#include "tests/app/hand_cranked.h"
#include "tests/ui/window_test.h"

#include <QPointer>

namespace {

constexpr const char* tabs[] = {"tab_cleanup", "tab_uninstall", "tab_startup", "tab_duplicates",
                                "tab_history"};

} // namespace

/// What stands round the screens: the tabs, the language, the window itself.
class ShellTest : public WindowTest {
    Q_OBJECT

private Q_SLOTS:
    void init();

    void showsTheScreenOfEachTab();
    void discardsAScreenWithItsModel();
    void walksTheTabsByKeysAndChoosesOnlyWhenTold();
    void changesEveryTextWithTheLanguage();
    void choosesALanguageByKeys();
    void tellsAScreenReaderWhichTabIsChosen();
    void tellsAScreenReaderWhichLanguageIsChosen();
    void keepsEverythingInSightAtItsSmallest_data() { eachLanguage(); }
    void keepsEverythingInSightAtItsSmallest();
};

void ShellTest::init() {
    WindowTest::init();
    m_disk->make("~/Library/Caches/com.example.a/blob 4000");
    open();
}

void ShellTest::showsTheScreenOfEachTab() {
    const struct {
        const char* tab;
        const char* title;
        const char* subtitle;
    } screens[] = {{"tab_uninstall", "uninstall_title", nullptr},
                   {"tab_startup", "startup_title", "startup_subtitle"},
                   {"tab_duplicates", "duplicates_title", "duplicates_subtitle"},
                   {"tab_history", "tab_history", "history_subtitle"}};
    QVERIFY(m_driver->isShown("scanButton"));
    for (const auto& [tab, title, subtitle] : screens) {
        QVERIFY(m_driver->click(tab));
        QCOMPARE(m_driver->text("screenTitle"), translated(title));
        if (subtitle)
            QCOMPARE(m_driver->text("screenSubtitle"), translated(subtitle));
        QVERIFY(!m_driver->isShown("scanButton") || tab == QLatin1String("tab_duplicates"));
    }
    QVERIFY(m_driver->click("tab_cleanup"));
    QVERIFY(m_driver->isShown("scanButton"));
}

void ShellTest::discardsAScreenWithItsModel() {
    HandCranked jobs;
    open(smallest, jobs.executor());
    QVERIFY(m_driver->click("scanButton"));
    jobs.run();
    QTRY_VERIFY(!m_driver->rows().empty());
    QVERIFY(m_driver->click("scanButton")); // one more is under way
    const QPointer first(model<ScanViewModel>());
    QVERIFY(m_driver->click("tab_history"));
    QTRY_VERIFY(!first);
    QVERIFY(m_driver->click("tab_cleanup"));
    QVERIFY(!jobs.isIdle());
    jobs.run();
    QVERIFY(m_driver->isShown("emptyPrompt") && m_driver->rows().empty());
    QVERIFY(model<ScanViewModel>() && !model<ScanViewModel>()->hasResult());
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
    QVERIFY(hasFocus("tab_history"));
    m_driver->key(Qt::Key_Return);
    QCOMPARE(m_driver->text("screenTitle"), translated("tab_history"));
    QVERIFY(hasFocus("tab_history"));
    m_driver->key(Qt::Key_Home);
    m_driver->key(Qt::Key_Space);
    QVERIFY(m_driver->isShown("scanButton"));
    // One stop among the tabs, then the language, then the screen.
    m_driver->key(Qt::Key_Tab);
    QVERIFY(hasFocus("languageMenu"));
    m_driver->key(Qt::Key_Tab);
    QVERIFY(hasFocus("scanButton"));
    // What a click chooses leaves the keyboard where the screen wants it.
    QVERIFY(m_driver->click("tab_history"));
    QVERIFY(m_driver->click("tab_cleanup"));
    QVERIFY(hasFocus("scanButton"));
}

void ShellTest::changesEveryTextWithTheLanguage() {
    QCOMPARE(m_driver->text("languageMenu"), "English");
    QVERIFY(m_driver->click("languageMenu"));
    QTRY_COMPARE(menuEntries(),
                 (QStringList{"Automatique", "Français", "English*", "Srpski (latinica)", "Српски (ћирилица)",
                              "Deutsch", "Español", "Italiano", "Português", "Русский"}));
    m_driver->click(*menuEntry("Français"));
    QTRY_VERIFY(menuEntries().isEmpty());
    QCOMPARE(Localizer::shared().language(), AppLanguage::fr);
    QCOMPARE(Localizer().language(), AppLanguage::fr); // as the next start finds it
    QCOMPARE(m_driver->text("languageMenu"), "Français");
    for (const char* tab : tabs)
        QCOMPARE(m_driver->text(tab), translated(tab));
    QCOMPARE(m_driver->text("tab_cleanup"), "Nettoyage");
    QCOMPARE(m_driver->text("scanButton"), "Analyser mon Mac");

    // The present choice stays one when it is chosen again.
    QVERIFY(m_driver->click("languageMenu"));
    QTRY_VERIFY(menuEntry("Français"));
    m_driver->click(*menuEntry("Français"));
    QTRY_VERIFY(menuEntries().isEmpty());
    QVERIFY(m_driver->click("languageMenu"));
    QTRY_VERIFY(menuEntries().contains("Français*"));
    // Its button closes it, too.
    QVERIFY(m_driver->click("languageMenu"));
    QTRY_VERIFY(menuEntries().isEmpty());
}

void ShellTest::choosesALanguageByKeys() {
    m_driver->item("languageMenu")->forceActiveFocus(Qt::TabFocusReason);
    m_driver->key(Qt::Key_Space);
    QTRY_COMPARE(menuEntries().size(), 10);
    QTRY_VERIFY(menuEntry("English")->property("highlighted").toBool());
    m_driver->key(Qt::Key_Up);
    m_driver->key(Qt::Key_Escape);
    QTRY_VERIFY(menuEntries().isEmpty());
    QCOMPARE(Localizer::shared().language(), AppLanguage::en);
    QVERIFY(hasFocus("languageMenu"));

    m_driver->key(Qt::Key_Down);
    QTRY_VERIFY(menuEntry("English") && menuEntry("English")->property("highlighted").toBool());
    m_driver->key(Qt::Key_Up);
    m_driver->key(Qt::Key_Return);
    QTRY_VERIFY(menuEntries().isEmpty());
    QCOMPARE(Localizer::shared().language(), AppLanguage::fr);
    QVERIFY(hasFocus("languageMenu"));
    QVERIFY(m_driver->item("languageMenu")->property("visualFocus").toBool());
}

void ShellTest::tellsAScreenReaderWhichTabIsChosen() {
    QVERIFY(m_driver->click("tab_history"));
    for (const char* tab : tabs) {
        QCOMPARE(told(tab)->role(), QAccessible::PageTab);
        QCOMPARE(told(tab)->text(QAccessible::Name), translated(tab));
        QCOMPARE(bool(told(tab)->state().selected), tab == QLatin1String("tab_history"));
    }
    QCOMPARE(told("languageMenu")->role(), QAccessible::Button);
    QCOMPARE(told("languageMenu")->text(QAccessible::Name), translated("language_label") + ", English");
}

void ShellTest::tellsAScreenReaderWhichLanguageIsChosen() {
    const auto toldOf = [this](const char* language) {
        return QAccessible::queryAccessibleInterface(menuEntry(language));
    };
    const auto press = [](QAccessibleInterface* control) {
        control->actionInterface()->doAction(QAccessibleActionInterface::pressAction());
    };
    // Chosen twice, the present one stays chosen.
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
    QVERIFY(m_driver->click("languageMenu"));
    QTRY_COMPARE(menuEntries().size(), 10);
    m_driver->click(*menuEntry("Deutsch"));
    QTRY_VERIFY(menuEntries().isEmpty());
    QVERIFY(m_driver->click("languageMenu"));
    QTRY_COMPARE(menuEntries().size(), 10);
    QVERIFY(toldOf("Deutsch")->state().checked && !toldOf("English")->state().checked);
}

void ShellTest::keepsEverythingInSightAtItsSmallest() {
    QFETCH(AppLanguage, language);
    QCOMPARE(window()->minimumSize(), smallest);
    Localizer::shared().setLanguage(language);
    for (const char* tab : tabs) {
        QVERIFY(m_driver->click(tab));
        checkEverythingIsSaid();
        QVERIFY(Driver::place(*m_driver->item("tab_history")).right() + 10
                <= Driver::place(*m_driver->item("languageMenu")).left());
    }
}

int main(int argc, char** argv) {
    return runTest<ShellTest>(argc, argv);
}

#include "shell_test.moc"
