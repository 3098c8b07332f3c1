#include "app/models/scan_view_model.h"
#include "tests/ui/window_test.h"

#include <QSettings>

/// The introduction in the real window.
class OnboardingTest : public WindowTest {
    Q_OBJECT

private Q_SLOTS:
    void init();

    void leadsThroughItsPagesByClicks();
    void changesLanguageAndIsDoneOnceDismissed();
    void isNotDoneIfTheProgramQuits();
    void noticesGrantedAccess();

private:
    void openIntroduction(int page = 0);
    bool showsPage(int page) const;
    static bool didOnboard() { return QSettings().value("didOnboard").toBool(); }
};

void OnboardingTest::init() {
    WindowTest::init();
    QSettings().remove("didOnboard");
    // The program has access if it can list this folder.
    m_disk->make("~/Library/Mail/");
    m_disk->setMode("~/Library/Mail", 0);
}

void OnboardingTest::openIntroduction(int page) {
    open();
    QTRY_VERIFY(showsPage(0));
    for (int i = 0; i < page; ++i)
        QVERIFY(m_driver->click("next"));
    QVERIFY(showsPage(page));
}

bool OnboardingTest::showsPage(int page) const {
    const QByteArray key = QByteArrayList{"welcome", "features", "fda", "ready"}[page];
    return m_driver->text("onboardingTitle") == translated("onboard_title_" + key)
           && m_driver->text("onboardingMessage") == translated("onboard_message_" + key)
           && m_driver->text("next") == translated(page < 3 ? "btn_next" : "btn_start")
           && m_driver->isShown("languagePicker") == (page == 0)
           && m_driver->isShown("onboard_feature_cleanup") == (page == 1)
           && (m_driver->isShown("onboard_fda_step1") || m_driver->isShown("onboard_fda_granted"))
                  == (page == 2);
}

void OnboardingTest::leadsThroughItsPagesByClicks() {
    openIntroduction();
    for (const char* behind : {"scanButton", "languageMenu", "emptyTrashButton", "tab_history"})
        QVERIFY(m_driver->click(behind));
    QVERIFY(!model<ScanViewModel>()->isScanning() && !m_driver->isShown("menuEntry")
            && !m_driver->isShown("confirm") && !m_driver->isShown("historyNote"));
    for (int page = 0; page < 4; ++page) {
        QVERIFY(showsPage(page) && !didOnboard());
        m_driver->doubleClick(*m_driver->item("next")); // turns one page
    }
    QTRY_VERIFY(!m_driver->isShown("onboardingTitle"));
    open(); // as at the next start
    QVERIFY(!m_driver->isShown("onboardingTitle"));
}

void OnboardingTest::changesLanguageAndIsDoneOnceDismissed() {
    openIntroduction();
    QVERIFY(m_driver->click("languagePicker"));
    QTRY_VERIFY(menuEntry("Français"));
    m_driver->click(*menuEntry("Français"));
    QTRY_VERIFY(showsPage(0) && m_driver->text("languagePicker") == "Français");
    for (const char* button : {"next", "languagePicker"})
        m_driver->item(button)->forceActiveFocus(Qt::TabFocusReason);
    m_driver->key(Qt::Key_Space);
    QTRY_VERIFY(m_driver->isShown("menuEntry"));
    m_driver->key(Qt::Key_Escape); // closes the menu only
    QTRY_VERIFY(!m_driver->isShown("menuEntry"));
    QVERIFY(showsPage(0) && !didOnboard());
    QCOMPARE(m_driver->text("languagePicker", "visualFocus"), "true");
    m_driver->key(Qt::Key_Escape);
    QTRY_VERIFY(!m_driver->isShown("onboardingTitle"));
    QVERIFY(didOnboard());
    QCOMPARE(m_driver->text("scanButton", "visualFocus"), "true");
}

void OnboardingTest::isNotDoneIfTheProgramQuits() {
    for (const bool isClosedFirst : {false, true}) {
        openIntroduction(3);
        if (isClosedFirst) {
            QTest::keyClick(window(), Qt::Key_Q, Qt::ControlModifier);
            QVERIFY(!window()->isVisible());
        }
        close();
        QCoreApplication::processEvents();
        QVERIFY(!QSettings().contains("didOnboard"));
    }
}

void OnboardingTest::noticesGrantedAccess() {
    openIntroduction(2);
    for (const char* step : {"onboard_fda_step1", "onboard_fda_step2", "onboard_fda_step3"})
        QCOMPARE(m_driver->text(step), translated(step));
    QVERIFY(m_driver->click("openSettings"));
    QCOMPARE(m_opened,
             QStringList("x-apple.systempreferences:com.apple.preference.security?Privacy_AllFiles"));
    QVERIFY(m_driver->click("checkAgain") && m_driver->isShown("onboard_fda_step1"));

    m_disk->setMode("~/Library/Mail", 0700);
    m_driver->item("checkAgain")->forceActiveFocus(Qt::TabFocusReason);
    m_driver->key(Qt::Key_Return);
    QCOMPARE(m_driver->text("onboard_fda_granted"), translated("onboard_fda_granted"));
    QVERIFY(!m_driver->isShown("onboard_fda_step1") && !m_driver->isShown("checkAgain"));
    QVERIFY(hasFocus("next")); // the focused button is hidden
    openIntroduction(2);       // as at the next start
    QVERIFY(m_driver->isShown("onboard_fda_granted"));
}

int main(int argc, char** argv) {
    return runTest<OnboardingTest>(argc, argv);
}

#include "onboarding_test.moc"
