#include "app/history/history_store.h"
#include "app/i18n/localizer.h"
#include "app/models/background.h"
#include "app/models/scan_view_model.h"
#include "tests/support/temporary_disk.h"
#include "tests/ui/driver.h"
#include "ui/shell/lumvale_window.h"

#include <QAccessible>
#include <QGuiApplication>
#include <QPointer>
#include <QSettings>
#include <QTest>

#include <memory>
#include <optional>

namespace {

constexpr const char* tabs[] = {"tab_cleanup", "tab_uninstall", "tab_startup", "tab_duplicates",
                                "tab_history"};

QString translated(const char* key) {
    return tr(QLatin1String(key));
}

} // namespace

/// What stands round the screens: the tabs, the language, the window itself.
class ShellTest : public QObject {
    Q_OBJECT

private Q_SLOTS:
    void init();
    void cleanup();

    void showsTheScreenOfEachTab();
    void discardsAScreenWithItsModel();
    void walksTheTabsByKeysAndChoosesOnlyWhenTold();
    void changesEveryTextWithTheLanguage();
    void choosesALanguageByKeys();
    void tellsAScreenReaderWhichTabIsChosen();
    void keepsEverythingInSightAtItsSmallest_data();
    void keepsEverythingInSightAtItsSmallest();

private:
    QStringList menuEntries() const;
    QQuickItem* menuEntry(const QString& text) const;
    bool hasFocus(const char* name) const;

    std::unique_ptr<TemporaryDisk> m_disk;
    std::unique_ptr<HistoryStore> m_history;
    std::unique_ptr<LumvaleWindow> m_lumvale;
    std::optional<Driver> m_driver;
};

void ShellTest::init() {
    Localizer::shared().setLanguage(AppLanguage::en);
    m_disk = std::make_unique<TemporaryDisk>();
    m_disk->make("~/Library/Caches/com.example.a/blob 4000");
    m_history = std::make_unique<HistoryStore>(m_disk->disk());
    m_lumvale = std::make_unique<LumvaleWindow>(m_disk->disk(), *m_history, qtExecutor());
    QVERIFY(m_lumvale->window() && QTest::qWaitForWindowExposed(m_lumvale->window()));
    m_driver.emplace(*m_lumvale->window());
}

void ShellTest::cleanup() {
    m_driver.reset();
    m_lumvale.reset();
    m_history.reset();
    m_disk.reset();
}

QStringList ShellTest::menuEntries() const {
    QStringList texts;
    for (const QQuickItem* entry : m_driver->items("menuEntry"))
        texts.append(entry->property("text").toString() + (entry->property("isChosen").toBool() ? "*" : ""));
    return texts;
}

QQuickItem* ShellTest::menuEntry(const QString& text) const {
    for (QQuickItem* entry : m_driver->items("menuEntry"))
        if (entry->property("text").toString() == text)
            return entry;
    return nullptr;
}

bool ShellTest::hasFocus(const char* name) const {
    const QQuickItem* found = m_driver->item(name);
    return found && found->hasActiveFocus();
}

void ShellTest::showsTheScreenOfEachTab() {
    const struct {
        const char* tab;
        const char* title;
        const char* subtitle;
    } screens[] = {{"tab_uninstall", "uninstall_title", nullptr},
                   {"tab_startup", "startup_title", "startup_subtitle"},
                   {"tab_duplicates", "duplicates_title", "duplicates_subtitle"},
                   {"tab_history", "tab_history", "history_subtitle"}};
    QVERIFY(m_driver->isShown("scanButton"));
    for (const auto& [tab, title, subtitle] : screens) {
        QVERIFY(m_driver->click(tab));
        QCOMPARE(m_driver->text("screenTitle"), translated(title));
        if (subtitle)
            QCOMPARE(m_driver->text("screenSubtitle"), translated(subtitle));
        QVERIFY(!m_driver->isShown("scanButton") || tab == QLatin1String("tab_duplicates"));
        QCOMPARE(m_driver->silentControls().join("; "), QString());
    }
    QVERIFY(m_driver->click("tab_cleanup"));
    QVERIFY(m_driver->isShown("scanButton"));
}

void ShellTest::discardsAScreenWithItsModel() {
    const auto model = [this] {
        return m_lumvale->window()->findChild<ScanViewModel*>();
    };
    QVERIFY(m_driver->click("scanButton"));
    QTRY_VERIFY(!m_driver->rows().empty());
    const QPointer<ScanViewModel> first(model());
    QVERIFY(m_driver->click("tab_history"));
    QTRY_VERIFY(!first);
    QVERIFY(m_driver->click("tab_cleanup"));
    QVERIFY(m_driver->isShown("emptyPrompt") && m_driver->rows().empty());
    QVERIFY(model() && !model()->hasResult());
}

void ShellTest::walksTheTabsByKeysAndChoosesOnlyWhenTold() {
    m_driver->item("tab_cleanup")->forceActiveFocus(Qt::TabFocusReason);
    m_driver->key(Qt::Key_Left); // there is nothing
    QVERIFY(hasFocus("tab_cleanup"));
    m_driver->key(Qt::Key_Right);
    m_driver->key(Qt::Key_Right);
    QVERIFY(hasFocus("tab_startup"));
    QVERIFY(m_driver->isShown("scanButton"));
    m_driver->key(Qt::Key_End);
    QVERIFY(hasFocus("tab_history"));
    m_driver->key(Qt::Key_Return);
    QCOMPARE(m_driver->text("screenTitle"), translated("tab_history"));
    QVERIFY(hasFocus("tab_history"));
    m_driver->key(Qt::Key_Home);
    m_driver->key(Qt::Key_Space);
    QVERIFY(m_driver->isShown("scanButton"));
    // One stop among the tabs, then the language, then the screen.
    m_driver->key(Qt::Key_Tab);
    QVERIFY(hasFocus("languageMenu"));
    m_driver->key(Qt::Key_Tab);
    QVERIFY(hasFocus("scanButton"));
    // What a click chooses leaves the keyboard where the screen wants it.
    QVERIFY(m_driver->click("tab_history"));
    QVERIFY(m_driver->click("tab_cleanup"));
    QVERIFY(hasFocus("scanButton"));
}

