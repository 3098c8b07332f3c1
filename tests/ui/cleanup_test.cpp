#include "app/models/scan_view_model.h"
#include "platform/text/format.h"
#include "tests/ui/window_test.h"

#include <initializer_list>
#include <string>
#include <tuple>
#include <utility>

using namespace std::chrono_literals;

/// The cleanup screen in the real window, on real files.
class CleanupTest : public WindowTest {
    Q_OBJECT

private Q_SLOTS:
    void init();

    void drawsProposalsAndDiskHealth();
    void foldsAndTicksCategories();
    void movesOnlyTickedItems();
    void emptiesTheTrash();
    void stopsWhatTheUserCancels();

private:
    void openAndScan() {
        open({1000, 860}); // every row is in sight
        QCOMPARE(m_driver->text("emptyPrompt"), translated("cleanup_empty"));
        scan();
    }

    const platform::Date m_date = platform::now() - 100 * 24h;
};

void CleanupTest::init() {
    WindowTest::init();
    m_disk->make({"~/Library/Caches/com.example.a/blob 4000", "~/Library/Logs/b.log 20",
                  "~/Downloads/old.zip 500", "~/.Trash/thrown away 7", "~/Documents/letter 1"});
    for (const char* dated : {"~/Library/Caches/com.example.a", "~/Library/Logs/b.log", "~/Downloads/old.zip",
                              "~/.Trash/thrown away"})
        m_disk->setModified(dated, m_date);
}

void CleanupTest::drawsProposalsAndDiskHealth() {
    openAndScan();
    const QString date = " | " + QString::fromStdString(platform::formatMediumDate(m_date));
    QCOMPARE(drawn(), (QStringList{"com.example.a | " + translated("exp_cache") + " | 4 KB" + date,
                                   "b.log | " + translated("exp_logs") + " | 20 bytes" + date,
                                   "thrown away | " + translated("exp_trash") + " | 7 bytes" + date,
                                   "old.zip | " + translated("exp_old_downloads") + " | 500 bytes" + date}));
    for (const char* heading : {"cat_cache", "cat_logs", "cat_trash", "cat_old_downloads"})
        QVERIFY2(m_driver->texts().contains(translated(heading)), heading);

    auto* row = told(m_driver->row("old.zip"));
    QCOMPARE(row->text(QAccessible::Name), "old.zip, 500 bytes");
    QVERIFY(row->text(QAccessible::Description).contains(", " + translated("exp_old_downloads") + ", "));
    row->actionInterface()->doAction(QAccessibleActionInterface::toggleAction());
    QVERIFY(row->state().checkable && row->state().checked);
    m_driver->item("resultsList")->forceActiveFocus(Qt::TabFocusReason);
    for (const Qt::Key key : {Qt::Key_Home, Qt::Key_Return, Qt::Key_End, Qt::Key_Space})
        m_driver->key(key);
    QCOMPARE(ticks(), "-++-");
    QVERIFY(m_driver->texts().contains(model<ScanViewModel>()->freeSpaceText()));
    QCOMPARE(m_driver->text("healthLabel"), Localizer::shared().text(model<ScanViewModel>()->healthKey()));
}

