#include "app/models/uninstall_view_model.h"

#include "tests/app/hand_cranked.h"
#include "tests/ui/window_test.h"

#include <string>

/// The uninstall screen as its user meets it: the real window, clicks and keys, real files.
class UninstallTest : public WindowTest {
    Q_OBJECT

private Q_SLOTS:
    void init();

    void movesWhatIsTickedAndOnlyThat();
    void tellsWhatWasAskedForWhenNothingCouldBeMoved();
    void showsAnApplicationThatKeepsNothingElsewhere();
    void forgetsWhatWasTickedOnTheWayBack();
    void showsTheLastPickedWhicheverSearchEndsFirst();
    void searchesInVainOnceTheScreenIsLeft();
    void isWalkedByKeys();
    void leavesTheKeyboardWhereTheUserTookItMeanwhile();
    void makesNoMoreRowsThanAreSeen();
    void tellsAScreenReaderWhatIsSeen();
    void nothingIsCutOffInAnyLanguage_data() { eachLanguage(); }
    void nothingIsCutOffInAnyLanguage();

private:
    /// Opens the window, and the uninstall screen in it by a click.
    void openUninstall(const platform::Executor& executor = qtExecutor());
    // Wait for these lists.
    void apps();
    void files();
    void pick(const char* app);

    QString selection(const QString& size, int count) const;
    QString banner(const QString& app) const {
        return "✓ « " + app + " » " + translated("uninstalled_suffix");
    }
    QString asked() const {
        return window()->findChild<QObject*>("uninstallDialog")->property("message").toString();
    }
};

void UninstallTest::init() {
    WindowTest::init();
    m_disk->make({"/Applications/Notes.app/x 1000", "/Applications/Paint.app/x 2000",
                  "/Applications/Solo.app/x 300", "~/Library/Caches/notes/x 10", "~/Library/Logs/notes 200",
                  "~/Library/Logs/paint 30", "~/Library/Preferences/com.paint-notes.plist 4",
                  "~/Library/Preferences/other 9"});
}

void UninstallTest::openUninstall(const platform::Executor& executor) {
    open(smallest, executor);
    QVERIFY(m_driver->click("tab_uninstall"));
    QCOMPARE(m_driver->text("screenTitle"), translated("uninstall_title"));
}

void UninstallTest::apps() {
    QTRY_VERIFY(m_driver->isShown("appsList"));
    layOut();
}

void UninstallTest::files() {
    QTRY_VERIFY(m_driver->isShown("filesList"));
    layOut();
}

void UninstallTest::pick(const char* app) {
    m_driver->click(*m_driver->row(app));
    files();
    QCOMPARE(shown("name").value(0), app);
}

QString UninstallTest::selection(const QString& size, int count) const {
    return QString::number(count) + ' ' + translated("selected_count_suffix") + " · " + size;
}

