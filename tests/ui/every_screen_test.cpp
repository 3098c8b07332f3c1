#include "app/i18n/translations.h"
#include "app/text/outcome_text.h"
#include "app/update/update_alert.h"
#include "tests/app/hand_cranked.h"
#include "tests/support/photo_catalogue.h"
#include "tests/ui/window_test.h"

#include <QJSValue>
#include <QQmlComponent>
#include <QQmlEngine>
#include <QRegularExpression>
#include <QSettings>

#include <algorithm>
#include <cmath>
#include <cstdlib>
#include <string>
#include <string_view>

using namespace std::chrono_literals;

namespace {

/// A confirmation dialog and the screen that opens it.
struct Question {
    const char* list;   ///< identifies the screen
    const char* button; ///< opens the dialog by a click
    const char* focus;  ///< has focus when a key opens the dialog
    const char* focusAfterwards;
    const char* behind; ///< is behind the dialog; clicked during the removal
    const char* title;
    const char* message; ///< what the message ends with
    const char* confirm;
};

const Question questions[]{
    {"resultsList", "deleteButton", "deleteButton", "resultsList", "row", "alert_confirm_delete_title",
     "delete_removes", "btn_trash"},
    {"resultsList", "emptyTrashButton", "emptyTrashButton", "emptyTrashButton", "scanButton",
     "alert_empty_trash_title", "alert_empty_trash_message", "btn_empty_trash"},
    {"filesList", "deleteButton", "deleteButton", "appsList", "row", "btn_uninstall",
     "alert_confirm_delete_message", "btn_trash"},
    {"startupList", "disableButton", "startupList", "startupList", "tab_history", "btn_disable",
     "alert_confirm_disable_message", "btn_disable"},
    {"groupsList", "deleteButton", "deleteButton", "groupsList", "tab_history", "alert_confirm_delete_title",
     "alert_confirm_delete_photo_message", "btn_trash"},
};

} // namespace

/// Behavior that all screens share, checked on each in the real window, on real files.
class EveryScreenTest : public WindowTest {
    Q_OBJECT

private Q_SLOTS:
    void walksEveryListByKeys_data();
    void walksEveryListByKeys();
    void asksBeforeActing_data();
    void asksBeforeActing();
    void discardsResultsOfALeftScreen();
    void fitsInEveryLanguage_data();
    void fitsInEveryLanguage();
    void keepsWordsAndTheirSignsOnOneLine();
    void balancesParagraphs();
    void drawsThePalette();

private:
    /// Adds a text to the window, by the start of its QML.
    QQuickItem* makeText(const QByteArray& start) const;
    /// Returns the lengths of its lines as laid out.
    static std::vector<qreal> lines(const QQuickItem& text);

    void fill(int count); ///< that many rows for each list, and a proposal that isn't ticked
    void act(const Question& question, bool byKeys);                 ///< confirms the dialog
    void show(const char* list, const QString& app = "Paint") const; ///< by clicks
    void checkTexts() const; ///< all fit, are told to screen readers and in the current language

    std::optional<CatalogueWriter> m_catalogue;
};

void EveryScreenTest::fill(int count) {
    m_catalogue.emplace(*m_disk, CatalogueWriter::Maker::lumvale);
    m_disk->make({"/Applications/Paint.app/x 1000", "~/.Trash/thrown away 7", "~/Downloads/old.zip 500"});
    m_disk->setModified("~/Downloads/old.zip", platform::now() - 100 * 24h);
    for (int i = 0; i < count; ++i) {
        const std::string number = std::to_string(100 + i);
        m_disk->make({"~/Library/Caches/cache" + number + "/blob 8000",
                      "~/Library/Logs/paint " + number + " 9", "/Applications/Tool " + number + ".app/x 10"});
        makeAgent("~/Library/LaunchAgents/" + number + ".plist", "com.example.agent" + number);
        for (const std::string half : {"a", "b"})
            m_catalogue->add({.uuid = number + half, .created = number, .name = "'" + number + half + "'"});
    }
}

