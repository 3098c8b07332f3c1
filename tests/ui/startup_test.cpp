#include "app/models/startup_view_model.h"

#include "tests/app/hand_cranked.h"
#include "tests/ui/window_test.h"

#include <QThread>

#include <string>
#include <thread>

namespace {

QString confirmation(const QString& name) {
    return "✓ « " + name + " » " + translated("disabled_confirmation");
}

} // namespace

/// The startup screen as its user meets it: the real window, clicks and keys, real files.
class StartupTest : public WindowTest {
    Q_OBJECT

private Q_SLOTS:
    void disablesWhatIsConfirmedAndOnlyThat();
    void takesNoForAnAnswer_data();
    void takesNoForAnAnswer();
    void changesNothingWhereItFails_data();
    void changesNothingWhereItFails();
    void saysThatNothingStarts();
    void saysThatItLoadsAndForgetsItWhenLeft();
    void isWalkedByKeys();
    void keepsTheKeyboardWhenTheLastRowGoes();
    void staysInFrontUntilWaitingClicksAreThrough();
    void tellsAScreenReaderWhatIsSeen();
    void nothingIsCutOffInAnyLanguage_data() { eachLanguage(); }
    void nothingIsCutOffInAnyLanguage();

private:
    void makeAgent(const std::string& path, const std::string& label, const std::string& more = {}) const;
    void makeAgents() const; ///< the user's "One", "Three" and "Two", and "Every" of every account
    /// Opens the window, and what starts in it.
    void openStartup(const platform::Executor& executor = qtExecutor());
    void askFor(const QString& name) const; ///< by a click on the button of its row
    void answer(const char* button) const;

    QString asked() const {
        return window()->findChild<QObject*>("disableDialog")->property("message").toString();
    }
    StartupViewModel* state() const { return model<StartupViewModel>(); }
    QQuickItem* button(const QString& name) const; ///< of its row
};

void StartupTest::makeAgent(const std::string& path, const std::string& label,
                            const std::string& more) const {
    m_disk->write(path,
                  "<plist><dict><key>Label</key><string>" + label + "</string>" + more + "</dict></plist>");
}

void StartupTest::makeAgents() const {
    makeAgent("~/Library/LaunchAgents/1.plist", "com.example.one");
    makeAgent("~/Library/LaunchAgents/2.plist", "com.example.two", "<key>Disabled</key><true/>");
    makeAgent("~/Library/LaunchAgents/3.plist", "com.example.three");
    makeAgent("/Library/LaunchAgents/4.plist", "com.example.every");
}

void StartupTest::openStartup(const platform::Executor& executor) {
    open(smallest, executor);
    QVERIFY(m_driver->click("tab_startup"));
    QCOMPARE(m_driver->text("screenTitle"), translated("startup_title"));
    QTRY_VERIFY(!state()->isLoading() || !state()->hasItems());
}

void StartupTest::askFor(const QString& name) const {
    QVERIFY(button(name));
    m_driver->click(*button(name));
    QTRY_VERIFY(m_driver->isShown("confirm"));
}

void StartupTest::answer(const char* button) const {
    QVERIFY(m_driver->click(button));
    QTRY_VERIFY(!m_driver->isShown("confirm"));
}

QQuickItem* StartupTest::button(const QString& name) const {
    const QQuickItem* found = m_driver->row(name);
    return found ? found->findChild<QQuickItem*>("disableButton") : nullptr;
}