void UninstallTest::movesWhatIsTickedAndOnlyThat() {
    openUninstall();
    apps();
    QCOMPARE(shown("name"), (QStringList{"Notes", "Paint", "Solo"}));
    QCOMPARE(shown("size"), (QStringList{"1 KB", "2 KB", "300 bytes"}));
    QVERIFY(m_driver->text("screenSubtitle").startsWith(translated("word_free_space") + " : "));
    QVERIFY(!m_driver->isShown("uninstalledLabel") && !m_driver->isShown("backButton"));

    pick("Notes");
    QCOMPARE(shown("name"), (QStringList{"Notes", "notes", "com.paint-notes.plist", "notes"}));
    QCOMPARE(shown("checked"), QStringList(4, "true"));
    QCOMPARE(shown("explanation").value(0), "app_itself");
    QCOMPARE(shown("date").value(0), "");
    QVERIFY(!shown("date").value(1).isEmpty());
    QCOMPARE(m_driver->text("filesHeading"), translated("leftovers_found"));
    QVERIFY(!m_driver->isShown("noFiles"));
    QCOMPARE(m_driver->text("selectionLabel"), selection("1 KB", 4));

    m_driver->click(*m_driver->rows().at(3));
    m_driver->click(*m_driver->rows().at(0));
    QCOMPARE(shown("checked"), (QStringList{"false", "true", "true", "false"}));
    QCOMPARE(m_driver->text("selectionLabel"), selection("14 bytes", 2));
    m_driver->click(*m_driver->rows().at(0));
    QCOMPARE(m_driver->text("selectionLabel"), selection("1 KB", 3));

    const auto before = m_disk->entries();
    QVERIFY(m_driver->click("deleteButton"));
    QTRY_VERIFY(m_driver->isShown("cancel"));
    QCOMPARE(window()->findChild<QObject*>("uninstallDialog")->property("title"),
             translated("btn_uninstall"));
    const QString question =
        "« Notes » : " + selection("1 KB", 3) + '\n' + translated("alert_confirm_delete_message");
    QCOMPARE(asked(), question);
    QVERIFY(m_driver->click("cancel"));
    QTRY_VERIFY(!m_driver->isShown("cancel"));
    QCOMPARE(m_disk->entries(), before);

    bool wasBusy = false;
    connect(model<UninstallViewModel>(), &UninstallViewModel::lastUninstalledChanged, this,
            [&] { wasBusy = m_driver->item("confirm")->property("busy").toBool(); });
    confirm("deleteButton");
    QVERIFY(wasBusy);
    QCOMPARE(asked(), question); // to the last

    auto expected = before;
    const auto moves = [&](const std::string& path, const std::string& name) {
        for (const auto& [where, facts] : before)
            if (where == path || where.starts_with(path + "/")) {
                expected.erase(where);
                expected[at("~/.Trash/") + name + where.substr(path.size())] = facts;
            }
    };
    moves(at("~/Library/Caches/notes"), "notes");
    moves(at("~/Library/Preferences/com.paint-notes.plist"), "com.paint-notes.plist");
    moves("/Applications/Notes.app", "Notes.app");
    auto after = m_disk->entries();
    std::erase_if(after, [&](const auto& entry) {
        return !expected.contains(entry.first)
               && (m_history->path().starts_with(entry.first) || entry.first == at("~/.Trash"));
    });
    QCOMPARE(after, expected);

    QCOMPARE(m_history->entries().size(), 1u);
    QCOMPARE(m_history->entries()[0].name, "Notes");
    QCOMPARE(m_history->entries()[0].sizeBytes, 1014);
    QCOMPARE(m_driver->text("uninstalledLabel"), banner("Notes"));
    QCOMPARE(m_driver->text("uninstalledFreeSpace"), m_driver->text("screenSubtitle"));
    QTRY_COMPARE(shown("name"), (QStringList{"Paint", "Solo"}));
    // The list has the keyboard now, but who works by clicks is shown no ring.
    QVERIFY(hasFocus("appsList"));
    QCOMPARE(current(), QString());
}

void UninstallTest::tellsWhatWasAskedForWhenNothingCouldBeMoved() {
    openUninstall();
    apps();
    pick("Paint");
    m_driver->click(*m_driver->rows().at(1));
    m_disk->setMode("/Applications", 0500);
    m_disk->setMode("~/Library/Logs", 0500);
    confirm("deleteButton");
    m_disk->setMode("/Applications", 0700);
    m_disk->setMode("~/Library/Logs", 0700);
    for (const char* path :
         {"/Applications/Paint.app/x", "~/Library/Logs/paint", "~/Library/Preferences/com.paint-notes.plist"})
        QVERIFY2(m_disk->exists(path), path);
    QCOMPARE(m_driver->text("uninstalledLabel"), banner("Paint"));
    QTRY_COMPARE(shown("name"), (QStringList{"Notes", "Solo"}));
    QCOMPARE(m_history->entries().size(), 1u);

    // It is there, so it is listed again once the screen is new, and nothing is said of it any more.
    QVERIFY(m_driver->click("tab_history"));
    QTRY_COMPARE(shown("name"), QStringList{"Paint"});
    QVERIFY(m_driver->click("tab_uninstall"));
    apps();
    QCOMPARE(shown("name"), (QStringList{"Notes", "Paint", "Solo"}));
    QVERIFY(!m_driver->isShown("uninstalledLabel"));
}

