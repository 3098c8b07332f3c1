#include "app/models/scan_view_model.h"
#include "tests/ui/window_test.h"

#include <cmath>
#include <string>

using namespace std::chrono_literals;

/// The cleanup screen as its user meets it: the real window, clicks and keys, real files.
class CleanupTest : public WindowTest {
    Q_OBJECT

private Q_SLOTS:
    void init();

    void movesWhatIsTickedAndOnlyThat();
    void emptiesTheTrash();
    void standsNamesOfAllScriptsAtTheLeft();
    void ticksByKeys();
    void listsWhatStayedInWholeLines();
    void tellsAScreenReaderWhatIsSeen();

private:
    void openAndScan();

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
    QCOMPARE(m_driver->text("emptyPrompt"), translated("cleanup_empty"));
    QVERIFY(!m_driver->isShown("healthLabel"));
    QVERIFY(m_driver->click("scanButton"));
    QTRY_VERIFY(!m_driver->rows().empty());
    QVERIFY(!m_driver->isShown("emptyPrompt") && m_driver->isShown("healthLabel"));
}

void CleanupTest::movesWhatIsTickedAndOnlyThat() {
    openAndScan();
    QCOMPARE(shown("name"), (QStringList{"com.example.a", "b.log", "thrown away", "old.zip"}));
    QCOMPARE(shown("checked"), (QStringList{"true", "true", "true", "false"}));
    const QString suffix = ' ' + translated("selected_count_suffix") + " · ";
    QCOMPARE(m_driver->text("selectionLabel"), "3" + suffix + "4 KB");

    // A double click is one click, and a click after it one more.
    for (const char* checked : {"true", "false", "true"}) {
        m_driver->doubleClick(*m_driver->row("old.zip"));
        QCOMPARE(shown("checked").at(3), checked);
    }
    for (const char* name : {"com.example.a", "b.log", "thrown away"})
        m_driver->click(*m_driver->row(QLatin1String(name)));
    QCOMPARE(m_driver->text("selectionLabel"), "1" + suffix + "500 bytes");
    confirm("deleteButton");
    QVERIFY(m_disk->exists("~/.Trash/old.zip") && !m_disk->exists("~/Downloads/old.zip"));
    QVERIFY(m_disk->exists("~/Library/Logs/b.log") && m_disk->exists("~/.Trash/thrown away"));
    QCOMPARE(shown("name"), (QStringList{"com.example.a", "b.log", "thrown away"}));
    QCOMPARE(m_driver->text("deletedLabel"), "1 " + translated("deleted_confirmation"));
    QCOMPARE(m_driver->text("selectionLabel"), "0" + suffix + "Zero KB");
    QVERIFY(!m_driver->isEnabled("deleteButton"));
}

void CleanupTest::emptiesTheTrash() {
    const QString suffix = ' ' + translated("trash_emptied_confirmation") + " · ";
    const struct {
        const char* closed;
        unsigned mode;
        QString success;
        QString warning;
        int failures;
    } cases[] = {
        {"~/.Trash", 0, "", "⚠️ " + translated("alert_empty_trash_access_hint"), 0},
        {"~/.Trash/folder", 0555, "✓ 1" + suffix + "7 bytes",
         "⚠️ 1 " + translated("alert_empty_trash_failed_hint"), 1},
        {"~/.Trash/folder", 0755, "✓ 1" + suffix + "9 bytes", "", 0},
    };
    m_disk->make("~/.Trash/folder/inside 9");
    for (const auto& [closed, mode, success, warning, failures] : cases) {
        openAndScan();
        m_disk->setMode(closed, mode);
        confirm("emptyTrashButton");
        m_disk->setMode("~/.Trash", 0755);
        QCOMPARE(m_driver->text("trashSuccess"), success);
        QCOMPARE(m_driver->text("trashWarning"), warning);
        QCOMPARE(m_driver->text("trashFailures", "count").toInt(), failures);
        QCOMPARE(m_history->entries().empty(), success.isEmpty());
        QCOMPARE(shown("name"), (QStringList{"com.example.a", "b.log", "old.zip"}));
        QVERIFY(m_driver->click("scanButton"));
        QVERIFY(!m_driver->isShown("trashSuccess") && !m_driver->isShown("trashWarning"));
    }
}

