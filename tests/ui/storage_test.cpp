#include "app/history/history_store.h"
#include "app/i18n/localizer.h"
#include "app/models/background.h"
#include "tests/support/temporary_disk.h"
#include "tests/ui/driver.h"
#include "ui/shell/lumvale_window.h"

#include <QAccessible>
#include <QColor>
#include <QCoreApplication>
#include <QGuiApplication>
#include <QTest>

#include <algorithm>
#include <cmath>
#include <memory>
#include <optional>
#include <string>
#include <utility>
#include <vector>

namespace {

QString translated(const char* key) {
    return tr(QLatin1String(key));
}

bool isSelected(const QQuickItem* item) {
    return item->property("isSelected").toBool();
}

bool isLike(const QColor& a, const QColor& b) {
    return std::abs(a.red() - b.red()) + std::abs(a.green() - b.green()) + std::abs(a.blue() - b.blue()) < 30;
}

QString nameOf(const QQuickItem* item) {
    return item ? item->property("name").toString() : QString();
}

} // namespace

/// Where the space goes, as the user sees and asks it: the real window, clicks and keys, real files.
class StorageTest : public QObject {
    Q_OBJECT

private Q_SLOTS:
    void init();
    void cleanup();

    void opensAtOnceAndFillsLater();
    void saysWhenThereIsNothing();
    void selectsInMapAndRowsAlike();
    void isHitAtEveryPoint();
    void isWalkedByKeys();
    void showsNoRingToWhoClicks();
    void tellsAScreenReaderWhatIsSeen();
    void hasWholeWordsOrNoneOnItsTiles();
    void followsTheLanguageAndCutsNothing_data();
    void followsTheLanguageAndCutsNothing();

private:
    void openSheet(); ///< its entries are still computed
    void fillSheet(); ///< now they are there
    void runHeld();
    std::vector<QQuickItem*> rows() const;
    std::vector<QQuickItem*> tiles() const { return m_driver->items("tile"); }
    QQuickItem* tile(const char* name) const;
    QStringList selected() const; ///< the names of what is selected in sight, tiles first

    std::unique_ptr<TemporaryDisk> m_disk;
    std::unique_ptr<HistoryStore> m_history;
    std::vector<platform::Executor::Job> m_held;
    std::unique_ptr<LumvaleWindow> m_lumvale;
    std::optional<Driver> m_driver;
};

void StorageTest::init() {
    Localizer::shared().setLanguage(AppLanguage::en);
    m_disk = std::make_unique<TemporaryDisk>(TemporaryDisk::Where::inMemory);
    m_history = std::make_unique<HistoryStore>(m_disk->disk());
}

void StorageTest::cleanup() {
    m_driver.reset();
    m_lumvale.reset();
    m_held.clear();
    m_history.reset();
    m_disk.reset();
}

void StorageTest::openSheet() {
    const platform::Executor executor{
        .background = [this](platform::Executor::Job job) { m_held.push_back(std::move(job)); },
        .interfaceThread = qtExecutor().interfaceThread};
    m_lumvale = std::make_unique<LumvaleWindow>(m_disk->disk(), *m_history, executor);
    QQuickWindow* window = m_lumvale->window();
    QVERIFY(window);
    window->resize(820, 700);
    QVERIFY(QTest::qWaitForWindowExposed(window));
    QTRY_COMPARE(window->contentItem()->size(), QSizeF(820, 700));
    m_driver.emplace(*window);
    QVERIFY(!m_driver->isShown("storageButton")); // before the disk's health is known
    QVERIFY(m_driver->click("scanButton"));
    runHeld();
    QTRY_VERIFY(m_driver->isShown("storageButton"));
    (void)window->grabWindow(); // everything laid out
    QVERIFY(m_driver->click("storageButton"));
    QTRY_VERIFY(m_driver->isShown("storageTitle"));
}

