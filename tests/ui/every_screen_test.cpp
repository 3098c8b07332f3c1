#include "app/i18n/translations.h"
#include "app/models/scan_view_model.h"
#include "app/update/update_alert.h"
#include "tests/app/hand_cranked.h"
#include "tests/support/photo_catalogue.h"
#include "tests/ui/window_test.h"

#include <QRegularExpression>
#include <QSet>
#include <QThread>

#include <algorithm>
#include <atomic>
#include <string>
#include <thread>

using namespace std::chrono_literals;

namespace {

/// What is asked before anything goes, and where.
struct Question {
    const char* dialog;
    const char* list;     ///< of the screen that asks
    const char* button;   ///< what a click asks by
    const char* keyboard; ///< what has the keyboard when a key asks
    const char* listAfterwards;
    const char* keyboardAfterwards;
};

constexpr Question questions[] = {
    {"deleteDialog", "resultsList", "deleteButton", "deleteButton", "resultsList", "resultsList"},
    {"emptyTrashDialog", "resultsList", "emptyTrashButton", "emptyTrashButton", "resultsList",
     "emptyTrashButton"},
    {"uninstallDialog", "filesList", "deleteButton", "deleteButton", "appsList", "appsList"},
    {"disableDialog", "startupList", "disableButton", "startupList", "startupList", "startupList"},
    {"deleteDialog", "groupsList", "deleteButton", "deleteButton", "groupsList", "groupsList"},
};

} // namespace

/// What all screens promise alike, asked of each: the real window, clicks and keys, real files.
class EveryScreenTest : public WindowTest {
    Q_OBJECT

private Q_SLOTS:
    void isWalkedByKeys_data();
    void isWalkedByKeys();
    void hearsTheLeftButtonOnly();
    void asksBeforeAnythingGoes_data();
    void asksBeforeAnythingGoes();
    void isBusyAndInFrontWhileItBlocks_data();
    void isBusyAndInFrontWhileItBlocks();
    void forgetsWhatComesAfterItIsLeft_data();
    void forgetsWhatComesAfterItIsLeft();
    void isWholeInEveryLanguage_data() { eachLanguage(); }
    void isWholeInEveryLanguage();

private:
    /// So many rows for each list, something in the Trash, and a proposal that isn't ticked.
    void fill(int count);
    /// Opens the window, which may see the photos.
    void openAllowed(const platform::Executor& executor = qtExecutor(), QSize size = smallest);
    void show(const char* list) const; ///< by clicks

    /// The texts in sight that are of another language or of none, as the key of one that doesn't exist.
    QStringList foreignTexts() const;

    platform::PhotoAuthorization m_photos = platform::PhotoAuthorization::authorized;
    std::optional<CatalogueWriter> m_catalogue;
};