void UninstallTest::showsAnApplicationThatKeepsNothingElsewhere() {
    openUninstall();
    apps();
    pick("Solo");
    QCOMPARE(shown("name"), QStringList{"Solo"});
    QCOMPARE(m_driver->text("noFiles"), translated("no_leftovers_found"));
    QVERIFY(!m_driver->isShown("filesHeading"));
    QCOMPARE(m_driver->text("selectionLabel"), selection("300 bytes", 1));

    m_driver->click(*m_driver->rows().at(0));
    QCOMPARE(m_driver->text("selectionLabel"), selection("Zero KB", 0));
    QVERIFY(!m_driver->isEnabled("deleteButton"));
    QVERIFY(m_driver->click("deleteButton"));
    QVERIFY(!m_driver->isShown("confirm") && !model<UninstallViewModel>()->showDeleteConfirm());
    m_driver->click(*m_driver->rows().at(0));
    QVERIFY(m_driver->isEnabled("deleteButton"));
    confirm("deleteButton");
    QVERIFY(!m_disk->exists("/Applications/Solo.app") && m_disk->exists("~/.Trash/Solo.app/x"));
    QCOMPARE(m_driver->text("uninstalledLabel"), banner("Solo"));
    QCOMPARE(m_history->entries().size(), 1u);
    QTRY_COMPARE(shown("name"), (QStringList{"Notes", "Paint"}));

    // The banner stays until the next one, and the last leaves a list that says so.
    pick("Notes");
    QVERIFY(m_driver->click("backButton"));
    QVERIFY(m_driver->text("uninstalledLabel").contains("Solo"));
    for (const char* app : {"Notes", "Paint"}) {
        pick(app);
        confirm("deleteButton");
        QVERIFY(m_driver->text("uninstalledLabel").contains(app));
    }
    QVERIFY(m_driver->rows().empty() && !m_driver->isShown("appsList"));
    QCOMPARE(m_driver->text("emptyPrompt"), translated("storage_breakdown_empty"));
}

void UninstallTest::forgetsWhatWasTickedOnTheWayBack() {
    openUninstall();
    apps();
    const auto before = m_disk->entries();
    pick("Notes");
    m_driver->click(*m_driver->rows().at(0));
    QVERIFY(m_driver->click("backButton"));
    QCOMPARE(shown("name"), (QStringList{"Notes", "Paint", "Solo"}));
    QVERIFY(!m_driver->isShown("backButton") && !m_driver->isShown("deleteButton"));
    QVERIFY(!model<UninstallViewModel>()->hasSelectedApp());
    QCOMPARE(model<UninstallViewModel>()->checkedCount(), 0);
    QCOMPARE(model<UninstallViewModel>()->selectedBytes(), 0);
    QVERIFY(hasFocus("appsList"));
    QCOMPARE(current(), QString());
    pick("Notes");
    QCOMPARE(shown("checked"), QStringList(4, "true"));
    QCOMPARE(m_disk->entries(), before);
}

