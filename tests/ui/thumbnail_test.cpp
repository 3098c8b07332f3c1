#include "tests/app/hand_cranked.h"
#include "tests/support/photo_catalogue.h"
#include "tests/ui/window_test.h"
#include "ui/thumbnails/photo_thumbnail.h"
#include "ui/thumbnails/thumbnail_decoder.h"
#include "ui/thumbnails/thumbnail_loader.h"

#include <QBuffer>
#include <QByteArray>
#include <QColor>
#include <QFile>
#include <QImage>
#include <QQmlComponent>
#include <QQmlEngine>
#include <QSignalSpy>

#include <atomic>
#include <initializer_list>
#include <memory>
#include <optional>
#include <string>
#include <utility>
#include <vector>

/// Tiles with pictures of a photo library: the real window, real files, and jobs that run when told to.
class ThumbnailTest : public WindowTest {
    Q_OBJECT

private Q_SLOTS:
    void saysWhatThereIs_data();
    void saysWhatThereIs();
    void drawsThePicture();
    void isAsRoundAsOtherTiles();
    void showsOnlyWhatItStandsFor();
    void loadsWhatIsInSightFirst();
    void loadsNothingForNobody();
    void remembersSomeAndForgetsWhenTold();
    void tellsBytesApart();
    void mayGoMeanwhile();

private:
    using Picture = std::pair<std::string, QColor>;

    /// A library with these pictures on the disk, and the window.
    void openLibrary(std::initializer_list<Picture> pictures);
    void openWindow(const platform::Executor& executor);
    void writePicture(const std::string& file, const QImage& image) const;
    void writePicture(const std::string& file, const QColor& color) const;

    PhotoThumbnail* makeTile(const QByteArray& uuid, QPoint place = {20, 20});
    static QByteArray id(const QByteArray& uuid) { return uuid + "/L0/001"; }
    ThumbnailLoader* loader() const { return ThumbnailLoader::create(qmlEngine(window())); }
    void runAll();

    HandCranked m_jobs;
    std::optional<CatalogueWriter> m_catalogue;
    std::atomic<int> m_looks = 0; ///< into the library
};

void ThumbnailTest::writePicture(const std::string& file, const QImage& image) const {
    QBuffer buffer;
    QVERIFY(buffer.open(QIODevice::WriteOnly) && image.save(&buffer, "png"));
    m_disk->write(std::string(CatalogueWriter::folder) + "/originals/A/" + file, buffer.data().toStdString());
}

void ThumbnailTest::writePicture(const std::string& file, const QColor& color) const {
    QImage image(300, 200, QImage::Format_RGB32);
    image.fill(color);
    writePicture(file, image);
}

void ThumbnailTest::openLibrary(std::initializer_list<Picture> pictures) {
    close();
    m_catalogue.reset();
    m_catalogue.emplace(*m_disk);
    for (const auto& [uuid, color] : pictures) {
        m_catalogue->add({.uuid = uuid});
        writePicture(uuid + ".jpeg", color);
    }
    m_jobs = {};
    openWindow(m_jobs.executor());
}

void ThumbnailTest::openWindow(const platform::Executor& executor) {
    const auto answer = [this](const platform::Disk&) {
        ++m_looks;
        return platform::PhotoAuthorization::authorized;
    };
    open(smallest, executor, {answer, answer});
    runAll();
    m_looks = 0;
}

PhotoThumbnail* ThumbnailTest::makeTile(const QByteArray& uuid, QPoint place) {
    QQmlComponent component(qmlEngine(window()));
    component.setData(
        "import QtQuick\nimport Lumvale\n"
        "Rectangle { id: tile; property var bytes; width: 96; height: 96; z: 100; color: 'black'\n"
        "  PhotoThumbnail { anchors.fill: parent; assetID: tile.bytes } }",
        QUrl());
    QObject* tile =
        component.createWithInitialProperties({{"bytes", id(uuid)},
                                               {"parent", QVariant::fromValue(window()->contentItem())},
                                               {"x", place.x()},
                                               {"y", place.y()}});
    if (!tile)
        qFatal("%s", qPrintable(component.errorString()));
    tile->setParent(window()->contentItem());
    return tile->findChild<PhotoThumbnail*>();
}

void ThumbnailTest::runAll() {
    while (!m_jobs.isIdle())
        m_jobs.run();
}

void ThumbnailTest::saysWhatThereIs_data() {
    QTest::addColumn<QByteArray>("uuid");
    QTest::addColumn<bool>("isLoaded");
    QTest::addColumn<bool>("isInCloud");
    QTest::newRow("a picture") << QByteArray("HERE") << true << false;
    QTest::newRow("a small one beside a broken original") << QByteArray("SMALL") << true << false;
    QTest::newRow("in the cloud") << QByteArray("CLOUD") << false << true;
    QTest::newRow("no picture") << QByteArray("TEXT") << false << false;
    QTest::newRow("unknown") << QByteArray("NOBODY") << false << false;
}

