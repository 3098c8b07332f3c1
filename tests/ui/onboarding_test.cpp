#include "app/models/scan_view_model.h"
#include "tests/ui/window_test.h"

#include <QDesktopServices>
#include <QSettings>

#include <vector>

namespace {

bool didOnboard() {
    return QSettings().value("didOnboard").toBool();
}

constexpr const char* pages[] = {"welcome", "features", "fda", "ready"};

} // namespace

/// The introduction as its user meets it: the real window, clicks and keys, real files.
class OnboardingTest : public WindowTest {
    Q_OBJECT

public Q_SLOTS:
    void take(const QUrl& address) { m_opened.append(address.toString()); }

private Q_SLOTS:
    void init();

    void isGoneThroughByClicks();
    void isGoneThroughByKeys();
    void isOverOnceItIsDismissed();
    void isNotOverWhenTheProgramEnds();
    void speaksTheLanguageThatIsChosen();
    void seesThePermissionOnceItIsGiven();
    void nothingIsCutOffInAnyLanguage_data() { eachLanguage(); }
    void nothingIsCutOffInAnyLanguage();

private:
    void openIntroduction();
    void turnTo(int page) const;
    bool showsPage(int page) const;

    QStringList m_opened;
};

void OnboardingTest::init() {
    WindowTest::init();
    QSettings().remove("didOnboard");
    // Only an ordinary user is kept from looking.
    m_disk->make("~/Library/Mail/");
    m_disk->setMode("~/Library/Mail", 0);
}

void OnboardingTest::openIntroduction() {
    open();
    QTRY_VERIFY(showsPage(0));
}

void OnboardingTest::turnTo(int page) const {
    for (int i = 0; i < page; ++i)
        QVERIFY(m_driver->click("next"));
    QVERIFY(showsPage(page));
}

bool OnboardingTest::showsPage(int page) const {
    const QByteArray key = pages[page];
    return m_driver->text("onboardingTitle") == translated("onboard_title_" + key)
           && m_driver->text("onboardingMessage") == translated("onboard_message_" + key)
           && m_driver->text("next") == translated(page < 3 ? "btn_next" : "btn_start")
           && m_driver->isShown("languagePicker") == (page == 0)
           && m_driver->isShown("onboard_feature_cleanup") == (page == 1)
           && (m_driver->isShown("onboard_fda_step1") || m_driver->isShown("onboard_fda_granted"))
                  == (page == 2);
}

void OnboardingTest::isGoneThroughByClicks() {
    openIntroduction();
    // What lies behind doesn't answer.
    for (const char* behind : {"scanButton", "emptyTrashButton", "tab_history", "languageMenu"})
        QVERIFY(m_driver->click(behind));
    QVERIFY(!model<ScanViewModel>()->isScanning() && !model<ScanViewModel>()->showEmptyTrashConfirm());
    QVERIFY(m_driver->isShown("scanButton") && !m_driver->isShown("menuEntry"));

    const QPoint next = m_driver->centre(*m_driver->item("next"));
    for (int page = 0; page < 4; ++page) {
        QVERIFY(showsPage(page));
        QVERIFY(!didOnboard());
        QTRY_COMPARE(m_driver->centre(*m_driver->item("next")), next); // under the pointer on every page
        m_driver->doubleClick(*m_driver->item("next")); // of a hasty hand, which turns one page
    }
    QTRY_VERIFY(!m_driver->isShown("onboardingTitle"));
    QVERIFY(didOnboard());
    QTRY_VERIFY(hasFocus("scanButton"));

    open(); // the next run
    QTest::qWait(200);
    QVERIFY(!m_driver->isShown("onboardingTitle"));
}

void OnboardingTest::isGoneThroughByKeys() {
    openIntroduction();
    const std::vector<const char*> stops[]{
        {"languagePicker", "next"}, {"next"}, {"openSettings", "checkAgain", "next"}, {"next"}};
    for (int page = 0; page < 4; ++page) {
        QVERIFY(showsPage(page));
        // The keyboard starts on the way on, and Tab leads round inside the sheet.
        QTRY_VERIFY(hasFocus("next"));
        for (const char* stop : stops[page]) {
            m_driver->key(Qt::Key_Tab);
            QVERIFY2(hasFocus(stop), stop);
        }
        // It stays there, and so a screen reader would say nothing of the new page.
        QVERIFY(
            page == 0
            || told("next")->text(QAccessible::Description).contains(m_driver->text("onboardingMessage")));
        m_driver->holdKey(page % 2 ? Qt::Key_Space : Qt::Key_Return);
    }
    // What closed it didn't press what lies behind.
    QTRY_VERIFY(hasFocus("scanButton") && m_driver->isShown("emptyPrompt"));
    QVERIFY(didOnboard());
}

