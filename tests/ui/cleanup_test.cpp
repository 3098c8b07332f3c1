#include "app/models/scan_view_model.h"
#include "tests/app/hand_cranked.h"
#include "tests/ui/window_test.h"

#include <QThread>

#include <atomic>
#include <chrono>
#include <cmath>
#include <string>
#include <thread>

using namespace std::chrono_literals;

/// The cleanup screen as its user meets it: the real window, clicks and keys, real files.
class CleanupTest : public WindowTest {
    Q_OBJECT

private Q_SLOTS:
    void init();

    void movesWhatIsTickedAndOnlyThat();
    void emptiesTheTrash_data();
    void emptiesTheTrash();
    void actsOnceForAHastyHand();
    void startsEachDialogOnTheHarmlessButton();
    void standsNamesOfAllScriptsAtTheLeft();
    void isWalkedByKeys();
    void isWalkedByPages();
    void listsWhatStayedInWholeLines();
    void tellsAScreenReaderWhatIsSeen();
    void nothingIsCutOffInAnyLanguage_data() { eachLanguage(); }
    void nothingIsCutOffInAnyLanguage();
    void movesOnWhileAScanRuns();
    void showsThatItIsBusyWhileItBlocks_data();
    void showsThatItIsBusyWhileItBlocks();

private:
    void openAndScan();
    void scan();

    static constexpr QSize high{1000, 860}; ///< so that every row of these disks is in sight
};

void CleanupTest::init() {
    WindowTest::init();
    m_disk->make({"~/Library/Caches/com.example.a/blob 4000", "~/Library/Logs/b.log 20",
                  "~/Downloads/old.zip 500", "~/.Trash/thrown away 7", "~/Documents/letter 1"});
    m_disk->setModified("~/Downloads/old.zip", platform::now() - 100 * 24h);
}

void CleanupTest::openAndScan() {
    open(high);
    scan();
}

void CleanupTest::scan() {
    QVERIFY(m_driver->click("scanButton"));
    QTRY_VERIFY(m_driver->isShown("resultsList"));
    QTRY_VERIFY(!m_driver->rows().empty());
}

void CleanupTest::movesWhatIsTickedAndOnlyThat() {
    open(high);
    QCOMPARE(m_driver->text("emptyPrompt"), translated("cleanup_empty"));
    QVERIFY(!m_driver->isShown("healthLabel"));

    scan();
    QVERIFY(!m_driver->isShown("emptyPrompt"));
    QVERIFY(m_driver->isShown("healthLabel"));
    QCOMPARE(shown("name"), (QStringList{"com.example.a", "b.log", "thrown away", "old.zip"}));
    QCOMPARE(shown("checked"), (QStringList{"true", "true", "true", "false"}));

    const QString suffix = ' ' + translated("selected_count_suffix") + " · ";
    QCOMPARE(m_driver->text("selectionLabel"), "3" + suffix + "4 KB");
    for (const char* name : {"com.example.a", "b.log", "thrown away"})
        m_driver->click(*m_driver->row(QLatin1String(name)));
    QVERIFY(!m_driver->isEnabled("deleteButton"));
    m_driver->click(*m_driver->row("old.zip"));
    QCOMPARE(m_driver->text("selectionLabel"), "1" + suffix + "500 bytes");

    QVERIFY(m_driver->click("deleteButton"));
    QTRY_VERIFY(m_driver->isShown("cancel"));
    QVERIFY(m_driver->click("cancel"));
    QTRY_VERIFY(!m_driver->isShown("cancel"));
    QVERIFY(m_disk->exists("~/Downloads/old.zip"));

    confirm("deleteButton");
    QVERIFY(!m_disk->exists("~/Downloads/old.zip"));
    QVERIFY(m_disk->exists("~/.Trash/old.zip"));
    QVERIFY(m_disk->exists("~/Library/Logs/b.log"));
    QCOMPARE(m_driver->text("deletedLabel"), "1 " + translated("deleted_confirmation"));
    QCOMPARE(m_driver->text("selectionLabel"), "0" + suffix + "Zero KB");
    QVERIFY(!m_driver->row("old.zip"));
    QVERIFY(!m_driver->isEnabled("deleteButton"));
    // The list has the keyboard now, but who works by clicks is shown no ring.
    QVERIFY(m_driver->item("resultsList")->hasActiveFocus() && current().isEmpty());
}