void EveryScreenTest::show(const char* list, const QString& app) const {
    const std::map<std::string_view, const char*> tabs{
        {"resultsList", "tab_cleanup"}, {"appsList", "tab_uninstall"},    {"filesList", "tab_uninstall"},
        {"startupList", "tab_startup"}, {"groupsList", "tab_duplicates"}, {"historyList", "tab_history"}};
    QVERIFY(m_driver->click(tabs.at(list)));
    m_driver->click("scanButton"); // if there is one
    QTRY_VERIFY(!m_driver->rows().empty());
    layOut();
    if (list == QLatin1String("filesList"))
        m_driver->click(*m_driver->row(app));
    QTRY_VERIFY(m_driver->isShown(list));
    layOut();
}

void EveryScreenTest::checkTexts() const {
    layOut();
    QTRY_COMPARE(m_driver->cutTexts().join("; "), QString()); // until delegates are created
    QCOMPARE(m_driver->silentControls().join("; "), QString());
    const QStringList drawn = m_driver->texts();
    QStringList foreign = drawn.filter(QRegularExpression("^[a-z0-9]+(_[a-z0-9]+)+$")); // keys
    for (auto texts = Translations::table().begin(); texts != Translations::table().end(); ++texts) {
        const QString english = texts->value(AppLanguage::en);
        if (english != ::tr(texts.key()) && drawn.contains(english))
            foreign.append(english);
    }
    QCOMPARE(foreign.join("; "), QString());
}

void EveryScreenTest::walksEveryListByKeys_data() {
    QTest::addColumn<QString>("name");
    QTest::addColumn<QAccessible::Role>("role");
    QTest::newRow("resultsList") << "tab_cleanup" << QAccessible::CheckBox;
    QTest::newRow("appsList") << "uninstall_title" << QAccessible::Button;
    QTest::newRow("filesList") << "Paint" << QAccessible::CheckBox;
    QTest::newRow("startupList") << "startup_title" << QAccessible::Button;
    QTest::newRow("groupsList") << "duplicates_title" << QAccessible::Grouping;
    QTest::newRow("historyList") << "tab_history" << QAccessible::ListItem;
}

void EveryScreenTest::walksEveryListByKeys() {
    QFETCH(QString, name);
    QFETCH(QAccessible::Role, role);
    const char* list = QTest::currentDataTag();
    fill(120);
    open();
    for (int i = 0; i < 120; ++i)
        m_history->record("entry " + std::to_string(i), i);
    show(list);
    m_driver->item("languageMenu")->forceActiveFocus(Qt::TabFocusReason);
    for (int stops = 0; stops < 4 && !hasFocus(list); ++stops)
        m_driver->key(Qt::Key_Tab);
    const QString firstName = current();
    const auto walk = [&](Qt::Key key) {
        m_driver->key(key);
        const bool isInSight = QTest::qWaitFor([this] { return !current().isEmpty(); });
        return isInSight ? m_driver->text(list, "currentIndex").toInt() : -2;
    };
    const int last = m_driver->text(list, "count").toInt() - 1;
    const int first = walk(Qt::Key_Up); // from the first
    const int below = walk(Qt::Key_PageDown);
    QVERIFY(walk(Qt::Key_PageDown) > below && below > first);
    const std::pair<Qt::Key, int> steps[]{
        {Qt::Key_PageUp, below}, {Qt::Key_End, last},       {Qt::Key_PageDown, last}, {Qt::Key_Down, last},
        {Qt::Key_Home, first},   {Qt::Key_Down, first + 1}, {Qt::Key_Up, first}};
    for (const auto& [key, row] : steps)
        QCOMPARE(walk(key), row);
    QVERIFY(!firstName.isEmpty() && current() == firstName);
    QVERIFY(m_driver->items("row").size() < 60); // rows out of sight are not created

    QCOMPARE(told(list)->role(), QAccessible::List);
    QCOMPARE(told(list)->text(QAccessible::Name), ::tr(name));
    const auto* firstRow = told(m_driver->rows().front());
    QCOMPARE(firstRow->role(), role);
    if (role != QAccessible::Grouping)
        QVERIFY(firstRow->text(QAccessible::Name).contains(firstName) && firstRow->childCount() == 0);
    m_driver->key(Qt::Key_Tab); // the list is one tab stop
    QVERIFY(!hasFocus(list) && current().isEmpty());
}

