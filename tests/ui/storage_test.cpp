#include "tests/app/hand_cranked.h"
#include "tests/ui/window_test.h"

#include <QQmlComponent>
#include <QQmlEngine>

#include <cmath>
#include <string>
#include <vector>

/// The storage sheet in the real window, on real files.
class StorageTest : public WindowTest {
    Q_OBJECT

private Q_SLOTS:
    void init();

    void drawsEntriesAsTilesAndRows();
    void selectsTileAndRowTogether();
    void computesEntriesAgainWhenReopened();
    void breaksNoNameWithinAWord();

private:
    void openSheet(); ///< and computes its entries
    QQuickItem* tile(const char* name) const { return m_driver->itemInSight("tile", name); }
    QStringList selected() const; ///< names of the selected tiles, then of the selected rows in sight

    HandCranked m_jobs;
};

void StorageTest::init() {
    WindowTest::init();
    m_disk->make({"/Applications/Foo.app/x 16000", "~/Movies/film 8000", "~/Music/a 4000",
                  "~/Pictures/b 4000", "~/Empty/", "~/.hidden/c 9000", "~/file 9000"});
    for (int i = 10; i < 26; ++i)
        m_disk->make("~/folder " + std::to_string(i) + "/x " + std::to_string(100 - i));
    open(smallest, m_jobs.executor());
    QVERIFY(!m_driver->isShown("storageButton")); // before the disk's health is known
    QVERIFY(m_driver->click("scanButton"));
    m_jobs.run();
    QTRY_VERIFY(m_driver->isShown("storageButton"));
    layOut();
    openSheet();
}

void StorageTest::openSheet() {
    QVERIFY(m_driver->click("storageButton"));
    QTRY_COMPARE(m_driver->text("storageLoading", "label"), translated("storage_breakdown_loading"));
    QVERIFY(!m_driver->isShown("storageMap") && !m_driver->isShown("storageEmpty"));
    m_jobs.run();
    QTRY_VERIFY(!m_driver->isShown("storageLoading"));
    layOut();
}

QStringList StorageTest::selected() const {
    QStringList names;
    for (const auto& items : {m_driver->items("tile"), m_driver->rows()})
        for (const QQuickItem* item : items)
            if (item->property("isSelected").toBool())
                names.append(item->property("name").toString());
    return names;
}

void StorageTest::drawsEntriesAsTilesAndRows() {
    const std::vector<QQuickItem*> tiles = m_driver->items("tile");
    QCOMPARE(tiles.size(), 20u);
    const char* const entries[]{"Applications 16 KB", "Movies 8 KB", "Music 4 KB", "Pictures 4 KB"};
    const double shares[]{1, 0.5, 0.25, 0.25}; // of the largest
    const double largest = tiles[0]->width() * tiles[0]->height();
    for (std::size_t i = 0; i < 4; ++i) {
        QQuickItem* row = m_driver->rows().at(i);
        const auto* bar = row->findChild<QQuickItem*>("bar");
        QCOMPARE(bar->width(), shares[i] * bar->parentItem()->width());
        QCOMPARE(std::round(tiles[i]->width() * tiles[i]->height()), std::round(largest * shares[i]));
        for (QQuickItem* item : {tiles[i], row}) {
            QCOMPARE(Driver::texts(*item).join(' '), entries[i]);
            QCOMPARE(told(item)->role(), QAccessible::Button);
            QCOMPARE(told(item)->text(QAccessible::Name).remove(','), entries[i]);
        }
    }
}

void StorageTest::selectsTileAndRowTogether() {
    press(told(m_driver->row("Movies")));
    QVERIFY(told(m_driver->row("Movies"))->state().selected && told(tile("Movies"))->state().selected);
    m_driver->click(*m_driver->row("Music"));
    QCOMPARE(selected(), QStringList(2, "Music"));
    m_driver->click(*m_driver->row("Music"));
    QCOMPARE(selected(), QStringList());

    QVERIFY(!m_driver->row("folder 25"));
    const std::vector<QQuickItem*> tiles = m_driver->items("tile");
    for (const QQuickItem* tile : {tiles.back(), tiles.back(), tiles.front()}) {
        m_driver->click(*tile); // scrolls to the row; a second click changes nothing
        QTRY_COMPARE(selected(), QStringList(2, tile->property("name").toString()));
    }
    m_driver->key(Qt::Key_Right);
    QVERIFY(tile("Movies")->hasActiveFocus() && tile("Movies")->property("visualFocus").toBool());
}

void StorageTest::computesEntriesAgainWhenReopened() {
    QVERIFY(m_driver->click("closeButton"));
    QTRY_VERIFY(!m_driver->isShown("storageTitle"));
    for (const char* folder : {"/Applications", "~"})
        m_disk->setMode(folder, 0);
    openSheet();
    QVERIFY(m_driver->isShown("storageEmpty") && !m_driver->isShown("storageMap"));
}

void StorageTest::breaksNoNameWithinAWord() {
    QQmlComponent component(qmlEngine(window()));
    component.setData("import Lumvale\nStorageTile { size: '1 KB' }", QUrl());
    for (const QString name : {"Downloads", "Загрузки", "Donaudampfschifffahrt"}) {
        const std::unique_ptr<QObject> tile(
            component.createWithInitialProperties({{"name", name}, {"rect", QRectF()}}));
        const auto* text = tile->findChild<QQuickItem*>("tileName");
        for (int width = 47; width < 200; ++width) {
            tile->setProperty("rect", QRectF(0, 0, width, 100));
            QCOMPARE(text->property("lineCount").toInt(), 1);
            QVERIFY(text->property("contentWidth").toReal() <= text->width() && text->isVisible());
        }
        QVERIFY(!text->property("truncated").toBool());
    }
}

int main(int argc, char** argv) {
    return runTest<StorageTest>(argc, argv);
}

#include "storage_test.moc"