void OnboardingTest::isOverOnceItIsDismissed() {
    openIntroduction();
    // Escape closes what is in front, first.
    QVERIFY(m_driver->click("languagePicker"));
    QTRY_VERIFY(m_driver->isShown("menuEntry"));
    m_driver->key(Qt::Key_Escape);
    QTRY_VERIFY(!m_driver->isShown("menuEntry"));
    QVERIFY(showsPage(0) && !didOnboard());
    m_driver->key(Qt::Key_Escape);
    QTRY_VERIFY(!m_driver->isShown("onboardingTitle"));
    QVERIFY(didOnboard());
    QTRY_VERIFY(hasFocus("scanButton"));
}

void OnboardingTest::isNotOverWhenTheProgramEnds() {
    for (const bool isClosed : {false, true}) {
        openIntroduction();
        turnTo(3);
        if (isClosed) {
            window()->close();
            QTRY_VERIFY(!window()->isVisible());
        }
        close();
        QCoreApplication::processEvents();
        QVERIFY(!QSettings().contains("didOnboard"));
    }
}

void OnboardingTest::speaksTheLanguageThatIsChosen() {
    openIntroduction();
    const QString before = m_driver->text("onboardingMessage");
    QVERIFY(m_driver->click("languagePicker"));
    QTRY_VERIFY(m_driver->isShown("menuEntry"));
    QTRY_VERIFY(m_driver->item("menuEntry")->parentItem()->opacity() == 1);
    // All of the menu is in the window, and none of it where a second click in haste would choose.
    const QPoint pressed = m_driver->centre(*m_driver->item("languagePicker"));
    for (const QQuickItem* entry : m_driver->items("menuEntry")) {
        const QRectF place = Driver::place(*entry);
        QVERIFY(QRectF({}, smallest).contains(place) && !place.contains(pressed));
    }
    m_driver->click(*menuEntry("Français"));
    QCOMPARE(Localizer::shared().language(), AppLanguage::fr);
    QVERIFY(showsPage(0));
    QVERIFY(m_driver->text("onboardingMessage") != before);
    QCOMPARE(m_driver->text("languagePicker"), "Français");
    QCOMPARE(m_driver->text("tab_cleanup"), "Nettoyage");
}

void OnboardingTest::seesThePermissionOnceItIsGiven() {
    openIntroduction();
    turnTo(2);
    for (const char* step : {"onboard_fda_step1", "onboard_fda_step2", "onboard_fda_step3"})
        QCOMPARE(m_driver->text(step), translated(step));
    QDesktopServices::setUrlHandler("x-apple.systempreferences", this, "take");
    QVERIFY(m_driver->click("openSettings"));
    QDesktopServices::unsetUrlHandler("x-apple.systempreferences");
    QCOMPARE(m_opened,
             QStringList("x-apple.systempreferences:com.apple.preference.security?Privacy_AllFiles"));
    QVERIFY(m_driver->click("checkAgain"));
    QVERIFY(showsPage(2) && m_driver->isShown("onboard_fda_step1"));

    m_disk->setMode("~/Library/Mail", 0700);
    m_driver->item("openSettings")->forceActiveFocus(Qt::TabFocusReason);
    m_driver->key(Qt::Key_Tab);
    m_driver->key(Qt::Key_Return);
    QCOMPARE(m_driver->text("onboard_fda_granted"), translated("onboard_fda_granted"));
    for (const char* gone : {"onboard_fda_step1", "onboard_fda_step3", "openSettings", "checkAgain"})
        QVERIFY(!m_driver->isShown(gone));
    QVERIFY(showsPage(2));
    // What was pressed is gone, so the keyboard is on the way on, and shown there as it was.
    QVERIFY(hasFocus("next") && m_driver->item("next")->property("visualFocus").toBool());
    m_driver->key(Qt::Key_Return);
    QVERIFY(showsPage(3));

    // With permission given meanwhile, another run knows from the start.
    openIntroduction();
    turnTo(2);
    QVERIFY(m_driver->isShown("onboard_fda_granted"));
}

void OnboardingTest::nothingIsCutOffInAnyLanguage() {
    QFETCH(AppLanguage, language);
    Localizer::shared().setLanguage(language);
    openIntroduction();
    const auto check = [this] {
        checkEverythingIsSaid();
        const QRectF place = Driver::place(*m_driver->item("onboardingContent"));
        QVERIFY(QRectF({}, smallest).contains(place.adjusted(-32, -32, 32, 32)));
        QCOMPARE(place, QRectF(place.toRect())); // on whole pixels
        const auto* sheet = told("onboardingContent");
        QCOMPARE(sheet->role(), QAccessible::Dialog);
        QCOMPARE(sheet->text(QAccessible::Name), m_driver->text("onboardingTitle"));
        QCOMPARE(sheet->text(QAccessible::Description), m_driver->text("onboardingMessage"));
    };
    for (int page = 0; page < 4; ++page) {
        QVERIFY(showsPage(page));
        check();
        if (page == 2) {
            m_disk->setMode("~/Library/Mail", 0700);
            QVERIFY(m_driver->click("checkAgain"));
            QVERIFY(m_driver->isShown("onboard_fda_granted"));
            check();
        }
        QVERIFY(m_driver->click("next"));
    }
}

int main(int argc, char** argv) {
    return runTest<OnboardingTest>(argc, argv);
}

#include "onboarding_test.moc"