void EveryScreenTest::openAllowed(const platform::Executor& executor, QSize size) {
    const auto answer = [this](const platform::Disk&) {
        return m_photos;
    };
    open(size, executor, {answer, answer});
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

void EveryScreenTest::show(const char* list) const {
    const QLatin1String name(list);
    QVERIFY(m_driver->click(name == "resultsList"   ? "scanButton"
                            : name == "startupList" ? "tab_startup"
                            : name == "historyList" ? "tab_history"
                            : name == "groupsList"  ? "tab_duplicates"
                                                    : "tab_uninstall"));
    if (name == "groupsList")
        QVERIFY(m_driver->click("scanButton"));
    if (name == "filesList") {
        QTRY_VERIFY(m_driver->row("Paint"));
        layOut();
        m_driver->click(*m_driver->row("Paint"));
    }
    QTRY_VERIFY(m_driver->isShown(list) && !m_driver->rows().empty());
    layOut();
}

QStringList EveryScreenTest::foreignTexts() const {
    static const QRegularExpression key("^[a-z0-9]+(_[a-z0-9]+)+$");
    QSet<QString> english;
    QSet<QString> own;
    for (auto texts = Translations::table().begin(); texts != Translations::table().end(); ++texts) {
        english.insert(texts->value(AppLanguage::en));
        own.insert(::tr(texts.key()));
    }
    QStringList foreign;
    for (const QString& text : m_driver->texts())
        if (key.match(text).hasMatch() || (english.contains(text) && !own.contains(text)))
            foreign.append(text);
    return foreign;
}

void EveryScreenTest::isWalkedByKeys_data() {
    QTest::addColumn<QString>("name");
    QTest::addColumn<QAccessible::Role>("role");
    QTest::newRow("resultsList") << "tab_cleanup" << QAccessible::CheckBox;
    QTest::newRow("appsList") << "uninstall_title" << QAccessible::Button;
    QTest::newRow("filesList") << "Paint" << QAccessible::CheckBox;
    QTest::newRow("startupList") << "startup_title" << QAccessible::Button;
    QTest::newRow("groupsList") << "duplicates_title" << QAccessible::Grouping;
    QTest::newRow("historyList") << "tab_history" << QAccessible::ListItem;
}

void EveryScreenTest::isWalkedByKeys() {
    QFETCH(QString, name);
    QFETCH(QAccessible::Role, role);
    const char* list = QTest::currentDataTag();
    fill(120);
    openAllowed(qtExecutor(), {820, 1'100}); // several rows of photos on a page
    show(list);
    QCOMPARE(current(), QString());

    m_driver->item("languageMenu")->forceActiveFocus(Qt::TabFocusReason);
    for (int stops = 0; stops < 4 && !hasFocus(list); ++stops)
        m_driver->key(Qt::Key_Tab);
    const QStringList page = shown("name");
    const QVariant count = m_driver->item(list)->property("count");
    const auto row = [this, list] {
        return m_driver->item(list)->property("currentIndex").toInt();
    };
    const auto walk = [this, row](Qt::Key key) {
        m_driver->key(key);
        const bool isInSight = QTest::qWaitFor([this] { return !current().isEmpty(); });
        return isInSight ? row() : -2;
    };
    QCOMPARE(current(), page.at(0));
    const int first = row();
    QCOMPARE(walk(Qt::Key_Down), first + 1);
    QCOMPARE(current(), page.at(1));
    for (int i = 0; i < 2; ++i)
        QCOMPARE(walk(Qt::Key_Up), first);
    // So that a row of two pages is seen on both.
    const int below = walk(Qt::Key_PageDown);
    QVERIFY(below > 1 && below < page.size());
    QVERIFY(walk(Qt::Key_PageDown) > below && !shown("name").contains(page.at(0)));
    QCOMPARE(walk(Qt::Key_PageUp), below);
    for (const Qt::Key key : {Qt::Key_End, Qt::Key_PageDown, Qt::Key_Down})
        QCOMPARE(walk(key), count.toInt() - 1);
    for (const Qt::Key key : {Qt::Key_Home, Qt::Key_PageUp})
        QCOMPARE(walk(key), first);
    QCOMPARE(current(), page.at(0));
    QVERIFY(m_driver->items("row").size() < 60); // no more are there than are seen, and some

    QCOMPARE(told(list)->role(), QAccessible::List);
    QCOMPARE(told(list)->text(QAccessible::Name), ::tr(name));
    const auto* toldOfRow = QAccessible::queryAccessibleInterface(m_driver->rows().front());
    QCOMPARE(toldOfRow->role(), role);
    const bool hasPhotos = role == QAccessible::Grouping;
    QVERIFY(toldOfRow->text(QAccessible::Name).contains(shown(hasPhotos ? "facts" : "name").at(0)));
    int toldWithin = 0; // but for what is kept for reuse
    for (int i = 0; i < toldOfRow->childCount(); ++i)
        toldWithin += !toldOfRow->child(i)->state().invisible;
    QCOMPARE(toldWithin, hasPhotos ? 2 : 0); // and nothing is said twice

    m_driver->key(Qt::Key_Tab); // the whole list is one stop
    QVERIFY(!hasFocus(list) && current().isEmpty());
}

void EveryScreenTest::hearsTheLeftButtonOnly() {
    fill(3);
    open();
    for (const char* list : {"resultsList", "appsList", "filesList"}) {
        show(list);
        const QStringList ticks = shown("checked");
        const QPoint place = Driver::centre(*m_driver->rows().front());
        for (const Qt::MouseButton other : {Qt::RightButton, Qt::MiddleButton, Qt::BackButton})
            QTest::mouseClick(window(), other, Qt::NoModifier, place);
        QVERIFY(m_driver->isShown(list));
        QCOMPARE(shown("checked"), ticks);
    }
    // Held, they keep nothing from the left one.
    QTest::qWait(500); // what may be half of a double click is heard by nobody
    QQuickItem* row = m_driver->rows().front();
    const bool wasChecked = row->property("checked").toBool();
    QTest::mousePress(window(), Qt::LeftButton, Qt::NoModifier, Driver::centre(*row));
    QTest::mousePress(window(), Qt::RightButton, Qt::NoModifier, Driver::centre(*row));
    QTest::mouseRelease(window(), Qt::LeftButton, Qt::NoModifier, Driver::centre(*row));
    QTest::mouseRelease(window(), Qt::RightButton, Qt::NoModifier, Driver::centre(*row));
    QCOMPARE(row->property("checked").toBool(), !wasChecked);
}

void EveryScreenTest::asksBeforeAnythingGoes_data() {
    QTest::addColumn<int>("question");
    QTest::addColumn<bool>("byKeys");
    for (int i = 0; i < static_cast<int>(std::size(questions)); ++i) {
        QTest::addRow("%s of %s by clicks", questions[i].dialog, questions[i].list) << i << false;
        QTest::addRow("%s of %s by keys", questions[i].dialog, questions[i].list) << i << true;
    }
}

void EveryScreenTest::asksBeforeAnythingGoes() {
    QFETCH(int, question);
    QFETCH(bool, byKeys);
    const auto& [dialog, list, button, keyboard, listAfterwards, keyboardAfterwards] = questions[question];
    fill(12);
    openAllowed();
    show(list);
    m_driver->click("photoCheckBox"); // where the program proposes nothing
    const auto before = m_disk->entries();
    const QStringList ticks = shown("checked");
    if (byKeys)
        m_driver->item(keyboard)->forceActiveFocus(Qt::TabFocusReason);

    // By a hasty hand, which mustn't answer what it asks, nor hit what lies behind.
    const auto ask = [&, button = button] {
        if (byKeys)
            m_driver->holdKey(Qt::Key_Space);
        else
            m_driver->doubleClick(*m_driver->item(button));
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
        QVERIFY(m_driver->isShown(list) && (!byKeys || hasFocus(keyboard)));
    }
    // Left on the other button, it starts on the harmless one, and from the first moment.
    QVERIFY(ask());
    m_driver->key(Qt::Key_Tab);
    QVERIFY(hasFocus("confirm"));
    m_driver->key(Qt::Key_Escape);
    QTRY_VERIFY(!m_driver->isShown("cancel"));
    if (byKeys)
        m_driver->key(Qt::Key_Space);
    else
        QVERIFY(m_driver->click(button));
    m_driver->key(Qt::Key_Return);
    QTRY_VERIFY(!m_driver->isShown("cancel"));
    QCOMPARE(m_disk->entries(), before);
    QCOMPARE(shown("checked"), ticks);

    QVERIFY(ask());
    if (byKeys)
        for (const Qt::Key key : {Qt::Key_Tab, Qt::Key_Return})
            m_driver->key(key);
    else
        QVERIFY(m_driver->click("confirm"));
    QTRY_VERIFY(!m_driver->isShown("cancel"));
    QTRY_VERIFY(m_disk->entries() != before);
    // What had the keyboard may be gone; where it is is shown to those who came by keys.
    QTRY_VERIFY(m_driver->isShown(listAfterwards) && hasFocus(keyboardAfterwards));
    QTRY_COMPARE(!current().isEmpty() || m_driver->item(keyboardAfterwards)->property("visualFocus").toBool(),
                 byKeys);
}

void EveryScreenTest::isBusyAndInFrontWhileItBlocks_data() {
    QTest::addColumn<int>("question");
    QTest::addColumn<QString>("clicked");
    for (const char* clicked : {"row", "scanButton", "cancel", "confirm"})
        QTest::addRow("deleteDialog, %s", clicked) << 0 << QString(clicked);
    QTest::newRow("emptyTrashDialog") << 1 << "row";
    QTest::newRow("uninstallDialog") << 2 << "row";
    QTest::newRow("disableDialog") << 3 << "disableButton";
}

void EveryScreenTest::isBusyAndInFrontWhileItBlocks() {
    QFETCH(int, question);
    QFETCH(QString, clicked);
    const auto& [dialog, list, button, keyboard, listAfterwards, keyboardAfterwards] = questions[question];
    fill(12);
    open();
    show(list);
    if (list == QLatin1String("startupList"))
        confirm(button); // the line that says so comes now, and moves no row later
    const auto before = m_disk->entries();
    QVERIFY(m_driver->click(button));
    QTRY_VERIFY(m_driver->isShown("confirm"));
    const QQuickItem* confirming = m_driver->item("confirm");
    const QObject* asking = window()->findChild<QObject*>(dialog);
    const QString asked = asking->property("message").toString();
    const QByteArray clickedName = clicked.toLatin1();
    const QPoint place = m_driver->centre(*m_driver->item(clickedName));

    // What a frame shows is settled when it is synchronised, and seen when it is swapped.
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
    QString stillAsked;
    std::map<std::string, std::string> done;
    const auto ticked = [this] {
        return model<ScanViewModel>() ? model<ScanViewModel>()->checkedCount() : 0;
    };
    int stillTicked = 0;
    std::jthread clicking;
    connect(m_driver->blockingAction(), &BlockingAction::ready, &until, [&] {
        // Here the program is blocked. Its user sees that, and clicks all the same.
        wasSeen = isBusyOnScreen;
        stillAsked = asking->property("message").toString();
        done = m_disk->entries();
        stillTicked = ticked();
        clicking = m_driver->clickLater(place);
        QThread::msleep(50);
    });
    QVERIFY(m_driver->click("confirm"));
    QCOMPARE(m_disk->entries(), before); // not yet: the dialog comes first
    QTRY_VERIFY(!m_driver->isShown("confirm"));
    QTest::qWait(100); // for the click to do its harm
    clicking.join();

    QVERIFY(wasSeen);
    QCOMPARE(stillAsked, asked);
    QVERIFY(done != before);
    QCOMPARE(m_disk->entries(), done);
    QCOMPARE(ticked(), stillTicked);
    QVERIFY(m_driver->isShown(listAfterwards));
    QVERIFY(!m_driver->isShown("cancel") && !m_driver->isShown("loadingIndicator"));
    // And the click would have hit, had it come through.
    const std::vector<QQuickItem*> targets = m_driver->items(clickedName);
    QVERIFY(targets.empty() || std::any_of(targets.begin(), targets.end(), [place](const QQuickItem* target) {
                return Driver::place(*target).contains(place);
            }));
}

void EveryScreenTest::forgetsWhatComesAfterItIsLeft_data() {
    QTest::addColumn<QString>("label");
    QTest::newRow("tab_cleanup") << "scanning_progress";
    QTest::newRow("tab_uninstall") << "loading_apps";
    QTest::newRow("tab_startup") << "loading_startup";
    QTest::newRow("tab_duplicates") << "loading_duplicates";
}

void EveryScreenTest::forgetsWhatComesAfterItIsLeft() {
    QFETCH(QString, label);
    fill(3);
    HandCranked jobs;
    openAllowed(jobs.executor());
    const auto begin = [this] {
        QVERIFY(m_driver->click(QTest::currentDataTag()));
        if (m_driver->isShown("scanButton"))
            QVERIFY(m_driver->click("scanButton"));
    };
    const auto isWaiting = [&] {
        return m_driver->text("loadingIndicator", "label") == ::tr(label) && m_driver->rows().empty()
               && !m_driver->isShown("emptyPrompt");
    };
    begin();
    QVERIFY(isWaiting());
    QVERIFY(!m_driver->isEnabled("scanButton"));
    QCOMPARE(told("loadingIndicator")->text(QAccessible::Name), ::tr(label));
    QCOMPARE(told("loadingIndicator")->childCount(), 0); // and it isn't said twice
    const double before = m_driver->text("loadingIndicator", "time").toDouble();
    QTRY_VERIFY(m_driver->text("loadingIndicator", "time").toDouble() > before); // it moves
    for (const bool isFound : {false, true}) {
        if (isFound)
            jobs.runBackground();
        QVERIFY(m_driver->click("tab_history"));
        if (isFound)
            jobs.publish(); // to nobody
        begin();
        jobs.runBackground();
        QVERIFY(isWaiting());
    }
    jobs.run();
    QTRY_VERIFY(!m_driver->rows().empty() && !m_driver->isShown("loadingIndicator"));

    QVERIFY(m_driver->click("tab_history"));
    begin();
    close();
    jobs.run();
    QVERIFY(jobs.isIdle());
}

void EveryScreenTest::isWholeInEveryLanguage() {
    QFETCH(AppLanguage, language);
    const std::string w(200, 'w');
    const QString endless = QString::fromStdString(w);
    const QString cut =
        'W' + QString(254, 'w') + u'…'; // a name of any length that comes from a property list
    m_disk->make({"~/Library/Caches/" + w + "/blob 12345678", "~/Library/Caches/two\nlines <b>bold/blob 9999",
                  "/Applications/" + w + ".app/x 123456789", "~/Library/Logs/" + w + " 1",
                  "~/.Trash/" + w + "/x", "/Applications/<b>bold.app/x", "~/Movies/film 8000",
                  "~/" + w + "/x 5200"});
    m_disk->setMode("~/.Trash/" + w, 0500);
    m_disk->write("/Applications/Zz.app/Contents/Info.plist",
                  "<plist><dict><key>CFBundleDisplayName</key><string>W" + std::string(9000, 'w')
                      + "</string></dict></plist>");
    makeAgent("~/Library/LaunchAgents/1.plist", std::string(65'536, 'w'));
    makeAgent("/Library/LaunchAgents/2.plist", "com.example.&lt;b&gt;bold");
    m_catalogue.emplace(*m_disk, CatalogueWriter::Maker::lumvale);
    for (int i = 0; i < 40; ++i)
        m_catalogue->add({.uuid = std::to_string(i), .size = "123456789", .name = "'" + w + "'"});
    HandCranked jobs;
    openAllowed(jobs.executor());
    // Whatever is on the screen follows the language at once.
    const auto check = [&] {
        if (QTest::currentTestFailed())
            return; // else the same would be waited for in vain on every screen
        Localizer::shared().setLanguage(language);
        checkEverythingIsSaid();
        QCOMPARE(foreignTexts().join("; "), QString());
        QVERIFY(Driver::place(*m_driver->item("tab_history")).right() + 10
                <= Driver::place(*m_driver->item("languageMenu")).left());
        Localizer::shared().setLanguage(AppLanguage::en);
    };
    const auto checkAndAnswer = [&](const char* answer) {
        QTRY_VERIFY(m_driver->isShown(answer));
        check();
        const QRectF dialog = Driver::place(*m_driver->item("dialogContent"));
        QVERIFY(QRectF({}, smallest).contains(dialog.adjusted(-24, -24, 24, 24)));
        QVERIFY(dialog.contains(Driver::place(*m_driver->item(answer))));
        QCOMPARE(told("dialogContent")->role(), QAccessible::AlertMessage);
        QCOMPARE(told("dialogContent")->text(QAccessible::Name), m_driver->text("dialogTitle"));
        QCOMPARE(told("dialogContent")->text(QAccessible::Description), m_driver->text("dialogMessage"));
        QVERIFY(m_driver->click(answer));
        QTRY_VERIFY(!m_driver->isShown(answer));
    };
    using enum platform::PhotoAuthorization;
    for (const auto& [tab, photos] : {std::pair("tab_duplicates", notDetermined),
                                      {"tab_history", denied},
                                      {"tab_duplicates", denied},
                                      {"tab_cleanup", authorized}}) {
        m_photos = photos;
        QVERIFY(m_driver->click(tab));
        check();
    }
    m_lumvale->announce(
        UpdateChecker::alertIn(rawValue(language), "Lumvale", std::string(9'000, 'W'), "1.4", {}));
    checkAndAnswer("later");

    QVERIFY(m_driver->click("scanButton"));
    check();
    jobs.run();
    QTRY_VERIFY(m_driver->row(endless));
    check();
    QVERIFY(m_driver->click("storageButton"));
    QTRY_VERIFY(m_driver->isShown("storageLoading"));
    check();
    jobs.run();
    check();
    m_driver->key(Qt::Key_Escape);
    QTRY_VERIFY(!m_driver->isShown("storageTitle"));
    for (const char* button : {"emptyTrashButton", "deleteButton"}) {
        QVERIFY(m_driver->click(button));
        checkAndAnswer("confirm");
    }
    check();

    QVERIFY(m_driver->click("tab_uninstall"));
    check();
    jobs.run();
    check();
    for (const QString& app : {endless, cut}) {
        QTRY_VERIFY(m_driver->row(app));
        m_driver->click(*m_driver->row(app));
        check();
        jobs.run();
        check();
        QVERIFY(m_driver->click("deleteButton"));
        checkAndAnswer("confirm");
        check();
        QVERIFY(m_driver->item("appsList")->height() > 200);
    }

    QVERIFY(m_driver->click("tab_startup"));
    check();
    jobs.run();
    QTRY_VERIFY(m_driver->row(cut));
    check();
    m_driver->click(*m_driver->row(cut)->findChild<QQuickItem*>("disableButton"));
    checkAndAnswer("confirm");
    check();
    QCOMPARE(shown("name"), QStringList{"<B>Bold"});

    QVERIFY(m_driver->click("tab_history"));
    QTRY_COMPARE(shown("name").size(), 5);
    check();

    QVERIFY(m_driver->click("tab_duplicates"));
    check();
    QVERIFY(m_driver->click("scanButton"));
    check();
    jobs.run();
    QTRY_VERIFY(m_driver->isShown("photoCheckBox"));
    check();
    QVERIFY(m_driver->click("photoCheckBox") && m_driver->click("deleteButton"));
    checkAndAnswer("confirm");
    jobs.run();
    QTRY_VERIFY(m_driver->isShown("deletedLabel"));
    check();
    m_catalogue->run("UPDATE ZASSET SET ZHIDDEN = 1");
    jobs.run();
    QTRY_COMPARE(m_driver->text("emptyPrompt"), translated("duplicates_none_found"));
    check();
}

int main(int argc, char** argv) {
    return runTest<EveryScreenTest>(argc, argv);
}

#include "every_screen_test.moc"