void EveryScreenTest::asksBeforeActing_data() {
    QTest::addColumn<int>("number");
    QTest::addColumn<bool>("byKeys");
    for (int i = 0; i < static_cast<int>(std::size(questions)); ++i)
        for (const bool byKeys : {false, true})
            QTest::addRow("%s, %s, %s", questions[i].list, questions[i].button, byKeys ? "keys" : "clicks")
                << i << byKeys;
}

void EveryScreenTest::asksBeforeActing() {
    QFETCH(int, number);
    QFETCH(bool, byKeys);
    const Question& question = questions[number];
    fill(12);
    open();
    show(question.list);
    m_driver->click("photoCheckBox"); // no photo is ticked at first
    const auto before = m_disk->entries();
    const QString tickedBefore = ticks(); // rows out of sight may be created and destroyed
    for (const Qt::MouseButton button : {Qt::MiddleButton, Qt::RightButton})
        for (const char* item : {question.button, "photoCheckBox", "row"})
            if (m_driver->isShown(item))
                QTest::mouseClick(window(), button, {}, Driver::center(*m_driver->item(item)));
    QVERIFY(!m_driver->isShown("confirm"));
    m_driver->key(Qt::Key_Escape); // closes the context menu of the row, if it has one
    QTRY_VERIFY(!m_driver->isShown("menuEntry"));
    if (byKeys)
        m_driver->item(question.focus)->forceActiveFocus(Qt::TabFocusReason);
    // A held key and a double click open the dialog and do not answer it.
    const auto ask = [&] {
        if (byKeys)
            m_driver->holdKey(question.button == QLatin1String("deleteButton") ? Qt::Key_Delete
                                                                               : Qt::Key_Space);
        else
            m_driver->doubleClick(*m_driver->item(question.button));
        return QTest::qWaitFor([&] {
            return hasFocus("cancel") && m_driver->item("cancel")->property("visualFocus").toBool() == byKeys;
        });
    };
    for (const Qt::Key key : {Qt::Key_Return, Qt::Key_Escape}) {
        QVERIFY(ask());
        if (byKeys || key == Qt::Key_Escape)
            m_driver->holdKey(key);
        else
            m_driver->doubleClick(*m_driver->item("cancel"));
        QTRY_VERIFY(!m_driver->isShown("cancel"));
        QVERIFY(m_driver->isShown(question.list) && (!byKeys || hasFocus(question.focus)));
    }
    QCOMPARE(m_disk->entries(), before);
    QVERIFY(ticks().startsWith(tickedBefore.left(ticks().size())));

    QVERIFY(ask());
    // Shortcuts do not act behind the dialog.
    for (const auto& [key, modifiers] :
         {std::pair(Qt::Key_F5, Qt::NoModifier), {Qt::Key_2, Qt::ControlModifier}})
        QTest::keyClick(window(), key, modifiers);
    QVERIFY(hasFocus("cancel") && m_driver->isShown(question.list));
    QStringList texts = Driver::texts(*m_driver->item("dialogContent"));
    const QString message = texts.takeAt(1);
    QVERIFY(message.endsWith(translated(question.message))
            || message.endsWith(outcome::counted(QLatin1String(question.message), 1)));
    QCOMPARE(texts, (QStringList{translated(question.title), translated(question.confirm),
                                 translated("btn_cancel")}));
    act(question, byKeys);
    QTRY_VERIFY(m_disk->entries() != before && hasFocus(question.focusAfterwards));
    QTRY_COMPARE(!current().isEmpty()
                     || m_driver->item(question.focusAfterwards)->property("visualFocus").toBool(),
                 byKeys);
}

void EveryScreenTest::act(const Question& question, bool byKeys) {
    const auto before = m_disk->entries();
    const QPoint behind =
        Driver::center(byKeys ? *m_driver->item("confirm") : *m_driver->item(question.behind));
    holdJobs();
    if (byKeys)
        for (const Qt::Key key : {Qt::Key_Tab, Qt::Key_Return})
            m_driver->key(key);
    else
        m_driver->click("confirm");
    QVERIFY(m_driver->isShown("progressText"));
    const QString selection = m_driver->text("selectionLabel");
    m_driver->click(behind);
    QVERIFY(hasFocus("cancel") && !m_driver->isShown("loadingIndicator"));
    QCOMPARE(m_driver->text("selectionLabel"), selection);
    QCOMPARE(m_disk->entries(), before);
    releaseJobs();
    QTRY_VERIFY(!m_driver->isShown("confirm"));
}