void ShellTest::changesEveryTextWithTheLanguage() {
    QCOMPARE(m_driver->text("languageMenu"), "English");
    QVERIFY(m_driver->click("languageMenu"));
    QTRY_COMPARE(menuEntries(),
                 (QStringList{"Automatique", "Français", "English*", "Srpski (latinica)", "Српски (ћирилица)",
                              "Deutsch", "Español", "Italiano", "Português", "Русский"}));
    m_driver->click(*menuEntry("Français"));
    QTRY_VERIFY(menuEntries().isEmpty());
    QCOMPARE(Localizer::shared().language(), AppLanguage::fr);
    QCOMPARE(Localizer().language(), AppLanguage::fr); // as the next start finds it
    QCOMPARE(m_driver->text("languageMenu"), "Français");
    for (const char* tab : tabs)
        QCOMPARE(m_driver->text(tab), translated(tab));
    QCOMPARE(m_driver->text("tab_cleanup"), "Nettoyage");
    QCOMPARE(m_driver->text("scanButton"), "Analyser mon Mac");

    // The present choice stays one when it is chosen again.
    QVERIFY(m_driver->click("languageMenu"));
    QTRY_VERIFY(menuEntry("Français"));
    m_driver->click(*menuEntry("Français"));
    QTRY_VERIFY(menuEntries().isEmpty());
    QVERIFY(m_driver->click("languageMenu"));
    QTRY_VERIFY(menuEntries().contains("Français*"));
    // Its button closes it, too.
    QVERIFY(m_driver->click("languageMenu"));
    QTRY_VERIFY(menuEntries().isEmpty());
}

void ShellTest::choosesALanguageByKeys() {
    m_driver->item("languageMenu")->forceActiveFocus(Qt::TabFocusReason);
    m_driver->key(Qt::Key_Space);
    QTRY_COMPARE(menuEntries().size(), 10);
    QTRY_VERIFY(menuEntry("English")->property("highlighted").toBool());
    m_driver->key(Qt::Key_Up);
    m_driver->key(Qt::Key_Escape);
    QTRY_VERIFY(menuEntries().isEmpty());
    QCOMPARE(Localizer::shared().language(), AppLanguage::en);
    QVERIFY(hasFocus("languageMenu"));

    m_driver->key(Qt::Key_Down);
    QTRY_VERIFY(menuEntry("English") && menuEntry("English")->property("highlighted").toBool());
    m_driver->key(Qt::Key_Up);
    m_driver->key(Qt::Key_Return);
    QTRY_VERIFY(menuEntries().isEmpty());
    QCOMPARE(Localizer::shared().language(), AppLanguage::fr);
    QVERIFY(hasFocus("languageMenu"));
    QVERIFY(m_driver->item("languageMenu")->property("visualFocus").toBool());
}

void ShellTest::tellsAScreenReaderWhichTabIsChosen() {
    const auto told = [this](const char* name) {
        return QAccessible::queryAccessibleInterface(m_driver->item(name));
    };
    QVERIFY(m_driver->click("tab_history"));
    for (const char* tab : tabs) {
        QCOMPARE(told(tab)->role(), QAccessible::PageTab);
        QCOMPARE(told(tab)->text(QAccessible::Name), translated(tab));
        QCOMPARE(bool(told(tab)->state().selected), tab == QLatin1String("tab_history"));
    }
    QCOMPARE(told("languageMenu")->role(), QAccessible::Button);
    QCOMPARE(told("languageMenu")->text(QAccessible::Name), translated("language_label") + ", English");
}

void ShellTest::keepsEverythingInSightAtItsSmallest_data() {
    QTest::addColumn<int>("language");
    for (const AppLanguage language : allAppLanguages)
        QTest::newRow(rawValue(language).toLatin1().constData()) << static_cast<int>(language);
}

void ShellTest::keepsEverythingInSightAtItsSmallest() {
    QFETCH(int, language);
    QCOMPARE(m_lumvale->window()->minimumSize(), QSize(820, 700));
    m_lumvale->window()->resize(820, 700);
    QTRY_COMPARE(m_lumvale->window()->contentItem()->size(), QSizeF(820, 700));
    Localizer::shared().setLanguageIndex(language);
    for (const char* tab : tabs) {
        QVERIFY(m_driver->click(tab));
        (void)m_lumvale->window()->grabWindow(); // everything laid out
        QCOMPARE(m_driver->cutTexts().join("; "), QString());
        QCOMPARE(m_driver->silentControls().join("; "), QString());
        const QQuickItem* last = m_driver->item("tab_history");
        const QQuickItem* menu = m_driver->item("languageMenu");
        QVERIFY(last->mapToScene(QPointF(last->width(), 0)).x() + 10 <= menu->mapToScene(QPointF()).x());
    }
}

int main(int argc, char** argv) {
    const OwnSettings settings;
    QGuiApplication application(argc, argv);
    QGuiApplication::setOrganizationName("Lumvale Tests");
    QGuiApplication::setApplicationName("Tests");
    ShellTest test;
    return QTest::qExec(&test, argc, argv);
}

#include "shell_test.moc"