void CleanupTest::foldsAndTicksCategories() {
    m_disk->make("~/Library/Caches/com.apple.x 1000"); // costly to lose, so not ticked at first
    openAndScan();
    QCOMPARE(ticks(), "+-++-");
    QCOMPARE(m_driver->items("categoryBox").size(), 3); // none for old downloads
    const auto clickBox = [this] {
        m_driver->click(*m_driver->itemsInSight("categoryBox").front());
        return ticks();
    };
    QCOMPARE(clickBox(), "--++-");
    m_driver->click(*m_driver->row("com.apple.x"));
    QCOMPARE(clickBox(), "++++-");
    QCOMPARE(clickBox(), "-+++-");

    const auto heading = [this] {
        return told(m_driver->itemsInSight("heading").front());
    };
    const QString summary = translated("cat_cache") + ", 2 items · 5 KB";
    QCOMPARE(heading()->role(), QAccessible::Heading);
    m_driver->item("resultsList")->forceActiveFocus(Qt::TabFocusReason);
    for (const auto& [key, state] :
         std::initializer_list<std::pair<Qt::Key, const char*>>{{Qt::Key_Left, "section_folded"},
                                                                {Qt::Key_Space, "section_folded"},
                                                                {Qt::Key_Right, "section_unfolded"}}) {
        m_driver->key(key);
        QCOMPARE(heading()->text(QAccessible::Name) + ", " + heading()->text(QAccessible::Description),
                 summary + ", " + translated(state));
        if (key == Qt::Key_Space)
            QVERIFY(told(m_driver->rows().front())->text(QAccessible::Name) == summary
                    && told(m_driver->rows().front())->state().checked);
    }
    QCOMPARE(ticks(), "++++-");
    press(heading());
    QCOMPARE(m_driver->rows().size(), 4U);
    m_driver->click(*m_driver->itemsInSight("heading").front());
    QCOMPARE(m_driver->rows().size(), 5U);

    for (int i = 0; i < 12; ++i)
        m_disk->make("~/Library/Logs/" + std::to_string(i) + " 1");
    scan();
    m_driver->item("resultsList")->forceActiveFocus(Qt::TabFocusReason);
    m_driver->key(Qt::Key_End);
    for (int i = 0; i < 12; ++i)
        m_driver->key(Qt::Key_Up);
    const auto isBelowHeading = [this] { // which stays at the top while rows scroll
        const QQuickItem* row = m_driver->row(current());
        return row
               && Driver::place(*row).top()
                      >= Driver::place(*m_driver->itemsInSight("heading").front()).bottom();
    };
    QTRY_VERIFY(isBelowHeading());
}

void CleanupTest::movesOnlyTickedItems() {
    openAndScan();
    const QString suffix = ' ' + translated("selected_count_suffix") + " · ";
    QCOMPARE(ticks(), "+++-");
    QCOMPARE(m_driver->text("selectionLabel"), "3" + suffix + "4 KB");
    m_driver->doubleClick(*m_driver->row("old.zip")); // counts as one click
    for (const char* name : {"com.example.a", "b.log", "thrown away"})
        m_driver->click(*m_driver->row(name));
    QCOMPARE(ticks(), "---+");
    QCOMPARE(m_driver->text("selectionLabel"), "1" + suffix + "500 bytes");
    confirm("deleteButton");
    QVERIFY(m_disk->exists("~/.Trash/old.zip") && !m_disk->exists("~/Downloads/old.zip"));
    QVERIFY(m_disk->exists("~/Library/Logs/b.log") && m_disk->exists("~/.Trash/thrown away"));
    QCOMPARE(ticks(), "---");
    QVERIFY(!m_driver->row("old.zip"));
    QCOMPARE(m_driver->itemsInSight("heading").size(), 3U);
    QCOMPARE(announced("deletedLabel"), "1 " + translated("deleted_confirmation"));
    QCOMPARE(m_driver->text("selectionLabel"), "0" + suffix + "Zero KB");
    press(told("deleteButton")); // disabled
    QVERIFY(!m_driver->isEnabled("deleteButton") && !m_driver->isShown("confirm"));

    QVERIFY(m_driver->click("putBackButton"));
    QTRY_VERIFY(m_driver->row("old.zip"));
    QCOMPARE(ticks(), "---+");
    QVERIFY(m_disk->exists("~/Downloads/old.zip") && m_history->entries().empty());
    QCOMPARE(announced("deletedLabel"), ::tr(QStringLiteral("put_back_done"), 1).arg(1));
    QVERIFY(!m_driver->isShown("putBackButton"));
}

