#include "app/history/history_store.h"
#include "app/i18n/localizer.h"
#include "app/models/background.h"
#include "app/models/startup_view_model.h"
#include "tests/app/hand_cranked.h"
#include "tests/support/temporary_disk.h"
#include "tests/ui/driver.h"
#include "ui/shell/lumvale_window.h"

#include <QAccessible>
#include <QGuiApplication>
#include <QTest>
#include <QThread>

#include <memory>
#include <optional>
#include <string>
#include <thread>

namespace {

QString translated(const char* key) {
    return tr(QLatin1String(key));
}

QString confirmation(const QString& name) {
    return "✓ « " + name + " » " + translated("disabled_confirmation");
}

QAccessibleInterface* told(QQuickItem* item) {
    return QAccessible::queryAccessibleInterface(item);
}

} // namespace

/// The startup screen as its user meets it: the real window, clicks and keys, real files.
class StartupTest : public QObject {
    Q_OBJECT

private Q_SLOTS:
    void init();
    void cleanup();

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
    void nothingIsCutOffInAnyLanguage_data();
    void nothingIsCutOffInAnyLanguage();

private:
    void makeAgent(const std::string& path, const std::string& label, const std::string& more = {}) const;
    void makeAgents() const; ///< the user's "One", "Three" and "Two", and "Every" of every account
    /// Opens the window, and what starts in it.
    void open(platform::Executor executor = qtExecutor());
    void askFor(const QString& name) const; ///< by a click on the button of its row
    void answer(const char* button) const;

    QString asked() const {
        return m_lumvale->window()->findChild<QObject*>("disableDialog")->property("message").toString();
    }
    StartupViewModel* model() const { return m_lumvale->window()->findChild<StartupViewModel*>(); }
    QStringList shown(const char* property = "name") const; ///< by the rows in sight
    QQuickItem* button(const QString& name) const; ///< of its row
    QString current() const;                       ///< the row that is shown to have the keyboard

    // Files are met as by an ordinary user, so that modes count.
    std::optional<OrdinaryUser> m_user;
    std::unique_ptr<TemporaryDisk> m_disk;
    std::unique_ptr<HistoryStore> m_history;
    std::unique_ptr<LumvaleWindow> m_lumvale;
    std::optional<Driver> m_driver;
};

void StartupTest::init() {
    Localizer::shared().setLanguage(AppLanguage::en);
    m_user.emplace();
    m_disk = std::make_unique<TemporaryDisk>();
    m_history = std::make_unique<HistoryStore>(m_disk->disk());
}

void StartupTest::cleanup() {
    m_driver.reset();
    m_lumvale.reset();
    m_history.reset();
    m_disk.reset();
    m_user.reset();
}

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

