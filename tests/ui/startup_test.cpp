#include "tests/ui/window_test.h"

#include <string>

/// The startup screen as its user meets it: the real window, clicks and keys, real files.
class StartupTest : public WindowTest {
    Q_OBJECT

private Q_SLOTS:
    void disablesWhatIsConfirmedAndOnlyThat();
    void isWalkedByKeys();
    void saysThatNothingStarts();
    void tellsAScreenReaderWhatIsSeen();

private:
    void makeAgents() const; ///< the user's "One", "Three" and "Two", and "Every" of every account
    /// Opens the window, and what starts in it.
    void openStartup();
    void askFor(const QString& name) const; ///< by a click on the button of its row
    void answer(const char* button) const;

    QString asked() const {
        return window()->findChild<QObject*>("disableDialog")->property("message").toString();
    }
    QString confirmation(const QString& name) const {
        return "✓ « " + name + " » " + translated("disabled_confirmation");
    }
};

void StartupTest::makeAgents() const {
    makeAgent("~/Library/LaunchAgents/1.plist", "com.example.one");
    makeAgent("~/Library/LaunchAgents/2.plist", "com.example.two");
    makeAgent("~/Library/LaunchAgents/3.plist", "com.example.three");
    makeAgent("/Library/LaunchAgents/4.plist", "com.example.every");
}

void StartupTest::openStartup() {
    open();
    QVERIFY(m_driver->click("tab_startup"));
    QTRY_VERIFY(!m_driver->isShown("loadingIndicator"));
    layOut();
}

void StartupTest::askFor(const QString& name) const {
    m_driver->click(*m_driver->row(name)->findChild<QQuickItem*>("disableButton"));
    QTRY_VERIFY(m_driver->isShown("confirm"));
    QCOMPARE(asked(), "« " + name + " »\n" + translated("alert_confirm_disable_message"));
}

void StartupTest::answer(const char* button) const {
    QVERIFY(m_driver->click(button));
    QTRY_VERIFY(!m_driver->isShown("confirm"));
}

void StartupTest::disablesWhatIsConfirmedAndOnlyThat() {
    makeAgents();
    openStartup();
    QCOMPARE(shown("name"), (QStringList{"Every", "One", "Three", "Two"}));
    QCOMPARE(shown("explanation"),
             (QStringList{"exp_startup_system", "exp_startup_user", "exp_startup_user", "exp_startup_user"}));
    QCOMPARE(m_driver->items("badge").size(), 1u);
    QVERIFY(m_driver->row("Every")->isAncestorOf(m_driver->item("badge")));
    QVERIFY(!m_driver->isShown("disabledLabel") && !m_driver->isShown("emptyPrompt"));

    m_driver->click(*m_driver->row("One")); // beside the button
    QVERIFY(!m_driver->isShown("confirm"));
    for (const char* declined : {"Two", "One"}) {
        askFor(declined);
        answer("cancel");
    }
    askFor("One");
    answer("confirm");
    QVERIFY(!m_disk->exists("~/Library/LaunchAgents/1.plist") && m_disk->exists("~/.Trash/1.plist"));
    QTRY_COMPARE(shown("name"), (QStringList{"Every", "Three", "Two"}));
    QCOMPARE(m_driver->text("disabledLabel"), confirmation("One"));

    // Where it fails, nothing is said to be done.
    m_disk->setMode("~/Library/LaunchAgents", 0555);
    for (const char* refused : {"Every", "Two"}) {
        askFor(refused);
        answer("confirm");
        QCOMPARE(m_driver->text("disabledLabel"), confirmation("One"));
        QCOMPARE(shown("name"), (QStringList{"Every", "Three", "Two"}));
    }
    m_disk->setMode("~/Library/LaunchAgents", 0755);
    askFor("Two");
    answer("confirm");
    QTRY_COMPARE(shown("name"), (QStringList{"Every", "Three"}));
    QCOMPARE(m_driver->text("disabledLabel"), confirmation("Two"));
    QVERIFY(m_disk->exists("~/Library/LaunchAgents/3.plist")
            && m_disk->exists("/Library/LaunchAgents/4.plist"));

    // Another tab and back: read anew, and what was done before is no news.
    QVERIFY(m_driver->click("tab_history"));
    QVERIFY(m_driver->isShown("emptyPrompt")); // nothing that the history would keep
    QVERIFY(m_driver->click("tab_startup"));
    QTRY_COMPARE(shown("name"), (QStringList{"Every", "Three"}));
    QVERIFY(!m_driver->isShown("disabledLabel"));
}