void CleanupTest::emptiesTheTrash() {
    const QString suffix = ' ' + translated("trash_emptied_confirmation") + " · ";
    // By the modes of the Trash and of nine folders in it.
    const std::tuple<unsigned, unsigned, QString, QString> cases[]{
        {0, 0755, "", "⚠️ " + translated("alert_empty_trash_access_hint")},
        {0755, 0555, "✓ 1" + suffix + "7 bytes", "⚠️ 9 " + translated("alert_empty_trash_failed_hint")},
        {0755, 0755, "✓ 9" + suffix + "81 bytes", ""}};
    const auto folder = [](int i) {
        return "~/.Trash/التخزين" + std::to_string(i);
    };
    for (int i = 0; i < 9; ++i)
        m_disk->make(folder(i) + "/inside 9");
    open();
    scan();
    for (const auto& [trashMode, folderMode, success, warning] : cases) {
        for (int i = 0; i < 9; ++i)
            m_disk->setMode(folder(i), folderMode);
        m_disk->setMode("~/.Trash", trashMode);
        confirm("emptyTrashButton");
        m_disk->setMode("~/.Trash", 0755);
        QCOMPARE(announced("trashSuccess"), success);
        QCOMPARE(announced("trashWarning"), warning);
        QCOMPARE(m_history->entries().empty(), success.isEmpty());
        QVERIFY(m_driver->row("old.zip") && !m_driver->row("thrown away"));
        QCOMPARE(m_driver->text("trashFailures", "count"), folderMode == 0555 ? "9" : "");
        if (QQuickItem* failures = m_driver->item("trashFailures")) {
            QVERIFY(!Driver::texts(*failures).at(0).isRightToLeft()); // the reason follows the name
            // Three rows with headings are higher than four rows of one category.
            QVERIFY(Driver::place(*m_driver->item("resultsList"))
                        .contains(Driver::place(*m_driver->row("old.zip"))));
            m_driver->item("emptyTrashButton")->forceActiveFocus(Qt::TabFocusReason);
            m_driver->key(Qt::Key_Tab);
            for (int i = 0; i < 9; ++i)
                m_driver->key(Qt::Key_Down);
            QVERIFY(failures->hasActiveFocus() && m_driver->isShown("failuresFocus"));
            QTRY_VERIFY(failures->property("atYEnd").toBool());
        }
        scan();
        QVERIFY(!m_driver->isShown("trashSuccess") && !m_driver->isShown("trashWarning"));
    }
}

void CleanupTest::stopsWhatTheUserCancels() {
    openAndScan();
    const auto before = m_disk->entries();
    holdJobs();
    QVERIFY(m_driver->click("scanButton") && m_driver->click("stopButton"));
    QCOMPARE(m_driver->text("emptyPrompt"), translated("scan_stopped"));
    releaseJobs();
    for (const std::string by : {"button", "Escape", "closing"}) {
        scan();
        QVERIFY(m_driver->click("deleteButton"));
        QTRY_VERIFY(m_driver->isShown("confirm"));
        holdJobs();
        QVERIFY(m_driver->click("confirm"));
        if (by == "button")
            m_driver->click("cancel");
        else if (by == "Escape")
            m_driver->key(Qt::Key_Escape);
        else
            QTest::keyClick(window(), Qt::Key_W, Qt::ControlModifier);
        QVERIFY(window()->isVisible() && m_driver->isShown("confirm"));
        QCOMPARE(m_driver->text("progressText"), translated("stopping"));
        releaseJobs();
        QTRY_COMPARE(window()->isVisible(), by != "closing");
        QTRY_VERIFY(!m_driver->isShown("confirm"));
        QCOMPARE(m_disk->entries(), before);
        QVERIFY(!m_driver->text("stayedLabel").isEmpty());
    }
}

int main(int argc, char** argv) {
    return runTest<CleanupTest>(argc, argv);
}

#include "cleanup_test.moc"
