#include "app/i18n/translations.h"
#include "app/models/scan_view_model.h"
#include "app/update/update_alert.h"
#include "tests/app/hand_cranked.h"
#include "tests/support/photo_catalogue.h"
#include "tests/ui/window_test.h"

#include <QRegularExpression>
#include <QSettings>
#include <QThread>

#include <atomic>
#include <string>
#include <thread>

using namespace std::chrono_literals;

namespace {

/// A confirmation dialog and the screen that opens it.
struct Question {
    const char* list;   ///< identifies the screen
    const char* button; ///< opens the dialog by a click
    const char* focus;  ///< has focus when a key opens the dialog
    const char* listAfterwards;
    const char* focusAfterwards;
    const char* title;
    QString subject; ///< what the message begins with
    const char* message;
    const char* confirm;
};

const Question questions[]{
    {"resultsList", "deleteButton", "deleteButton", "resultsList", "resultsList",
     "alert_confirm_delete_title", "", "alert_confirm_delete_message", "btn_trash"},
    {"resultsList", "emptyTrashButton", "emptyTrashButton", "resultsList", "emptyTrashButton",
     "alert_empty_trash_title", "", "alert_empty_trash_message", "btn_empty_trash"},
    {"filesList", "deleteButton", "deleteButton", "appsList", "appsList", "btn_uninstall",
     "« Paint » : ", "alert_confirm_delete_message", "btn_trash"},
    {"startupList", "disableButton", "startupList", "startupList", "startupList", "btn_disable",
     "« Agent100 »\n", "alert_confirm_disable_message", "btn_disable"},
    {"groupsList", "deleteButton", "deleteButton", "groupsList", "groupsList", "alert_confirm_delete_title",
     "", "alert_confirm_delete_photo_message", "btn_trash"},
};

} // namespace

/// Behaviour that all screens share, checked on each in the real window, on real files.
class EveryScreenTest : public WindowTest {
    Q_OBJECT

private Q_SLOTS:
    void walksEveryListByKeys_data();
    void walksEveryListByKeys();
    void ignoresOtherMouseButtons();
    void asksBeforeActing_data();
    void asksBeforeActing();
    void isBusyAndModalWhileItBlocks();
    void discardsResultsOfALeftScreen();
    void fitsInEveryLanguage_data() { eachLanguage(); }
    void fitsInEveryLanguage();

private:
    void fill(int count); ///< that many rows for each list, and a proposal that isn't ticked
    void openAllowed(const platform::Executor& executor = qtExecutor()); ///< may see the photos
    void show(const char* list, const QString& app = "Paint") const;     ///< by clicks
    QStringList foreignTexts() const; ///< drawn texts of another language, and keys without a text

    std::optional<CatalogueWriter> m_catalogue;
};

void EveryScreenTest::openAllowed(const platform::Executor& executor) {
    const auto answer = [](const platform::Disk&) {
        return platform::PhotoAuthorization::authorized;
    };
    open(smallest, executor, {answer, answer});
}

void EveryScreenTest::fill(int count) {
    m_catalogue.emplace(*m_disk, CatalogueWriter::Maker::lumvale);
    m_disk->make({"/Applications/Paint.app/x 1000", "~/.Trash/thrown away 7", "~/Downloads/old.zip 500"});
    m_disk->setModified("~/Downloads/old.zip", platform::now() - 100 * 24h);
    std::vector<HistoryEntry> history;
    for (int i = 0; i < count; ++i) {
        const std::string number = std::to_string(100 + i);
        m_disk->make({"~/Library/Caches/cache" + number + "/blob 8000",
                      "~/Library/Logs/paint " + number + " 9", "/Applications/Tool " + number + ".app/x 10"});
        makeAgent("~/Library/LaunchAgents/" + number + ".plist", "com.example.agent" + number);
        history.push_back({platform::now() - i * 1s, "entry " + number, i});
        for (const std::string half : {"a", "b"})
            m_catalogue->add({.uuid = number + half, .created = number, .name = "'" + number + half + "'"});
    }
    m_disk->write(HistoryStore(m_disk->disk()).path(), encodeHistory(history));
}

void EveryScreenTest::show(const char* list, const QString& app) const {
    const QLatin1String name(list);
    QVERIFY(m_driver->click(name == "resultsList"   ? "scanButton"
                            : name == "startupList" ? "tab_startup"
                            : name == "historyList" ? "tab_history"
                            : name == "groupsList"  ? "tab_duplicates"
                                                    : "tab_uninstall"));
    if (name == "groupsList")
        QVERIFY(m_driver->click("scanButton"));
    if (name == "filesList") {
        QTRY_VERIFY(m_driver->row(app));
        layOut();
        m_driver->click(*m_driver->row(app));
    }
    QTRY_VERIFY(m_driver->isShown(list) && !m_driver->rows().empty());
    layOut();
}