void UninstallTest::showsTheLastPickedWhicheverSearchEndsFirst() {
    HandCranked jobs;
    openUninstall(jobs.executor());
    QCOMPARE(m_driver->text("loadingIndicator", "label"), translated("loading_apps"));
    QVERIFY(m_driver->rows().empty() && !m_driver->isShown("emptyPrompt"));
    jobs.run();
    apps();
    for (const bool lastEndsFirst : {false, true}) {
        m_driver->click(*m_driver->row("Notes"));
        QCOMPARE(m_driver->text("loadingIndicator", "label"), translated("loading_leftovers"));
        QCOMPARE(m_driver->text("loadingIndicator", "subtitle"), "Notes");
        QVERIFY(m_driver->rows().empty() && !m_driver->isShown("deleteButton"));
        m_driver->key(Qt::Key_Escape);
        m_driver->click(*m_driver->row("Paint"));
        QCOMPARE(m_driver->text("loadingIndicator", "subtitle"), "Paint");
        if (lastEndsFirst)
            jobs.runLast();
        jobs.run();
        QVERIFY(!m_driver->isShown("loadingIndicator"));
        QTRY_COMPARE(shown("name"), (QStringList{"Paint", "com.paint-notes.plist", "paint"}));
        QCOMPARE(m_driver->text("selectionLabel"), selection("2 KB", 3));
        QVERIFY(m_driver->click("backButton"));
    }
}

void UninstallTest::searchesInVainOnceTheScreenIsLeft() {
    HandCranked jobs;
    openUninstall(jobs.executor());
    QVERIFY(m_driver->click("tab_history"));
    jobs.run();
    QVERIFY(m_driver->click("tab_uninstall"));
    QVERIFY(m_driver->isShown("loadingIndicator"));
    jobs.run();
    apps();
    m_driver->click(*m_driver->row("Notes"));
    QVERIFY(!jobs.isIdle());
    QVERIFY(m_driver->click("tab_history"));
    jobs.run();
    QVERIFY(m_driver->click("tab_uninstall"));
    QVERIFY(!m_driver->isShown("backButton"));
    jobs.run();
    apps();
    QCOMPARE(shown("name"), (QStringList{"Notes", "Paint", "Solo"}));
    m_driver->click(*m_driver->row("Notes"));
    close();
    jobs.run();
    QVERIFY(jobs.isIdle());
}

void UninstallTest::isWalkedByKeys() {
    openUninstall();
    apps();
    QCOMPARE(current(), QString());
    m_driver->item("languageMenu")->forceActiveFocus(Qt::TabFocusReason);
    m_driver->key(Qt::Key_Tab);
    QVERIFY(hasFocus("appsList"));
    QCOMPARE(current(), "Notes");
    m_driver->key(Qt::Key_End);
    QCOMPARE(current(), "Solo");
    m_driver->key(Qt::Key_Home);
    QCOMPARE(current(), "Notes");
    m_driver->key(Qt::Key_Down);
    QCOMPARE(current(), "Paint");

    for (const Qt::Key opens : {Qt::Key_Return, Qt::Key_Space}) {
        m_driver->key(opens);
        files();
        QVERIFY(hasFocus("filesList"));
        QCOMPARE(current(), "Paint");
        m_driver->key(Qt::Key_Up); // there is nothing
        QCOMPARE(current(), "Paint");
        m_driver->key(Qt::Key_Escape);
        QVERIFY(hasFocus("appsList"));
        QCOMPARE(current(), "Paint");
    }

    m_driver->key(Qt::Key_Return);
    files();
    const auto ticks = [this] {
        return shown("checked");
    };
    m_driver->key(Qt::Key_Space);
    QCOMPARE(ticks(), (QStringList{"false", "true", "true"}));
    m_driver->key(Qt::Key_Down);
    QCOMPARE(current(), "com.paint-notes.plist");
    m_driver->key(Qt::Key_Return);
    QCOMPARE(ticks(), (QStringList{"false", "false", "true"}));
    m_driver->key(Qt::Key_End);
    QCOMPARE(current(), "paint");
    m_driver->key(Qt::Key_Space);
    QCOMPARE(ticks(), (QStringList{"false", "false", "false"}));
    m_driver->key(Qt::Key_Home);
    QCOMPARE(current(), "Paint");
    m_driver->key(Qt::Key_Return);
    m_driver->key(Qt::Key_Down);
    m_driver->key(Qt::Key_Up);
    QCOMPARE(current(), "Paint");
    QCOMPARE(ticks(), (QStringList{"true", "false", "false"}));

    // The pointer hides where the keys were, the next key shows it again.
    m_driver->click(*m_driver->row("paint"));
    m_driver->click(*m_driver->row("Paint"));
    QCOMPARE(current(), QString());
    m_driver->key(Qt::Key_Space);
    QCOMPARE(current(), "Paint");
    QVERIFY(ticks().at(0) == "true");

    m_driver->key(Qt::Key_Backtab);
    QVERIFY(hasFocus("backButton"));
    m_driver->key(Qt::Key_Return);
    QCOMPARE(current(), "Paint");
    m_driver->key(Qt::Key_Return);
    files();
    m_driver->key(Qt::Key_Tab);
    QVERIFY(hasFocus("deleteButton"));
    // A hasty Return cancels, and so does Escape, which doesn't go back as well.
    for (const Qt::Key harmless : {Qt::Key_Return, Qt::Key_Escape}) {
        m_driver->key(Qt::Key_Space);
        QTRY_VERIFY(hasFocus("cancel"));
        m_driver->key(harmless);
        QTRY_VERIFY(!m_driver->isShown("cancel"));
        QTRY_VERIFY(hasFocus("deleteButton"));
    }
    m_driver->key(Qt::Key_Return);
    QTRY_VERIFY(hasFocus("cancel"));
    m_driver->key(Qt::Key_Tab);
    m_driver->key(Qt::Key_Return);
    QTRY_VERIFY(!m_driver->isShown("cancel"));
    QVERIFY(!m_disk->exists("/Applications/Paint.app") && m_disk->exists("/Applications/Notes.app"));
    QTRY_VERIFY(hasFocus("appsList"));
    QCOMPARE(current(), "Solo"); // what has taken its place
}

