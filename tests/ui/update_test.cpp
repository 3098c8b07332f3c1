#include "app/models/scan_view_model.h"
#include "app/update/update_checker.h"
#include "tests/app/update_server.h"
#include "tests/ui/window_test.h"

#include <QDesktopServices>
#include <QSettings>

namespace {

const QUrl page("https://localhost/get");

/// In the language of the moment.
UpdateAlert announcement(const std::string& version = "1.5") {
    return UpdateChecker::alertIn(rawValue(Localizer::shared().effective()), "Lumvale", version, "1.4", page);
}

} // namespace

/// The announcement of a newer version as its user meets it.
class UpdateTest : public WindowTest {
    Q_OBJECT

public Q_SLOTS:
    void take(const QUrl& address) { m_opened.append(address); }

private Q_SLOTS:
    void init();
    void cleanup();

    void opensThePageOrNothing_data();
    void opensThePageOrNothing();
    void isToldWholeInAnyLanguage_data() { eachLanguage(); }
    void isToldWholeInAnyLanguage();
    void standsAboveTheIntroduction();
    void standsAboveAConfirmation();
    void waitsForWhatIsUnderWay();
    void comesToTheFront();
    void comesFromTheServerToTheScreen();

private:
    void announce(const UpdateAlert& alert = announcement());
    QString focused() const;

    QList<QUrl> m_opened;
    // Made before a test is somebody else.
    const TestAuthority m_authority;
    const QByteArray m_authorities = m_authority.certificate();
    const QSslConfiguration m_identity = m_authority.identity();
};

void UpdateTest::init() {
    WindowTest::init();
    m_opened.clear();
    QDesktopServices::setUrlHandler("https", this, "take");
    m_disk->make("~/Library/Caches/com.example.a/blob 4000");
}

void UpdateTest::cleanup() {
    QDesktopServices::unsetUrlHandler("https");
    QSettings().setValue("didOnboard", true);
    WindowTest::cleanup();
}

void UpdateTest::announce(const UpdateAlert& alert) {
    m_lumvale->announce(alert);
    QTRY_VERIFY(m_driver->isShown("download"));
}

QString UpdateTest::focused() const {
    const QQuickItem* item = window()->activeFocusItem();
    return item ? item->objectName() : QString();
}

void UpdateTest::opensThePageOrNothing_data() {
    QTest::addColumn<QString>("click");
    QTest::addColumn<QList<Qt::Key>>("keys");
    QTest::addColumn<bool>("opens");
    using Keys = QList<Qt::Key>;
    QTest::newRow("download") << "download" << Keys{} << true;
    QTest::newRow("later") << "later" << Keys{} << false;
    QTest::newRow("what lies behind") << "scanButton" << Keys{Qt::Key_Escape} << false;
    QTest::newRow("Escape") << "" << Keys{Qt::Key_Escape} << false;
    QTest::newRow("Return") << "" << Keys{Qt::Key_Return} << true;
    QTest::newRow("Space") << "" << Keys{Qt::Key_Space} << true;
    QTest::newRow("Tab, Return") << "" << Keys{Qt::Key_Tab, Qt::Key_Return} << false;
    QTest::newRow("Left, Return") << "" << Keys{Qt::Key_Left, Qt::Key_Return} << false;
    QTest::newRow("Left, Right, Return") << "" << Keys{Qt::Key_Left, Qt::Key_Right, Qt::Key_Return} << true;
}

void UpdateTest::opensThePageOrNothing() {
    QFETCH(QString, click);
    QFETCH(QList<Qt::Key>, keys);
    QFETCH(bool, opens);
    open();
    announce();
    QCOMPARE(focused(), "download");
    if (!click.isEmpty())
        QVERIFY(m_driver->click(click.toLatin1().constData()));
    for (const Qt::Key key : keys)
        m_driver->key(key);
    QTRY_VERIFY(!m_driver->isShown("download"));
    QCOMPARE(m_opened, opens ? QList<QUrl>{page} : QList<QUrl>{});
    QVERIFY(m_driver->isShown("scanButton") && !model<ScanViewModel>()->isScanning());
    QTRY_COMPARE(focused(), "scanButton");
}