QStringList EveryScreenTest::foreignTexts() const {
    static const QRegularExpression key("^[a-z0-9]+(_[a-z0-9]+)+$");
    const QStringList drawn = m_driver->texts();
    QStringList foreign = drawn.filter(key);
    for (auto texts = Translations::table().begin(); texts != Translations::table().end(); ++texts) {
        const QString english = texts->value(AppLanguage::en);
        if (english != ::tr(texts.key()) && drawn.contains(english))
            foreign.append(english);
    }
    return foreign;
}

void EveryScreenTest::walksEveryListByKeys_data() {
    QTest::addColumn<QString>("name");
    QTest::addColumn<QAccessible::Role>("role");
    QTest::newRow("resultsList") << "tab_cleanup" << QAccessible::CheckBox;
    QTest::newRow("appsList") << "uninstall_title" << QAccessible::Button;
    QTest::newRow("filesList") << "Paint" << QAccessible::CheckBox;
    QTest::newRow("startupList") << "startup_title" << QAccessible::Button;
    QTest::newRow("groupsList") << "duplicates_title" << QAccessible::Grouping;
    QTest::newRow("historyList") << "tab_history" << QAccessible::ListItem;
}

void EveryScreenTest::walksEveryListByKeys() {
    QFETCH(QString, name);
    QFETCH(QAccessible::Role, role);
    const char* list = QTest::currentDataTag();
    fill(120);
    openAllowed();
    show(list);
    m_driver->item("languageMenu")->forceActiveFocus(Qt::TabFocusReason);
    for (int stops = 0; stops < 4 && !hasFocus(list); ++stops)
        m_driver->key(Qt::Key_Tab);
    const int last = m_driver->item(list)->property("count").toInt() - 1;
    const auto row = [&] {
        return m_driver->item(list)->property("currentIndex").toInt();
    };
    const auto walk = [&](Qt::Key key) {
        m_driver->key(key);
        const bool isInSight = QTest::qWaitFor([this] { return !current().isEmpty(); });
        return isInSight ? row() : -2;
    };
    const int first = row();
    const QString firstName = current();
    QVERIFY(!firstName.isEmpty());
    QCOMPARE(walk(Qt::Key_Down), first + 1);
    QCOMPARE(walk(Qt::Key_Up), first);
    QCOMPARE(walk(Qt::Key_Up), first);
    const int below = walk(Qt::Key_PageDown);
    QVERIFY(walk(Qt::Key_PageDown) > below);
    QCOMPARE(walk(Qt::Key_PageUp), below);
    for (const Qt::Key key : {Qt::Key_End, Qt::Key_PageDown, Qt::Key_Down})
        QCOMPARE(walk(key), last);
    QCOMPARE(walk(Qt::Key_Home), first);
    QCOMPARE(current(), firstName);
    QVERIFY(m_driver->items("row").size() < 60); // rows out of sight are not created

    QCOMPARE(told(list)->role(), QAccessible::List);
    QCOMPARE(told(list)->text(QAccessible::Name), ::tr(name));
    const auto* firstRow = told(m_driver->rows().front());
    QCOMPARE(firstRow->role(), role);
    if (role != QAccessible::Grouping)
        QVERIFY(firstRow->text(QAccessible::Name).contains(firstName) && firstRow->childCount() == 0);
    m_driver->key(Qt::Key_Tab); // the list is one tab stop
    QVERIFY(!hasFocus(list) && current().isEmpty());
}

void EveryScreenTest::ignoresOtherMouseButtons() {
    fill(3);
    open();
    for (const char* list : {"resultsList", "appsList"}) {
        show(list);
        const QString before = ticks();
        for (const Qt::MouseButton other : {Qt::RightButton, Qt::MiddleButton})
            QTest::mouseClick(window(), other, {}, Driver::centre(*m_driver->rows().front()));
        QVERIFY(m_driver->isShown(list));
        QCOMPARE(ticks(), before);
    }
}

void EveryScreenTest::asksBeforeActing_data() {
    QTest::addColumn<int>("number");
    QTest::addColumn<bool>("byKeys");
    for (int i = 0; i < static_cast<int>(std::size(questions)); ++i)
        for (const bool byKeys : {false, true})
            QTest::addRow("%s, %s, %s", questions[i].list, questions[i].button, byKeys ? "keys" : "clicks")
                << i << byKeys;
}