void StartupTest::disablesWhatIsConfirmedAndOnlyThat() {
    makeAgents();
    openStartup();
    QTRY_COMPARE(shown("name"), (QStringList{"Every", "One", "Three", "Two"}));
    QCOMPARE(m_driver->text("screenSubtitle"), translated("startup_subtitle"));
    QCOMPARE(shown("explanation"),
             (QStringList{"exp_startup_system", "exp_startup_user", "exp_startup_user", "exp_startup_user"}));
    QCOMPARE(m_driver->items("badge").size(), 1u);
    QCOMPARE(m_driver->text("badge"), translated("startup_system_badge"));
    QVERIFY(m_driver->row("Every")->isAncestorOf(m_driver->item("badge")));
    QCOMPARE(m_driver->items("disableButton").size(), 4u);
    QVERIFY(!m_driver->isShown("disabledLabel") && !m_driver->isShown("emptyPrompt")
            && !m_driver->isShown("loadingIndicator"));

    m_driver->click(*m_driver->row("One")); // beside the button
    QVERIFY(!m_driver->isShown("confirm"));
    askFor("One");
    QCOMPARE(m_driver->text("confirm"), translated("btn_disable"));
    QCOMPARE(m_driver->text("cancel"), translated("btn_cancel"));
    QCOMPARE(asked(), "« One »\n" + translated("alert_confirm_disable_message"));
    QVERIFY(m_disk->exists("~/Library/LaunchAgents/1.plist"));
    answer("confirm");
    QVERIFY(!m_disk->exists("~/Library/LaunchAgents/1.plist"));
    QVERIFY(m_disk->exists("~/.Trash/1.plist"));
    QTRY_COMPARE(shown("name"), (QStringList{"Every", "Three", "Two"}));
    QCOMPARE(m_driver->text("disabledLabel"), confirmation("One"));
    // The list has the keyboard now, but who works by clicks is shown no ring.
    QTRY_VERIFY(hasFocus("startupList"));
    QCOMPARE(current(), QString());

    askFor("Two");
    answer("confirm");
    QTRY_COMPARE(shown("name"), (QStringList{"Every", "Three"}));
    QCOMPARE(m_driver->text("disabledLabel"), confirmation("Two"));
    QVERIFY(m_disk->exists("~/Library/LaunchAgents/3.plist")
            && m_disk->exists("/Library/LaunchAgents/4.plist"));
    QCOMPARE(current(), QString());

    // Another tab and back: read anew, and what was done before is no news.
    QVERIFY(m_driver->click("tab_history"));
    QVERIFY(m_driver->isShown("emptyPrompt")); // nothing that the history would keep
    QVERIFY(m_driver->click("tab_startup"));
    QTRY_COMPARE(shown("name"), (QStringList{"Every", "Three"}));
    QVERIFY(!m_driver->isShown("disabledLabel"));
}

void StartupTest::takesNoForAnAnswer_data() {
    QTest::addColumn<bool>("byKey");
    QTest::newRow("Cancel") << false;
    QTest::newRow("Escape") << true;
}

void StartupTest::takesNoForAnAnswer() {
    QFETCH(bool, byKey);
    makeAgents();
    openStartup();
    QTRY_VERIFY(m_driver->row("One"));
    for (const char* name : {"One", "Two"}) {
        askFor(name);
        QVERIFY(asked().startsWith(QString("« %1 »").arg(name)));
        if (byKey)
            m_driver->key(Qt::Key_Escape);
        else
            answer("cancel");
        QTRY_VERIFY(!m_driver->isShown("confirm"));
        QVERIFY(!state()->itemToDisable());
        QCOMPARE(current(), QString());
    }
    QCOMPARE(shown("name"), (QStringList{"Every", "One", "Three", "Two"}));
    QVERIFY(m_disk->exists("~/Library/LaunchAgents/1.plist") && !m_driver->isShown("disabledLabel"));
}

void StartupTest::changesNothingWhereItFails_data() {
    QTest::addColumn<QString>("name");
    QTest::newRow("for every account") << "Every";
    QTest::newRow("in a folder that is closed") << "Two";
}

void StartupTest::changesNothingWhereItFails() {
    QFETCH(QString, name);
    makeAgents();
    openStartup();
    QTRY_VERIFY(m_driver->row("One"));
    askFor("One");
    answer("confirm");
    m_disk->setMode("~/Library/LaunchAgents", 0555);
    askFor(name);
    answer("confirm");
    m_disk->setMode("~/Library/LaunchAgents", 0755);
    QTRY_COMPARE(shown("name"), (QStringList{"Every", "Three", "Two"}));
    QVERIFY(m_disk->exists("~/Library/LaunchAgents/2.plist")
            && m_disk->exists("/Library/LaunchAgents/4.plist"));
    QCOMPARE(m_driver->text("disabledLabel"), confirmation("One"));
    QVERIFY(!state()->itemToDisable());
}

void StartupTest::saysThatNothingStarts() {
    makeAgent("~/Library/LaunchAgents/1.plist", "com.apple.something");
    openStartup();
    QTRY_COMPARE(m_driver->text("emptyPrompt"), translated("startup_empty"));
    QVERIFY(!m_driver->isShown("startupList") && !m_driver->isShown("loadingIndicator"));
}

void StartupTest::saysThatItLoadsAndForgetsItWhenLeft() {
    makeAgents();
    HandCranked jobs;
    openStartup(jobs.executor());
    const auto isLoading = [this] {
        return m_driver->text("loadingIndicator", "label") == translated("loading_startup")
               && !m_driver->isShown("emptyPrompt") && !m_driver->isShown("startupList");
    };
    QVERIFY(isLoading());
    QCOMPARE(told("loadingIndicator")->text(QAccessible::Name), translated("loading_startup"));
    jobs.runBackground();
    QVERIFY(isLoading());
    QVERIFY(m_driver->click("tab_history"));
    QTRY_VERIFY(!state());
    jobs.publish(); // to nobody
    QVERIFY(m_driver->click("tab_startup"));
    QVERIFY(isLoading());
    jobs.run();
    QTRY_COMPARE(shown("name"), (QStringList{"Every", "One", "Three", "Two"}));
    QVERIFY(!m_driver->isShown("loadingIndicator") && jobs.isIdle());
}