void CleanupTest::emptiesTheTrash_data() {
    QTest::addColumn<QString>("closed");
    QTest::addColumn<unsigned>("mode");
    QTest::addColumn<QString>("success");
    QTest::addColumn<QString>("warning");
    QTest::addColumn<int>("failures");

    const QString suffix = ' ' + translated("trash_emptied_confirmation") + " · ";
    QTest::newRow("everything goes") << "" << 0u << "✓ 2" + suffix + "16 bytes"
                                     << "" << 0;
    QTest::newRow("one entry stays") << "~/.Trash/folder" << 0555u << "✓ 1" + suffix + "7 bytes"
                                     << "⚠️ 1 " + translated("alert_empty_trash_failed_hint") << 1;
    QTest::newRow("nothing can be read") << "~/.Trash" << 0u << ""
                                         << "⚠️ " + translated("alert_empty_trash_access_hint") << 0;
}

void CleanupTest::emptiesTheTrash() {
    QFETCH(QString, closed);
    QFETCH(unsigned, mode);
    QFETCH(QString, success);
    QFETCH(QString, warning);
    QFETCH(int, failures);

    m_disk->make("~/.Trash/folder/inside 9");
    openAndScan();
    if (!closed.isEmpty())
        m_disk->setMode(closed.toStdString(), mode);

    QVERIFY(m_driver->click("emptyTrashButton"));
    QTRY_VERIFY(m_driver->isShown("confirm"));
    QVERIFY(m_disk->exists("~/.Trash") && !m_driver->isShown("trashWarning"));
    QVERIFY(m_driver->click("confirm"));
    QTRY_VERIFY(!m_driver->isShown("confirm"));

    QCOMPARE(m_driver->text("trashSuccess"), success);
    QCOMPARE(m_driver->text("trashWarning"), warning);
    QCOMPARE(m_driver->item("trashFailures") ? m_driver->item("trashFailures")->property("count").toInt() : 0,
             failures);
    QVERIFY(!m_driver->row("thrown away"));
    QVERIFY(m_driver->row("b.log"));
    QCOMPARE(m_driver->cutTexts(), QStringList());

    QVERIFY(m_driver->click("scanButton"));
    QVERIFY(!m_driver->isShown("trashSuccess") && !m_driver->isShown("trashWarning"));
}

void CleanupTest::actsOnceForAHastyHand() {
    for (int i = 0; i < 8; ++i)
        m_disk->make("~/Library/Caches/cache" + std::to_string(i) + "/blob 8000");
    open();
    scan();
    const int ticked = model<ScanViewModel>()->checkedCount();
    m_driver->doubleClick(*m_driver->item("emptyTrashButton"));
    QTRY_VERIFY(m_driver->isShown("cancel"));

    // There is a row below Cancel, for the second click.
    const QPoint cancel = m_driver->centre(*m_driver->item("cancel"));
    const std::vector<QQuickItem*> rows = m_driver->rows();
    QVERIFY(std::any_of(rows.begin(), rows.end(), [cancel](const QQuickItem* row) {
        return row->contains(row->mapFromScene(cancel));
    }));
    m_driver->doubleClick(*m_driver->item("cancel"));
    QTRY_VERIFY(!m_driver->isShown("cancel"));
    QCOMPARE(model<ScanViewModel>()->checkedCount(), ticked);

    // A double click on a row is one, and a click after it one more.
    for (const int expected : {ticked - 1, ticked}) {
        m_driver->doubleClick(*rows.front());
        QCOMPARE(model<ScanViewModel>()->checkedCount(), expected);
    }
    m_driver->item("deleteButton")->forceActiveFocus(Qt::TabFocusReason);
    m_driver->holdKey(Qt::Key_Return);
    QTRY_VERIFY(m_driver->isShown("cancel"));
    m_driver->holdKey(Qt::Key_Space);
    QTRY_VERIFY(!m_driver->isShown("cancel"));
    QVERIFY(m_disk->exists("~/Library/Caches/cache0/blob"));
}

