#include "platform/text/format.h"
#include "tests/ui/window_test.h"

#include <string>
#include <vector>

using namespace std::chrono_literals;

/// The history screen as its user meets it: the real window, clicks and keys, real files.
class HistoryTest : public WindowTest {
    Q_OBJECT

private Q_SLOTS:
    void tellsWhatTheCleanupDid();
    void growsWhereItStands();
};

void HistoryTest::tellsWhatTheCleanupDid() {
    m_disk->make(
        {"~/Library/Caches/com.example.a/blob 4000", "~/Library/Logs/b\n.log 20", "~/.Trash/thrown away 7"});
    open();
    QVERIFY(m_driver->click("tab_history"));
    QCOMPARE(m_driver->text("emptyPrompt"), translated("history_empty"));
    QVERIFY(!m_driver->isShown("historyList"));

    QVERIFY(m_driver->click("tab_cleanup"));
    QVERIFY(m_driver->click("scanButton"));
    QTRY_VERIFY(!m_driver->rows().empty());
    m_driver->click(*m_driver->row("thrown away"));
    confirm("deleteButton");
    confirm("emptyTrashButton");
    QVERIFY(m_driver->click("tab_history"));
    // Newest first. What was moved lay in the Trash when that was emptied.
    QTRY_COMPARE(shown("name"), (QStringList{translated("cat_trash"), "b\u240A.log", "com.example.a"}));
    QCOMPARE(shown("size"), (QStringList{"4 KB", "20 bytes", "4 KB"}));
    const QString today = QString::fromStdString(platform::formatMediumDate(platform::now()));
    QCOMPARE(shown("date"), QStringList(3, today));
    QVERIFY(!m_driver->isShown("emptyPrompt"));
    const auto* row = QAccessible::queryAccessibleInterface(m_driver->row("com.example.a"));
    QCOMPARE(row->text(QAccessible::Name), "com.example.a, 4 KB");
    QCOMPARE(row->text(QAccessible::Description), today);
}

void HistoryTest::growsWhereItStands() {
    std::vector<HistoryEntry> entries;
    for (int i = 0; i < 20'000; ++i)
        entries.push_back({platform::now() - i * 30s, "entry " + std::to_string(i), i});
    m_disk->write(HistoryStore(m_disk->disk()).path(), encodeHistory(entries));
    open();
    QVERIFY(m_driver->click("tab_history"));
    m_history->record("while it is seen", 5);
    QTRY_COMPARE(shown("name").mid(0, 2), (QStringList{"while it is seen", "entry 0"}));

    QQuickItem* list = m_driver->item("historyList");
    list->setProperty("contentY", list->property("originY").toDouble() + 50'000);
    QTRY_VERIFY(!shown("name").contains("entry 0"));
    const QStringList before = shown("name");
    m_history->record("out of sight", 5);
    layOut();
    QCOMPARE(shown("name"), before);
    QCOMPARE(list->property("count").toInt(), 20'002);
}

int main(int argc, char** argv) {
    return runTest<HistoryTest>(argc, argv);
}

#include "history_test.moc"