void StorageTest::fillSheet() {
    runHeld();
    QTRY_VERIFY(!m_driver->isShown("storageLoading"));
    (void)m_lumvale->window()->grabWindow(); // everything laid out
}

void StorageTest::runHeld() {
    QVERIFY(!m_held.empty());
    for (platform::Executor::Job& job : std::exchange(m_held, {}))
        job();
}

std::vector<QQuickItem*> StorageTest::rows() const {
    std::vector<QQuickItem*> rows = m_driver->rows();
    std::erase_if(rows, [](const QQuickItem* row) { return !row->property("share").isValid(); });
    return rows;
}

QQuickItem* StorageTest::tile(const char* name) const {
    for (QQuickItem* tile : tiles())
        if (nameOf(tile) == QLatin1String(name))
            return tile;
    return nullptr;
}

QStringList StorageTest::selected() const {
    QStringList names;
    for (const auto& items : {tiles(), rows()})
        for (const QQuickItem* item : items)
            if (isSelected(item))
                names.append(nameOf(item));
    return names;
}

void StorageTest::opensAtOnceAndFillsLater() {
    m_disk->make({"~/Movies/film 8000", "~/Music/a 4000", "~/Pictures/b 4000", "~/Empty/", "~/.hidden/c 9000",
                  "~/file 9000", "/Applications/Foo.app/x 16000"});
    openSheet();
    QQuickWindow* window = m_lumvale->window();
    const QQuickItem* title = m_driver->item("storageTitle");
    QCOMPARE(m_driver->text("storageTitle"), translated("storage_breakdown_title"));
    QVERIFY(m_driver->isShown("storageSubtitle"));
    QCOMPARE(m_driver->text("storageLoading", "label"), translated("storage_breakdown_loading"));
    QVERIFY(!m_driver->isShown("storageMap") && !m_driver->isShown("storageEmpty"));
    // 480 by 620 in the middle, with 24 all round.
    const QPointF corner = title->mapToScene({0, 0});
    QCOMPARE(corner, QPointF((820 - 480) / 2 + 24, (700 - 620) / 2 + 24));

    fillSheet();
    QStringList names;
    for (const QQuickItem* row : rows())
        names.append(nameOf(row) + ' ' + row->property("size").toString());
    QCOMPARE(names, (QStringList{"Applications 16 KB", "Movies 8 KB", "Music 4 KB", "Pictures 4 KB"}));
    QCOMPARE(tiles().size(), rows().size());
    double area = 0;
    const double shares[] = {1, 0.5, 0.25, 0.25};
    for (std::size_t i = 0; i < rows().size(); ++i) {
        QQuickItem* tile = tiles()[i];
        const auto* bar = rows()[i]->findChild<QQuickItem*>("bar");
        const auto* swatch = rows()[i]->findChild<QQuickItem*>("swatch");
        QVERIFY(bar && swatch);
        QCOMPARE(nameOf(tile), nameOf(rows()[i]));
        QCOMPARE(bar->width(), shares[i] * bar->parentItem()->width());
        const auto color = tile->property("color").value<QColor>();
        QCOMPARE(swatch->property("color").value<QColor>(), color);
        QCOMPARE(bar->property("color").value<QColor>(), color);
        QCOMPARE(std::round(tile->width() * tile->height()), std::round(432 * 210 / 2.0 * shares[i]));
        area += tile->width() * tile->height();
        // And it is what is seen, once the sheet has faded in.
        const QPoint low = tile->mapToScene({tile->width() / 2, tile->height() - 3}).toPoint();
        QTRY_VERIFY(isLike(window->grabWindow().pixelColor(low), color));
    }
    QCOMPARE(std::round(area), 432.0 * 210);
    QCOMPARE(tiles()[0]->property("color").value<QColor>(), QColor::fromRgbF(0.18f, 0.95f, 0.78f));
    QCOMPARE(m_driver->text("storageHint"), translated("storage_breakdown_tap_hint"));

    // What was shown isn't, while it is computed anew; nothing stays selected.
    m_driver->click(*rows()[1]);
    QVERIFY(m_driver->click("closeButton"));
    QTRY_VERIFY(!m_driver->isShown("storageTitle"));
    QVERIFY(m_driver->click("storageButton"));
    QTRY_VERIFY(m_driver->isShown("storageLoading"));
    QVERIFY(!m_driver->isShown("storageMap"));
    fillSheet();
    QCOMPARE(selected(), QStringList());
}