void StartupTest::open(platform::Executor executor) {
    m_lumvale = std::make_unique<LumvaleWindow>(m_disk->disk(), *m_history, std::move(executor));
    QVERIFY(m_lumvale->window());
    QVERIFY(QTest::qWaitForWindowExposed(m_lumvale->window()));
    m_driver.emplace(*m_lumvale->window());
    QVERIFY(m_driver->click("tab_startup"));
    QCOMPARE(m_driver->text("screenTitle"), translated("startup_title"));
    QTRY_VERIFY(!model()->isLoading() || !model()->hasItems());
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

QStringList StartupTest::shown(const char* property) const {
    QStringList shown;
    for (const QQuickItem* row : m_driver->rows())
        shown.append(row->property(property).toString());
    return shown;
}

QQuickItem* StartupTest::button(const QString& name) const {
    const QQuickItem* found = m_driver->row(name);
    return found ? found->findChild<QQuickItem*>("disableButton") : nullptr;
}

QString StartupTest::current() const {
    for (const QQuickItem* row : m_driver->rows())
        if (row->property("isCurrent").toBool())
            return row->property("name").toString();
    return {};
}

void StartupTest::disablesWhatIsConfirmedAndOnlyThat() {
    makeAgents();
    open();
    QTRY_COMPARE(shown(), (QStringList{"Every", "One", "Three", "Two"}));
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
    QTRY_COMPARE(shown(), (QStringList{"Every", "Three", "Two"}));
    QCOMPARE(m_driver->text("disabledLabel"), confirmation("One"));
    // The list has the keyboard now, but who works by clicks is shown no ring.
    QTRY_VERIFY(m_driver->item("startupList")->hasActiveFocus());
    QCOMPARE(current(), QString());

    askFor("Two");
    answer("confirm");
    QTRY_COMPARE(shown(), (QStringList{"Every", "Three"}));
    QCOMPARE(m_driver->text("disabledLabel"), confirmation("Two"));
    QVERIFY(m_disk->exists("~/Library/LaunchAgents/3.plist")
            && m_disk->exists("/Library/LaunchAgents/4.plist"));
    QCOMPARE(current(), QString());

    // Another tab and back: read anew, and what was done before is no news.
    QVERIFY(m_driver->click("tab_history"));
    QVERIFY(m_driver->isShown("emptyPrompt")); // nothing that the history would keep
    QVERIFY(m_driver->click("tab_startup"));
    QTRY_COMPARE(shown(), (QStringList{"Every", "Three"}));
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
    open();
    QTRY_VERIFY(m_driver->row("One"));
    for (const char* name : {"One", "Two"}) {
        askFor(name);
        QVERIFY(asked().startsWith(QString("« %1 »").arg(name)));
        if (byKey)
            m_driver->key(Qt::Key_Escape);
        else
            answer("cancel");
        QTRY_VERIFY(!m_driver->isShown("confirm"));
        QVERIFY(!model()->itemToDisable());
        QCOMPARE(current(), QString());
    }
    QCOMPARE(shown(), (QStringList{"Every", "One", "Three", "Two"}));
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
    open();
    QTRY_VERIFY(m_driver->row("One"));
    askFor("One");
    answer("confirm");
    m_disk->setMode("~/Library/LaunchAgents", 0555);
    askFor(name);
    answer("confirm");
    m_disk->setMode("~/Library/LaunchAgents", 0755);
    QTRY_COMPARE(shown(), (QStringList{"Every", "Three", "Two"}));
    QVERIFY(m_disk->exists("~/Library/LaunchAgents/2.plist")
            && m_disk->exists("/Library/LaunchAgents/4.plist"));
    QCOMPARE(m_driver->text("disabledLabel"), confirmation("One"));
    QVERIFY(!model()->itemToDisable());
}

void StartupTest::saysThatNothingStarts() {
    makeAgent("~/Library/LaunchAgents/1.plist", "com.apple.something");
    open();
    QTRY_COMPARE(m_driver->text("emptyPrompt"), translated("startup_empty"));
    QVERIFY(!m_driver->isShown("startupList") && !m_driver->isShown("loadingIndicator"));
}

void StartupTest::saysThatItLoadsAndForgetsItWhenLeft() {
    makeAgents();
    HandCranked jobs;
    open(jobs.executor());
    const auto isLoading = [this] {
        return m_driver->text("loadingIndicator", "label") == translated("loading_startup")
               && !m_driver->isShown("emptyPrompt") && !m_driver->isShown("startupList");
    };
    QVERIFY(isLoading());
    QCOMPARE(told(m_driver->item("loadingIndicator"))->text(QAccessible::Name),
             translated("loading_startup"));
    jobs.runBackground();
    QVERIFY(isLoading());
    QVERIFY(m_driver->click("tab_history"));
    QTRY_VERIFY(!model());
    jobs.publish(); // to nobody
    QVERIFY(m_driver->click("tab_startup"));
    QVERIFY(isLoading());
    jobs.run();
    QTRY_COMPARE(shown(), (QStringList{"Every", "One", "Three", "Two"}));
    QVERIFY(!m_driver->isShown("loadingIndicator") && jobs.isIdle());
}

void StartupTest::isWalkedByKeys() {
    for (int i = 10; i < 40; ++i)
        makeAgent("~/Library/LaunchAgents/" + std::to_string(i) + ".plist",
                  "com.example.agent" + std::to_string(i));
    open();
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
        QTRY_VERIFY(m_driver->isShown("cancel") && m_driver->item("cancel")->hasActiveFocus());
        QVERIFY(asked().startsWith("« Agent11 »"));
        m_driver->key(harmless);
        QTRY_VERIFY(!m_driver->isShown("cancel"));
        QTRY_COMPARE(current(), "Agent11");
    }
    const auto disable = [this](const QString& name) {
        QCOMPARE(current(), name);
        m_driver->key(Qt::Key_Space);
        QTRY_VERIFY(m_driver->isShown("cancel") && m_driver->item("cancel")->hasActiveFocus());
        m_driver->key(Qt::Key_Tab);
        QVERIFY(m_driver->item("confirm")->hasActiveFocus());
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
    open();
    QTRY_VERIFY(m_driver->row("One"));
    m_driver->item("languageMenu")->forceActiveFocus(Qt::TabFocusReason);
    for (const Qt::Key key : {Qt::Key_Tab, Qt::Key_Space})
        m_driver->key(key);
    QTRY_VERIFY(m_driver->isShown("cancel") && m_driver->item("cancel")->hasActiveFocus());
    for (const Qt::Key key : {Qt::Key_Tab, Qt::Key_Return})
        m_driver->key(key);
    QTRY_VERIFY(!m_driver->isShown("cancel"));
    QCOMPARE(m_driver->text("emptyPrompt"), translated("startup_empty"));
    QCOMPARE(m_driver->text("disabledLabel"), confirmation("One"));
    m_driver->key(Qt::Key_Backtab);
    QVERIFY(m_driver->item("languageMenu")->hasActiveFocus());
}

void StartupTest::staysInFrontUntilWaitingClicksAreThrough() {
    makeAgents();
    open();
    QTRY_VERIFY(m_driver->row("One"));
    askFor("Two");
    answer("confirm"); // from now on the line that says so is there, and moves no row any more
    askFor("One");
    const QPoint place = m_driver->centre(*button("Every"));
    std::jthread clicking;
    const QObject until;
    int requests = 0;
    connect(model(), &StartupViewModel::lastDisabledNameChanged, &until, [&] {
        // Here the program is blocked, and its user clicks all the same.
        clicking = m_driver->clickLater(place);
        QThread::msleep(50);
    });
    connect(model(), &StartupViewModel::itemToDisableChanged, &until, [&] {
        // What is asked stands there until it is answered.
        QVERIFY(asked().startsWith("« One »"));
        requests += model()->itemToDisable().has_value();
    });
    QVERIFY(m_driver->click("confirm"));
    QTRY_VERIFY(!m_driver->isShown("confirm"));
    QTest::qWait(100); // for the click to do its harm
    clicking.join();
    QCOMPARE(model()->disabledName(), "One");
    QCOMPARE(requests, 0);
}

void StartupTest::tellsAScreenReaderWhatIsSeen() {
    makeAgents();
    open();
    QTRY_VERIFY(m_driver->row("One"));
    const auto* list = told(m_driver->item("startupList"));
    QCOMPARE(list->role(), QAccessible::List);
    QCOMPARE(list->text(QAccessible::Name), translated("startup_title"));
    const QString disable = translated("btn_disable") + ", ";
    const auto* every = told(m_driver->row("Every"));
    QCOMPARE(every->role(), QAccessible::Button);
    QCOMPARE(every->text(QAccessible::Name), disable + "Every, " + translated("startup_system_badge"));
    QCOMPARE(every->text(QAccessible::Description), translated("exp_startup_system"));
    QCOMPARE(told(m_driver->row("One"))->text(QAccessible::Name), disable + "One");
    QCOMPARE(every->childCount(), 0); // what the row says isn't said twice

    told(m_driver->row("Two"))->actionInterface()->doAction(QAccessibleActionInterface::pressAction());
    QTRY_VERIFY(m_driver->isShown("cancel"));
    QVERIFY(asked().startsWith("« Two »"));
    answer("cancel");

    askFor("Two");
    answer("confirm");
    QCOMPARE(told(m_driver->item("disabledLabel"))->role(), QAccessible::AlertMessage);
    QCOMPARE(told(m_driver->item("disabledLabel"))->text(QAccessible::Name), confirmation("Two"));
}

void StartupTest::nothingIsCutOffInAnyLanguage_data() {
    QTest::addColumn<AppLanguage>("language");
    for (const AppLanguage language : allAppLanguages)
        QTest::newRow(rawValue(language).toLatin1().constData()) << language;
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
    open(jobs.executor());
    m_lumvale->window()->resize(820, 700);
    QTRY_COMPARE(m_lumvale->window()->contentItem()->size(), QSizeF(820, 700));
    const auto check = [this] {
        (void)m_lumvale->window()->grabWindow(); // everything laid out
        QCOMPARE(m_driver->cutTexts().join("; "), QString());
        QCOMPARE(m_driver->silentControls().join("; "), QString());
    };
    Localizer::shared().setLanguage(language);
    check();
    // What is on the screen follows the language at once.
    Localizer::shared().setLanguage(AppLanguage::en);
    jobs.run();
    QTRY_VERIFY(m_driver->row("One"));
    Localizer::shared().setLanguage(language);
    check();
    QCOMPARE(m_driver->text("screenTitle"), translated("startup_title"));
    QCOMPARE(m_driver->text("badge"), translated("startup_system_badge"));
    QCOMPARE(m_driver->text("disableButton"), translated("btn_disable"));
    QVERIFY(m_driver->row("<B>Bold"));

    QQuickItem* list = m_driver->item("startupList");
    list->setProperty("contentY", list->property("contentHeight").toDouble() - list->height());
    QTRY_VERIFY(m_driver->row(shownEndless));
    check();
    askFor(shownEndless);
    check();
    answer("confirm");
    check();
    QCOMPARE(m_driver->text("disabledLabel"), confirmation(shownEndless));
}

int main(int argc, char** argv) {
    const OwnSettings settings;
    QGuiApplication application(argc, argv);
    QGuiApplication::setOrganizationName("Lumvale Tests");
    QGuiApplication::setApplicationName("Tests");
    QAccessible::setActive(true); // as with a screen reader
    StartupTest test;
    return QTest::qExec(&test, argc, argv);
}

#include "startup_test.moc"