void UpdateTest::isToldWholeInAnyLanguage() {
    QFETCH(AppLanguage, language);
    Localizer::shared().setLanguage(language);
    open();
    for (const std::string& version : {std::string("1.5"), std::string(9'000, 'W'), std::string(300, '\n')}) {
        const UpdateAlert alert = announcement(version);
        announce(alert);
        QCOMPARE(m_driver->text("download"), alert.download);
        QCOMPARE(m_driver->text("later"), alert.later);
        QCOMPARE(m_driver->text("dialogTitle"), alert.title);
        QCOMPARE(m_driver->text("dialogMessage"), alert.message);
        checkEverythingIsSaid();
        const QRectF dialog = Driver::place(*m_driver->item("dialogContent"));
        QVERIFY(QRectF({}, smallest).contains(dialog.adjusted(-24, -24, 24, 24)));
        QVERIFY(dialog.contains(Driver::place(*m_driver->item("later"))));
        QCOMPARE(told("dialogContent")->role(), QAccessible::AlertMessage);
        QCOMPARE(told("dialogContent")->text(QAccessible::Name), alert.title);
        QCOMPARE(told("dialogContent")->text(QAccessible::Description), alert.message);
        QCOMPARE(told("download")->text(QAccessible::Name), alert.download);
    }
}

void UpdateTest::standsAboveTheIntroduction() {
    QSettings().remove("didOnboard");
    open();
    QTRY_VERIFY(m_driver->isShown("onboardingTitle"));
    QTRY_COMPARE(focused(), "next");
    announce();
    QVERIFY(m_driver->click("next")); // nothing behind answers
    QCOMPARE(m_driver->text("onboardingTitle"), translated("onboard_title_welcome"));
    QCOMPARE(focused(), "download");
    m_driver->key(Qt::Key_Escape);
    QTRY_VERIFY(!m_driver->isShown("download"));
    QVERIFY(m_driver->isShown("onboardingTitle"));
    QTRY_COMPARE(focused(), "next");
    QVERIFY(!QSettings().contains("didOnboard"));
    QVERIFY(m_driver->click("next"));
    QCOMPARE(m_driver->text("onboardingTitle"), translated("onboard_title_features"));
}

void UpdateTest::standsAboveAConfirmation() {
    open();
    QVERIFY(m_driver->click("scanButton"));
    QTRY_VERIFY(m_driver->isShown("deleteButton"));
    QVERIFY(m_driver->click("deleteButton"));
    QTRY_VERIFY(m_driver->isShown("confirm"));
    announce();
    QVERIFY(m_driver->click("later"));
    QTRY_VERIFY(!m_driver->isShown("download"));
    QVERIFY(m_driver->isShown("confirm"));
    QTRY_COMPARE(focused(), "cancel");
    QVERIFY(m_disk->exists("~/Library/Caches/com.example.a"));
    QVERIFY(m_driver->click("confirm"));
    QTRY_VERIFY(!m_driver->isShown("confirm"));
    QVERIFY(!m_disk->exists("~/Library/Caches/com.example.a"));
}

void UpdateTest::waitsForWhatIsUnderWay() {
    open();
    QVERIFY(m_driver->click("scanButton"));
    QTRY_VERIFY(m_driver->isShown("deleteButton"));
    QVERIFY(m_driver->click("deleteButton"));
    QTRY_VERIFY(m_driver->isShown("confirm"));
    // As when the time has come while the files were being moved.
    connect(m_driver->blockingAction(), &BlockingAction::ready, this,
            [this] { m_lumvale->announce(announcement()); });
    QVERIFY(m_driver->click("confirm"));
    QTRY_VERIFY(m_driver->isShown("download"));
    QVERIFY(!m_driver->isShown("confirm"));
    QCOMPARE(focused(), "download");
    m_driver->key(Qt::Key_Escape);
    QTRY_VERIFY(!m_driver->isShown("download"));
    QVERIFY(m_opened.isEmpty());
    QTRY_COMPARE(focused(), "resultsList"); // as without it
}

void UpdateTest::comesToTheFront() {
    open();
    window()->setWindowStates(Qt::WindowMinimized);
    announce();
    QTRY_VERIFY(!(window()->windowStates() & Qt::WindowMinimized));
    QTRY_VERIFY(window()->isExposed());
}

void UpdateTest::comesFromTheServerToTheScreen() {
    UpdateServer server(m_identity);
    server.serve("/maj/lumvale.json",
                 {UpdateServer::ok(R"({"version":"99.0","page":"https://localhost/get"})")});
    UpdateChecker::languageCode = [] {
        return rawValue(Localizer::shared().effective());
    };
    QSettings().remove("orvane.update.lastCheck");
    QObject owner;
    UpdateChecker::startIfNeeded(&owner, [this](const UpdateAlert& alert) { m_lumvale->announce(alert); },
                                 {.folder = server.url("/maj/"),
                                  .authorities = m_authorities,
                                  .delay = std::chrono::milliseconds(50)});
    open();
    Localizer::shared().setLanguage(AppLanguage::srCyrillic);
    QTRY_VERIFY(m_driver->isShown("download"));
    QCOMPARE(m_driver->text("dialogTitle"), "Доступна је нова верзија");
    QCOMPARE(m_driver->text("dialogMessage"), "Верзија 99.0 програма Lumvale је доступна. Бесплатна је за "
                                              "тебе. Имаш верзију "
                                                  + Identity::version() + ".");
    QVERIFY(m_driver->click("download"));
    QTRY_COMPARE(m_opened, QList<QUrl>{page});
}

int main(int argc, char** argv) {
    return runTest<UpdateTest>(argc, argv);
}

#include "update_test.moc"
