#include "app/history/history_store.h"
#include "app/i18n/localizer.h"
#include "app/models/background.h"
#include "app/models/scan_view_model.h"
#include "tests/support/temporary_disk.h"
#include "tests/ui/driver.h"
#include "ui/shell/lumvale_window.h"

#include <QAccessible>
#include <QDesktopServices>
#include <QGuiApplication>
#include <QSettings>
#include <QTest>

#include <algorithm>
#include <memory>
#include <optional>

namespace {

QString translated(const char* key) {
    return tr(QLatin1String(key));
}

bool didOnboard() {
    return QSettings().value("didOnboard").toBool();
}

QRectF inScene(const QQuickItem& item) {
    return item.mapRectToScene(QRectF(0, 0, item.width(), item.height()));
}

constexpr const char* pages[] = {"welcome", "features", "fda", "ready"};

} // namespace

/// The introduction as its user meets it: the real window, clicks and keys, real files.
class OnboardingTest : public QObject {
    Q_OBJECT

public Q_SLOTS:
    void take(const QUrl& address) { m_opened.append(address.toString()); }

private Q_SLOTS:
    void init();
    void cleanup();

    void isShownUntilItIsOver_data();
    void isShownUntilItIsOver();
    void isGoneThroughByClicks();
    void isGoneThroughByKeys();
    void isOverOnceItIsDismissed();
    void isNotOverWhenTheProgramEnds_data();
    void isNotOverWhenTheProgramEnds();
    void keepsWhatLiesBehindFromAnswering();
    void speaksTheLanguageThatIsChosen();
    void seesThePermissionOnceItIsGiven();
    void handsTheAddressOfTheSettingsOver();
    void nothingIsCutOffInAnyLanguage_data();
    void nothingIsCutOffInAnyLanguage();

private:
    void open();
    void turnTo(int page) const;
    bool showsPage(int page) const;
    QString focused() const; ///< the name of what has the keyboard

    std::optional<OrdinaryUser> m_user;
    std::unique_ptr<TemporaryDisk> m_disk;
    std::unique_ptr<HistoryStore> m_history;
    std::unique_ptr<LumvaleWindow> m_lumvale;
    std::optional<Driver> m_driver;
    QStringList m_opened;
};

void OnboardingTest::init() {
    QSettings().remove("didOnboard");
    Localizer::shared().setLanguage(AppLanguage::en);
    // Only an ordinary user is kept from looking.
    m_user.emplace();
    m_disk = std::make_unique<TemporaryDisk>();
    m_disk->make("~/Library/Mail/");
    m_disk->setMode("~/Library/Mail", 0);
    m_history = std::make_unique<HistoryStore>(m_disk->disk());
}

void OnboardingTest::cleanup() {
    m_driver.reset();
    m_lumvale.reset();
    m_history.reset();
    m_disk.reset();
    m_user.reset();
}