void CleanupTest::startsEachDialogOnTheHarmlessButton() {
    open();
    scan();
    QVERIFY(m_driver->click("deleteButton"));
    QTRY_VERIFY(m_driver->isShown("cancel"));
    const QQuickItem* cancel = m_driver->item("cancel");
    QVERIFY(cancel->hasActiveFocus());
    QTest::qWait(200); // until it has faded in
    QVERIFY(cancel->hasActiveFocus() && !cancel->property("visualFocus").toBool());
    m_driver->key(Qt::Key_Tab);
    QVERIFY(m_driver->item("confirm")->hasActiveFocus());
    m_driver->key(Qt::Key_Escape);
    QTRY_VERIFY(!m_driver->isShown("cancel"));

    // Opened once more, it takes a Return at once as a hasty one.
    QVERIFY(m_driver->click("deleteButton"));
    m_driver->key(Qt::Key_Return);
    QTRY_VERIFY(!m_driver->isShown("cancel"));
    QVERIFY(m_disk->exists("~/Library/Logs/b.log"));

    m_driver->item("scanButton")->forceActiveFocus();
    m_driver->item("deleteButton")->forceActiveFocus(Qt::TabFocusReason);
    m_driver->key(Qt::Key_Return);
    QTRY_VERIFY(cancel->property("visualFocus").toBool());
    m_driver->key(Qt::Key_Escape);
}

void CleanupTest::standsNamesOfAllScriptsAtTheLeft() {
    const QString name = QStringLiteral("ذاكرة التخزين");
    m_disk->make("~/Library/Caches/" + name.toStdString() + "/blob 8000");
    const std::string kept = "~/.Trash/" + name.toStdString();
    m_disk->make(kept + "/inside 9");
    m_disk->setMode(kept, 0555);
    open();
    scan();
    const auto* label = m_driver->row(name)->findChild<QQuickItem*>();
    for (const QQuickItem* text : m_driver->row(name)->findChildren<QQuickItem*>())
        if (text->property("text") == name)
            label = text;
    QCOMPARE(label->property("text").toString(), name);
    QCOMPARE(label->property("effectiveHorizontalAlignment").toInt(), int(Qt::AlignLeft));

    // And before the reason why they stay.
    QVERIFY(m_driver->click("emptyTrashButton"));
    QTRY_VERIFY(m_driver->isShown("confirm"));
    QVERIFY(m_driver->click("confirm"));
    QTRY_VERIFY(!m_driver->isShown("confirm"));
    const auto* lines = m_driver->item("trashFailures")->property("contentItem").value<QQuickItem*>();
    int reasons = 0;
    for (const QQuickItem* line : lines->childItems()) {
        const QString text = line->property("text").toString();
        reasons += text.contains(name);
        QVERIFY(!text.isRightToLeft());
    }
    QCOMPARE(reasons, 1);
}

