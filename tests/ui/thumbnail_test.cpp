#include "tests/app/hand_cranked.h"
#include "tests/support/photo_catalogue.h"
#include "tests/ui/window_test.h"
#include "ui/thumbnails/photo_thumbnail.h"
#include "ui/thumbnails/thumbnail_decoder.h"
#include "ui/thumbnails/thumbnail_loader.h"

#include <QBuffer>
#include <QByteArray>
#include <QColor>
#include <QImage>
#include <QQmlComponent>
#include <QQmlEngine>
#include <QSignalSpy>

#include <atomic>
#include <memory>
#include <optional>
#include <string>
#include <vector>

/// Tiles with pictures of a photo library: the real window, real files, and jobs that run when told to.
class ThumbnailTest : public WindowTest {
    Q_OBJECT

private Q_SLOTS:
    void init();

    void saysWhatThereIs();
    void drawsThePicture();
    void isAsRoundAsOtherTiles();
    void showsOnlyWhatItStandsFor();
    void loadsWhatIsInSightFirstAndNothingForNobody();
    void remembersSomeAndForgetsWhenTold();
    void tellsBytesApart();
    void mayGoMeanwhile();

private:
    /// A photo of one colour, which is on the disk.
    void add(const std::string& uuid, const QColor& color = Qt::red);
    void writePicture(const std::string& file, const QImage& image) const;
    void openWindow(const platform::Executor& executor);

    PhotoThumbnail* makeTile(const QByteArray& uuid, QPoint place = {20, 20});
    std::unique_ptr<QObject> make(const QByteArray& qml, const QVariantMap& properties = {}) const;
    static QByteArray id(const QByteArray& uuid) { return uuid + "/L0/001"; }
    void runAll();
    QColor colour(int x = 48, int y = 48) const { return window()->grabWindow().pixelColor(20 + x, 20 + y); }

    HandCranked m_jobs;
    std::optional<CatalogueWriter> m_catalogue;
    std::atomic<int> m_looks = 0; ///< into the library
};

const std::string library = CatalogueWriter::folder;

/// The window, and a library with photos of three colours and some more of one.
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
    writePicture(uuid + ".jpeg", image);
}

