#include "app/models/scan_view_model.h"
#include "app/update/update_alert.h"
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

    void opensThePageOnlyIfChosen();
    void standsAboveTheIntroduction();
    void standsAboveAConfirmation();
    void restoresAMinimizedWindow();

private:
    void announce();
    void dismiss(); ///< by Escape

    QList<QUrl> m_opened;
};

void UpdateTest::init() {
    WindowTest::init();
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

void UpdateTest::opensThePageOnlyIfChosen() {
    const struct {
        const char* click;
        QList<Qt::Key> keys;
        bool opens;
    } cases[]{{"download", {}, true},
              {"later", {}, false},
              {"scanButton", {Qt::Key_Escape}, false}, // behind the dialog
              {"dialogTitle", {Qt::Key_Return}, true},
              {"dialogTitle", {Qt::Key_Tab, Qt::Key_Return}, false}};
    for (const auto& [click, keys, opens] : cases) {
        m_opened.clear();
        open();
        announce();
        QVERIFY(m_driver->click(click));
        for (const Qt::Key key : keys)
            m_driver->key(key);
        QTRY_VERIFY(!m_driver->isShown("download"));
        QCOMPARE(m_opened, opens ? QList<QUrl>{page} : QList<QUrl>{});
        QVERIFY(!model<ScanViewModel>()->isScanning());
        QTRY_VERIFY(hasFocus("scanButton"));
    }
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

int main(int argc, char** argv) {
    return runTest<UpdateTest>(argc, argv);
}

#include "update_test.moc"