void EveryScreenTest::asksBeforeActing() {
    QFETCH(int, number);
    QFETCH(bool, byKeys);
    const Question& question = questions[number];
    fill(12);
    openAllowed();
    show(question.list);
    m_driver->click("photoCheckBox"); // no photo is ticked at first
    const auto before = m_disk->entries();
    const QString tickedBefore = ticks();
    if (byKeys)
        m_driver->item(question.focus)->forceActiveFocus(Qt::TabFocusReason);
    // A held key and a double click open the dialog and do not answer it.
    const auto ask = [&] {
        if (byKeys)
            m_driver->holdKey(Qt::Key_Space);
        else
            m_driver->doubleClick(*m_driver->item(question.button));
        return QTest::qWaitFor([&] {
            return hasFocus("cancel") && m_driver->item("cancel")->property("visualFocus").toBool() == byKeys;
        });
    };
    for (const bool byEscape : {false, true}) {
        QVERIFY(ask());
        if (byEscape)
            m_driver->holdKey(Qt::Key_Escape);
        else if (byKeys)
            m_driver->holdKey(Qt::Key_Return);
        else
            m_driver->doubleClick(*m_driver->item("cancel"));
        QTRY_VERIFY(!m_driver->isShown("cancel"));
        QVERIFY(m_driver->isShown(question.list) && (!byKeys || hasFocus(question.focus)));
    }
    QCOMPARE(m_disk->entries(), before);
    QCOMPARE(ticks(), tickedBefore);

    QVERIFY(ask());
    const QStringList texts = Driver::texts(*m_driver->item("dialogContent"));
    QCOMPARE(texts.size(), 4);
    QCOMPARE(texts[0], translated(question.title));
    QVERIFY(texts[1].startsWith(question.subject) && texts[1].endsWith(translated(question.message)));
    QCOMPARE(texts.mid(2), (QStringList{translated(question.confirm), translated("btn_cancel")}));
    QCOMPARE(told("dialogContent")->text(QAccessible::Name), texts[0]);
    QCOMPARE(told("dialogContent")->text(QAccessible::Description), texts[1]);
    if (byKeys)
        for (const Qt::Key key : {Qt::Key_Tab, Qt::Key_Return})
            m_driver->key(key);
    else
        QVERIFY(m_driver->click("confirm"));
    QTRY_VERIFY(!m_driver->isShown("cancel") && m_disk->entries() != before);
    QTRY_VERIFY(m_driver->isShown(question.listAfterwards) && hasFocus(question.focusAfterwards));
    QTRY_COMPARE(!current().isEmpty()
                     || m_driver->item(question.focusAfterwards)->property("visualFocus").toBool(),
                 byKeys);
}

void EveryScreenTest::isBusyAndModalWhileItBlocks() {
    // During the action the user clicks something behind the dialog or in it.
    const std::pair<int, const char*> cases[]{
        {0, "row"}, {0, "confirm"}, {1, "scanButton"}, {2, "row"}, {3, "tab_history"}};
    for (const auto& [number, clicked] : cases) {
        const Question& question = questions[number];
        m_disk.emplace();
        fill(12);
        open();
        show(question.list);
        const auto before = m_disk->entries();
        QVERIFY(m_driver->click(question.button));
        QTRY_VERIFY(m_driver->isShown("confirm"));
        const QQuickItem* confirming = m_driver->item("confirm");
        const QString message = m_driver->text("dialogMessage");
        const QPoint place = m_driver->centre(*m_driver->item(clicked));

        // A frame has its content once it is synchronised, and is on the screen once it is swapped.
        std::atomic<bool> isBusyInFrame = false;
        std::atomic<bool> isBusyOnScreen = false;
        const QObject until;
        connect(
            window(), &QQuickWindow::afterSynchronizing, &until,
            [&] { isBusyInFrame = confirming->property("busy").toBool(); }, Qt::DirectConnection);
        connect(
            window(), &QQuickWindow::frameSwapped, &until,
            [&] {
                if (isBusyInFrame)
                    isBusyOnScreen = true;
            },
            Qt::DirectConnection);
        bool wasSeen = false;
        QString messageWhileBlocked;
        QString selection;
        std::map<std::string, std::string> done;
        std::jthread clicking;
        connect(m_driver->blockingAction(), &BlockingAction::ready, &until, [&] {
            wasSeen = isBusyOnScreen;
            messageWhileBlocked = m_driver->text("dialogMessage");
            selection = m_driver->text("selectionLabel");
            done = m_disk->entries();
            clicking = m_driver->clickLater(place);
            QThread::msleep(300); // until the click waits in the queue
        });
        QVERIFY(m_driver->click("confirm"));
        QCOMPARE(m_disk->entries(), before); // nothing happens until the dialog is drawn as busy
        QTRY_VERIFY(!m_driver->isShown("confirm"));
        clicking.join();
        QCoreApplication::processEvents();
        QVERIFY(wasSeen);
        QCOMPARE(messageWhileBlocked, message);
        QVERIFY(done != before);
        QCOMPARE(m_disk->entries(), done);
        QVERIFY(m_driver->isShown(question.listAfterwards) && !m_driver->isShown("loadingIndicator"));
        QCOMPARE(m_driver->text("selectionLabel"), selection);
    }
}