void CleanupTest::isWalkedByKeys() {
    open(high);
    m_driver->item("languageMenu")->forceActiveFocus(Qt::TabFocusReason);
    m_driver->key(Qt::Key_Tab);
    QVERIFY(hasFocus("scanButton"));
    m_driver->key(Qt::Key_Return);
    QTRY_VERIFY(!m_driver->rows().empty());
    // Disabled meanwhile, it has the keyboard again, and shows it.
    QVERIFY(m_driver->item("scanButton")->property("visualFocus").toBool());

    m_driver->item("emptyTrashButton")->forceActiveFocus(Qt::TabFocusReason);
    m_driver->key(Qt::Key_Tab);
    const QQuickItem* list = m_driver->item("resultsList");
    QVERIFY(list->hasActiveFocus());
    const auto isTicked = [this](const char* name) {
        return m_driver->row(QLatin1String(name))->property("checked").toBool();
    };
    QCOMPARE(current(), "com.example.a");
    m_driver->key(Qt::Key_Down);
    QCOMPARE(current(), "b.log");
    m_driver->key(Qt::Key_Space);
    QVERIFY(!isTicked("b.log"));
    QCOMPARE(current(), "b.log");
    m_driver->key(Qt::Key_Up);
    m_driver->key(Qt::Key_Return);
    QVERIFY(!isTicked("com.example.a") && isTicked("thrown away"));
    QCOMPARE(current(), "com.example.a");

    // The pointer hides where the keys were, the next key shows it again.
    m_driver->click(*m_driver->row("b.log"));
    QVERIFY(isTicked("b.log") && current().isEmpty() && list->hasActiveFocus());
    m_driver->key(Qt::Key_Space);
    QVERIFY(!isTicked("b.log"));
    QCOMPARE(current(), "b.log");

    m_driver->key(Qt::Key_Tab);
    QVERIFY(hasFocus("deleteButton"));

    // A hasty Return in the dialog cancels, and so does Escape; the destructive button must be gone to.
    for (const Qt::Key harmless : {Qt::Key_Return, Qt::Key_Escape}) {
        m_driver->key(Qt::Key_Space);
        QTRY_VERIFY(hasFocus("cancel"));
        m_driver->key(harmless);
        QTRY_VERIFY(!m_driver->isShown("cancel"));
        QVERIFY(m_disk->exists("~/.Trash/thrown away"));
        QTRY_VERIFY(hasFocus("deleteButton"));
    }
    m_driver->key(Qt::Key_Space);
    QTRY_VERIFY(hasFocus("cancel"));
    m_driver->key(Qt::Key_Tab);
    QVERIFY(hasFocus("confirm"));
    m_driver->key(Qt::Key_Return);
    QTRY_VERIFY(!m_driver->isShown("cancel"));
    QVERIFY(!m_disk->exists("~/.Trash/thrown away"));
    QVERIFY(m_disk->exists("~/Library/Logs/b.log"));

    // With nothing ticked the button that was pressed is disabled.
    QTRY_VERIFY(list->hasActiveFocus());
    QTRY_VERIFY(!current().isEmpty());
}

void CleanupTest::isWalkedByPages() {
    for (int i = 0; i < 60; ++i)
        m_disk->make("~/Library/Caches/cache" + std::to_string(100 + i) + "/blob 8000");
    openAndScan();
    m_driver->item("emptyTrashButton")->forceActiveFocus(Qt::TabFocusReason);
    m_driver->key(Qt::Key_Tab);
    const QQuickItem* list = m_driver->item("resultsList");
    const auto row = [list] {
        return list->property("currentIndex").toInt();
    };
    const int last = list->property("count").toInt() - 1;

    m_driver->key(Qt::Key_PageDown);
    const int page = row();
    QVERIFY(page > 1 && page <= static_cast<int>(m_driver->rows().size()));
    QTRY_VERIFY(!current().isEmpty());
    m_driver->key(Qt::Key_PageUp);
    QCOMPARE(row(), 0);
    m_driver->key(Qt::Key_PageUp);
    QCOMPARE(row(), 0);
    m_driver->key(Qt::Key_End);
    QCOMPARE(row(), last);
    QTRY_VERIFY(!current().isEmpty());
    m_driver->key(Qt::Key_PageDown);
    QCOMPARE(row(), last);
    m_driver->key(Qt::Key_Home);
    QCOMPARE(row(), 0);
    QTRY_VERIFY(!current().isEmpty());

    // Rows go while the current one is the last: there is still one to come back to.
    m_driver->key(Qt::Key_End);
    model<ScanViewModel>()->confirmEmptyTrash();
    QCOMPARE(list->property("count").toInt(), last);
    m_driver->item("emptyTrashButton")->forceActiveFocus(Qt::TabFocusReason);
    m_driver->key(Qt::Key_Tab);
    QTRY_VERIFY(!current().isEmpty());
}

