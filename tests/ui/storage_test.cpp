#include "tests/app/hand_cranked.h"
#include "tests/ui/window_test.h"

#include <QColor>

#include <algorithm>
#include <cmath>
#include <string>
#include <vector>

namespace {

bool isLike(const QColor& a, const QColor& b) {
    return std::abs(a.red() - b.red()) + std::abs(a.green() - b.green()) + std::abs(a.blue() - b.blue()) < 30;
}

QString nameOf(const QQuickItem* item) {
    return item ? item->property("name").toString() : QString();
}

} // namespace

/// Where the space goes, as the user sees and asks it: the real window, clicks and keys, real files.
class StorageTest : public WindowTest {
    Q_OBJECT

private Q_SLOTS:
    void opensAtOnceAndFillsLater();
    void saysWhenThereIsNothing();
    void selectsInMapAndRowsAlike();
    void isHitAtEveryPoint();
    void isWalkedByKeys();
    void tellsAScreenReaderWhatIsSeen();
    void hasWholeWordsOrNoneOnItsTiles();

private:
    void openSheet();                  ///< its entries are still computed
    void fillSheet();                  ///< now they are there
    void makeFolders(int count) const; ///< "folder 10" and on, each a little smaller
    std::vector<QQuickItem*> rows() const;
    std::vector<QQuickItem*> tiles() const { return m_driver->items("tile"); }
    QQuickItem* tile(const char* name) const;
    QStringList selected() const; ///< the names of what is selected in sight, tiles first
    QString walked() const;       ///< the name of the tile that is shown to have the keyboard
    bool isRingShown() const;     ///< where the keyboard is, anywhere

    HandCranked m_jobs;
};

void StorageTest::openSheet() {
    m_jobs = {};
    open(smallest, m_jobs.executor());
    QVERIFY(!m_driver->isShown("storageButton")); // before the disk's health is known
    QVERIFY(m_driver->click("scanButton"));
    m_jobs.run();
    QTRY_VERIFY(m_driver->isShown("storageButton"));
    layOut();
    QVERIFY(m_driver->click("storageButton"));
    QTRY_VERIFY(m_driver->isShown("storageTitle"));
}

void StorageTest::fillSheet() {
    QVERIFY(!m_jobs.isIdle());
    m_jobs.run();
    QTRY_VERIFY(!m_driver->isShown("storageLoading"));
    layOut();
}

