#include "ui/thumbnails/thumbnail_decoder.h"

#include <QBuffer>
#include <QByteArray>
#include <QCoreApplication>
#include <QFile>
#include <QImage>
#include <QImageWriter>
#include <QPainter>
#include <QProcess>
#include <QTemporaryDir>
#include <QTest>
#include <QtEndian>

#include <algorithm>
#include <chrono>
#include <cstdio>
#include <fstream>
#include <string>
#include <string_view>
#include <thread>

#include <fcntl.h>
#include <unistd.h>
#include <zlib.h>

namespace {

QByteArray encoded(const QImage& image, const char* format, bool isProgressive = false) {
    QBuffer buffer;
    buffer.open(QIODevice::WriteOnly);
    QImageWriter writer(&buffer, format);
    writer.setQuality(95);
    writer.setProgressiveScanWrite(isProgressive);
    return writer.write(image) ? buffer.data() : QByteArray();
}

/// A big-endian number.
template <class Number>
QByteArray bytesOf(Number number) {
    number = qToBigEndian(number);
    return {reinterpret_cast<const char*>(&number), sizeof number};
}

/// A red picture with a white square in its middle, whose left and upper edges are green and blue.
QImage framed(QSize size) {
    QImage image(size, QImage::Format_RGB32);
    image.fill(Qt::red);
    const int side = std::min(size.width(), size.height());
    const QRect middle((size.width() - side) / 2, (size.height() - side) / 2, side, side);
    QPainter painter(&image);
    painter.fillRect(middle, Qt::white);
    painter.fillRect(middle.adjusted(0, side / 8, side / 8 - side, -side / 8), Qt::green);
    painter.fillRect(middle.adjusted(side / 8, 0, -side / 8, side / 8 - side), Qt::blue);
    return image;
}

/// The colours at the left, upper, right and lower edge and in the middle, a letter each.
QString edges(const QImage& thumbnail) {
    QString found;
    for (const QPoint point :
         {QPoint(8, 96), QPoint(96, 8), QPoint(183, 96), QPoint(96, 183), QPoint(96, 96)}) {
        const QColor color = thumbnail.pixelColor(point);
        found += QLatin1Char("kbgcrmyw"[(color.red() > 127 ? 4 : 0) + (color.green() > 127 ? 2 : 0)
                                        + (color.blue() > 127 ? 1 : 0)]);
    }
    return found;
}

/// The JPEG with an Exif orientation.
QByteArray turned(QByteArray jpeg, quint16 orientation) {
    const QByteArray exif = QByteArray("Exif\0\0MM\0*\0\0\0\x08\0\1\x01\x12\0\3\0\0\0\1", 24)
                            + bytesOf(orientation) + QByteArray(6, '\0');
    return jpeg.insert(2, "\xFF\xE1" + bytesOf(quint16(exif.size() + 2)) + exif);
}

/// The JPEG with one component in its scan instead of three (not interleaved).
QByteArray notInterleaved(QByteArray jpeg) {
    return jpeg.replace(jpeg.indexOf("\xFF\xDA"), 14, QByteArray("\xFF\xDA\0\x08\1\1\0\0\x3F\0", 10));
}

/// A progressive JPEG that repeats its last refinement scan.
QByteArray endless(const QByteArray& progressive) {
    const qsizetype scan = progressive.lastIndexOf("\xFF\xDA");
    const QByteArray last = progressive.mid(scan, progressive.size() - scan - 2);
    return progressive.left(scan) + last.repeated(3'000'000 / int(last.size()));
}

/// The picture with another size in its header.
QByteArray claiming(quint16 side, QByteArray picture) {
    const QByteArray high = bytesOf(side);
    if (picture.startsWith("BM"))
        return picture.replace(18, 8, (QByteArray(1, high[1]) + high[0] + QByteArray(2, '\0')).repeated(2));
    if (picture.startsWith("\x89PNG")) {
        picture.replace(16, 8, bytesOf(quint32(side)).repeated(2));
        const QByteArray header = picture.mid(12, 17);
        const auto* bytes = reinterpret_cast<const Bytef*>(header.constData());
        return picture.replace(29, 4, bytesOf(quint32(crc32(0, bytes, uInt(header.size())))));
    }
    const qsizetype frame = std::max(picture.indexOf("\xFF\xC0"), picture.indexOf("\xFF\xC2"));
    return picture.replace(frame + 5, 4, high + high);
}

/// A PNG with text chunks that inflate to a thousand times their size.
QByteArray pngWithTexts() {
    QImage image = framed({300, 300});
    for (int i = 0; i < 25; ++i)
        image.setText(QString::number(i), QString(7'900'000, QLatin1Char('a')));
    return encoded(image, "png");
}

QByteArray spoilt(QByteArray picture) {
    for (qsizetype i = picture.size() / 2; i < picture.size(); i += 7)
        picture[i] = static_cast<char>(i * 37);
    return picture;
}

/// The peak memory of this process in kilobytes; 0 where the system does not tell.
long peakMemory() {
    std::ifstream status("/proc/self/status");
    for (std::string line; std::getline(status, line);)
        if (line.starts_with("VmHWM:"))
            return std::stol(line.substr(6));
    return 0;
}

/// Decodes a file in a process of its own; prints the outcome and the growth of the peak memory.
int decode(const char* path) {
    (void)decodeThumbnail(platform::Descriptor()); // loads Qt's plugins before memory is measured
    const long before = peakMemory();
    const QImage thumbnail = decodeThumbnail(platform::Descriptor(open(path, O_RDONLY | O_CLOEXEC)));
    std::printf("%s %ld", thumbnail.isNull() ? "nothing" : "picture", peakMemory() - before);
    return thumbnail.isNull() || thumbnail.size() == QSize(192, 192) ? 0 : 1;
}

} // namespace

