#include "tests/app/hand_cranked.h"
#include "tests/support/photo_catalogue.h"
#include "tests/ui/window_test.h"
#include "ui/thumbnails/photo_thumbnail.h"
#include "ui/thumbnails/thumbnail_loader.h"

#include <QBuffer>
#include <QByteArray>
#include <QColor>
#include <QImage>
#include <QQmlComponent>
#include <QQmlEngine>

#include <atomic>
#include <optional>
#include <string>
#include <vector>

/// Thumbnails in the real window, from real files of a photo library; background jobs run when the test says
/// so.
class ThumbnailTest : public WindowTest {
    Q_OBJECT

private Q_SLOTS:
    void init();

    void distinguishesLoadedInCloudAndBroken();
    void drawsThePictureOfItsCurrentAsset();
    void loadsVisibleTilesFirstAndNoneWithoutATile();
    void limitsAndClearsItsCache();
    void survivesTheEndOfTheWindow();

private:
    void add(const std::string& uuid, const QColor& color = Qt::red); ///< a photo of one colour
    void openWindow(const platform::Executor& executor);
    PhotoThumbnail* makeTile(const QByteArray& uuid, int x = 20);
    static QByteArray id(const QByteArray& uuid) { return uuid + "/L0/001"; }
    void runAll();
    QColor colour(int x = 48, int y = 48) const { return window()->grabWindow().pixelColor(20 + x, 20 + y); }

    HandCranked m_jobs;
    std::optional<CatalogueWriter> m_catalogue;
    std::atomic<int> m_reads = 0; ///< of the library
};

const std::string library = CatalogueWriter::folder;

void ThumbnailTest::init() {
    WindowTest::init();
    m_catalogue.emplace(*m_disk);
    add("A");
    add("B", Qt::green);
    add("C", Qt::blue);
    for (const char* uuid : {"D", "E", "F"})
        add(uuid);
    m_jobs = {};
    openWindow(m_jobs.executor());
}

void ThumbnailTest::add(const std::string& uuid, const QColor& color) {
    m_catalogue->add({.uuid = uuid});
    QImage image(300, 200, QImage::Format_RGB32);
    image.fill(color);
    QBuffer buffer;
    QVERIFY(buffer.open(QIODevice::WriteOnly) && image.save(&buffer, "png"));
    m_disk->write(library + "/originals/A/" + uuid + ".jpeg", buffer.data().toStdString());
}

void ThumbnailTest::openWindow(const platform::Executor& executor) {
    const auto answer = [this](const platform::Disk&) {
        ++m_reads;
        return platform::PhotoAuthorization::authorized;
    };
    open(smallest, executor, {answer, answer});
    runAll();
    m_reads = 0;
}

PhotoThumbnail* ThumbnailTest::makeTile(const QByteArray& uuid, int x) {
    QQmlComponent component(qmlEngine(window()));
    component.setData("import QtQuick\nimport Lumvale\n"
                      "Rectangle { id: tile; property var bytes; width: 96; height: 96; y: 20; z: 100\n"
                      "color: 'black'; PhotoThumbnail { anchors.fill: parent; assetID: tile.bytes } }",
                      QUrl());
    QObject* tile = component.createWithInitialProperties(
        {{"bytes", id(uuid)}, {"parent", QVariant::fromValue(window()->contentItem())}, {"x", x}});
    tile->setParent(window()->contentItem());
    return tile->findChild<PhotoThumbnail*>();
}

void ThumbnailTest::runAll() {
    while (!m_jobs.isIdle())
        m_jobs.run();
}