void UninstallTest::leavesTheKeyboardWhereTheUserTookItMeanwhile() {
    HandCranked jobs;
    openUninstall(jobs.executor());
    m_driver->item("languageMenu")->forceActiveFocus(Qt::TabFocusReason);
    jobs.run();
    apps();
    QVERIFY(hasFocus("languageMenu"));
    m_driver->key(Qt::Key_Tab);
    QCOMPARE(current(), "Notes");
    m_driver->key(Qt::Key_Return);
    m_driver->key(Qt::Key_Backtab);
    QVERIFY(hasFocus("backButton"));
    jobs.run();
    files();
    QVERIFY(hasFocus("backButton"));
    m_driver->key(Qt::Key_Tab);
    QCOMPARE(current(), "Notes");
}

void UninstallTest::makesNoMoreRowsThanAreSeen() {
    for (int i = 100; i < 600; ++i)
        m_disk->make("~/Applications/App " + std::to_string(i) + ".app/");
    openUninstall();
    apps();
    QCOMPARE(m_driver->item("appsList")->property("count").toInt(), 503);
    QVERIFY(m_driver->items("row").size() < 60);

    // The way back leads to where one was.
    m_driver->item("appsList")->forceActiveFocus(Qt::TabFocusReason);
    m_driver->key(Qt::Key_End);
    for (int i = 0; i < 30; ++i)
        m_driver->key(Qt::Key_Up);
    QTRY_VERIFY(!current().isEmpty());
    const QString picked = current();
    layOut();
    const QVariant place = m_driver->item("appsList")->property("contentY");
    m_driver->key(Qt::Key_Return);
    files();
    QVERIFY(m_driver->click("backButton"));
    apps();
    QCOMPARE(m_driver->item("appsList")->property("contentY"), place);
    m_driver->key(Qt::Key_Down);
    m_driver->key(Qt::Key_Up);
    QCOMPARE(current(), picked);
}

