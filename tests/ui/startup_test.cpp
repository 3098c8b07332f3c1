#include "tests/ui/window_test.h"

/// The startup screen in the real window, on real launch agents.
class StartupTest : public WindowTest {
    Q_OBJECT

private Q_SLOTS:
    void init();

    void disablesOnlyWhatIsConfirmed();

private:
    void askFor(const QString& name) const; ///< clicks the button of the row
    void answer(const char* button) const;
    QString names() const; ///< of the drawn rows

    QString confirmation(const QString& name) const {
        return "✓ « " + name + " » " + translated("disabled_confirmation");
    }
};

void StartupTest::init() {
    WindowTest::init();
    makeAgent("~/Library/LaunchAgents/1.plist", "com.example.one");
    makeAgent("~/Library/LaunchAgents/2.plist", "com.example.two");
    makeAgent("~/Library/LaunchAgents/3.plist", "com.example.three");
    makeAgent("/Library/LaunchAgents/4.plist", "com.example.every");
    open();
    QVERIFY(m_driver->click("tab_startup"));
    QTRY_VERIFY(!m_driver->isShown("loadingIndicator"));
    layOut();
}

void StartupTest::askFor(const QString& name) const {
    m_driver->click(*m_driver->row(name)->findChild<QQuickItem*>("disableButton"));
    QTRY_COMPARE(m_driver->text("dialogMessage"),
                 "« " + name + " »\n" + translated("alert_confirm_disable_message"));
}

void StartupTest::answer(const char* button) const {
    QVERIFY(m_driver->click(button));
    QTRY_VERIFY(!m_driver->isShown("confirm"));
}

QString StartupTest::names() const {
    QStringList names;
    for (const QString& row : drawn())
        names.append(row.section(" | ", 0, 0));
    return names.join(' ');
}

void StartupTest::disablesOnlyWhatIsConfirmed() {
    const QString user = translated("exp_startup_user") + " | " + translated("btn_disable");
    QCOMPARE(drawn(), (QStringList{"Every | " + translated("startup_system_badge") + " | "
                                       + translated("exp_startup_system") + " | " + translated("btn_disable"),
                                   "One | " + user, "Three | " + user, "Two | " + user}));
    const auto* every = told(m_driver->row("Every"));
    QCOMPARE(every->text(QAccessible::Name),
             translated("btn_disable") + ", Every, " + translated("startup_system_badge"));
    QCOMPARE(every->text(QAccessible::Description), translated("exp_startup_system"));
    m_driver->click(*m_driver->row("One")); // beside the button
    QVERIFY(!m_driver->isShown("confirm"));
    askFor("Two");
    answer("cancel");
    askFor("One");
    answer("confirm");
    QVERIFY(!m_disk->exists("~/Library/LaunchAgents/1.plist") && m_disk->exists("~/.Trash/1.plist"));
    QTRY_COMPARE(names(), "Every Three Two");
    QCOMPARE(announced("disabledLabel"), confirmation("One"));

    // A system-wide agent is refused, and so is one that cannot be moved.
    m_disk->setMode("~/Library/LaunchAgents", 0555);
    for (const char* refused : {"Every", "Two"}) {
        askFor(refused);
        answer("confirm");
        QCOMPARE(announced("disabledLabel"), confirmation("One"));
        QCOMPARE(names(), "Every Three Two");
    }
    m_disk->setMode("~/Library/LaunchAgents", 0755);
    QVERIFY(m_disk->exists("/Library/LaunchAgents/4.plist")
            && m_disk->exists("~/Library/LaunchAgents/2.plist"));

    // Read anew when the screen is shown again; the history records no startup items.
    m_disk->setMode("/Library/LaunchAgents", 0);
    QVERIFY(m_driver->click("tab_history") && m_driver->isShown("emptyPrompt"));
    QVERIFY(m_driver->click("tab_startup"));
    QTRY_COMPARE(names(), "Three Two");
    QVERIFY(!m_driver->isShown("disabledLabel"));
    for (const char* name : {"Two", "Three"}) {
        askFor(name);
        answer("confirm");
        layOut();
    }
    QCOMPARE(m_driver->text("emptyPrompt"), translated("startup_empty"));
    QCOMPARE(announced("disabledLabel"), confirmation("Three"));
}

int main(int argc, char** argv) {
    return runTest<StartupTest>(argc, argv);
}

#include "startup_test.moc"
