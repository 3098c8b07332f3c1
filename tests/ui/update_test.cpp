#include "app/models/scan_view_model.h"
#include "app/update/update_checker.h"
#include "tests/app/update_server.h"
#include "tests/ui/window_test.h"

#include <QDesktopServices>
#include <QSettings>

namespace {

const QUrl page("https://localhost/get");

const UpdateAlert announcement = UpdateChecker::alertIn("en", "Lumvale", "1.5", "1.4", page);

} // namespace

/// The dialog that announces a newer version.
class UpdateTest : public WindowTest {
    Q_OBJECT

public Q_SLOTS:
    void take(const QUrl& address) { m_opened.append(address); }

private Q_SLOTS:
    void init();
    void cleanup();

    void opensThePageOnlyIfChosen_data();
    void opensThePageOnlyIfChosen();
    void standsAboveTheIntroduction();
    void standsAboveAConfirmation();
    void restoresAMinimizedWindow();
    void comesFromTheServer();

private:
    void announce();
    void dismiss(); ///< by Escape

    QList<QUrl> m_opened;
    // Created before a test changes the user.
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
    m_lumvale->announce(announcement);
    QTRY_VERIFY(hasFocus("download"));
}

void UpdateTest::dismiss() {
    m_driver->key(Qt::Key_Escape);
    QTRY_VERIFY(!m_driver->isShown("download"));
}

void UpdateTest::opensThePageOnlyIfChosen_data() {
    QTest::addColumn<QByteArray>("click");
    QTest::addColumn<QList<Qt::Key>>("keys");
    QTest::addColumn<bool>("opens");
    using Keys = QList<Qt::Key>;
    QTest::newRow("download") << QByteArray("download") << Keys{} << true;
    QTest::newRow("later") << QByteArray("later") << Keys{} << false;
    QTest::newRow("behind") << QByteArray("scanButton") << Keys{Qt::Key_Escape} << false;
    QTest::newRow("Return") << QByteArray() << Keys{Qt::Key_Return} << true;
    QTest::newRow("Tab, Return") << QByteArray() << Keys{Qt::Key_Tab, Qt::Key_Return} << false;
}

void UpdateTest::opensThePageOnlyIfChosen() {
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
    QVERIFY(!model<ScanViewModel>()->isScanning());
    QTRY_VERIFY(hasFocus("scanButton"));
}

void UpdateTest::standsAboveTheIntroduction() {
    QSettings().remove("didOnboard");
    open();
    QTRY_VERIFY(hasFocus("next"));
    announce();
    QVERIFY(m_driver->click("next")); // behind the dialog
    QCOMPARE(m_driver->text("onboardingTitle"), translated("onboard_title_welcome"));
    dismiss();
    QTRY_VERIFY(hasFocus("next"));
    QVERIFY(!QSettings().contains("didOnboard"));
}

void UpdateTest::standsAboveAConfirmation() {
    for (const bool isBlocking : {false, true}) {
        open();
        QVERIFY(m_driver->click("scanButton"));
        QTRY_VERIFY(m_driver->isShown("deleteButton"));
        QVERIFY(m_driver->click("deleteButton"));
        QTRY_VERIFY(m_driver->isShown("confirm"));
        if (isBlocking) { // waits until the deletion is done
            connect(m_driver->blockingAction(), &BlockingAction::ready, this,
                    [this] { m_lumvale->announce(announcement); });
            QVERIFY(m_driver->click("confirm"));
            QTRY_VERIFY(hasFocus("download"));
        } else {
            announce();
        }
        QCOMPARE(m_driver->isShown("confirm"), !isBlocking);
        QCOMPARE(m_disk->exists("~/Library/Caches/com.example.a"), !isBlocking);
        dismiss();
        QTRY_VERIFY(hasFocus(isBlocking ? "resultsList" : "cancel"));
    }
}

void UpdateTest::restoresAMinimizedWindow() {
    open();
    window()->setWindowStates(Qt::WindowMinimized);
    announce();
    QTRY_VERIFY(!(window()->windowStates() & Qt::WindowMinimized));
    QTRY_VERIFY(window()->isExposed());
}

void UpdateTest::comesFromTheServer() {
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
}

int main(int argc, char** argv) {
    return runTest<UpdateTest>(argc, argv);
}

#include "update_test.moc"
