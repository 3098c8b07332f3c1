#include "app/models/scan_view_model.h"
#include "app/update/update_checker.h"
#include "tests/app/update_server.h"
#include "tests/ui/window_test.h"

#include <QDesktopServices>
#include <QSettings>

namespace {

const QUrl page("https://localhost/get");

// Not a constant: the texts are resources, which static initializers may run before.
UpdateAlert announcement() {
    return UpdateChecker::alertIn("en", "Lumvale", "1.5", "1.4", page);
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
    void standsAboveTheIntroduction();
    void standsAboveAConfirmationAndWaitsForWhatIsUnderWay();
    void comesToTheFront();
    void comesFromTheServerToTheScreen();

private:
    void announce();
    void leave(); ///< by Escape
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

void UpdateTest::announce() {
    m_lumvale->announce(announcement());
    QTRY_VERIFY(m_driver->isShown("download"));
    QCOMPARE(focused(), "download");
}

void UpdateTest::leave() {
    m_driver->key(Qt::Key_Escape);
    QTRY_VERIFY(!m_driver->isShown("download"));
}

QString UpdateTest::focused() const {
    const QQuickItem* item = window()->activeFocusItem();
    return item ? item->objectName() : QString();
}

void UpdateTest::opensThePageOrNothing_data() {
    QTest::addColumn<QByteArray>("click");
    QTest::addColumn<QList<Qt::Key>>("keys");
    QTest::addColumn<bool>("opens");
    const struct {
        const char* click;
        QList<Qt::Key> keys;
        bool opens;
    } cases[]{{"download", {}, true},
              {"later", {}, false},
              {"scanButton", {Qt::Key_Escape}, false}, // what lies behind
              {"", {Qt::Key_Escape}, false},
              {"", {Qt::Key_Return}, true},
              {"", {Qt::Key_Space}, true},
              {"", {Qt::Key_Tab, Qt::Key_Return}, false},
              {"", {Qt::Key_Left, Qt::Key_Return}, false},
              {"", {Qt::Key_Left, Qt::Key_Right, Qt::Key_Return}, true}};
    for (const auto& [click, keys, opens] : cases)
        QTest::addRow("%s, %d keys, %d", click, int(keys.size()), opens)
            << QByteArray(click) << keys << opens;
}

void UpdateTest::opensThePageOrNothing() {
    QFETCH(QByteArray, click);
    QFETCH(QList<Qt::Key>, keys);
    QFETCH(bool, opens);
    open();
    announce();
    if (!click.isEmpty())
        QVERIFY(m_driver->click(click));
    for (const Qt::Key key : keys)
        m_driver->key(key);
    QTRY_VERIFY(!m_driver->isShown("download"));
    QCOMPARE(m_opened, opens ? QList<QUrl>{page} : QList<QUrl>{});
    QVERIFY(m_driver->isShown("scanButton") && !model<ScanViewModel>()->isScanning());
    QTRY_COMPARE(focused(), "scanButton");
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
    leave();
    QVERIFY(m_driver->isShown("onboardingTitle"));
    QTRY_COMPARE(focused(), "next");
    QVERIFY(!QSettings().contains("didOnboard"));
    QVERIFY(m_driver->click("next"));
    QCOMPARE(m_driver->text("onboardingTitle"), translated("onboard_title_features"));
}

void UpdateTest::standsAboveAConfirmationAndWaitsForWhatIsUnderWay() {
    for (const bool isUnderWay : {false, true}) {
        open();
        QVERIFY(m_driver->click("scanButton"));
        QTRY_VERIFY(m_driver->isShown("deleteButton"));
        QVERIFY(m_driver->click("deleteButton"));
        QTRY_VERIFY(m_driver->isShown("confirm"));
        if (isUnderWay) { // as when the time has come while the files were being moved
            connect(m_driver->blockingAction(), &BlockingAction::ready, this,
                    [this] { m_lumvale->announce(announcement()); });
            QVERIFY(m_driver->click("confirm"));
            QTRY_VERIFY(m_driver->isShown("download"));
        } else {
            announce();
        }
        QCOMPARE(m_driver->isShown("confirm"), !isUnderWay);
        QCOMPARE(m_disk->exists("~/Library/Caches/com.example.a"), !isUnderWay);
        QCOMPARE(focused(), "download");
        leave();
        QTRY_COMPARE(focused(), isUnderWay ? "resultsList" : "cancel"); // as without it
    }
    QVERIFY(m_opened.isEmpty());
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
    QCOMPARE(m_driver->text("download"), "Преузми");
    QCOMPARE(m_driver->text("later"), "Касније");
    QCOMPARE(told("download")->text(QAccessible::Name), "Преузми");
    QVERIFY(m_driver->click("download"));
    QTRY_COMPARE(m_opened, QList<QUrl>{page});
}

int main(int argc, char** argv) {
    return runTest<UpdateTest>(argc, argv);
}

#include "update_test.moc"