void StorageTest::makeFolders(int count) const {
    for (int i = 0; i < count; ++i)
        m_disk->make("~/folder " + std::to_string(10 + i) + "/x " + std::to_string(40'000 - 1000 * i));
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
            if (item->property("isSelected").toBool())
                names.append(nameOf(item));
    return names;
}

QString StorageTest::walked() const {
    for (const QQuickItem* tile : tiles())
        if (tile->hasActiveFocus() && tile->property("visualFocus").toBool())
            return nameOf(tile);
    return {};
}

bool StorageTest::isRingShown() const {
    return !walked().isEmpty() || !current().isEmpty()
           || m_driver->text("closeButton", "visualFocus") == "true"
           || m_driver->text("storageButton", "visualFocus") == "true";
}

void StorageTest::opensAtOnceAndFillsLater() {
    m_disk->make({"~/Movies/film 8000", "~/Music/a 4000", "~/Pictures/b 4000", "~/Empty/", "~/.hidden/c 9000",
                  "~/file 9000", "/Applications/Foo.app/x 16000"});
    openSheet();
    QCOMPARE(m_driver->text("storageLoading", "label"), translated("storage_breakdown_loading"));
    QVERIFY(!m_driver->isShown("storageMap") && !m_driver->isShown("storageEmpty"));
    fillSheet();
    QStringList names;
    for (const QQuickItem* row : rows())
        names.append(nameOf(row) + ' ' + row->property("size").toString());
    QCOMPARE(names, (QStringList{"Applications 16 KB", "Movies 8 KB", "Music 4 KB", "Pictures 4 KB"}));
    QCOMPARE(tiles().size(), rows().size());
    const double map = m_driver->item("storageMap")->width() * m_driver->item("storageMap")->height();
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
        QCOMPARE(std::round(tile->width() * tile->height()), std::round(map / 2 * shares[i]));
        // And it is what is seen, once the sheet has faded in.
        const QPoint low = tile->mapToScene({tile->width() / 2, tile->height() - 3}).toPoint();
        QTRY_VERIFY(isLike(window()->grabWindow().pixelColor(low), color));
    }
    QVERIFY(m_driver->isShown("storageHint"));

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
    QVERIFY(!m_driver->isShown("storageMap") && !m_driver->isShown("storageHint"));
}

void StorageTest::selectsInMapAndRowsAlike() {
    makeFolders(20);
    openSheet();
    fillSheet();
    for (const char* name : {"folder 11", "folder 12"}) {
        m_driver->click(*m_driver->row(name));
        QCOMPARE(selected(), QStringList(2, name));
    }
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
    for (const char* name : {"folder 29", "folder 29", "folder 10"}) {
        m_driver->click(*tile(name));
        QTRY_VERIFY(isWholeInSight(name));
        QCOMPARE(selected(), QStringList(2, name));
    }

    // The keys go on from where the pointer was; who works by clicks is shown no ring.
    QVERIFY(!isRingShown());
    m_driver->key(Qt::Key_Right);
    QCOMPARE(walked(), "folder 11");
    m_driver->click(*tile("folder 12"));
    QVERIFY(!isRingShown());
    m_driver->click(*m_driver->row("folder 11"));
    QVERIFY(hasFocus("storageRows") && !isRingShown());
    m_driver->key(Qt::Key_Down);
    QTRY_COMPARE(current(), "folder 12");
    QVERIFY(m_driver->click("closeButton"));
    QTRY_VERIFY(!m_driver->isShown("storageTitle"));
    QVERIFY(hasFocus("storageButton") && !isRingShown());
}

void StorageTest::isHitAtEveryPoint() {
    // From most of the map down to tiles of a few pixels.
    for (int i = 0; i < 14; ++i)
        m_disk->make("~/folder " + std::to_string(i) + "/x " + std::to_string(1LL << (30 - i)));
    openSheet();
    fillSheet();
    for (const QQuickItem* tile : tiles()) {
        const QRectF place = Driver::place(*tile);
        const int left = static_cast<int>(place.left()) + 1;
        const int top = static_cast<int>(place.top()) + 1;
        const int right = static_cast<int>(std::ceil(place.right())) - 1;
        const int bottom = static_cast<int>(std::ceil(place.bottom())) - 1;
        // The corners are round only to the eye.
        for (const QPoint point :
             {QPoint(left, top), QPoint(right, top), QPoint(left, bottom), QPoint(right, bottom)}) {
            m_driver->click(*rows().front()); // another one, or none
            QTest::mouseClick(window(), Qt::LeftButton, Qt::NoModifier, point);
            QVERIFY2(selected().contains(nameOf(tile)), qPrintable(nameOf(tile)));
        }
    }
    QVERIFY(tiles().back()->width() < 12 && tiles().back()->height() < 12);
}

void StorageTest::isWalkedByKeys() {
    makeFolders(12);
    openSheet();
    m_driver->key(Qt::Key_Escape);
    QTRY_VERIFY(!m_driver->isShown("storageTitle"));
    m_jobs = {}; // what is shown then is computed anew
    m_driver->item("scanButton")->forceActiveFocus(Qt::TabFocusReason);
    m_driver->key(Qt::Key_Tab);
    m_driver->key(Qt::Key_Return);
    QTRY_VERIFY(m_driver->isShown("storageLoading"));
    const QQuickItem* close = m_driver->item("closeButton");
    QTRY_VERIFY(close->hasActiveFocus() && close->property("visualFocus").toBool());
    fillSheet();
    QVERIFY(close->hasActiveFocus());

    const std::pair<Qt::Key, const char*> walks[] = {
        {Qt::Key_Tab, "folder 10"},  {Qt::Key_Right, "folder 11"}, {Qt::Key_Down, "folder 12"},
        {Qt::Key_Left, "folder 11"}, {Qt::Key_Up, "folder 10"},    {Qt::Key_End, "folder 21"},
        {Qt::Key_Right, "folder 21"}};
    for (const auto& [key, tile] : walks) {
        m_driver->key(key);
        QCOMPARE(walked(), tile);
    }
    QCOMPARE(selected(), QStringList()); // walking chooses nothing
    m_driver->key(Qt::Key_Space);
    QTRY_COMPARE(selected(), QStringList(2, "folder 21"));
    m_driver->key(Qt::Key_Home);
    m_driver->key(Qt::Key_Return);
    QTRY_COMPARE(selected(), QStringList(2, "folder 10"));

    m_driver->key(Qt::Key_Tab); // the whole map is one stop
    QVERIFY(hasFocus("storageRows"));
    QTRY_COMPARE(current(), "folder 10"); // where the selection had gone
    m_driver->key(Qt::Key_Return);
    QCOMPARE(selected(), QStringList());
    m_driver->key(Qt::Key_Down);
    m_driver->key(Qt::Key_Space);
    QCOMPARE(selected(), QStringList(2, "folder 11"));
    m_driver->key(Qt::Key_PageDown);
    QTRY_VERIFY(current() > "folder 13");
    m_driver->key(Qt::Key_Tab);
    QVERIFY(close->hasActiveFocus());
    m_driver->key(Qt::Key_Backtab);
    m_driver->key(Qt::Key_Backtab);
    QCOMPARE(walked(), "folder 10"); // where it was left

    // The next time it starts at the beginning again.
    m_driver->key(Qt::Key_Escape);
    QTRY_VERIFY(hasFocus("storageButton") && m_driver->text("storageButton", "visualFocus") == "true");
    m_driver->key(Qt::Key_Return);
    QTRY_VERIFY(close->hasActiveFocus() && close->property("visualFocus").toBool());
}

void StorageTest::tellsAScreenReaderWhatIsSeen() {
    m_disk->make({"~/Movies/film 8000", "~/Music/a 4000"});
    openSheet();
    fillSheet();
    m_driver->click(*tile("Music"));
    for (QQuickItem* item :
         {tile("Movies"), tile("Music"), m_driver->row("Movies"), m_driver->row("Music")}) {
        QVERIFY(item);
        auto* told = QAccessible::queryAccessibleInterface(item);
        QCOMPARE(told->role(), QAccessible::Button);
        QCOMPARE(told->text(QAccessible::Name), nameOf(item) + ", " + item->property("size").toString());
        QVERIFY(told->state().selectable);
        QCOMPARE(told->state().selected, nameOf(item) == "Music");
        QCOMPARE(told->childCount(), 0); // and nothing is said twice
    }
    // Pressed by a screen reader, a row toggles as by hand.
    QAccessible::queryAccessibleInterface(m_driver->row("Music"))
        ->actionInterface()
        ->doAction(QAccessibleActionInterface::pressAction());
    QCOMPARE(selected(), QStringList());
    QCOMPARE(told("storageRows")->role(), QAccessible::List);
}

void StorageTest::hasWholeWordsOrNoneOnItsTiles() {
    m_disk->make({"~/Library/x 84200", "~/Movies/x 61000", "~/Pictures/x 48300", "~/Documents/x 23100",
                  "~/Downloads/x 17600", "~/Music/x 12400", "~/Developer/x 9800", "~/Desktop/x 4300",
                  "~/Virtual Machines/x 2100", "~/Old things kept/x 31200", "~/Sites/x 850", "~/bin/x 40"});
    m_disk->make("~/" + std::string(200, 'w') + "/x 5200");
    openSheet();
    fillSheet();
    int names = 0;
    int sizes = 0;
    for (QQuickItem* tile : tiles()) {
        const QString which = nameOf(tile);
        const QRectF inside(0, 0, tile->width(), tile->height());
        for (const char* part : {"tileName", "tileSize"}) {
            const auto* text = tile->findChild<QQuickItem*>(part);
            const QSizeF extent(text->property("contentWidth").toDouble(),
                                text->property("contentHeight").toDouble());
            QVERIFY2(!text->isVisible() || inside.contains(text->mapRectToItem(tile, {{0, 0}, extent})),
                     qPrintable(which));
        }
        const bool hasName = tile->findChild<QQuickItem*>("tileName")->isVisible();
        const bool hasSize = tile->findChild<QQuickItem*>("tileSize")->isVisible();
        names += hasName;
        sizes += hasSize;
        QVERIFY2(hasName || !hasSize, qPrintable(which));
        // Only what can't be set whole is missing where there is room.
        const bool hasRoom = tile->width() > 46 && tile->height() > 30;
        QVERIFY2(hasName == hasRoom || which.size() > 20, qPrintable(which));
    }
    QVERIFY(names >= 6 && sizes >= 5 && names < static_cast<int>(tiles().size()));
    QCOMPARE(m_driver->cutTexts().join("; "), QString());
}

int main(int argc, char** argv) {
    return runTest<StorageTest>(argc, argv);
}

#include "storage_test.moc"