void StartupTest::isWalkedByKeys() {
    for (int i = 10; i < 40; ++i)
        makeAgent("~/Library/LaunchAgents/" + std::to_string(i) + ".plist",
                  "com.example.agent" + std::to_string(i));
    openStartup();
    QTRY_VERIFY(m_driver->row("Agent10"));
    const QQuickItem* list = m_driver->item("startupList");
    QCOMPARE(current(), QString());
    m_driver->item("languageMenu")->forceActiveFocus(Qt::TabFocusReason);
    m_driver->key(Qt::Key_Tab);
    QVERIFY(list->hasActiveFocus());
    QCOMPARE(current(), "Agent10");
    m_driver->key(Qt::Key_End);
    QTRY_COMPARE(current(), "Agent39");
    m_driver->key(Qt::Key_PageUp);
    QTRY_VERIFY(!current().isEmpty() && current() != "Agent39");
    m_driver->key(Qt::Key_Home);
    QTRY_COMPARE(current(), "Agent10");
    m_driver->key(Qt::Key_Down);
    QCOMPARE(current(), "Agent11");

    // A hasty Return in the dialog cancels, and so does Escape; the row has the keyboard again.
    for (const Qt::Key harmless : {Qt::Key_Return, Qt::Key_Escape}) {
        m_driver->key(harmless == Qt::Key_Return ? Qt::Key_Return : Qt::Key_Space);
        QTRY_VERIFY(hasFocus("cancel"));
        QVERIFY(asked().startsWith("« Agent11 »"));
        m_driver->key(harmless);
        QTRY_VERIFY(!m_driver->isShown("cancel"));
        QTRY_COMPARE(current(), "Agent11");
    }
    const auto disable = [this](const QString& name) {
        QCOMPARE(current(), name);
        m_driver->key(Qt::Key_Space);
        QTRY_VERIFY(hasFocus("cancel"));
        m_driver->key(Qt::Key_Tab);
        QVERIFY(hasFocus("confirm"));
        m_driver->key(Qt::Key_Return);
        QTRY_VERIFY(!m_driver->isShown("cancel"));
        QCOMPARE(m_driver->text("disabledLabel"), confirmation(name));
    };
    // Then the next row has it, or the one above where that was the last.
    disable("Agent11");
    QTRY_COMPARE(current(), "Agent12");
    QVERIFY(list->hasActiveFocus());
    m_driver->key(Qt::Key_End);
    QTRY_COMPARE(current(), "Agent39");
    disable("Agent39");
    QTRY_COMPARE(current(), "Agent38");

    // The pointer hides where the keys are, and the next key shows it again, in the row that was clicked.
    askFor("Agent37");
    QCOMPARE(current(), QString());
    answer("cancel");
    QVERIFY(list->hasActiveFocus());
    QCOMPARE(current(), QString());
    m_driver->key(Qt::Key_Space);
    QTRY_VERIFY(m_driver->isShown("cancel"));
    m_driver->key(Qt::Key_Escape);
    QTRY_COMPARE(current(), "Agent37");
    // One stop for Tab, buttons and all.
    m_driver->key(Qt::Key_Tab);
    QVERIFY(!list->hasActiveFocus());
    QCOMPARE(current(), QString());
}

void StartupTest::keepsTheKeyboardWhenTheLastRowGoes() {
    makeAgent("~/Library/LaunchAgents/1.plist", "com.example.one");
    openStartup();
    QTRY_VERIFY(m_driver->row("One"));
    m_driver->item("languageMenu")->forceActiveFocus(Qt::TabFocusReason);
    for (const Qt::Key key : {Qt::Key_Tab, Qt::Key_Space})
        m_driver->key(key);
    QTRY_VERIFY(hasFocus("cancel"));
    for (const Qt::Key key : {Qt::Key_Tab, Qt::Key_Return})
        m_driver->key(key);
    QTRY_VERIFY(!m_driver->isShown("cancel"));
    QCOMPARE(m_driver->text("emptyPrompt"), translated("startup_empty"));
    QCOMPARE(m_driver->text("disabledLabel"), confirmation("One"));
    m_driver->key(Qt::Key_Backtab);
    QVERIFY(hasFocus("languageMenu"));
}