void ThumbnailTest::distinguishesLoadedInCloudAndBroken() {
    const std::string rendition = library + "/resources/derivatives/S/SMALL_1_105_c.jpeg";
    m_disk->make(library + "/resources/derivatives/S/");
    m_disk->write(rendition, m_disk->read(library + "/originals/A/A.jpeg"));
    for (const char* uuid : {"SMALL", "CLOUD", "TEXT"})
        m_catalogue->add({.uuid = uuid});
    for (const char* broken : {"SMALL", "TEXT"})
        m_disk->write(library + "/originals/A/" + broken + ".jpeg", "text");
    const struct {
        const char* uuid;
        bool isLoaded;
        bool isInCloud;
    } cases[]{{"A", true, false},
              {"SMALL", true, false}, // its rendition; the original is broken
              {"CLOUD", false, true},
              {"TEXT", false, false},
              {"UNKNOWN", false, false}};
    for (const auto& [uuid, isLoaded, isInCloud] : cases) {
        m_reads = 0;
        const PhotoThumbnail* tile = makeTile(uuid);
        runAll();
        for (const PhotoThumbnail* shown : {tile, static_cast<const PhotoThumbnail*>(makeTile(uuid))}) {
            QVERIFY2(shown->isLoaded() == isLoaded, uuid);
            QVERIFY2(shown->iCloudOnly() == isInCloud, uuid);
        }
        QVERIFY(m_jobs.isIdle());
        QCOMPARE(m_reads, 1); // the second tile is answered from the cache
    }
}

void ThumbnailTest::drawsThePictureOfItsCurrentAsset() {
    PhotoThumbnail* tile = makeTile("A");
    QCOMPARE(colour(), QColor(Qt::black));
    runAll();
    QCOMPARE(colour(), QColor(Qt::red));
    QCOMPARE(colour(0, 48), QColor(Qt::red));
    QCOMPARE(colour(0, 0), QColor(Qt::black)); // round corner
    tile->setAssetID(id("B"));
    m_jobs.runBackground();
    tile->setAssetID(id("C"));
    m_jobs.publish();
    QVERIFY(!tile->isLoaded());
    runAll();
    QCOMPARE(colour(), QColor(Qt::blue));
}

void ThumbnailTest::loadsVisibleTilesFirstAndNoneWithoutATile() {
    std::vector<PhotoThumbnail*> tiles;
    for (const char* uuid : {"A", "B", "C", "D", "E", "F"})
        tiles.push_back(makeTile(uuid));
    const auto loaded = [&tiles] {
        QString names;
        for (const PhotoThumbnail* tile : tiles)
            if (tile->isLoaded())
                names += tile->assetID().left(1);
        return names;
    };
    delete makeTile("NONE")->parentItem();
    tiles[4]->parentItem()->setVisible(false);
    for (const char* next : {"AB", "ABDF", "ABCDF"}) { // the first two were under way
        m_jobs.run();
        QCOMPARE(loaded(), next);
    }
    tiles[4]->parentItem()->setVisible(true);
    runAll();
    QCOMPARE(loaded(), "ABCDEF");
    QCOMPARE(m_reads, 6);
}

void ThumbnailTest::limitsAndClearsItsCache() {
    ThumbnailLoader& loader = *ThumbnailLoader::create(qmlEngine(window()));
    for (int i = 0; i < 250; ++i) {
        const std::string uuid = "M" + std::to_string(i);
        m_catalogue->add({.uuid = uuid, .file = "'A.jpeg'"});
        delete makeTile(QByteArray::fromStdString(uuid))->parentItem();
        runAll();
    }
    QVERIFY(makeTile("M249")->isLoaded());
    QVERIFY(!makeTile("M0")->isLoaded());
    runAll();

    const PhotoThumbnail* tile = makeTile("A");
    m_jobs.runBackground();
    loader.clear(); // also drops results that are under way
    m_jobs.publish();
    QVERIFY(!tile->isLoaded());
    QVERIFY(!makeTile("M249")->isLoaded());
    runAll();
    QVERIFY(tile->isLoaded());
}

void ThumbnailTest::survivesTheEndOfTheWindow() {
    makeTile("A");
    m_jobs.runBackground();
    close();
    m_jobs.publish();
    QVERIFY(m_jobs.isIdle());
    for (int i = 0; i < 3; ++i) { // real threads, at any point of their work
        openWindow(qtExecutor());
        makeTile("A");
        const PhotoThumbnail* last = makeTile("B");
        if (i == 1)
            QTRY_VERIFY_WITH_TIMEOUT(last->isLoaded(), 60'000);
        close();
    }
}

int main(int argc, char** argv) {
    return runTest<ThumbnailTest>(argc, argv);
}

#include "thumbnail_test.moc"