void EveryScreenTest::discardsResultsOfALeftScreen() {
    fill(3);
    const std::pair<const char*, const char*> screens[]{{"tab_cleanup", "scanning_progress"},
                                                        {"tab_uninstall", "loading_apps"},
                                                        {"tab_startup", "loading_startup"},
                                                        {"tab_duplicates", "loading_duplicates"}};
    for (const auto& [tab, label] : screens) {
        HandCranked jobs;
        open(smallest, jobs.executor());
        const auto begin = [&, tab = tab, label = label] {
            QVERIFY(m_driver->click("tab_history") && m_driver->click(tab));
            m_driver->click("scanButton"); // if there is one
            m_driver->key(Qt::Key_F5);     // while it is running
            QCOMPARE(Driver::texts(*m_driver->item("loadingIndicator")).value(0), translated(label));
            QCOMPARE(told("loadingIndicator")->text(QAccessible::Name), translated(label));
            QVERIFY(m_driver->rows().empty() && !m_driver->isShown("emptyPrompt")
                    && !m_driver->isEnabled("scanButton"));
            jobs.runBackground();
        };
        begin();
        QVERIFY(m_driver->click("tab_history"));
        jobs.publish(); // to a screen that no longer exists
        begin();
        jobs.publish();
        QTRY_VERIFY(!m_driver->rows().empty() && !m_driver->isShown("loadingIndicator"));
        m_driver->key(Qt::Key_F5);
        QVERIFY(m_driver->isShown("loadingIndicator") && !jobs.isIdle());
        jobs.run();
        QTRY_VERIFY(!m_driver->rows().empty() && !m_driver->isShown("loadingIndicator"));
        begin();
        close();
        jobs.publish();
    }
}

void EveryScreenTest::fitsInEveryLanguage_data() {
    QTest::addColumn<AppLanguage>("language");
    for (const AppLanguage language : allAppLanguages)
        QTest::newRow(rawValue(language).toLatin1().constData()) << language;
}