void ThumbnailTest::writePicture(const std::string& file, const QImage& image) const {
    QBuffer buffer;
    QVERIFY(buffer.open(QIODevice::WriteOnly) && image.save(&buffer, "png"));
    m_disk->write(library + "/originals/A/" + file, buffer.data().toStdString());
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

std::unique_ptr<QObject> ThumbnailTest::make(const QByteArray& qml, const QVariantMap& properties) const {
    QQmlComponent component(qmlEngine(window()));
    component.setData("import QtQuick\nimport Lumvale\nimport Lumvale.Style\n" + qml, QUrl());
    std::unique_ptr<QObject> made(component.createWithInitialProperties(properties));
    if (!made)
        qFatal("%s", qPrintable(component.errorString()));
    return made;
}

PhotoThumbnail* ThumbnailTest::makeTile(const QByteArray& uuid, QPoint place) {
    QObject* tile = make("Rectangle { id: tile; property var bytes; width: 96; height: 96; color: 'black'\n"
                         "PhotoThumbnail { anchors.fill: parent; assetID: tile.bytes } }",
                         {{"bytes", id(uuid)},
                          {"parent", QVariant::fromValue(window()->contentItem())},
                          {"x", place.x()},
                          {"y", place.y()},
                          {"z", 100}})
                        .release();
    tile->setParent(window()->contentItem());
    return tile->findChild<PhotoThumbnail*>();
}

void ThumbnailTest::runAll() {
    while (!m_jobs.isIdle())
        m_jobs.run();
}

void ThumbnailTest::saysWhatThereIs() {
    const std::string small = library + "/resources/derivatives/S/SMALL_1_105_c.jpeg";
    m_disk->make(library + "/resources/derivatives/S/");
    m_disk->write(small, m_disk->read(library + "/originals/A/A.jpeg"));
    for (const char* uuid : {"SMALL", "CLOUD", "TEXT"})
        m_catalogue->add({.uuid = uuid});
    for (const char* broken : {"SMALL", "TEXT"})
        m_disk->write(library + "/originals/A/" + broken + ".jpeg", "text");
    const struct {
        const char* uuid;
        bool isLoaded;
        bool isInCloud;
    } cases[]{{"A", true, false},
              {"SMALL", true, false}, // beside a broken original
              {"CLOUD", false, true},
              {"TEXT", false, false},
              {"NOBODY", false, false}};
    for (const auto& [uuid, isLoaded, isInCloud] : cases) {
        m_looks = 0;
        const PhotoThumbnail* tile = makeTile(uuid);
        QVERIFY(!tile->isLoaded() && !tile->iCloudOnly());
        runAll();
        // And once more, from memory.
        for (const PhotoThumbnail* shown : {tile, static_cast<const PhotoThumbnail*>(makeTile(uuid))}) {
            QVERIFY2(shown->isLoaded() == isLoaded, uuid);
            QVERIFY2(shown->iCloudOnly() == isInCloud, uuid);
        }
        QVERIFY(m_jobs.isIdle());
        QCOMPARE(m_looks, 1);
    }
}

void ThumbnailTest::drawsThePicture() {
    QImage lines(192, 192, QImage::Format_RGB32);
    for (int y = 0; y < 192; ++y)
        for (int x = 0; x < 192; ++x)
            lines.setPixelColor(x, y, (x + y) % 2 == 0 ? Qt::white : Qt::black);
    writePicture("D.jpeg", lines);
    PhotoThumbnail* tile = makeTile("A");
    QCOMPARE(colour(), QColor(Qt::black));
    runAll();
    QCOMPARE(colour(), QColor(Qt::red));
    for (const int edge : {0, 95}) {
        QCOMPARE(colour(edge, 48), QColor(Qt::red));
        QCOMPARE(colour(48, edge), QColor(Qt::red));
        QCOMPARE(colour(edge, edge), QColor(Qt::black)); // round
    }
    tile->setAssetID(id("B"));
    QCOMPARE(colour(), QColor(Qt::black));
    runAll();
    QCOMPARE(colour(), QColor(Qt::green));
    tile->setAssetID(id("A"));
    QCOMPARE(colour(), QColor(Qt::red)); // at once
    tile->setAssetID(id("D"));
    runAll();
    const int mixed = colour().red();
    QVERIFY2(mixed > 100 && mixed < 155, qPrintable(QString::number(mixed)));
}

void ThumbnailTest::isAsRoundAsOtherTiles() {
    const auto style = make("QtObject { property real radius: Metrics.tileRadius }");
    QCOMPARE(thumbnailCorner * 96, style->property("radius").toReal());
}

void ThumbnailTest::showsOnlyWhatItStandsFor() {
    PhotoThumbnail* tile = makeTile("A");
    const QSignalSpy changes(tile, &PhotoThumbnail::thumbnailChanged);
    tile->setAssetID(id("B"));
    m_jobs.runBackground();
    tile->setAssetID(id("C"));
    m_jobs.publish();
    QVERIFY(!tile->isLoaded());
    QCOMPARE(changes.count(), 0);
    runAll();
    QCOMPARE(changes.count(), 1);
    QCOMPARE(colour(), QColor(Qt::blue));
    tile->setAssetID({});
    QVERIFY(!tile->isLoaded() && m_jobs.isIdle());
}

void ThumbnailTest::loadsWhatIsInSightFirstAndNothingForNobody() {
    std::vector<PhotoThumbnail*> tiles;
    for (const char* uuid : {"A", "B", "C", "D", "E", "F", "F"})
        tiles.push_back(makeTile(uuid));
    const auto loaded = [&tiles] {
        QString names;
        for (const PhotoThumbnail* tile : tiles)
            if (tile->isLoaded())
                names += tile->assetID().left(1);
        return names;
    };
    delete makeTile("NOBODY")->parentItem();
    PhotoThumbnail* reused = makeTile("NONE");
    reused->setAssetID(id("A"));
    tiles[4]->parentItem()->setVisible(false);
    for (const char* next : {"AB", "ABDFF", "ABCDFF"}) { // the first two had been begun
        m_jobs.run();
        QCOMPARE(loaded(), next);
    }
    QVERIFY(reused->isLoaded() && m_jobs.isIdle());
    tiles[4]->parentItem()->setVisible(true);
    runAll();
    QCOMPARE(loaded(), "ABCDEFF");
    QCOMPARE(m_looks, 6);
}

void ThumbnailTest::remembersSomeAndForgetsWhenTold() {
    ThumbnailLoader& loader = *ThumbnailLoader::create(qmlEngine(window()));
    for (int i = 0; i < 400; ++i) {
        const std::string uuid = "M" + std::to_string(i);
        m_catalogue->add({.uuid = uuid, .file = "'A.jpeg'"});
        delete makeTile(QByteArray::fromStdString(uuid))->parentItem();
        runAll();
    }
    QVERIFY(loader.rememberedBytes() > 20'000'000 && loader.rememberedBytes() <= 24'000'000);
    QVERIFY(makeTile("M399")->isLoaded());
    QVERIFY(!makeTile("M0")->isLoaded());
    runAll();

    make("QtObject { Component.onCompleted: ThumbnailLoader.clear() }");
    QCOMPARE(loader.rememberedBytes(), 0);
    const PhotoThumbnail* tile = makeTile("A");
    m_jobs.runBackground();
    loader.clear(); // what is under way is out of date as well
    m_jobs.publish();
    QVERIFY(!tile->isLoaded());
    m_looks = 0;
    runAll();
    QVERIFY(tile->isLoaded());
    QCOMPARE(m_looks, 1);
}

void ThumbnailTest::tellsBytesApart() {
    const QByteArray uuids[] = {"X\xFF", "X\xFE", "\xC3\xA9", "e\xCC\x81"};
    const char* const files[] = {"A", "B", "C", "A"};
    for (int i = 0; i < 4; ++i) {
        m_catalogue->add({.uuid = uuids[i].toStdString(), .file = std::string("'") + files[i] + ".jpeg'"});
        QCOMPARE(makeTile(uuids[i], {20 + 100 * i, 20})->assetID(), id(uuids[i]));
    }
    runAll();
    const QColor colors[] = {Qt::red, Qt::green, Qt::blue, Qt::red};
    for (int i = 0; i < 4; ++i)
        QCOMPARE(colour(48 + 100 * i), colors[i]);
}

void ThumbnailTest::mayGoMeanwhile() {
    for (const char* uuid : {"A", "B", "C"})
        makeTile(uuid);
    m_jobs.runBackground();
    close();
    m_jobs.publish();
    QVERIFY(m_jobs.isIdle());
    // And with real threads, which may be anywhere.
    for (int i = 0; i < 5; ++i) {
        openWindow(qtExecutor());
        for (const char* uuid : {"A", "B"})
            makeTile(uuid);
        const PhotoThumbnail* last = makeTile("C");
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