void ThumbnailTest::saysWhatThereIs() {
    QFETCH(QByteArray, uuid);
    QFETCH(bool, isLoaded);
    QFETCH(bool, isInCloud);
    const std::string library = CatalogueWriter::folder;
    openLibrary({{"HERE", Qt::red}, {"SMALL", Qt::red}, {"CLOUD", Qt::red}, {"TEXT", Qt::red}});
    m_disk->write(library + "/originals/A/SMALL.jpeg", "text");
    m_disk->make(library + "/resources/derivatives/S/");
    m_disk->write(library + "/resources/derivatives/S/SMALL_1_105_c.jpeg",
                  m_disk->read(library + "/originals/A/HERE.jpeg"));
    m_disk->write(library + "/originals/A/TEXT.jpeg", "text");
    QVERIFY(QFile::remove(QString::fromStdString(m_disk->host(library + "/originals/A/CLOUD.jpeg"))));

    const PhotoThumbnail* tile = makeTile(uuid);
    QVERIFY(!tile->isLoaded() && !tile->iCloudOnly());
    runAll();
    QCOMPARE(tile->isLoaded(), isLoaded);
    QCOMPARE(tile->iCloudOnly(), isInCloud);
    // And once more, from memory.
    const PhotoThumbnail* next = makeTile(uuid);
    QVERIFY(m_jobs.isIdle());
    QCOMPARE(next->isLoaded(), isLoaded);
    QCOMPARE(next->iCloudOnly(), isInCloud);
    QCOMPARE(m_looks, 1);
}

void ThumbnailTest::drawsThePicture() {
    openLibrary({{"A", Qt::red}, {"B", Qt::green}, {"LINES", Qt::red}});
    QImage lines(192, 192, QImage::Format_RGB32);
    for (int y = 0; y < 192; ++y)
        for (int x = 0; x < 192; ++x)
            lines.setPixelColor(x, y, (x + y) % 2 == 0 ? Qt::white : Qt::black);
    writePicture("LINES.jpeg", lines);
    PhotoThumbnail* tile = makeTile("A");
    const auto color = [this](int x, int y) {
        return window()->grabWindow().pixelColor(20 + x, 20 + y);
    };
    QCOMPARE(color(48, 48), QColor(Qt::black));
    runAll();
    QCOMPARE(color(48, 48), QColor(Qt::red));
    for (const int edge : {0, 95}) {
        QCOMPARE(color(edge, 48), QColor(Qt::red));
        QCOMPARE(color(48, edge), QColor(Qt::red));
        QCOMPARE(color(edge, edge), QColor(Qt::black)); // round
    }
    tile->setAssetID(id("B"));
    QCOMPARE(color(48, 48), QColor(Qt::black));
    runAll();
    QCOMPARE(color(48, 48), QColor(Qt::green));
    tile->setAssetID(id("A"));
    QCOMPARE(color(48, 48), QColor(Qt::red)); // at once
    tile->setAssetID(id("LINES"));
    runAll();
    const int mixed = color(48, 48).red();
    QVERIFY2(mixed > 100 && mixed < 155, qPrintable(QString::number(mixed)));
}

void ThumbnailTest::isAsRoundAsOtherTiles() {
    openLibrary({});
    QQmlComponent component(qmlEngine(window()));
    component.setData(
        "import QtQml\nimport Lumvale.Style\nQtObject { property real radius: Metrics.tileRadius }", QUrl());
    const std::unique_ptr<QObject> style(component.create());
    QVERIFY(style);
    QCOMPARE(thumbnailCorner * 96, style->property("radius").toReal());
}

void ThumbnailTest::showsOnlyWhatItStandsFor() {
    openLibrary({{"A", Qt::red}, {"B", Qt::green}, {"C", Qt::blue}});
    PhotoThumbnail* tile = makeTile("A");
    const QSignalSpy changes(tile, &PhotoThumbnail::thumbnailChanged);
    tile->setAssetID(id("B"));
    m_jobs.runBackground();
    tile->setAssetID(id("C"));
    m_jobs.publish();
    QVERIFY(!tile->isLoaded());
    QCOMPARE(changes.count(), 0);
    runAll();
    QVERIFY(tile->isLoaded());
    QCOMPARE(changes.count(), 1);
    layOut();
    QCOMPARE(window()->grabWindow().pixelColor(68, 68), QColor(Qt::blue));
    tile->setAssetID({});
    QVERIFY(!tile->isLoaded());
    QVERIFY(m_jobs.isIdle());
}

