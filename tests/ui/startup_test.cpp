#include "tests/ui/window_test.h"

#include <QRegularExpression>

#include <string>

/// The startup screen in the real window, on real launch agents.
class StartupTest : public WindowTest {
    Q_OBJECT

private Q_SLOTS:
    void disablesOnlyWhatIsConfirmed();

private:
    void ask(const QString& name, const char* answer) const; ///< clicks the button of the row, then this one
    QString names() const { return drawn().replaceInStrings(QRegularExpression(" \\|.*"), {}).join(' '); }
};

void StartupTest::ask(const QString& name, const char* answer) const {
    layOut();
    m_driver->click(*m_driver->row(name)->findChild<QQuickItem*>("disableButton"));
    QTRY_COMPARE(m_driver->text("dialogMessage"),
                 "« " + name + " »\n" + translated("alert_confirm_disable_message"));
    QVERIFY(m_driver->click(answer));
    QTRY_VERIFY(!m_driver->isShown("confirm"));
}

void StartupTest::disablesOnlyWhatIsConfirmed() {
    for (const std::string number : {"one", "two", "three"})
        makeAgent("~/Library/LaunchAgents/" + number + ".plist", "com.example." + number);
    makeAgent("/Library/LaunchAgents/every.plist", "com.example.every");
    open();
    QVERIFY(m_driver->click("tab_startup"));
    const auto rest = [](const char* explanation, const QString& name) {
        return " | " + translated(explanation) + " | com.example." + name + " · " + name + ".plist | "
               + translated("btn_disable");
    };
    QTRY_COMPARE(
        drawn(),
        (QStringList{"Every | " + translated("startup_system_badge") + rest("exp_startup_system", "every"),
                     "One" + rest("exp_startup_user", "one"), "Three" + rest("exp_startup_user", "three"),
                     "Two" + rest("exp_startup_user", "two")}));
    const auto* every = told(m_driver->row("Every"));
    QCOMPARE(every->text(QAccessible::Name), "Every, " + translated("startup_system_badge"));
    QVERIFY(every->text(QAccessible::Description).startsWith(translated("exp_startup_system")));
    m_driver->click(*m_driver->row("One")); // beside the button
    press(told(m_driver->row("Every")));    // cannot be disabled
    QVERIFY(!m_driver->isShown("confirm"));
    ask("Two", "cancel");

    const auto confirmation = [](const QString& name) {
        return "✓ « " + name + " » " + translated("disabled_confirmation");
    };
    ask("One", "confirm");
    QVERIFY(m_disk->exists("~/.Trash/one.plist"));
    QVERIFY(m_driver->click("putBackButton"));
    // The row may still fade when its agent is back.
    QTRY_COMPARE(announced("disabledLabel"), translated("app_put_back").arg("One"));
    QTRY_COMPARE(names(), "Every One Three Two");
    QVERIFY(m_disk->exists("~/Library/LaunchAgents/one.plist") && !m_driver->isShown("putBackButton"));
    ask("One", "confirm");
    m_disk->setMode("~/Library/LaunchAgents", 0555);
    ask("Two", "confirm");
    QCOMPARE(announced("disabledLabel"), confirmation("One"));
    QCOMPARE(announced("disableFailedLabel"),
             translated("disable_failed").arg("Two", translated("err_not_allowed")));
    QTRY_COMPARE(names(), "Every Three Two");
    m_disk->setMode("~/Library/LaunchAgents", 0755);
    QVERIFY(m_disk->exists("/Library/LaunchAgents/every.plist")
            && m_disk->exists("~/Library/LaunchAgents/two.plist"));

    // Read anew when the screen is shown again; the history records no startup items.
    m_disk->setMode("/Library/LaunchAgents", 0);
    QVERIFY(m_driver->click("tab_history") && m_driver->isShown("emptyPrompt"));
    QVERIFY(m_driver->click("tab_startup"));
    QTRY_COMPARE(names(), "Three Two");
    QVERIFY(!m_driver->isShown("disabledLabel"));
    for (const char* name : {"Two", "Three"})
        ask(name, "confirm");
    QCOMPARE(m_driver->text("emptyPrompt"), translated("startup_empty"));
    QCOMPARE(announced("disabledLabel"), confirmation("Three"));
}

int main(int argc, char** argv) {
    return runTest<StartupTest>(argc, argv);
}

#include "startup_test.moc"
