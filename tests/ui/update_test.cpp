#include "app/models/scan_view_model.h"
#include "app/update/update_alert.h"
#include "tests/ui/window_test.h"

#include <QSettings>

#include <tuple>

/// The dialog that announces a newer version.
class UpdateTest : public WindowTest {
    Q_OBJECT

private Q_SLOTS:
    void opensThePageOnlyIfChosen();
    void standsAboveTheIntroduction();
    void standsAboveAConfirmation();
    void restoresAMinimizedWindow();

private:
    void announce(); ///< returns once the dialog is open
    void dismiss();  ///< by Escape; the next announcement opens the dialog again

    const QString m_page = "https://localhost/get";
    const UpdateAlert m_announcement = UpdateChecker::alertIn("en", "Lumvale", "1.5", "1.4", m_page);
};

void UpdateTest::announce() {
    m_lumvale->announce(m_announcement);
    QTRY_VERIFY(hasFocus("download"));
}

void UpdateTest::dismiss() {
    m_driver->key(Qt::Key_Escape);
    QTRY_VERIFY(!m_driver->isShown("download"));
    m_lumvale->announce({});
}

void UpdateTest::opensThePageOnlyIfChosen() {
    const std::tuple<const char*, QList<Qt::Key>, bool> cases[]{
        {"download", {}, true},
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
        QCOMPARE(m_opened, QStringList(opens, m_page));
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
    m_disk->make("~/Library/Caches/com.example.a/blob 4000");
    open();
    scan();
    QVERIFY(m_driver->click("deleteButton"));
    QTRY_VERIFY(m_driver->isShown("confirm"));
    announce();
    dismiss();
    QTRY_VERIFY(hasFocus("cancel"));
    // During the deletion it waits until that is done.
    holdJobs();
    QVERIFY(m_driver->click("confirm"));
    m_lumvale->announce(m_announcement);
    QVERIFY(!m_driver->isShown("download"));
    releaseJobs();
    QTRY_VERIFY(hasFocus("download"));
    QVERIFY(!m_driver->isShown("confirm") && !m_disk->exists("~/Library/Caches/com.example.a"));
    dismiss();
    QTRY_VERIFY(hasFocus("resultsList"));
}

void UpdateTest::restoresAMinimizedWindow() {
    open();
    window()->setWindowStates(Qt::WindowMinimized);
    announce();
    QTRY_VERIFY(!(window()->windowStates() & Qt::WindowMinimized) && window()->isExposed());
}

int main(int argc, char** argv) {
    return runTest<UpdateTest>(argc, argv);
}

#include "update_test.moc"
