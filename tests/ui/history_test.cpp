#include "platform/format.h"
#include "tests/ui/window_test.h"

#include <string>
#include <vector>

using namespace std::chrono_literals;

namespace {

QString day(platform::Date date) {
    return QString::fromStdString(platform::formatMediumDate(date));
}

} // namespace

/// The history screen as its user meets it: the real window, clicks and keys, real files.
class HistoryTest : public WindowTest {
    Q_OBJECT

private Q_SLOTS:
    void tellsWhatTheCleanupDid();
    void growsWhereItStands();
    void isWalkedByKeys();
    void nothingIsCutOffInAnyLanguage_data() { eachLanguage(); }
    void nothingIsCutOffInAnyLanguage();

private:
    /// Opens the window on a disk whose history has these entries, and the history in it.
    void openHistory(const std::vector<HistoryEntry>& entries = {});
    std::vector<HistoryEntry> many() const; ///< a week of them, newest first

    const platform::Date m_now = platform::now();
};

void HistoryTest::openHistory(const std::vector<HistoryEntry>& entries) {
    if (!entries.empty())
        m_disk->write(HistoryStore(m_disk->disk()).path(), encodeHistory(entries));
    open();
    QVERIFY(m_driver->click("tab_history"));
    QCOMPARE(m_driver->text("screenTitle"), translated("tab_history"));
}

std::vector<HistoryEntry> HistoryTest::many() const {
    std::vector<HistoryEntry> entries;
    for (int i = 0; i < 20'000; ++i)
        entries.push_back({m_now - i * 30s, "entry " + std::to_string(i), i});
    return entries;
}

void HistoryTest::tellsWhatTheCleanupDid() {
    m_disk->make(
        {"~/Library/Caches/com.example.a/blob 4000", "~/Library/Logs/b.log 20", "~/.Trash/thrown away 7"});
    openHistory();
    QCOMPARE(m_driver->text("screenSubtitle"), translated("history_subtitle"));
    QCOMPARE(m_driver->text("historyNote"), translated("history_auto_clear"));
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
    QTRY_COMPARE(shown("name"), (QStringList{translated("cat_trash"), "b.log", "com.example.a"}));
    QCOMPARE(shown("size"), (QStringList{"4 KB", "20 bytes", "4 KB"}));
    QCOMPARE(shown("date"), QStringList(3, day(platform::now())));
    QVERIFY(!m_driver->isShown("emptyPrompt"));
}

void HistoryTest::growsWhereItStands() {
    openHistory(many());
    m_history->record("while it is seen", 5);
    QTRY_COMPARE(shown("name").value(0), "while it is seen");
    QCOMPARE(shown("name").value(1), "entry 0");

    QQuickItem* list = m_driver->item("historyList");
    list->setProperty("contentY", list->property("originY").toDouble() + 50'000);
    QTRY_VERIFY(!shown("name").contains("entry 0"));
    const QStringList before = shown("name");
    m_history->record("out of sight", 5);
    layOut();
    QCOMPARE(shown("name"), before);
    QCOMPARE(list->property("count").toInt(), 20'002);
}

void HistoryTest::isWalkedByKeys() {
    openHistory(many());
    const QQuickItem* list = m_driver->item("historyList");
    QCOMPARE(current(), QString());
    m_driver->item("languageMenu")->forceActiveFocus(Qt::TabFocusReason);
    m_driver->key(Qt::Key_Tab);
    QVERIFY(list->hasActiveFocus());
    QCOMPARE(current(), "entry 0");
    m_driver->key(Qt::Key_Down);
    QCOMPARE(current(), "entry 1");
    m_driver->key(Qt::Key_PageDown);
    m_driver->key(Qt::Key_PageDown);
    QTRY_VERIFY(!shown("name").contains("entry 0"));
    QVERIFY(!current().isEmpty());
    const QString below = current();
    m_driver->key(Qt::Key_PageUp);
    m_driver->key(Qt::Key_PageDown);
    QTRY_COMPARE(current(), below);
    m_driver->key(Qt::Key_End);
    QTRY_COMPARE(current(), "entry 19999");
    m_driver->key(Qt::Key_Up);
    QCOMPARE(current(), "entry 19998");
    m_driver->key(Qt::Key_Home);
    QTRY_COMPARE(current(), "entry 0");
    m_driver->key(Qt::Key_Tab);
    QVERIFY(!list->hasActiveFocus());
    QCOMPARE(current(), QString());
}

void HistoryTest::nothingIsCutOffInAnyLanguage() {
    QFETCH(AppLanguage, language);
    const std::string endless(200, 'w');
    openHistory({{m_now, endless, 123'456'789'012}, {m_now, "<b>bold", 1}, {m_now, "two\nlines", 2}});
    Localizer::shared().setLanguage(language);
    checkEverythingIsSaid();
    QCOMPARE(m_driver->text("screenTitle"), translated("tab_history"));
    QCOMPARE(m_driver->text("historyNote"), translated("history_auto_clear"));
    QCOMPARE(shown("name"), (QStringList{QString::fromStdString(endless), "<b>bold", "two\u240Alines"}));

    QCOMPARE(told("historyList")->role(), QAccessible::List);
    QCOMPARE(told("historyList")->text(QAccessible::Name), translated("tab_history"));
    const auto* row = QAccessible::queryAccessibleInterface(m_driver->row("<b>bold"));
    QCOMPARE(row->role(), QAccessible::ListItem);
    QCOMPARE(row->text(QAccessible::Name), "<b>bold, 1 byte");
    QCOMPARE(row->text(QAccessible::Description), day(m_now));
}

int main(int argc, char** argv) {
    return runTest<HistoryTest>(argc, argv);
}

#include "history_test.moc"