void UninstallTest::tellsAScreenReaderWhatIsSeen() {
    openUninstall();
    apps();
    QCOMPARE(told("appsList")->role(), QAccessible::List);
    QCOMPARE(told("appsList")->text(QAccessible::Name), translated("uninstall_title"));
    const auto* app = QAccessible::queryAccessibleInterface(m_driver->row("Paint"));
    QCOMPARE(app->role(), QAccessible::Button);
    QCOMPARE(app->text(QAccessible::Name), "Paint, 2 KB");

    QAccessible::queryAccessibleInterface(m_driver->row("Paint"))
        ->actionInterface()
        ->doAction(QAccessibleActionInterface::pressAction());
    files();
    QCOMPARE(told("filesList")->text(QAccessible::Name), "Paint");
    for (const int row : {0, 1}) {
        auto* box = QAccessible::queryAccessibleInterface(m_driver->rows().at(static_cast<std::size_t>(row)));
        QCOMPARE(box->role(), QAccessible::CheckBox);
        QVERIFY(box->state().checkable && box->state().checked);
        box->actionInterface()->doAction(QAccessibleActionInterface::toggleAction());
        QVERIFY(!box->state().checked);
        QCOMPARE(shown("checked").value(row), "false");
        box->actionInterface()->doAction(QAccessibleActionInterface::pressAction());
        QVERIFY(box->state().checked);
    }
    QCOMPARE(m_driver->silentControls().join("; "), QString());
    confirm("deleteButton");
    QCOMPARE(told("uninstalledLabel")->role(), QAccessible::AlertMessage);
    QCOMPARE(told("uninstalledLabel")->text(QAccessible::Name), m_driver->text("uninstalledLabel"));
}

void UninstallTest::nothingIsCutOffInAnyLanguage() {
    QFETCH(AppLanguage, language);
    const std::string endless(200, 'w');
    m_disk->make({"/Applications/" + endless + ".app/x 123456789", "~/Library/Logs/" + endless + " 1",
                  "/Applications/<b>bold.app/x", "~/Library/Caches/two\nlines <b>bold/x"});
    // From a property list a name may be of any length.
    m_disk->write("/Applications/Zz.app/Contents/Info.plist",
                  "<plist><dict><key>CFBundleDisplayName</key><string>" + std::string(9000, 'Z')
                      + "</string></dict></plist>");
    HandCranked jobs;
    openUninstall(jobs.executor());
    Localizer::shared().setLanguage(language);
    QCOMPARE(m_driver->text("loadingIndicator", "label"), translated("loading_apps"));
    checkEverythingIsSaid();
    jobs.run();
    apps();
    QVERIFY(m_driver->text("screenSubtitle").startsWith(translated("word_free_space") + " : "));
    checkEverythingIsSaid();
    QVERIFY(m_driver->row("<b>bold"));

    for (const QString& name : {QString(200, 'w'), QString(255, 'Z') + u'…'}) {
        const std::size_t rows = model<UninstallViewModel>()->apps().size();
        QQuickItem* apps = m_driver->item("appsList");
        apps->forceActiveFocus(Qt::TabFocusReason);
        for (m_driver->key(Qt::Key_Home); current() != name; m_driver->key(Qt::Key_Down))
            QVERIFY(apps->property("currentIndex").toUInt() < rows - 1);
        m_driver->key(Qt::Key_Return);
        QCOMPARE(m_driver->text("backButton"), translated("btn_back_to_list"));
        checkEverythingIsSaid();
        jobs.run();
        files();
        checkEverythingIsSaid();
        QCOMPARE(m_driver->text("deleteButton"), translated("btn_uninstall"));
        QVERIFY(m_driver->click("deleteButton"));
        QTRY_VERIFY(m_driver->isShown("confirm"));
        QVERIFY(asked().endsWith(translated("alert_confirm_delete_message")));
        checkEverythingIsSaid();
        QVERIFY(QRect({}, smallest).contains(m_driver->centre(*m_driver->item("confirm"))));
        QVERIFY(m_driver->click("confirm"));
        QTRY_VERIFY(!m_driver->isShown("confirm"));
        QCOMPARE(model<UninstallViewModel>()->apps().size(), rows - 1);
        checkEverythingIsSaid();
        QVERIFY(m_driver->item("appsList")->height() > 200);
    }
}

int main(int argc, char** argv) {
    return runTest<UninstallTest>(argc, argv);
}

#include "uninstall_test.moc"
