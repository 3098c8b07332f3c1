#include "platform/text/format.h"
#include "tests/ui/window_test.h"

/// The history screen in the real window.
class HistoryTest : public WindowTest {
    Q_OBJECT

private Q_SLOTS:
    void drawsWhatTheCleanupRecorded();
};

void HistoryTest::drawsWhatTheCleanupRecorded() {
    m_disk->make(
        {"~/Library/Caches/com.example.a/blob 4000", "~/Library/Logs/b\n.log 20", "~/.Trash/thrown away 7"});
    open();
    QVERIFY(m_driver->click("tab_history"));
    QCOMPARE(m_driver->text("emptyPrompt"), translated("history_empty"));

    QVERIFY(m_driver->click("tab_cleanup"));
    QVERIFY(m_driver->click("scanButton"));
    QTRY_VERIFY(!m_driver->rows().empty());
    m_driver->click(*m_driver->row("thrown away"));
    confirm("deleteButton");
    confirm("emptyTrashButton");
    QVERIFY(m_driver->click("tab_history"));
    QTRY_COMPARE(m_driver->rows().size(), 3u);
    const QString today = QString::fromStdString(platform::formatMediumDate(platform::now()));
    // Newest first; the moved files were in the Trash when it was emptied.
    const QStringList expected[]{{translated("cat_trash"), "4 KB", today},
                                 {"b\u240A.log", "20 bytes", today},
                                 {"com.example.a", "4 KB", today}};
    for (std::size_t i = 0; i < 3; ++i)
        QCOMPARE(Driver::texts(*m_driver->rows()[i]), expected[i]);
}

int main(int argc, char** argv) {
    return runTest<HistoryTest>(argc, argv);
}

#include "history_test.moc"