void ThumbnailTest::loadsWhatIsInSightFirst() {
    openLibrary(
        {{"A", Qt::red}, {"B", Qt::red}, {"C", Qt::red}, {"D", Qt::red}, {"E", Qt::red}, {"F", Qt::red}});
    std::vector<PhotoThumbnail*> tiles;
    for (const char* uuid : {"A", "B", "C", "D", "E", "F"})
        tiles.push_back(makeTile(uuid));
    const PhotoThumbnail* twin = makeTile("F");
    const auto loaded = [&tiles] {
        QString names;
        for (const PhotoThumbnail* tile : tiles)
            if (tile->isLoaded())
                names += tile->assetID().left(1);
        return names;
    };
    m_jobs.run();
    QCOMPARE(loaded(), "AB"); // those had been begun
    m_jobs.run();
    QCOMPARE(loaded(), "ABEF");
    QVERIFY(twin->isLoaded());
    m_jobs.run();
    QCOMPARE(loaded(), "ABCDEF");
    QVERIFY(m_jobs.isIdle());
    QCOMPARE(m_looks, 6);
}

void ThumbnailTest::loadsNothingForNobody() {
    openLibrary({{"A", Qt::red}, {"B", Qt::red}, {"C", Qt::red}, {"D", Qt::red}, {"E", Qt::red}});
    makeTile("A");
    PhotoThumbnail* begun = makeTile("B");
    const PhotoThumbnail* gone = makeTile("C");
    const PhotoThumbnail* hidden = makeTile("D");
    PhotoThumbnail* reused = makeTile("E");
    delete begun->parentItem();
    delete gone->parentItem();
    hidden->parentItem()->setVisible(false);
    reused->setAssetID(id("A"));
    runAll();
    QCOMPARE(m_looks, 2);
    QVERIFY(!hidden->isLoaded());
    QVERIFY(reused->isLoaded());
    hidden->parentItem()->setVisible(true);
    runAll();
    QVERIFY(hidden->isLoaded());
    QCOMPARE(m_looks, 3);
}

void ThumbnailTest::remembersSomeAndForgetsWhenTold() {
    openLibrary({{"A", Qt::red}, {"B", Qt::red}});
    for (int i = 0; i < 400; ++i) {
        const std::string uuid = "M" + std::to_string(i);
        m_catalogue->add({.uuid = uuid, .file = "'A.jpeg'"});
        delete makeTile(QByteArray::fromStdString(uuid))->parentItem();
        runAll();
    }
    QVERIFY(loader()->rememberedBytes() <= 24'000'000);
    QVERIFY(loader()->rememberedBytes() > 20'000'000);
    QVERIFY(makeTile("M399")->isLoaded());
    QVERIFY(!makeTile("M0")->isLoaded());
    runAll();

    QQmlComponent clearing(qmlEngine(window()));
    clearing.setData(
        "import QtQml\nimport Lumvale\nQtObject { Component.onCompleted: ThumbnailLoader.clear() }", QUrl());
    delete clearing.create();
    QCOMPARE(loader()->rememberedBytes(), 0);
    const PhotoThumbnail* tile = makeTile("A");
    m_jobs.runBackground();
    loader()->clear(); // what is under way is out of date as well
    m_jobs.publish();
    QVERIFY(!tile->isLoaded());
    m_looks = 0;
    runAll();
    QVERIFY(tile->isLoaded());
    QCOMPARE(m_looks, 1);
}

void ThumbnailTest::tellsBytesApart() {
    openLibrary({});
    const QByteArray uuids[] = {"X\xFF", "X\xFE", "\xC3\xA9", "e\xCC\x81"};
    const QColor colors[] = {Qt::red, Qt::green, Qt::blue, Qt::yellow};
    for (int i = 0; i < 4; ++i) {
        const std::string file = std::to_string(i) + ".png";
        m_catalogue->add({.uuid = uuids[i].toStdString(), .file = "'" + file + "'"});
        writePicture(file, colors[i]);
    }
    for (int i = 0; i < 4; ++i)
        QCOMPARE(makeTile(uuids[i], {20 + 100 * i, 20})->assetID(), id(uuids[i]));
    runAll();
    const QImage seen = window()->grabWindow();
    for (int i = 0; i < 4; ++i)
        QCOMPARE(seen.pixelColor(68 + 100 * i, 68), colors[i]);
}

void ThumbnailTest::mayGoMeanwhile() {
    openLibrary({{"A", Qt::red}, {"B", Qt::red}, {"C", Qt::red}});
    for (const char* uuid : {"A", "B", "C"})
        makeTile(uuid);
    m_jobs.runBackground();
    close();
    m_jobs.publish();
    QVERIFY(m_jobs.isIdle());
    // And with real threads, which may be anywhere.
    for (int i = 0; i < 5; ++i) {
        openWindow(qtExecutor());
        const PhotoThumbnail* last = nullptr;
        for (const char* uuid : {"A", "B", "C"})
            last = makeTile(uuid);
        if (i % 2 == 0)
            QTRY_VERIFY(last->isLoaded());
        close();
        QCoreApplication::processEvents();
    }
}

int main(int argc, char** argv) {
    return runTest<ThumbnailTest>(argc, argv);
}

#include "thumbnail_test.moc"