void CleanupTest::listsWhatStayedInWholeLines() {
    for (int i = 0; i < 9; ++i) {
        const std::string folder = "~/.Trash/kept" + std::to_string(i) + std::string(i % 2 ? 150 : 0, 'w');
        m_disk->make(folder + "/inside 9");
        m_disk->setMode(folder, 0555);
    }
    open(high);
    confirm("emptyTrashButton");

    QQuickItem* failures = m_driver->item("trashFailures");
    QVERIFY(failures);
    QCOMPARE(failures->property("count").toInt(), 9);
    for (const QQuickItem* line : failures->property("contentItem").value<QQuickItem*>()->childItems()) {
        if (!line->inherits("QQuickText"))
            continue;
        const double height =
            line->property("contentHeight").toDouble() / line->property("lineCount").toInt();
        QCOMPARE(std::fmod(failures->height(), height), 0.0);
        QCOMPARE(line->height(), line->property("contentHeight").toDouble());
    }

    for (const QQuickItem* mark : failures->findChildren<QQuickItem*>())
        if (mark->inherits("QQuickScrollBar")) // can be caught, however short it is
            QVERIFY(mark->property("contentItem").value<QQuickItem*>()->height() >= 24);

    QVERIFY(!m_driver->isShown("failuresFocus"));
    m_driver->item("emptyTrashButton")->forceActiveFocus(Qt::TabFocusReason);
    m_driver->key(Qt::Key_Tab);
    QVERIFY(failures->hasActiveFocus() && m_driver->isShown("failuresFocus"));
    for (int i = 0; i < 9; ++i)
        m_driver->key(Qt::Key_Down);
    QTRY_VERIFY(failures->property("atYEnd").toBool());
}

void CleanupTest::tellsAScreenReaderWhatIsSeen() {
    m_disk->make("~/.Trash/kept/inside 9");
    m_disk->setMode("~/.Trash/kept", 0555);
    openAndScan();
    QCOMPARE(told("resultsList")->text(QAccessible::Name), translated("tab_cleanup"));
    QQuickItem* row = m_driver->row("old.zip");
    const QString date = row->property("date").toString();
    QVERIFY(!date.isEmpty());
    const auto* toldOfRow = QAccessible::queryAccessibleInterface(row);
    QVERIFY(toldOfRow->text(QAccessible::Description).contains(date));
    QCOMPARE(toldOfRow->role(), QAccessible::CheckBox);
    QVERIFY(toldOfRow->state().checkable && !toldOfRow->state().checked);
    m_driver->click(*row);
    QVERIFY(row->property("checked").toBool() && toldOfRow->state().checked);
    m_driver->click(*row);
    QVERIFY(!row->property("checked").toBool() && !toldOfRow->state().checked);

    confirm("emptyTrashButton");
    confirm("deleteButton");
    // What came of it is spoken without being looked for.
    for (const char* outcome : {"trashSuccess", "trashWarning", "deletedLabel"}) {
        QVERIFY2(told(outcome), outcome);
        QCOMPARE(told(outcome)->role(), QAccessible::AlertMessage);
        QCOMPARE(told(outcome)->text(QAccessible::Name), m_driver->text(outcome));
    }
    // What is disabled isn't pressed by it either.
    QVERIFY(!m_driver->isEnabled("deleteButton"));
    told("deleteButton")->actionInterface()->doAction(QAccessibleActionInterface::pressAction());
    QVERIFY(!model<ScanViewModel>()->showDeleteConfirm());
    QCOMPARE(told("title")->role(), QAccessible::Heading);
    QCOMPARE(told("trashFailures")->role(), QAccessible::List);
    QCOMPARE(told("trashFailures")->text(QAccessible::Name), m_driver->text("trashWarning"));
}

void CleanupTest::nothingIsCutOffInAnyLanguage() {
    QFETCH(AppLanguage, language);
    const std::string endless(200, 'w');
    m_disk->make({"~/Library/Caches/" + endless + "/blob 12345678", "~/Library/Caches/<b>bold/blob 9999",
                  "~/Library/Caches/two\nlines/blob 9998"});
    open();
    // Everything on the screen follows the language at once.
    Localizer::shared().setLanguage(language);
    QCOMPARE(m_driver->text("scanButton"), translated("btn_scan"));
    checkEverythingIsSaid();
    scan();
    checkEverythingIsSaid();
    // Names are shown as they are, never as markup.
    QVERIFY(m_driver->row(QString::fromStdString(endless)) && m_driver->row("<b>bold"));
    for (const char* button : {"deleteButton", "emptyTrashButton"}) {
        QVERIFY(m_driver->click(button));
        QTRY_VERIFY(m_driver->isShown("cancel"));
        checkEverythingIsSaid();
        QVERIFY(m_driver->click("cancel"));
        QTRY_VERIFY(!m_driver->isShown("cancel"));
    }
}

