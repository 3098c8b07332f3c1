#include "app/history/history_store.h"
#include "app/i18n/localizer.h"
#include "app/models/background.h"
#include "platform/format.h"
#include "tests/support/temporary_disk.h"
#include "tests/ui/driver.h"
#include "ui/shell/lumvale_window.h"

#include <QAccessible>
#include <QGuiApplication>
#include <QTest>

#include <memory>
#include <optional>
#include <string>
#include <vector>

using namespace std::chrono_literals;

namespace {

QString translated(const char* key) {
    return tr(QLatin1String(key));
}

QString day(platform::Date date) {
    return QString::fromStdString(platform::formatMediumDate(date));
}

} // namespace

/// The history screen as its user meets it: the real window, clicks and keys, real files.
class HistoryTest : public QObject {
    Q_OBJECT

private Q_SLOTS:
    void init();
    void cleanup();

    void tellsWhatTheCleanupDid();
    void growsWhereItStands();
    void isWalkedByKeys();
    void nothingIsCutOffInAnyLanguage_data();
    void nothingIsCutOffInAnyLanguage();

private:
    /// Opens the window on a disk whose history has these entries, and the history in it.
    void open(const std::vector<HistoryEntry>& entries = {});
    QStringList shown(const char* property) const; ///< by the rows in sight
    std::vector<HistoryEntry> many() const;        ///< a week of them, newest first

    const platform::Date m_now = platform::now();
    std::unique_ptr<TemporaryDisk> m_disk;
    std::unique_ptr<HistoryStore> m_history;
    std::unique_ptr<LumvaleWindow> m_lumvale;
    std::optional<Driver> m_driver;
};

void HistoryTest::init() {
    Localizer::shared().setLanguage(AppLanguage::en);
    m_disk = std::make_unique<TemporaryDisk>();
}

void HistoryTest::cleanup() {
    m_driver.reset();
    m_lumvale.reset();
    m_history.reset();
    m_disk.reset();
}

void HistoryTest::open(const std::vector<HistoryEntry>& entries) {
    if (!entries.empty())
        m_disk->write(HistoryStore(m_disk->disk()).path(), encodeHistory(entries));
    m_history = std::make_unique<HistoryStore>(m_disk->disk());
    m_lumvale = std::make_unique<LumvaleWindow>(m_disk->disk(), *m_history, qtExecutor());
    QVERIFY(m_lumvale->window());
    QVERIFY(QTest::qWaitForWindowExposed(m_lumvale->window()));
    m_driver.emplace(*m_lumvale->window());
    QVERIFY(m_driver->click("tab_history"));
    QCOMPARE(m_driver->text("screenTitle"), translated("tab_history"));
}

QStringList HistoryTest::shown(const char* property) const {
    QStringList shown;
    for (const QQuickItem* row : m_driver->rows())
        shown.append(row->property(property).toString());
    return shown;
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
    open();
    QCOMPARE(m_driver->text("screenSubtitle"), translated("history_subtitle"));
    QCOMPARE(m_driver->text("historyNote"), translated("history_auto_clear"));
    QCOMPARE(m_driver->text("emptyPrompt"), translated("history_empty"));
    QVERIFY(!m_driver->isShown("historyList"));

    QVERIFY(m_driver->click("tab_cleanup"));
    QVERIFY(m_driver->click("scanButton"));
    QTRY_VERIFY(!m_driver->rows().empty());
    m_driver->click(*m_driver->row("thrown away"));
    for (const char* button : {"deleteButton", "emptyTrashButton"}) {
        QVERIFY(m_driver->click(button));
        QTRY_VERIFY(m_driver->isShown("confirm"));
        QVERIFY(m_driver->click("confirm"));
        QTRY_VERIFY(!m_driver->isShown("confirm"));
    }
    QVERIFY(m_driver->click("tab_history"));
    // Newest first. What was moved lay in the Trash when that was emptied.
    QTRY_COMPARE(shown("name"), (QStringList{translated("cat_trash"), "b.log", "com.example.a"}));
    QCOMPARE(shown("size"), (QStringList{"4 KB", "20 bytes", "4 KB"}));
    QCOMPARE(shown("date"), QStringList(3, day(platform::now())));
    QVERIFY(!m_driver->isShown("emptyPrompt"));
}

void HistoryTest::growsWhereItStands() {
    open(many());
    m_history->record("while it is seen", 5);
    QTRY_COMPARE(shown("name").value(0), "while it is seen");
    QCOMPARE(shown("name").value(1), "entry 0");

    QQuickItem* list = m_driver->item("historyList");
    list->setProperty("contentY", list->property("originY").toDouble() + 50'000);
    QTRY_VERIFY(!shown("name").contains("entry 0"));
    const QStringList before = shown("name");
    m_history->record("out of sight", 5);
    (void)m_lumvale->window()->grabWindow();
    QCOMPARE(shown("name"), before);
    QCOMPARE(list->property("count").toInt(), 20'002);
}

void HistoryTest::isWalkedByKeys() {
    open(many());
    const QQuickItem* list = m_driver->item("historyList");
    const auto current = [this] {
        for (const QQuickItem* row : m_driver->rows())
            if (row->property("isCurrent").toBool())
                return row->property("name").toString();
        return QString();
    };
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

void HistoryTest::nothingIsCutOffInAnyLanguage_data() {
    QTest::addColumn<AppLanguage>("language");
    for (const AppLanguage language : allAppLanguages)
        QTest::newRow(rawValue(language).toLatin1().constData()) << language;
}

void HistoryTest::nothingIsCutOffInAnyLanguage() {
    QFETCH(AppLanguage, language);
    const std::string endless(200, 'w');
    open({{m_now, endless, 123'456'789'012}, {m_now, "<b>bold", 1}, {m_now, "two\nlines", 2}});
    m_lumvale->window()->resize(820, 700);
    QTRY_COMPARE(m_lumvale->window()->contentItem()->size(), QSizeF(820, 700));
    Localizer::shared().setLanguage(language);
    (void)m_lumvale->window()->grabWindow(); // everything laid out
    QCOMPARE(m_driver->text("screenTitle"), translated("tab_history"));
    QCOMPARE(m_driver->text("historyNote"), translated("history_auto_clear"));
    QCOMPARE(shown("name"), (QStringList{QString::fromStdString(endless), "<b>bold", "two\u240Alines"}));
    QCOMPARE(m_driver->cutTexts().join("; "), QString());
    QCOMPARE(m_driver->silentControls().join("; "), QString());

    const auto* list = QAccessible::queryAccessibleInterface(m_driver->item("historyList"));
    QCOMPARE(list->role(), QAccessible::List);
    QCOMPARE(list->text(QAccessible::Name), translated("tab_history"));
    const auto* row = QAccessible::queryAccessibleInterface(m_driver->row("<b>bold"));
    QCOMPARE(row->role(), QAccessible::ListItem);
    QCOMPARE(row->text(QAccessible::Name), "<b>bold, 1 byte");
    QCOMPARE(row->text(QAccessible::Description), day(m_now));
}

int main(int argc, char** argv) {
    const OwnSettings settings;
    QGuiApplication application(argc, argv);
    QAccessible::setActive(true); // as with a screen reader
    HistoryTest test;
    return QTest::qExec(&test, argc, argv);
}

#include "history_test.moc"