void StorageTest::saysWhenThereIsNothing() {
    m_disk->make({"~/Empty/", "~/.hidden/c 9000"});
    openSheet();
    fillSheet();
    QVERIFY(m_driver->isShown("storageEmpty"));
    QCOMPARE(m_driver->text("storageEmpty"), translated("storage_breakdown_empty"));
    QVERIFY(!m_driver->isShown("storageMap") && !m_driver->isShown("storageHint"));
    QCOMPARE(m_driver->cutTexts().join("; "), QString());
}

void StorageTest::selectsInMapAndRowsAlike() {
    for (int i = 0; i < 20; ++i)
        m_disk->make("~/folder " + std::to_string(10 + i) + "/x " + std::to_string(40'000 - 1000 * i));
    openSheet();
    fillSheet();
    QCOMPARE(selected(), QStringList());

    m_driver->click(*m_driver->row("folder 11"));
    QCOMPARE(selected(), (QStringList{"folder 11", "folder 11"}));
    m_driver->click(*m_driver->row("folder 12"));
    QCOMPARE(selected(), (QStringList{"folder 12", "folder 12"}));
    m_driver->click(*m_driver->row("folder 12"));
    QCOMPARE(selected(), QStringList());

    // A tile's row comes into sight, whole, and another tap changes nothing.
    const auto isWholeInSight = [this](const char* name) {
        QQuickItem* list = m_driver->item("storageRows");
        const QQuickItem* row = m_driver->row(name);
        return row && list->contains(row->mapToItem(list, QPointF(1, 1)))
               && list->contains(row->mapToItem(list, QPointF(1, row->height() - 1)));
    };
    QVERIFY(!isWholeInSight("folder 29"));
    for (int taps = 0; taps < 2; ++taps) {
        m_driver->click(*tile("folder 29"));
        QTRY_VERIFY(isWholeInSight("folder 29"));
        QCOMPARE(selected(), (QStringList{"folder 29", "folder 29"}));
    }
    m_driver->click(*tile("folder 10"));
    QTRY_VERIFY(isWholeInSight("folder 10"));
    QCOMPARE(selected(), (QStringList{"folder 10", "folder 10"}));
}

void StorageTest::isHitAtEveryPoint() {
    // From most of the map down to tiles of a few pixels.
    for (int i = 0; i < 14; ++i)
        m_disk->make("~/folder " + std::to_string(i) + "/x " + std::to_string(1LL << (30 - i)));
    openSheet();
    fillSheet();
    QQuickWindow* window = m_lumvale->window();
    int small = 0;
    for (QQuickItem* tile : tiles()) {
        const QRectF place = tile->mapRectToScene({0, 0, tile->width(), tile->height()});
        std::vector<QPoint> points;
        const bool isSmall = place.width() < 20 && place.height() < 20;
        small += isSmall;
        for (int x = static_cast<int>(place.left()) + 1; x < place.right(); ++x)
            for (int y = static_cast<int>(place.top()) + 1; y < place.bottom(); ++y)
                points.emplace_back(x, y);
        if (!isSmall) // the corners, which are round only to the eye
            points = {points.front(), points.back(), {points.front().x(), points.back().y()}};
        for (const QPoint point : points) {
            m_driver->click(*rows().front()); // another one, or none
            QTest::mouseClick(window, Qt::LeftButton, Qt::NoModifier, point);
            QVERIFY2(isSelected(tile), qPrintable(nameOf(tile)));
        }
    }
    QVERIFY(small >= 3);
}

void StorageTest::isWalkedByKeys() {
    for (int i = 0; i < 12; ++i)
        m_disk->make("~/folder " + std::to_string(10 + i) + "/x " + std::to_string(40'000 - 1000 * i));
    openSheet();
    m_driver->key(Qt::Key_Escape);
    QTRY_VERIFY(!m_driver->isShown("storageTitle"));
    QVERIFY(!m_held.empty());
    m_held.clear();

    m_driver->item("scanButton")->forceActiveFocus(Qt::TabFocusReason);
    m_driver->key(Qt::Key_Tab);
    QVERIFY(m_driver->item("storageButton")->hasActiveFocus());
    m_driver->key(Qt::Key_Return);
    QTRY_VERIFY(m_driver->isShown("storageLoading"));
    QQuickItem* close = m_driver->item("closeButton");
    QTRY_VERIFY(close->hasActiveFocus() && close->property("visualFocus").toBool());
    fillSheet();
    QVERIFY(close->hasActiveFocus());

    const auto walked = [this] {
        for (const QQuickItem* tile : tiles())
            if (tile->hasActiveFocus() && tile->property("visualFocus").toBool())
                return nameOf(tile);
        return QString();
    };
    const auto current = [this] {
        for (const QQuickItem* row : rows())
            if (row->property("isCurrent").toBool())
                return nameOf(row);
        return QString();
    };
    m_driver->key(Qt::Key_Tab);
    QCOMPARE(walked(), "folder 10");
    for (const Qt::Key onward : {Qt::Key_Right, Qt::Key_Down, Qt::Key_Right})
        m_driver->key(onward);
    QCOMPARE(walked(), "folder 13");
    m_driver->key(Qt::Key_Left);
    m_driver->key(Qt::Key_Up);
    QCOMPARE(walked(), "folder 11");
    QCOMPARE(selected(), QStringList()); // walking chooses nothing
    m_driver->key(Qt::Key_Space);
    QCOMPARE(selected(), (QStringList{"folder 11", "folder 11"}));
    m_driver->key(Qt::Key_End);
    QCOMPARE(walked(), "folder 21");
    m_driver->key(Qt::Key_Right);
    QCOMPARE(walked(), "folder 21");
    m_driver->key(Qt::Key_Return);
    QTRY_COMPARE(selected(), (QStringList{"folder 21", "folder 21"}));
    m_driver->key(Qt::Key_Home);
    QCOMPARE(walked(), "folder 10");

    m_driver->key(Qt::Key_Tab);
    QVERIFY(m_driver->item("storageRows")->hasActiveFocus());
    QTRY_COMPARE(current(), "folder 21"); // where the selection had gone
    m_driver->key(Qt::Key_Return);
    QCOMPARE(selected(), QStringList());
    m_driver->key(Qt::Key_Home);
    QTRY_COMPARE(current(), "folder 10");
    m_driver->key(Qt::Key_Down);
    m_driver->key(Qt::Key_Space);
    QCOMPARE(selected(), (QStringList{"folder 11", "folder 11"}));
    m_driver->key(Qt::Key_PageDown);
    QTRY_VERIFY(current() > "folder 13");

    m_driver->key(Qt::Key_Tab);
    QVERIFY(close->hasActiveFocus());
    QTest::keyClick(m_lumvale->window(), Qt::Key_Backtab);
    QTest::keyClick(m_lumvale->window(), Qt::Key_Backtab);
    QCOMPARE(walked(), "folder 10"); // where it was left
    m_driver->key(Qt::Key_Escape);
    QTRY_VERIFY(!m_driver->isShown("storageTitle"));
    const QQuickItem* button = m_driver->item("storageButton");
    QTRY_VERIFY(button->hasActiveFocus() && button->property("visualFocus").toBool());

    // The next time it starts at the beginning again.
    m_driver->key(Qt::Key_Return);
    QTRY_VERIFY(close->hasActiveFocus() && close->property("visualFocus").toBool());
}

void StorageTest::showsNoRingToWhoClicks() {
    m_disk->make({"~/Movies/film 8000", "~/Music/a 4000"});
    openSheet();
    fillSheet();
    const auto isAnyRingShown = [this] {
        std::vector<QQuickItem*> controls = tiles();
        for (const char* name : {"closeButton", "storageButton"})
            if (QQuickItem* shown = m_driver->item(name))
                controls.push_back(shown);
        const auto listed = rows();
        return std::any_of(controls.begin(), controls.end(),
                           [](const QQuickItem* item) { return item->property("visualFocus").toBool(); })
               || std::any_of(listed.begin(), listed.end(),
                              [](const QQuickItem* row) { return row->property("isCurrent").toBool(); });
    };
    QVERIFY(!isAnyRingShown());
    m_driver->click(*tile("Movies"));
    QVERIFY(!isAnyRingShown());
    // The keys go on from where the pointer was.
    m_driver->key(Qt::Key_Right);
    QVERIFY(tile("Music")->hasActiveFocus() && isAnyRingShown());
    m_driver->click(*tile("Music"));
    m_driver->click(*m_driver->row("Movies"));
    QVERIFY(m_driver->item("storageRows")->hasActiveFocus() && !isAnyRingShown());
    m_driver->key(Qt::Key_Down);
    QTRY_VERIFY(m_driver->row("Music")->property("isCurrent").toBool());
    QVERIFY(m_driver->click("closeButton"));
    QTRY_VERIFY(!m_driver->isShown("storageTitle"));
    QVERIFY(m_driver->item("storageButton")->hasActiveFocus() && !isAnyRingShown());
}

void StorageTest::tellsAScreenReaderWhatIsSeen() {
    m_disk->make({"~/Movies/film 8000", "~/Music/a 4000"});
    openSheet();
    fillSheet();
    const auto told = [](QQuickItem* item) {
        return QAccessible::queryAccessibleInterface(item);
    };
    m_driver->click(*tile("Music"));
    for (QQuickItem* item :
         {tile("Movies"), tile("Music"), m_driver->row("Movies"), m_driver->row("Music")}) {
        QVERIFY(item && told(item));
        QCOMPARE(told(item)->role(), QAccessible::Button);
        QCOMPARE(told(item)->text(QAccessible::Name),
                 nameOf(item) + ", " + item->property("size").toString());
        QVERIFY(told(item)->state().selectable);
        QCOMPARE(told(item)->state().selected, nameOf(item) == "Music");
        QCOMPARE(told(item)->childCount(), 0); // and nothing is said twice
    }
    // Pressed by a screen reader, a row toggles as by hand.
    told(m_driver->row("Music"))->actionInterface()->doAction(QAccessibleActionInterface::pressAction());
    QCOMPARE(selected(), QStringList());
    QCOMPARE(told(m_driver->item("storageRows"))->role(), QAccessible::List);
    for (const char* named : {"storageMap", "storageRows"})
        QCOMPARE(told(m_driver->item(named))->text(QAccessible::Name), translated("storage_breakdown_title"));
    QCOMPARE(told(m_driver->item("closeButton"))->text(QAccessible::Name), translated("btn_cancel"));
}

void StorageTest::hasWholeWordsOrNoneOnItsTiles() {
    const struct {
        const char* name;
        const char* size;
    } folders[] = {
        {"Library", "84200"},         {"Movies", "61000"},    {"Pictures", "48300"},
        {"Documents", "23100"},       {"Downloads", "17600"}, {"Music", "12400"},
        {"Developer", "9800"},        {"Desktop", "4300"},    {"Virtual Machines", "2100"},
        {"Old things kept", "31200"}, {"Sites", "850"},       {"bin", "40"},
    };
    for (const auto& folder : folders)
        m_disk->make("~/" + std::string(folder.name) + "/x " + folder.size);
    m_disk->make("~/" + std::string(200, 'w') + "/x 5200");
    openSheet();
    fillSheet();
    int names = 0;
    int sizes = 0;
    for (QQuickItem* tile : tiles()) {
        const auto* name = tile->findChild<QQuickItem*>("tileName");
        const auto* size = tile->findChild<QQuickItem*>("tileSize");
        QVERIFY(name && size);
        names += name->isVisible();
        sizes += size->isVisible();
        const bool hasRoom = tile->width() > 46 && tile->height() > 30;
        const QString which = nameOf(tile);
        QVERIFY2(!name->isVisible() || hasRoom, qPrintable(which));
        QVERIFY2(!size->isVisible() || (name->isVisible() && tile->height() > 46), qPrintable(which));
        // Only what can't be set whole is missing where there is room.
        QVERIFY2(name->isVisible() || !hasRoom || which.size() > 20, qPrintable(which));
        const QRectF inside(0, 0, tile->width(), tile->height());
        for (const QQuickItem* text : {name, size}) {
            const QSizeF extent(text->property("contentWidth").toDouble(),
                                text->property("contentHeight").toDouble());
            QVERIFY2(!text->isVisible() || inside.contains(text->mapRectToItem(tile, {{0, 0}, extent})),
                     qPrintable(which));
        }
    }
    QVERIFY(names >= 6 && sizes >= 5 && names < static_cast<int>(tiles().size()));
    QCOMPARE(m_driver->cutTexts().join("; "), QString());
}

void StorageTest::followsTheLanguageAndCutsNothing_data() {
    QTest::addColumn<int>("language");
    for (const AppLanguage language : allAppLanguages)
        QTest::newRow(rawValue(language).toLatin1().constData()) << static_cast<int>(language);
}

void StorageTest::followsTheLanguageAndCutsNothing() {
    QFETCH(int, language);
    m_disk->make({"~/Movies/film 8000", "~/<b>bold/a 4000", "~/two\nlines/a 3000"});
    m_disk->make("~/" + std::string(200, 'w') + "/x 5200");
    const auto check = [this] {
        (void)m_lumvale->window()->grabWindow(); // everything laid out
        QCOMPARE(m_driver->cutTexts().join("; "), QString());
        QCOMPARE(m_driver->silentControls().join("; "), QString());
    };
    openSheet();
    Localizer::shared().setLanguageIndex(language);
    QCOMPARE(m_driver->text("storageLoading", "label"), translated("storage_breakdown_loading"));
    check();
    fillSheet();
    Localizer::shared().setLanguage(AppLanguage::en);
    check();
    Localizer::shared().setLanguageIndex(language);
    QCOMPARE(m_driver->text("storageTitle"), translated("storage_breakdown_title"));
    QCOMPARE(m_driver->text("storageSubtitle"), translated("storage_breakdown_subtitle"));
    QCOMPARE(m_driver->text("storageHint"), translated("storage_breakdown_tap_hint"));
    QCOMPARE(m_driver->text("storageButton"), translated("btn_storage_breakdown"));
    QCOMPARE(QAccessible::queryAccessibleInterface(m_driver->item("closeButton"))->text(QAccessible::Name),
             translated("btn_cancel"));
    check();
    QVERIFY(m_driver->row("<b>bold"));
}

int main(int argc, char** argv) {
    const OwnSettings settings;
    QGuiApplication application(argc, argv);
    QGuiApplication::setOrganizationName(QStringLiteral("Lumvale Tests"));
    QGuiApplication::setApplicationName(QStringLiteral("Tests"));
    QAccessible::setActive(true); // as with a screen reader
    StorageTest test;
    return QTest::qExec(&test, argc, argv);
}

#include "storage_test.moc"
