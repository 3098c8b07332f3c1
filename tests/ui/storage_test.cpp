#include "tests/app/hand_cranked.h"
#include "tests/ui/window_test.h"

#include <cmath>
#include <string>
#include <vector>

namespace {

QString nameOf(const QQuickItem* item) {
    return item ? item->property("name").toString() : QString();
}

} // namespace

/// The storage sheet in the real window, on real files.
class StorageTest : public WindowTest {
    Q_OBJECT

private Q_SLOTS:
    void drawsEntriesAndComputesThemAgain();
    void selectsTileAndRowTogether();

private:
    void openSheet();                  ///< its entries are not computed yet
    void fillSheet();                  ///< computes the entries
    void makeFolders(int count) const; ///< "folder 10" and on, each smaller than the one before
    std::vector<QQuickItem*> rows() const;
    std::vector<QQuickItem*> tiles() const { return m_driver->items("tile"); }
    QQuickItem* tile(const char* name) const;
    QStringList selected() const; ///< names of the selected tiles, then of the selected rows in sight
    QString focusedTile() const;  ///< name of the tile that shows the focus ring

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

QString StorageTest::focusedTile() const {
    for (const QQuickItem* tile : tiles())
        if (tile->hasActiveFocus() && tile->property("visualFocus").toBool())
            return nameOf(tile);
    return {};
}

void StorageTest::drawsEntriesAndComputesThemAgain() {
    m_disk->make({"~/Movies/film 8000", "~/Music/a 4000", "~/Pictures/b 4000", "~/Empty/", "~/.hidden/c 9000",
                  "~/file 9000", "/Applications/Foo.app/x 16000"});
    openSheet();
    QCOMPARE(m_driver->text("storageLoading", "label"), translated("storage_breakdown_loading"));
    QVERIFY(!m_driver->isShown("storageMap") && !m_driver->isShown("storageEmpty"));
    fillSheet();
    const QStringList entries{"Applications 16 KB", "Movies 8 KB", "Music 4 KB", "Pictures 4 KB"};
    const double shares[]{1, 0.5, 0.25, 0.25}; // of the largest
    QCOMPARE(rows().size(), 4u);
    QCOMPARE(tiles().size(), 4u);
    const double largest = tiles()[0]->width() * tiles()[0]->height();
    for (int i = 0; i < 4; ++i) {
        QQuickItem* tile = tiles()[i];
        const auto* bar = rows()[i]->findChild<QQuickItem*>("bar");
        QCOMPARE(Driver::texts(*rows()[i]).join(' '), entries[i]);
        QCOMPARE(Driver::texts(*tile).join(' '), entries[i]);
        QCOMPARE(bar->width(), shares[i] * bar->parentItem()->width());
        QCOMPARE(std::round(tile->width() * tile->height()), std::round(largest * shares[i]));
        for (QQuickItem* item : {tile, rows()[i]}) {
            QCOMPARE(told(item)->role(), QAccessible::Button);
            QCOMPARE(told(item)->text(QAccessible::Name).remove(','), entries[i]);
        }
    }

    press(told(rows()[1]));
    QCOMPARE(selected(), QStringList(2, "Movies"));
    QVERIFY(told(rows()[1])->state().selected && told(tiles()[1])->state().selected);
    QVERIFY(m_driver->click("closeButton"));
    QTRY_VERIFY(!m_driver->isShown("storageTitle"));
    for (const char* folder : {"~/Movies", "~/Music", "~/Pictures", "/Applications"})
        m_disk->setMode(folder, 0);
    QVERIFY(m_driver->click("storageButton"));
    QTRY_VERIFY(m_driver->isShown("storageLoading"));
    QVERIFY(!m_driver->isShown("storageMap"));
    fillSheet();
    QVERIFY(m_driver->isShown("storageEmpty") && !m_driver->isShown("storageMap"));
}

void StorageTest::selectsTileAndRowTogether() {
    makeFolders(20);
    openSheet();
    fillSheet();
    for (const char* name : {"folder 11", "folder 12"}) {
        m_driver->click(*m_driver->row(name));
        QCOMPARE(selected(), QStringList(2, name));
    }
    m_driver->click(*m_driver->row("folder 12"));
    QCOMPARE(selected(), QStringList());

    QVERIFY(!m_driver->row("folder 29"));
    for (const char* name : {"folder 29", "folder 29", "folder 10"}) {
        m_driver->click(*tile(name)); // scrolls to the row; a second click changes nothing
        QTRY_COMPARE(selected(), QStringList(2, name));
    }
    m_driver->key(Qt::Key_Right);
    QCOMPARE(focusedTile(), "folder 11");
}

int main(int argc, char** argv) {
    return runTest<StorageTest>(argc, argv);
}

#include "storage_test.moc"
