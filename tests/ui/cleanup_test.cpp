#include "app/models/scan_view_model.h"
#include "platform/text/format.h"
#include "tests/ui/window_test.h"

#include <string>

using namespace std::chrono_literals;

/// The cleanup screen in the real window, on real files.
class CleanupTest : public WindowTest {
    Q_OBJECT

private Q_SLOTS:
    void init();

    void drawsProposalsAndDiskHealth();
    void movesOnlyTickedItems();
    void emptiesTheTrash();
    void listsWhatStaysInTheTrash();

private:
    void openAndScan();

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

void CleanupTest::openAndScan() {
    open({1000, 860}); // every row is in sight
    QCOMPARE(m_driver->text("emptyPrompt"), translated("cleanup_empty"));
    QVERIFY(m_driver->click("scanButton"));
    QTRY_VERIFY(!m_driver->rows().empty());
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
    QVERIFY(row->text(QAccessible::Description).endsWith(", " + translated("exp_old_downloads")));
    row->actionInterface()->doAction(QAccessibleActionInterface::toggleAction());
    QVERIFY(row->state().checkable && row->state().checked);
    QCOMPARE(ticks(), "++++");
    m_driver->item("resultsList")->forceActiveFocus(Qt::TabFocusReason);
    for (const auto& [key, expected] :
         {std::pair(Qt::Key_Home, "++++"), {Qt::Key_Return, "-+++"}, {Qt::Key_Space, "++++"}}) {
        m_driver->key(key);
        QCOMPARE(ticks(), expected);
    }

    QVERIFY(m_driver->texts().contains(model<ScanViewModel>()->freeSpaceText()));
    QCOMPARE(m_driver->text("healthLabel"), Localizer::shared().text(model<ScanViewModel>()->healthKey()));
}

void CleanupTest::movesOnlyTickedItems() {
    openAndScan();
    QCOMPARE(ticks(), "+++-");
    const QString suffix = ' ' + translated("selected_count_suffix") + " · ";
    QCOMPARE(m_driver->text("selectionLabel"), "3" + suffix + "4 KB");
    for (const char* expected : {"++++", "+++-", "++++"}) {
        m_driver->doubleClick(*m_driver->row("old.zip")); // counts as one click
        QCOMPARE(ticks(), expected);
    }
    for (const char* name : {"com.example.a", "b.log", "thrown away"})
        m_driver->click(*m_driver->row(name));
    QCOMPARE(m_driver->text("selectionLabel"), "1" + suffix + "500 bytes");
    confirm("deleteButton");
    QVERIFY(m_disk->exists("~/.Trash/old.zip") && !m_disk->exists("~/Downloads/old.zip"));
    QVERIFY(m_disk->exists("~/Library/Logs/b.log") && m_disk->exists("~/.Trash/thrown away"));
    QCOMPARE(ticks(), "---");
    QVERIFY(!m_driver->row("old.zip"));
    QCOMPARE(announced("deletedLabel"), "1 " + translated("deleted_confirmation"));
    QCOMPARE(m_driver->text("selectionLabel"), "0" + suffix + "Zero KB");
    press(told("deleteButton")); // disabled
    QVERIFY(!m_driver->isEnabled("deleteButton") && !m_driver->isShown("confirm"));
}

void CleanupTest::emptiesTheTrash() {
    const QString suffix = ' ' + translated("trash_emptied_confirmation") + " · ";
    const struct {
        const char* closed;
        unsigned mode;
        QString success;
        QString warning;
    } cases[]{{"~/.Trash", 0, "", "⚠️ " + translated("alert_empty_trash_access_hint")},
              {"~/.Trash/folder", 0555, "✓ 1" + suffix + "7 bytes",
               "⚠️ 1 " + translated("alert_empty_trash_failed_hint")},
              {"~/.Trash/folder", 0755, "✓ 1" + suffix + "9 bytes", ""}};
    m_disk->make("~/.Trash/folder/inside 9");
    for (const auto& [closed, mode, success, warning] : cases) {
        openAndScan();
        m_disk->setMode(closed, mode);
        confirm("emptyTrashButton");
        m_disk->setMode("~/.Trash", 0755);
        QCOMPARE(announced("trashSuccess"), success);
        QCOMPARE(announced("trashWarning"), warning);
        QCOMPARE(m_history->entries().empty(), success.isEmpty());
        QVERIFY(m_driver->row("old.zip") && !m_driver->row("thrown away"));
        QVERIFY(m_driver->click("scanButton"));
        QVERIFY(!m_driver->isShown("trashSuccess") && !m_driver->isShown("trashWarning"));
    }
}

void CleanupTest::listsWhatStaysInTheTrash() {
    for (int i = 0; i < 9; ++i) {
        const std::string folder = "~/.Trash/التخزين" + std::to_string(i);
        m_disk->make(folder + "/inside 9");
        m_disk->setMode(folder, 0555);
    }
    openAndScan();
    confirm("emptyTrashButton");
    QQuickItem* failures = m_driver->item("trashFailures");
    QVERIFY(failures);
    QCOMPARE(failures->property("count").toInt(), 9);
    QVERIFY(!Driver::texts(*failures).front().isRightToLeft()); // the reason follows the name

    m_driver->item("emptyTrashButton")->forceActiveFocus(Qt::TabFocusReason);
    m_driver->key(Qt::Key_Tab);
    QVERIFY(failures->hasActiveFocus() && m_driver->isShown("failuresFocus"));
    for (int i = 0; i < 9; ++i)
        m_driver->key(Qt::Key_Down);
    QTRY_VERIFY(failures->property("atYEnd").toBool());
}

int main(int argc, char** argv) {
    return runTest<CleanupTest>(argc, argv);
}

#include "cleanup_test.moc"
