#include "app/models/scan_view_model.h"
#include "tests/ui/window_test.h"
#include "ui/style/reduced_motion.h"

#include <QSignalSpy>

#include <QKeyEvent>

#include <array>
#include <tuple>
#include <utility>

/// The tabs and the language menu.
class ShellTest : public WindowTest {
    Q_OBJECT

private Q_SLOTS:
    void init();

    void showsTheScreenOfEachTab();
    void walksTabsByKeys();
    void changesTabsByShortcuts();
    void choosesALanguageByClicks();
    void standsStillWithReducedMotion();

private:
    void checkSelected(const QString& tab) const; ///< is the only one told and drawn as selected
};

void ShellTest::checkSelected(const QString& tab) const {
    for (const char* each :
         {"tab_cleanup", "tab_uninstall", "tab_startup", "tab_duplicates", "tab_history"}) {
        const auto* background = m_driver->item(each)->property("background").value<QQuickItem*>();
        QCOMPARE(told(each)->state().selected == 1, tab == each);
        QCOMPARE(background->property("color").value<QColor>().alpha() > 0, tab == each);
    }
}

void ShellTest::init() {
    WindowTest::init();
    open();
}

void ShellTest::showsTheScreenOfEachTab() {
    const std::array<const char*, 3> screens[]{{"tab_uninstall", "uninstall_title", "word_free_space"},
                                               {"tab_startup", "startup_title", "startup_subtitle"},
                                               {"tab_duplicates", "duplicates_title", "duplicates_subtitle"},
                                               {"tab_history", "tab_history", "history_subtitle"}};
    QCOMPARE(window()->minimumSize(), smallest);
    for (const auto& [tab, title, subtitle] : screens) {
        QVERIFY(m_driver->click(tab));
        QCOMPARE(m_driver->text("screenTitle"), translated(title));
        QVERIFY(m_driver->text("screenSubtitle").startsWith(translated(subtitle)));
        QTRY_VERIFY(!model<ScanViewModel>()); // a left screen is destroyed
        QCOMPARE(told(tab)->role(), QAccessible::PageTab);
        QCOMPARE(told(tab)->text(QAccessible::Name), translated(tab));
        checkSelected(tab);
    }
    QVERIFY(m_driver->click("tab_cleanup"));
    QVERIFY(hasFocus("scanButton"));
    window()->resize(1600, 700);
    QTRY_COMPARE(Driver::place(*m_driver->item("scanButton")).right(), 1600 / 2 + 1100 / 2);
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
    for (const Qt::Key key : {Qt::Key_Home, Qt::Key_Space, Qt::Key_Tab, Qt::Key_Tab})
        m_driver->key(key);
    QVERIFY(hasFocus("scanButton")); // the tabs are one tab stop, the language menu is another
}

void ShellTest::changesTabsByShortcuts() {
    const std::tuple<Qt::Key, Qt::KeyboardModifiers, const char*> steps[]{
        {Qt::Key_4, Qt::ControlModifier, "tab_duplicates"},
        {Qt::Key_Tab, Qt::ControlModifier, "tab_history"},
        {Qt::Key_Tab, Qt::ControlModifier, "tab_cleanup"},
        {Qt::Key_Backtab, Qt::ControlModifier | Qt::ShiftModifier, "tab_history"},
        {Qt::Key_6, Qt::ControlModifier, "tab_history"},
        {Qt::Key_1, Qt::NoModifier, "tab_history"},
        {Qt::Key_1, Qt::ControlModifier, "tab_cleanup"}};
    for (const auto& [key, modifiers, tab] : steps) {
        QTest::keyClick(window(), key, modifiers);
        checkSelected(tab);
    }
    QVERIFY(hasFocus("scanButton"));
    // By position where the layout has no digit without Shift: 1 and 2 of a French keyboard.
    const std::tuple<Qt::Key, quint32, quint32, const char*> positions[]{
        // with the codes of X11 and of a Mac
        {Qt::Key_Eacute, 11, 0x13, "tab_uninstall"},
        {Qt::Key_Ampersand, 10, 0x12, "tab_cleanup"},
        {Qt::Key_Apostrophe, 48, 0x27, "tab_cleanup"}}; // not in the digit row of a US keyboard
    for (const auto& [key, scanCode, virtualKey, tab] : positions) {
        QKeyEvent event(QEvent::KeyPress, key, Qt::ControlModifier, scanCode, virtualKey, 0);
        QCoreApplication::sendEvent(window(), &event);
        checkSelected(tab);
    }
    QTRY_COMPARE(m_driver->text("tipText"), "Ctrl+R");
}

void ShellTest::choosesALanguageByClicks() {
    QCOMPARE(told("languageMenu")->text(QAccessible::Name), translated("language_label") + ", English");
    QVERIFY(m_driver->click("languageMenu"));
    QTRY_COMPARE(menuEntries(),
                 (QStringList{"Automatique", "Français", "English*", "Srpski (latinica)", "Српски (ћирилица)",
                              "Deutsch", "Español", "Italiano", "Português", "Русский"}));
    QVERIFY(told(menuEntry("English"))->state().checked && !told(menuEntry("Deutsch"))->state().checked);
    m_driver->key(Qt::Key_Escape);
    for (const bool byClick : {false, true}) { // chosen again, it stays chosen
        QTRY_VERIFY(menuEntries().isEmpty());
        QVERIFY(m_driver->click("languageMenu"));
        QTRY_VERIFY(menuEntry("Français"));
        if (byClick)
            m_driver->click(*menuEntry("Français"));
        else
            press(told(menuEntry("Français")));
        QCOMPARE(Localizer().language(), AppLanguage::fr); // at the next start
        QCOMPARE(m_driver->text("languageMenu"), "Français");
        QCOMPARE(m_driver->text("tab_cleanup"), "Nettoyage");
    }
}

void ShellTest::standsStillWithReducedMotion() {
    QTRY_VERIFY(m_driver->text("title", "phase") != "0");
    ReducedMotion::shared().setRequested(true);
    QCOMPARE(m_driver->text("title", "phase"), "0");
    QSignalSpy frames(window(), &QQuickWindow::frameSwapped);
    QTRY_VERIFY_WITH_TIMEOUT(!frames.wait(200), 60000); // after the frames that were already requested
    ReducedMotion::shared().setRequested(false);
    QVERIFY(frames.wait());
}

int main(int argc, char** argv) {
    return runTest<ShellTest>(argc, argv);
}

#include "shell_test.moc"