class ThumbnailDecoderTest : public QObject {
    Q_OBJECT

private Q_SLOTS:
    void cropsToASquareInTheStoredOrientation();
    void survivesHostileFiles_data();
    void survivesHostileFiles();
    void endsAtItsDeadline();
    void survivesAFileThatShrinks();

private:
    platform::Descriptor file(const QByteArray& bytes) const;

    QTemporaryDir m_folder;
};

platform::Descriptor ThumbnailDecoderTest::file(const QByteArray& bytes) const {
    QFile file(m_folder.filePath(QStringLiteral("picture")));
    if (!file.open(QIODevice::WriteOnly) || file.write(bytes) != bytes.size())
        return {};
    file.close();
    return platform::Descriptor(open(file.fileName().toLocal8Bit().constData(), O_RDWR | O_CLOEXEC));
}

void ThumbnailDecoderTest::cropsToASquareInTheStoredOrientation() {
    for (const QSize size : {QSize(192, 192), {400, 200}, {32, 64}, {3008, 2000}, {199, 5000}, {1, 30'000}}) {
        const QImage thumbnail = decodeThumbnail(file(encoded(framed(size), "png")));
        QCOMPARE(thumbnail.size(), QSize(192, 192));
        QVERIFY(size.width() == 1 || edges(thumbnail) == "gbwww");
        QCOMPARE(thumbnail.pixelColor(0, 0).alpha(), 0); // round corners
    }
    for (const auto& [orientation, seen] :
         {std::pair(1, "gbwww"), {2, "wbgww"}, {3, "wwgbw"}, {6, "wgbww"}, {8, "bwwgw"}})
        QCOMPARE(
            edges(decodeThumbnail(file(turned(encoded(framed({1200, 800}), "jpeg"), quint16(orientation))))),
            seen);
}

void ThumbnailDecoderTest::survivesHostileFiles_data() {
    QTest::addColumn<QByteArray>("bytes");
    QTest::addColumn<QString>("allowed");
    const QByteArray jpeg = encoded(framed({400, 300}), "jpeg");
    const QByteArray progressive = encoded(framed({400, 300}), "jpeg", true);
    const QByteArray png = encoded(framed({400, 300}), "png");
    const QByteArray svg =
        "<svg xmlns='http://www.w3.org/2000/svg' width='9' height='9'><image href='/x.png'/></svg>";
    QTest::newRow("progressive JPEG") << progressive << "picture";
    QTest::newRow("PNG with inflating texts") << pngWithTexts() << "picture";
    QTest::newRow("text") << QByteArray("not a picture\n") << "nothing";
    QTest::newRow("SVG") << svg << "nothing";
    QTest::newRow("SVG with the signature of JPEG") << "\xFF\xD8\xFF" + svg << "nothing";
    QTest::newRow("too long") << jpeg + QByteArray(64'000'000, '\0') << "nothing";
    QTest::newRow("large JPEG") << claiming(15'000, jpeg) << "picture or nothing";
    QTest::newRow("large progressive JPEG") << claiming(15'000, progressive) << "nothing";
    QTest::newRow("large JPEG, not interleaved") << notInterleaved(claiming(15'000, jpeg)) << "nothing";
    QTest::newRow("large progressive JPEG after padding")
        << claiming(15'000, progressive).insert(2, "\0\xFF\0\xFF\xFF") << "nothing";
    QTest::newRow("huge PNG") << claiming(30'000, png) << "nothing";
    QTest::newRow("huge BMP") << claiming(30'000, encoded(framed({40, 30}), "bmp")) << "nothing";
    QTest::newRow("spoilt JPEG") << spoilt(jpeg) << "picture or nothing";
    QTest::newRow("truncated PNG") << png.left(png.size() / 2) << "picture or nothing";
}

void ThumbnailDecoderTest::survivesHostileFiles() {
    QFETCH(QByteArray, bytes);
    QFETCH(QString, allowed);
    (void)file(bytes);
    QProcess process;
    process.start(QCoreApplication::applicationFilePath(), {"--decode", m_folder.filePath("picture")});
    QVERIFY(process.waitForFinished(-1));
    QCOMPARE(process.exitStatus(), QProcess::NormalExit);
    QCOMPARE(process.exitCode(), 0);
    const QString printed = process.readAllStandardOutput();
    QVERIFY2(allowed.contains(printed.section(' ', 0, 0)), qPrintable(printed));
    QVERIFY2(printed.section(' ', 1).toInt() < 250'000, qPrintable(printed));
}

void ThumbnailDecoderTest::endsAtItsDeadline() {
    const QByteArray bytes = endless(claiming(4'000, encoded(framed({400, 300}), "jpeg", true)));
    QVERIFY(decodeThumbnail(file(bytes), std::chrono::milliseconds(300)).isNull());
}

void ThumbnailDecoderTest::survivesAFileThatShrinks() {
    for (const char* format : {"jpeg", "png", "bmp"}) {
        const QByteArray bytes = encoded(framed({2'000, 1'500}), format);
        for (int i = 0; i < 5; ++i) {
            platform::Descriptor descriptor = file(bytes);
            const int number = dup(descriptor.number());
            std::jthread shrinking([number, i, size = bytes.size()] {
                for (int step = 1; step <= 50; ++step) {
                    std::this_thread::sleep_for(std::chrono::microseconds(100 * i));
                    (void)!ftruncate(number, size - size * step / 50);
                }
                close(number);
            });
            const QImage thumbnail = decodeThumbnail(std::move(descriptor));
            QVERIFY(thumbnail.isNull() || thumbnail.size() == QSize(192, 192));
        }
    }
}

int main(int argc, char** argv) {
    const QCoreApplication application(argc, argv);
    if (argc == 3 && argv[1] == std::string_view("--decode"))
        return decode(argv[2]);
    ThumbnailDecoderTest test;
    return QTest::qExec(&test, argc, argv);
}

#include "thumbnail_decoder_test.moc"
