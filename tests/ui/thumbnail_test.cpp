#include "tests/app/hand_cranked.h"
#include "tests/support/photo_catalogue.h"
#include "tests/ui/window_test.h"
#include "ui/thumbnails/photo_thumbnail.h"
#include "ui/thumbnails/thumbnail_loader.h"

#include <QByteArray>
#include <QColor>
#include <QFile>
#include <QImage>
#include <QQmlComponent>
#include <QQmlEngine>

#include <memory>
#include <optional>
#include <string>
#include <tuple>
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
    void drawsTheIconForTheSizeOfItsItem();
    void limitsAndClearsItsCache();

private:
    PhotoThumbnail* makeTile(const QByteArray& uuid, bool isLarge = false);
    static QByteArray id(const QByteArray& uuid) { return uuid + "/L0/001"; }
    void runAll();
    QColor color(int x = 48, int y = 48) const { return window()->grabWindow().pixelColor(x, y); }

    HandCranked m_jobs;
    std::optional<CatalogueWriter> m_catalogue;
    int m_reads = 0; ///< of the library
};

const std::string originals = std::string(CatalogueWriter::folder) + "/originals/A/";

void ThumbnailTest::init() {
    WindowTest::init();
    m_catalogue.emplace(*m_disk);
    m_disk->make(originals);
    for (const char* uuid : {"A", "B", "C", "D", "E", "F"}) {
        m_catalogue->add({.uuid = uuid});
        QImage image(300, 200, QImage::Format_RGB32);
        image.fill(*uuid == 'B' ? Qt::green : *uuid == 'C' ? Qt::blue : Qt::red);
        QVERIFY(image.save(QString::fromStdString(m_disk->host(originals + uuid + ".jpeg")), "png"));
    }
    m_jobs = {};
    const auto status = [this](const platform::Disk&) {
        ++m_reads;
        return platform::PhotoAuthorization::authorized;
    };
    open(smallest, m_jobs.executor(), {status, {}});
    runAll();
    m_reads = 0;
}

PhotoThumbnail* ThumbnailTest::makeTile(const QByteArray& uuid, bool isLarge) {
    QQmlComponent component(qmlEngine(window()));
    component.setData("import QtQuick\nimport Lumvale\n"
                      "Rectangle { id: tile; property var bytes; property bool isLarge\n"
                      "width: 96; height: 96; z: 100; color: 'black'\n"
                      "PhotoThumbnail { anchors.fill: parent; assetID: tile.bytes; isLarge: tile.isLarge } }",
                      QUrl());
    QObject* tile =
        component.createWithInitialProperties({{"bytes", id(uuid)},
                                               {"isLarge", isLarge},
                                               {"parent", QVariant::fromValue(window()->contentItem())}});
    tile->setParent(window()->contentItem());
    return tile->findChild<PhotoThumbnail*>();
}

void ThumbnailTest::runAll() {
    while (!m_jobs.isIdle())
        m_jobs.run();
}

void ThumbnailTest::distinguishesLoadedInCloudAndBroken() {
    m_catalogue->add({.uuid = "CLOUD"});
    m_catalogue->add({.uuid = "TEXT"});
    m_disk->write(originals + "TEXT.jpeg", "text");
    const std::tuple<const char*, bool, bool> cases[]{
        {"A", true, false}, {"CLOUD", false, true}, {"TEXT", false, false}};
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
        const PhotoThumbnail* preview = makeTile(uuid, true);
        QVERIFY(!preview->isMissing());
        runAll();
        QVERIFY2(preview->isLoaded() == isLoaded && preview->isMissing() != isLoaded, uuid);
        QVERIFY2(preview->iCloudOnly() == isInCloud, uuid);
    }
}

void ThumbnailTest::drawsThePictureOfItsCurrentAsset() {
    PhotoThumbnail* tile = makeTile("A");
    QCOMPARE(color(), QColor(Qt::black));
    runAll();
    QCOMPARE(color(), QColor(Qt::red));
    QCOMPARE(color(0, 48), QColor(Qt::red));
    QCOMPARE(color(0, 0), QColor(Qt::black)); // round corner
    tile->setAssetID(id("B"));
    m_jobs.runBackground();
    tile->setAssetID(id("C"));
    m_jobs.publish();
    QVERIFY(!tile->isLoaded());
    runAll();
    QCOMPARE(color(), QColor(Qt::blue));
    // The whole picture, from a rendition where the original cannot be decoded.
    const std::string renditions = std::string(CatalogueWriter::folder) + "/resources/derivatives/A/";
    m_disk->make(renditions);
    QVERIFY(QFile::copy(QString::fromStdString(m_disk->host(originals + "B.jpeg")),
                        QString::fromStdString(m_disk->host(renditions + "A_1_c.jpeg"))));
    for (const QColor expected : {Qt::red, Qt::green}) {
        makeTile("A", true);
        runAll();
        QCOMPARE(color(), expected);
        QCOMPARE(color(48, 8), QColor(Qt::black));
        m_disk->write(originals + "A.jpeg", "text");
    }
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

void ThumbnailTest::drawsTheIconForTheSizeOfItsItem() {
    std::string blocks;
    for (const auto& [type, side, fill] : {std::tuple("ic11", 32, Qt::red), {"ic12", 64, Qt::green}}) {
        QImage image(side, side, QImage::Format_RGB32);
        image.fill(fill);
        QVERIFY(image.save(QString::fromStdString(m_disk->host("~/icon")), "png"));
        const std::string png = m_disk->read("~/icon");
        blocks += type + std::string{0, 0, 0, static_cast<char>(png.size() + 8)} + png;
    }
    m_disk->write("/Applications/A.app/Contents/Resources/a.icns", "icns0000" + blocks);
    m_disk->write("/Applications/A.app/Contents/Info.plist",
                  "<plist><dict><key>CFBundleIconFile</key><string>a</string></dict></plist>");
    QQmlComponent component(qmlEngine(window()));
    component.setData("import QtQuick\nimport Lumvale\nAppIcon { width: 32; height: 32; z: 100 }", QUrl());
    const std::unique_ptr<QObject> icon(
        component.createWithInitialProperties({{"bundle", QByteArray("/Applications/A.app")},
                                               {"parent", QVariant::fromValue(window()->contentItem())}}));
    const auto isPlaceholderShown = [&icon] {
        return icon->findChild<QQuickItem*>("iconPlaceholder")->isVisible();
    };
    QVERIFY(isPlaceholderShown());
    runAll();
    QVERIFY(!isPlaceholderShown());
    QCOMPARE(color(16, 16), QColor(Qt::red));
    icon->setProperty("width", 48);
    icon->setProperty("height", 48);
    runAll();
    QCOMPARE(color(16, 16), QColor(Qt::green));
    icon->setProperty("bundle", QByteArray("/Applications/B.app"));
    runAll();
    QVERIFY(isPlaceholderShown());
}

void ThumbnailTest::limitsAndClearsItsCache() {
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
    ThumbnailLoader::create(qmlEngine(window()))->clear(); // also drops results that are under way
    m_jobs.publish();
    QVERIFY(!tile->isLoaded());
    QVERIFY(!makeTile("M249")->isLoaded());
    runAll();
    QVERIFY(tile->isLoaded());
}

int main(int argc, char** argv) {
    return runTest<ThumbnailTest>(argc, argv);
}

#include "thumbnail_test.moc"