void StartupTest::isWalkedByKeys() {
    makeAgents();
    openStartup();
    m_driver->item("startupList")->forceActiveFocus(Qt::TabFocusReason);
    const auto disable = [this](const QString& name, Qt::Key asks) {
        QCOMPARE(current(), name);
        m_driver->key(asks);
        QTRY_VERIFY(hasFocus("cancel"));
        QVERIFY(asked().startsWith("« " + name + " »"));
        m_driver->key(Qt::Key_Tab);
        m_driver->key(Qt::Key_Return);
        QTRY_VERIFY(!m_driver->isShown("cancel"));
        QCOMPARE(m_driver->text("disabledLabel"), confirmation(name));
        QVERIFY(hasFocus("startupList"));
    };
    // Then the next row has the keyboard, or the one above where that was the last.
    m_driver->key(Qt::Key_Down);
    disable("One", Qt::Key_Space);
    QTRY_COMPARE(current(), "Three");
    m_driver->key(Qt::Key_End);
    disable("Two", Qt::Key_Return);
    QTRY_COMPARE(current(), "Three");

    // The pointer hides where the keys are, and the next key shows it again, in the row that was clicked.
    m_driver->key(Qt::Key_Home);
    askFor("Three");
    answer("cancel");
    QVERIFY(hasFocus("startupList"));
    QCOMPARE(current(), QString());
    m_driver->key(Qt::Key_Space);
    QTRY_VERIFY(m_driver->isShown("cancel"));
    m_driver->key(Qt::Key_Escape);
    QTRY_COMPARE(current(), "Three");
}

void StartupTest::saysThatNothingStarts() {
    makeAgent("~/Library/LaunchAgents/1.plist", "com.apple.something");
    makeAgent("~/Library/LaunchAgents/2.plist", "com.example.one");
    openStartup();
    m_driver->item("languageMenu")->forceActiveFocus(Qt::TabFocusReason);
    for (const Qt::Key key : {Qt::Key_Tab, Qt::Key_Space})
        m_driver->key(key);
    QTRY_VERIFY(hasFocus("cancel"));
    for (const Qt::Key key : {Qt::Key_Tab, Qt::Key_Return})
        m_driver->key(key);
    QTRY_VERIFY(!m_driver->isShown("cancel"));
    QCOMPARE(m_driver->text("emptyPrompt"), translated("startup_empty"));
    QCOMPARE(m_driver->text("disabledLabel"), confirmation("One"));
    QVERIFY(!m_driver->isShown("startupList"));
    // And the keyboard goes on from where the list was.
    m_driver->key(Qt::Key_Backtab);
    QVERIFY(hasFocus("languageMenu"));
}

void StartupTest::tellsAScreenReaderWhatIsSeen() {
    makeAgents();
    openStartup();
    const QString disable = translated("btn_disable") + ", ";
    const auto* every = QAccessible::queryAccessibleInterface(m_driver->row("Every"));
    QCOMPARE(every->text(QAccessible::Name), disable + "Every, " + translated("startup_system_badge"));
    QCOMPARE(every->text(QAccessible::Description), translated("exp_startup_system"));
    auto* two = QAccessible::queryAccessibleInterface(m_driver->row("Two"));
    QCOMPARE(two->text(QAccessible::Name), disable + "Two");
    two->actionInterface()->doAction(QAccessibleActionInterface::pressAction());
    QTRY_VERIFY(m_driver->isShown("confirm"));
    QVERIFY(asked().startsWith("« Two »"));
    answer("confirm");
    QCOMPARE(told("disabledLabel")->role(), QAccessible::AlertMessage);
    QCOMPARE(told("disabledLabel")->text(QAccessible::Name), confirmation("Two"));
}

int main(int argc, char** argv) {
    return runTest<StartupTest>(argc, argv);
}

#include "startup_test.moc"
