#include "platform/text/format.h"
#include "tests/ui/window_test.h"

/// The history screen in the real window.
class HistoryTest : public WindowTest {
    Q_OBJECT

private Q_SLOTS:
    void drawsTheNewestEntryFirst();
};

void HistoryTest::drawsTheNewestEntryFirst() {
    open();
    QVERIFY(m_driver->click("tab_history"));
    QCOMPARE(m_driver->text("emptyPrompt"), translated("history_empty"));
    m_history->record("com.example.a", 4000);
    m_history->record("b\n.log", 20);
    const QString today = " | " + QString::fromStdString(platform::formatMediumDate(platform::now()));
    QTRY_COMPARE(drawn(), (QStringList{"b\u21B5.log | 20 bytes" + today, "com.example.a | 4 KB" + today}));
}

int main(int argc, char** argv) {
    return runTest<HistoryTest>(argc, argv);
}

#include "history_test.moc"