void CleanupTest::standsNamesOfAllScriptsAtTheLeft() {
    const QString name = "ذاكرة التخزين";
    m_disk->make("~/.Trash/" + name.toStdString() + "/inside 9");
    m_disk->setMode("~/.Trash/" + name.toStdString(), 0555);
    openAndScan();
    int labels = 0;
    for (const QQuickItem* text : m_driver->row(name)->findChildren<QQuickItem*>())
        if (text->inherits("QQuickText") && text->property("text") == name) {
            QCOMPARE(text->property("effectiveHorizontalAlignment").toInt(), int(Qt::AlignLeft));
            ++labels;
        }
    QCOMPARE(labels, 1);

    // And before the reason why they stay.
    confirm("emptyTrashButton");
    const QStringList reasons = m_driver->texts().filter(name);
    QCOMPARE(reasons.size(), 1);
    QVERIFY(!reasons.front().isRightToLeft());
}

void CleanupTest::ticksByKeys() {
    open(high);
    m_driver->item("languageMenu")->forceActiveFocus(Qt::TabFocusReason);
    m_driver->key(Qt::Key_Tab);
    m_driver->key(Qt::Key_Return);
    QTRY_VERIFY(!m_driver->rows().empty());
    // Disabled meanwhile, it has the keyboard again, and shows it.
    QVERIFY(hasFocus("scanButton") && m_driver->item("scanButton")->property("visualFocus").toBool());

    m_driver->item("resultsList")->forceActiveFocus(Qt::TabFocusReason);
    m_driver->key(Qt::Key_Down);
    m_driver->key(Qt::Key_Space);
    QCOMPARE(shown("checked"), (QStringList{"true", "false", "true", "false"}));
    QCOMPARE(current(), "b.log");
    m_driver->key(Qt::Key_Up);
    m_driver->key(Qt::Key_Return);
    QCOMPARE(shown("checked"), (QStringList{"false", "false", "true", "false"}));
    // The pointer hides where the keys were, the next key shows it again.
    m_driver->click(*m_driver->row("b.log"));
    QVERIFY(current().isEmpty() && hasFocus("resultsList"));
    m_driver->key(Qt::Key_Space);
    QCOMPARE(shown("checked"), (QStringList{"false", "false", "true", "false"}));
    QCOMPARE(current(), "b.log");

    // Rows go while the current one is the last: there is still one to come back to.
    m_driver->key(Qt::Key_End);
    model<ScanViewModel>()->confirmEmptyTrash();
    m_driver->item("emptyTrashButton")->forceActiveFocus(Qt::TabFocusReason);
    m_driver->key(Qt::Key_Tab);
    QTRY_COMPARE(current(), "old.zip");
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
    QQuickItem* row = m_driver->row("old.zip");
    const QString date = row->property("date").toString();
    auto* toldOfRow = QAccessible::queryAccessibleInterface(row);
    QVERIFY(!date.isEmpty() && toldOfRow->text(QAccessible::Description).contains(date));
    for (const bool checked : {true, false}) {
        toldOfRow->actionInterface()->doAction(QAccessibleActionInterface::toggleAction());
        QVERIFY(toldOfRow->state().checkable && toldOfRow->state().checked == checked);
        QCOMPARE(row->property("checked").toBool(), checked);
    }

    confirm("emptyTrashButton");
    confirm("deleteButton");
    // What came of it is spoken without being looked for.
    for (const char* outcome : {"trashSuccess", "trashWarning", "deletedLabel"}) {
        QVERIFY2(told(outcome), outcome);
        QCOMPARE(told(outcome)->role(), QAccessible::AlertMessage);
        QCOMPARE(told(outcome)->text(QAccessible::Name), m_driver->text(outcome));
    }
    QCOMPARE(told("trashFailures")->role(), QAccessible::List);
    QCOMPARE(told("trashFailures")->text(QAccessible::Name), m_driver->text("trashWarning"));
    // What is disabled isn't pressed by it either.
    told("deleteButton")->actionInterface()->doAction(QAccessibleActionInterface::pressAction());
    QVERIFY(!model<ScanViewModel>()->showDeleteConfirm());
}

int main(int argc, char** argv) {
    return runTest<CleanupTest>(argc, argv);
}

#include "cleanup_test.moc"