void EveryScreenTest::discardsResultsOfALeftScreen() {
    fill(3);
    const std::pair<const char*, const char*> screens[]{{"tab_cleanup", "scanning_progress"},
                                                        {"tab_uninstall", "loading_apps"},
                                                        {"tab_startup", "loading_startup"},
                                                        {"tab_duplicates", "loading_duplicates"}};
    for (const auto& [tab, label] : screens) {
        HandCranked jobs;
        openAllowed(jobs.executor());
        const auto begin = [&, tab = tab, label = label] {
            QVERIFY(m_driver->click(tab));
            if (m_driver->isShown("scanButton"))
                QVERIFY(m_driver->click("scanButton"));
            QCOMPARE(m_driver->text("loadingIndicator", "label"), translated(label));
            QCOMPARE(told("loadingIndicator")->text(QAccessible::Name), translated(label));
            QVERIFY(m_driver->rows().empty() && !m_driver->isShown("emptyPrompt"));
            QVERIFY(!m_driver->isEnabled("scanButton"));
        };
        begin();
        jobs.runBackground();
        QVERIFY(m_driver->click("tab_history"));
        jobs.publish(); // to a screen that no longer exists
        begin();
        jobs.run();
        QTRY_VERIFY(!m_driver->rows().empty() && !m_driver->isShown("loadingIndicator"));
        QVERIFY(m_driver->click("tab_history"));
        begin();
        close();
        jobs.run();
        QVERIFY(jobs.isIdle());
    }
}

void EveryScreenTest::fitsInEveryLanguage() {
    QFETCH(AppLanguage, language);
    const std::string w(200, 'w');
    const QString longest = QString::fromStdString(w);
    m_disk->make({"~/Library/Caches/" + w + "/blob 12345678", "~/Library/Caches/two\nlines <b>bold/blob 9999",
                  "/Applications/" + w + ".app/x 123456789", "~/Library/Logs/" + w + " 1",
                  "~/.Trash/" + w + "/x", "~/Movies/film 8000"});
    m_disk->setMode("~/.Trash/" + w, 0500);
    makeAgent("/Library/LaunchAgents/1.plist", "com.example.&lt;b&gt;bold");
    makeAgent("~/Library/LaunchAgents/2.plist", std::string(65'536, 'w'));
    m_catalogue.emplace(*m_disk, CatalogueWriter::Maker::lumvale);
    for (int i = 0; i < 3; ++i)
        m_catalogue->add({.uuid = std::to_string(i), .size = "123456789", .name = "'" + w + "'"});
    QSettings().remove("didOnboard");
    openAllowed();
    // Everything on the screen follows the language at once.
    const auto check = [&] {
        Localizer::shared().setLanguage(language);
        checkEverythingIsSaid();
        QCOMPARE(foreignTexts().join("; "), QString());
        Localizer::shared().setLanguage(AppLanguage::en);
    };
    const auto checkAndAnswer = [&](const char* answer, const char* content = "dialogContent") {
        QTRY_VERIFY(m_driver->isShown(answer));
        check();
        QVERIFY(QRectF({}, smallest).contains(Driver::place(*m_driver->item(content))));
        QVERIFY(m_driver->click(answer));
    };
    for (int page = 0; page < 4; ++page)
        checkAndAnswer("next", "onboardingContent");
    QTRY_VERIFY(!m_driver->isShown("next"));
    m_lumvale->announce(
        UpdateChecker::alertIn(rawValue(language), "Lumvale", std::string(9'000, 'W'), "1.4", {}));
    checkAndAnswer("later");
    QTRY_VERIFY(!m_driver->isShown("later"));
    check();
    m_history->record(w, 123456789);
    show("historyList");
    check();
    QVERIFY(m_driver->click("tab_cleanup"));
    for (const Question& question : questions) {
        show(question.list, longest);
        check();
        m_driver->click("photoCheckBox");
        QVERIFY(m_driver->click(question.button));
        checkAndAnswer("confirm");
        QTRY_VERIFY(!m_driver->isShown("confirm"));
        check();
    }
    QVERIFY(m_driver->click("tab_cleanup"));
    show("resultsList");
    QVERIFY(m_driver->click("storageButton"));
    QTRY_VERIFY(!m_driver->items("tile").empty());
    check();
}

int main(int argc, char** argv) {
    return runTest<EveryScreenTest>(argc, argv);
}

#include "every_screen_test.moc"