void EveryScreenTest::fitsInEveryLanguage() {
    QFETCH(AppLanguage, language);
    const std::string w(200, 'w');
    m_disk->make({"~/Library/Caches/" + w + "/blob 12345678", "~/Library/Caches/two\nlines <b>bold/blob 9999",
                  "/Applications/" + w + ".app/x 123456789", "~/Library/Logs/" + w + " 1",
                  "~/.Trash/" + w + "/x", "~/Movies/film 8000"});
    m_disk->setMode("~/.Trash/" + w, 0500);
    makeAgent("~/Library/LaunchAgents/1.plist", "com.example.&lt;b&gt;bold");
    makeAgent("/Library/LaunchAgents/2.plist", std::string(65'536, 'w'));
    m_catalogue.emplace(*m_disk, CatalogueWriter::Maker::lumvale);
    for (int i = 0; i < 3; ++i)
        m_catalogue->add({.uuid = std::to_string(i), .size = "123456789", .name = "'" + w + "'"});
    QSettings().remove("didOnboard");
    open();
    // Everything on the screen follows the language at once.
    const auto check = [&] {
        Localizer::shared().setLanguage(language);
        checkTexts();
        Localizer::shared().setLanguage(AppLanguage::en);
    };
    const auto checkAndAnswer = [&](const char* answer, const char* content = "dialogContent") {
        QTRY_VERIFY(m_driver->isShown(answer));
        check();
        QVERIFY(QRectF({}, smallest).contains(Driver::place(*m_driver->item(content))));
        QVERIFY(m_driver->click(answer));
    };
    for (int page = 0; page < 4; ++page)
        checkAndAnswer("next", "onboardingContent");
    QTRY_VERIFY(!m_driver->isShown("next"));
    m_lumvale->announce(
        UpdateChecker::alertIn(rawValue(language), "Lumvale", std::string(9'000, 'W'), "1.4", {}));
    checkAndAnswer("later");
    QTRY_VERIFY(!m_driver->isShown("later"));
    check();
    m_history->record(w, 123456789);
    show("historyList");
    check();
    for (const Question& question : questions) {
        show(question.list, QString::fromStdString(w));
        check();
        m_driver->click("photoCheckBox");
        QVERIFY(m_driver->click(question.button));
        checkAndAnswer("confirm");
        QTRY_VERIFY(!m_driver->isShown("confirm"));
        check();
    }
    show("resultsList");
    QVERIFY(m_driver->click("storageButton"));
    QTRY_VERIFY(!m_driver->items("tile").empty());
    check();
}

QQuickItem* EveryScreenTest::makeText(const QByteArray& start) const {
    QQmlComponent component(qmlEngine(window()));
    component.setData("import QtQuick\nimport Lumvale.Style\n" + start
                          + "property var lines: []\n"
                            "onLineLaidOut: line => lines.splice(line.number, 99, line.implicitWidth) }",
                      QUrl());
    auto* text = qobject_cast<QQuickItem*>(
        component.createWithInitialProperties({{"parent", QVariant::fromValue(window()->contentItem())}}));
    text->setParent(window()->contentItem());
    return text;
}

std::vector<qreal> EveryScreenTest::lines(const QQuickItem& text) {
    std::vector<qreal> lengths;
    for (const QVariant& length : text.property("lines").value<QJSValue>().toVariant().toList())
        lengths.push_back(length.toReal());
    return lengths;
}

void EveryScreenTest::keepsWordsAndTheirSignsOnOneLine() {
    open();
    QQuickItem* label = makeText("Label {");
    const std::pair<QString, QString> breaks[]{{"dans", "« Photos »"},
                                               {"mon", "espace ?"},
                                               {"твоём", "Mac —"},
                                               {"wird", "gesucht …"},
                                               {"Recréés automatiquement. Sans danger", "à supprimer."}};
    for (const auto& [first, second] : breaks) {
        label->setProperty("text", first);
        const qreal firstLength = label->implicitWidth();
        label->setProperty("text", second);
        const qreal widest = std::max(firstLength, label->implicitWidth());
        const QString both = first + ' ' + second;
        label->setProperty("text", both);
        for (qreal width = std::ceil(widest); width < std::floor(label->implicitWidth()); ++width) {
            label->setWidth(width);
            QVERIFY2(lines(*label).size() == 2 && lines(*label)[0] <= firstLength + 1, qPrintable(both));
        }
        QCOMPARE(label->property("text"), both);
    }
}

void EveryScreenTest::balancesParagraphs() {
    open();
    QQuickItem* paragraph = makeText("Label { width: evenWidth(360);");
    for (const AppLanguage language : allAppLanguages)
        for (const char* key : {"onboard_message_welcome", "onboard_message_fda", "cleanup_empty"}) {
            paragraph->setProperty("text", Translations::text(key, language));
            const std::vector<qreal> lengths = lines(*paragraph);
            QVERIFY2(*std::ranges::min_element(lengths) > 0.5 * *std::ranges::max_element(lengths), key);
        }
}

void EveryScreenTest::drawsThePalette() {
    m_disk->make("~/Library/Logs/paint 9");
    open();
    scan();
    layOut();
    const QRectF button = Driver::place(*m_driver->item("emptyTrashButton"));
    const QRectF panel = Driver::place(*m_driver->item("resultsList"));
    const std::tuple<const char*, QPointF, QColor> stated[]{
        {"top of the window", {700, 1}, {10, 15, 26}},
        {"panel", {panel.left() + 6, 600}, {15, 17, 25}},
        {"button", {button.left() + 2, button.center().y()}, {255, 143, 122}}};
    const QImage picture = window()->grabWindow();
    for (const auto& [what, place, color] : stated) {
        const QColor drawn = picture.pixelColor(place.toPoint());
        const int difference =
            std::max({std::abs(drawn.red() - color.red()), std::abs(drawn.green() - color.green()),
                      std::abs(drawn.blue() - color.blue())});
        QVERIFY2(difference <= 2, qPrintable(what + (' ' + drawn.name())));
    }
}

int main(int argc, char** argv) {
    return runTest<EveryScreenTest>(argc, argv);
}

#include "every_screen_test.moc"