void OnboardingTest::open() {
    m_lumvale = std::make_unique<LumvaleWindow>(m_disk->disk(), *m_history, qtExecutor());
    QVERIFY(m_lumvale->window());
    m_lumvale->window()->resize(820, 700);
    QVERIFY(QTest::qWaitForWindowExposed(m_lumvale->window()));
    QTRY_COMPARE(m_lumvale->window()->contentItem()->size(), QSizeF(820, 700));
    // As when the window system makes it the active one, which it doesn't do on every machine.
    m_lumvale->window()->contentItem()->setFocus(true, Qt::ActiveWindowFocusReason);
    m_driver.emplace(*m_lumvale->window());
    if (!didOnboard())
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

QString OnboardingTest::focused() const {
    const QQuickItem* item = m_lumvale->window()->activeFocusItem();
    return item ? item->objectName() : QString();
}

void OnboardingTest::isShownUntilItIsOver_data() {
    QTest::addColumn<QVariant>("stored");
    QTest::addColumn<bool>("isShown");
    QTest::newRow("nothing stored") << QVariant() << true;
    QTest::newRow("not over") << QVariant(false) << true;
    QTest::newRow("over") << QVariant(true) << false;
}

void OnboardingTest::isShownUntilItIsOver() {
    QFETCH(QVariant, stored);
    QFETCH(bool, isShown);
    if (stored.isValid())
        QSettings().setValue("didOnboard", stored);
    open();
    QTest::qWait(200);
    QCOMPARE(m_driver->isShown("onboardingTitle"), isShown);
}

void OnboardingTest::isGoneThroughByClicks() {
    open();
    for (int page = 0; page < 4; ++page) {
        QVERIFY(showsPage(page));
        QVERIFY(!didOnboard());
        QVERIFY(m_driver->click("next"));
    }
    QTRY_VERIFY(!m_driver->isShown("onboardingTitle"));
    QVERIFY(didOnboard());
    QTRY_COMPARE(focused(), "scanButton");
    QVERIFY(m_driver->click("scanButton"));
    QTRY_VERIFY(m_driver->isShown("resultsList"));

    cleanup();
    init();
    QSettings().setValue("didOnboard", true);
    open();
    QTest::qWait(200);
    QVERIFY(!m_driver->isShown("onboardingTitle"));
}

void OnboardingTest::isGoneThroughByKeys() {
    open();
    const QStringList stops[]{
        {"languagePicker", "next"}, {"next"}, {"openSettings", "checkAgain", "next"}, {"next"}};
    for (int page = 0; page < 4; ++page) {
        QVERIFY(showsPage(page));
        // The keyboard starts on the way on, and Tab leads round inside the sheet, in both directions.
        QTRY_COMPARE(focused(), "next");
        for (const QString& stop : stops[page]) {
            m_driver->key(Qt::Key_Tab);
            QCOMPARE(focused(), stop);
        }
        QTest::keyClick(m_lumvale->window(), Qt::Key_Backtab, Qt::ShiftModifier);
        QCOMPARE(focused(), stops[page].value(stops[page].size() - 2, "next"));
        m_driver->key(Qt::Key_Tab);
        m_driver->key(page % 2 ? Qt::Key_Space : Qt::Key_Return);
    }
    QTRY_VERIFY(!m_driver->isShown("onboardingTitle"));
    QVERIFY(didOnboard());
}

void OnboardingTest::isOverOnceItIsDismissed() {
    open();
    // Escape closes what is in front, first.
    QVERIFY(m_driver->click("languagePicker"));
    QTRY_VERIFY(m_driver->isShown("menuEntry"));
    m_driver->key(Qt::Key_Escape);
    QTRY_VERIFY(!m_driver->isShown("menuEntry"));
    QVERIFY(showsPage(0));
    QVERIFY(!didOnboard());
    m_driver->key(Qt::Key_Escape);
    QTRY_VERIFY(!m_driver->isShown("onboardingTitle"));
    QVERIFY(didOnboard());
    QTRY_COMPARE(focused(), "scanButton");
}

void OnboardingTest::isNotOverWhenTheProgramEnds_data() {
    QTest::addColumn<bool>("isClosed");
    QTest::newRow("by closing the window") << true;
    QTest::newRow("with the window open") << false;
}

void OnboardingTest::isNotOverWhenTheProgramEnds() {
    QFETCH(bool, isClosed);
    open();
    turnTo(3);
    if (isClosed) {
        m_lumvale->window()->close();
        QTRY_VERIFY(!m_lumvale->window()->isVisible());
    }
    m_driver.reset();
    m_lumvale.reset();
    QCoreApplication::processEvents();
    QVERIFY(!QSettings().contains("didOnboard"));
    open();
    QVERIFY(showsPage(0));
}

void OnboardingTest::keepsWhatLiesBehindFromAnswering() {
    open();
    const auto* model = m_lumvale->window()->findChild<ScanViewModel*>();
    for (const char* behind : {"scanButton", "emptyTrashButton", "tab_history", "languageMenu"})
        QVERIFY(m_driver->click(behind));
    QVERIFY(!model->isScanning() && !model->showEmptyTrashConfirm());
    QVERIFY(m_driver->isShown("scanButton") && !m_driver->isShown("menuEntry"));
    QVERIFY(showsPage(0) && !didOnboard());
}

void OnboardingTest::speaksTheLanguageThatIsChosen() {
    open();
    const QString before = m_driver->text("onboardingMessage");
    QVERIFY(m_driver->click("languagePicker"));
    QTRY_VERIFY(m_driver->isShown("menuEntry"));
    QTRY_VERIFY(m_driver->item("menuEntry")->parentItem()->opacity() == 1);
    const auto entries = m_driver->item("menuEntry")->parentItem()->childItems();
    const auto french = std::find_if(entries.begin(), entries.end(), [](const QQuickItem* entry) {
        return entry->property("text") == "Français";
    });
    QVERIFY(french != entries.end());
    // All of the menu is in the window, and none of it where a second click in haste would choose.
    const QPoint pressed = m_driver->centre(*m_driver->item("languagePicker"));
    for (const QQuickItem* entry : entries) {
        const QRectF place = inScene(*entry);
        QVERIFY(QRectF(0, 0, 820, 700).contains(place) && !place.contains(pressed));
    }
    m_driver->click(**french);
    QCOMPARE(Localizer::shared().language(), AppLanguage::fr);
    QVERIFY(showsPage(0));
    QVERIFY(m_driver->text("onboardingMessage") != before);
    QCOMPARE(m_driver->text("languagePicker"), "Français");
    QCOMPARE(m_driver->text("next"), "Suivant");
    QCOMPARE(m_driver->text("tab_cleanup"), "Nettoyage");
    QCOMPARE(Localizer().language(), AppLanguage::fr); // as the next run will read it
}

void OnboardingTest::seesThePermissionOnceItIsGiven() {
    open();
    turnTo(2);
    for (const char* step : {"onboard_fda_step1", "onboard_fda_step2", "onboard_fda_step3"})
        QCOMPARE(m_driver->text(step), translated(step));
    QVERIFY(m_driver->click("checkAgain"));
    QVERIFY(m_driver->isShown("onboard_fda_step1"));

    m_disk->setMode("~/Library/Mail", 0700);
    m_driver->item("openSettings")->forceActiveFocus(Qt::TabFocusReason);
    m_driver->key(Qt::Key_Tab);
    m_driver->key(Qt::Key_Return);
    QCOMPARE(m_driver->text("onboard_fda_granted"), translated("onboard_fda_granted"));
    for (const char* gone : {"onboard_fda_step1", "onboard_fda_step3", "openSettings", "checkAgain"})
        QVERIFY(!m_driver->isShown(gone));
    QVERIFY(showsPage(2));
    // What was pressed is gone, so the keyboard is on the way on, and shown there as it was.
    QCOMPARE(focused(), "next");
    QVERIFY(m_driver->item("next")->property("visualFocus").toBool());
    m_driver->key(Qt::Key_Return);
    QVERIFY(showsPage(3));

    // With permission given meanwhile, another run knows from the start.
    m_driver.reset();
    m_lumvale.reset();
    open();
    turnTo(2);
    QVERIFY(m_driver->isShown("onboard_fda_granted"));
}

void OnboardingTest::handsTheAddressOfTheSettingsOver() {
    QDesktopServices::setUrlHandler("x-apple.systempreferences", this, "take");
    open();
    turnTo(2);
    QVERIFY(m_driver->click("openSettings"));
    QCOMPARE(m_opened,
             QStringList("x-apple.systempreferences:com.apple.preference.security?Privacy_AllFiles"));
    QDesktopServices::unsetUrlHandler("x-apple.systempreferences");
    QVERIFY(showsPage(2) && m_driver->isShown("onboard_fda_step1"));
}

void OnboardingTest::nothingIsCutOffInAnyLanguage_data() {
    QTest::addColumn<AppLanguage>("language");
    for (const AppLanguage language : allAppLanguages)
        QTest::newRow(rawValue(language).toLatin1().constData()) << language;
}

void OnboardingTest::nothingIsCutOffInAnyLanguage() {
    QFETCH(AppLanguage, language);
    Localizer::shared().setLanguage(language);
    open();
    const auto check = [this] {
        (void)m_lumvale->window()->grabWindow(); // everything laid out
        QCOMPARE(m_driver->cutTexts().join("; "), QString());
        QCOMPARE(m_driver->silentControls().join("; "), QString());
        const QRectF place = inScene(*m_driver->item("onboardingContent"));
        QVERIFY(QRectF(0, 0, 820, 700).contains(place.adjusted(-32, -32, 32, 32)));
        QCOMPARE(place, QRectF(place.toRect())); // on whole pixels
        const auto* told = QAccessible::queryAccessibleInterface(m_driver->item("onboardingContent"));
        QCOMPARE(told->role(), QAccessible::Dialog);
        QCOMPARE(told->text(QAccessible::Name), m_driver->text("onboardingTitle"));
        QCOMPARE(told->text(QAccessible::Description), m_driver->text("onboardingMessage"));
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
    const OwnSettings settings;
    QGuiApplication application(argc, argv);
    QAccessible::setActive(true); // as with a screen reader
    OnboardingTest test;
    return QTest::qExec(&test, argc, argv);
}

#include "onboarding_test.moc"