void CleanupTest::movesOnWhileAScanRuns() {
    HandCranked jobs;
    open(high, jobs.executor());
    QVERIFY(m_driver->click("scanButton"));
    QCOMPARE(m_driver->text("scanButton"), translated("btn_scanning"));
    QVERIFY(!m_driver->isEnabled("scanButton"));
    // A second click meets a button that is disabled.
    QVERIFY(m_driver->click("scanButton"));

    const QQuickItem* indicator = m_driver->item("loadingIndicator");
    QVERIFY(indicator);
    QCOMPARE(indicator->property("label").toString(), translated("scanning_progress"));
    QCOMPARE(told("loadingIndicator")->text(QAccessible::Name), translated("scanning_progress"));
    QCOMPARE(told("loadingIndicator")->childCount(), 0); // and it isn't said twice
    int frames = 0;
    const QObject until;
    connect(window(), &QQuickWindow::frameSwapped, &until, [&frames] { ++frames; });
    const double before = indicator->property("time").toDouble();
    QTRY_VERIFY(frames >= 10);
    QVERIFY(indicator->property("time").toDouble() > before);

    jobs.run();
    QTRY_VERIFY(m_driver->isShown("resultsList"));
    QVERIFY(jobs.isIdle());
    QVERIFY(!m_driver->isShown("loadingIndicator"));
}

void CleanupTest::showsThatItIsBusyWhileItBlocks_data() {
    QTest::addColumn<QString>("clicked");
    for (const char* name : {"row", "scanButton", "cancel", "confirm"})
        QTest::newRow(name) << name;
}

void CleanupTest::showsThatItIsBusyWhileItBlocks() {
    QFETCH(QString, clicked);
    openAndScan();
    QVERIFY(m_driver->click("deleteButton"));
    QTRY_VERIFY(m_driver->isShown("confirm"));
    const QQuickItem* confirm = m_driver->item("confirm");
    // Of the rows the first: there the only one that is left will be.
    const QPoint place = m_driver->centre(*m_driver->item(clicked.toLatin1().constData()));

    // What a frame shows is settled when it is synchronised, and seen when it is swapped.
    std::atomic<bool> isBusyInFrame = false;
    std::atomic<bool> isBusyOnScreen = false;
    const QObject until;
    connect(
        window(), &QQuickWindow::afterSynchronizing, &until,
        [&] { isBusyInFrame = confirm->property("busy").toBool(); }, Qt::DirectConnection);
    connect(
        window(), &QQuickWindow::frameSwapped, &until,
        [&] {
            if (isBusyInFrame)
                isBusyOnScreen = true;
        },
        Qt::DirectConnection);

    bool wasSeen = false;
    std::jthread clicking;
    connect(model<ScanViewModel>(), &ScanViewModel::lastDeletedCountChanged, &until, [&] {
        // Here the program is blocked. Its user sees that, and clicks all the same.
        wasSeen = isBusyOnScreen;
        clicking = m_driver->clickLater(place);
        QThread::msleep(50);
    });
    QVERIFY(m_driver->click("confirm"));
    QVERIFY(m_disk->exists("~/Library/Logs/b.log")); // not yet: the dialog comes first
    QTRY_VERIFY(!m_driver->isShown("confirm"));
    QTest::qWait(100); // for the click to do its harm
    clicking.join();

    QVERIFY(wasSeen);
    QCOMPARE(model<ScanViewModel>()->deletedCount(), 3);
    QVERIFY(!model<ScanViewModel>()->isScanning());
    QCOMPARE(model<ScanViewModel>()->checkedCount(), 0);
    QVERIFY(m_disk->exists("~/Downloads/old.zip"));
}

int main(int argc, char** argv) {
    return runTest<CleanupTest>(argc, argv);
}

#include "cleanup_test.moc"