void StartupTest::staysInFrontUntilWaitingClicksAreThrough() {
    makeAgents();
    openStartup();
    QTRY_VERIFY(m_driver->row("One"));
    askFor("Two");
    answer("confirm"); // from now on the line that says so is there, and moves no row any more
    askFor("One");
    const QPoint place = m_driver->centre(*button("Every"));
    std::jthread clicking;
    const QObject until;
    int requests = 0;
    connect(state(), &StartupViewModel::lastDisabledNameChanged, &until, [&] {
        // Here the program is blocked, and its user clicks all the same.
        clicking = m_driver->clickLater(place);
        QThread::msleep(50);
    });
    connect(state(), &StartupViewModel::itemToDisableChanged, &until, [&] {
        // What is asked stands there until it is answered.
        QVERIFY(asked().startsWith("« One »"));
        requests += state()->itemToDisable().has_value();
    });
    QVERIFY(m_driver->click("confirm"));
    QTRY_VERIFY(!m_driver->isShown("confirm"));
    QTest::qWait(100); // for the click to do its harm
    clicking.join();
    QCOMPARE(state()->disabledName(), "One");
    QCOMPARE(requests, 0);
}

void StartupTest::tellsAScreenReaderWhatIsSeen() {
    makeAgents();
    openStartup();
    QTRY_VERIFY(m_driver->row("One"));
    const auto* list = told("startupList");
    QCOMPARE(list->role(), QAccessible::List);
    QCOMPARE(list->text(QAccessible::Name), translated("startup_title"));
    const QString disable = translated("btn_disable") + ", ";
    const auto* every = QAccessible::queryAccessibleInterface(m_driver->row("Every"));
    QCOMPARE(every->role(), QAccessible::Button);
    QCOMPARE(every->text(QAccessible::Name), disable + "Every, " + translated("startup_system_badge"));
    QCOMPARE(every->text(QAccessible::Description), translated("exp_startup_system"));
    QCOMPARE(QAccessible::queryAccessibleInterface(m_driver->row("One"))->text(QAccessible::Name),
             disable + "One");
    QCOMPARE(every->childCount(), 0); // what the row says isn't said twice

    QAccessible::queryAccessibleInterface(m_driver->row("Two"))
        ->actionInterface()
        ->doAction(QAccessibleActionInterface::pressAction());
    QTRY_VERIFY(m_driver->isShown("cancel"));
    QVERIFY(asked().startsWith("« Two »"));
    answer("cancel");

    askFor("Two");
    answer("confirm");
    QCOMPARE(told("disabledLabel")->role(), QAccessible::AlertMessage);
    QCOMPARE(told("disabledLabel")->text(QAccessible::Name), confirmation("Two"));
}

void StartupTest::nothingIsCutOffInAnyLanguage() {
    QFETCH(AppLanguage, language);
    makeAgents();
    const std::string endless(65'536, 'w');
    const QString shownEndless = 'W' + QString(254, 'w') + u'…';
    makeAgent("~/Library/LaunchAgents/5.plist", endless);
    makeAgent("/Library/LaunchAgents/6.plist", "com.example.&lt;b&gt;bold");
    makeAgent("/Library/LaunchAgents/7.plist", "v" + endless);
    HandCranked jobs;
    openStartup(jobs.executor());
    Localizer::shared().setLanguage(language);
    checkEverythingIsSaid();
    // What is on the screen follows the language at once.
    Localizer::shared().setLanguage(AppLanguage::en);
    jobs.run();
    QTRY_VERIFY(m_driver->row("One"));
    Localizer::shared().setLanguage(language);
    checkEverythingIsSaid();
    QCOMPARE(m_driver->text("screenTitle"), translated("startup_title"));
    QCOMPARE(m_driver->text("badge"), translated("startup_system_badge"));
    QCOMPARE(m_driver->text("disableButton"), translated("btn_disable"));
    QVERIFY(m_driver->row("<B>Bold"));

    QQuickItem* list = m_driver->item("startupList");
    list->setProperty("contentY", list->property("contentHeight").toDouble() - list->height());
    QTRY_VERIFY(m_driver->row(shownEndless));
    checkEverythingIsSaid();
    askFor(shownEndless);
    checkEverythingIsSaid();
    answer("confirm");
    checkEverythingIsSaid();
    QCOMPARE(m_driver->text("disabledLabel"), confirmation(shownEndless));
}

int main(int argc, char** argv) {
    return runTest<StartupTest>(argc, argv);
}

#include "startup_test.moc"
