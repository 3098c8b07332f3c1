#include "ui/thumbnails/thumbnail_decoder.h"

#include <QBuffer>
#include <QByteArray>
#include <QColorSpace>
#include <QCoreApplication>
#include <QElapsedTimer>
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

using namespace std::chrono_literals;

namespace {

QByteArray encoded(const QImage& image, const char* format, bool isProgressive = false) {
    QBuffer buffer;
    buffer.open(QIODevice::WriteOnly);
    QImageWriter writer(&buffer, format);
    writer.setQuality(95);
    writer.setProgressiveScanWrite(isProgressive);
    return writer.write(image) ? buffer.data() : QByteArray();
}

QByteArray bigEndian(quint16 number) {
    return QByteArray(1, static_cast<char>(number >> 8)) + static_cast<char>(number & 0xFF);
}

/// Red, with a square in the middle that has a colour of its own at each edge.
QImage framed(QSize size) {
    QImage image(size, QImage::Format_RGB32);
    image.fill(Qt::red);
    const int side = std::min(size.width(), size.height());
    const QRect middle((size.width() - side) / 2, (size.height() - side) / 2, side, side);
    QPainter painter(&image);
    painter.fillRect(middle, Qt::white);
    const int edge = side / 8;
    painter.fillRect(middle.adjusted(0, edge, edge - side, -edge), Qt::green);
    painter.fillRect(middle.adjusted(edge, 0, -edge, edge - side), Qt::blue);
    painter.fillRect(middle.adjusted(side - edge, edge, 0, -edge), Qt::cyan);
    painter.fillRect(middle.adjusted(edge, side - edge, -edge, 0), Qt::magenta);
    return image;
}

/// Which of these colours is where, clockwise from the left, and in the middle.
QString edges(const QImage& thumbnail) {
    QString found;
    for (const QPoint point :
         {QPoint(8, 96), QPoint(96, 8), QPoint(183, 96), QPoint(96, 183), QPoint(96, 96)}) {
        const QColor color = thumbnail.pixelColor(point);
        const int all = (color.red() > 127 ? 4 : 0) + (color.green() > 127 ? 2 : 0) + (color.blue() > 127);
        found += QLatin1Char("kbgcrmyw"[all]);
    }
    return found;
}

/// A JPEG that says it was taken with the camera turned.
QByteArray turned(QByteArray jpeg, quint16 orientation) {
    const QByteArray exif = QByteArray("Exif\0\0MM\0*\0\0\0\x08\0\1\x01\x12\0\3\0\0\0\1", 24)
                            + bigEndian(orientation) + QByteArray(6, '\0');
    return jpeg.insert(2, "\xFF\xE1" + bigEndian(quint16(exif.size() + 2)) + exif);
}

/// A JPEG whose header tells of another size.
QByteArray jpegSaying(QByteArray jpeg, quint16 width, quint16 height) {
    qsizetype frame = jpeg.indexOf("\xFF\xC0");
    if (frame < 0)
        frame = jpeg.indexOf("\xFF\xC2");
    return jpeg.replace(frame + 5, 4, bigEndian(height) + bigEndian(width));
}

/// One whose colours don't lie together but come one after the other.
QByteArray colourByColour(QByteArray jpeg) {
    const qsizetype scan = jpeg.indexOf("\xFF\xDA");
    return jpeg.replace(scan, 14, QByteArray("\xFF\xDA\0\x08\1\1\0\0\x3F\0", 10));
}

/// One that refines the same details over and over.
QByteArray neverDone(QByteArray progressive) {
    const qsizetype scan = progressive.lastIndexOf("\xFF\xDA");
    const QByteArray last = progressive.mid(scan, progressive.size() - scan - 2);
    return progressive.left(scan) + last.repeated(3'000'000 / int(last.size()));
}

quint32 checksum(const QByteArray& bytes) {
    quint32 sum = ~0U;
    for (const char byte : bytes) {
        sum ^= static_cast<unsigned char>(byte);
        for (int bit = 0; bit < 8; ++bit)
            sum = (sum >> 1) ^ ((sum & 1) != 0 ? 0xEDB8'8320U : 0);
    }
    return ~sum;
}

/// A PNG whose header tells of another size, its checksum included.
QByteArray pngSaying(QByteArray png, quint32 width, quint32 height) {
    qToBigEndian(width, png.data() + 16);
    qToBigEndian(height, png.data() + 20);
    qToBigEndian(checksum(png.mid(12, 17)), png.data() + 29);
    return png;
}

/// A PNG with texts that unpack to a thousand times their size.
QByteArray pngFullOfTexts() {
    QImage image = framed({300, 300});
    for (int i = 0; i < 25; ++i)
        image.setText(QString::number(i), QString(7'900'000, QLatin1Char('a')));
    return encoded(image, "png");
}

QByteArray bmpSaying(QByteArray bmp, quint32 width, quint32 height) {
    qToLittleEndian(width, bmp.data() + 18);
    qToLittleEndian(height, bmp.data() + 22);
    return bmp;
}

QByteArray gif(quint16 width, quint16 height) {
    const auto littleEndian = [](quint16 number) {
        return QByteArray(1, static_cast<char>(number & 0xFF)) + static_cast<char>(number >> 8);
    };
    const QByteArray size = littleEndian(width) + littleEndian(height);
    return "GIF89a" + size + QByteArray("\x80\0\0\xFF\0\0\0\0\xFF,\0\0\0\0", 14) + size
           + QByteArray("\0\2\2\x44\1\0;", 7);
}

/// The most memory that this process has had, in kilobytes; 0 where the system doesn't say.
long mostMemory() {
    std::ifstream status("/proc/self/status");
    for (std::string line; std::getline(status, line);)
        if (line.starts_with("VmHWM:"))
            return std::stol(line.substr(6));
    return 0;
}

/// What a process of its own does: says what comes of a file, and how many kilobytes it took.
int decode(const char* path) {
    (void)decodeThumbnail(platform::Descriptor()); // what comes once only
    const long before = mostMemory();
    const QImage thumbnail = decodeThumbnail(platform::Descriptor(open(path, O_RDONLY | O_CLOEXEC)));
    std::printf("%s %ld", thumbnail.isNull() ? "nothing" : "picture", mostMemory() - before);
    return thumbnail.isNull() || thumbnail.size() == QSize(192, 192) ? 0 : 1;
}

} // namespace

/// Small pictures of files that hold anything.
class ThumbnailDecoderTest : public QObject {
    Q_OBJECT

private Q_SLOTS:
    void fillsASquareFromTheMiddle_data();
    void fillsASquareFromTheMiddle();
    void standsAsItWasTaken_data();
    void standsAsItWasTaken();
    void hasRoundCorners();
    void keepsColoursOfAWiderSpace();
    void survivesAnyFile_data();
    void survivesAnyFile();
    void givesUpInTime();
    void survivesAFileThatShrinksMeanwhile();

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

void ThumbnailDecoderTest::fillsASquareFromTheMiddle_data() {
    QTest::addColumn<QByteArray>("format");
    QTest::addColumn<QSize>("size");
    for (const char* format : {"jpeg", "png", "bmp"})
        for (const QSize size : {QSize(192, 192),
                                 {400, 200},
                                 {200, 400},
                                 {640, 480},
                                 {32, 64},
                                 {3008, 2000},
                                 {2000, 40},
                                 {3000, 200},
                                 {199, 5000}})
            QTest::addRow("%s, %d by %d", format, size.width(), size.height()) << QByteArray(format) << size;
}

void ThumbnailDecoderTest::fillsASquareFromTheMiddle() {
    QFETCH(QByteArray, format);
    QFETCH(QSize, size);
    const QImage thumbnail = decodeThumbnail(file(encoded(framed(size), format)));
    QCOMPARE(thumbnail.size(), QSize(192, 192));
    QCOMPARE(edges(thumbnail), "gbcmw");
}

void ThumbnailDecoderTest::standsAsItWasTaken_data() {
    QTest::addColumn<int>("orientation");
    QTest::addColumn<QString>("seen");
    QTest::newRow("upright") << 1 << "gbcmw";
    QTest::newRow("mirrored") << 2 << "cbgmw";
    QTest::newRow("upside down") << 3 << "cmgbw";
    QTest::newRow("on its left") << 6 << "mgbcw";
    QTest::newRow("on its right") << 8 << "bcmgw";
}

void ThumbnailDecoderTest::standsAsItWasTaken() {
    QFETCH(int, orientation);
    QFETCH(QString, seen);
    for (const QSize size : {QSize(1200, 800), QSize(60, 90)})
        QCOMPARE(edges(decodeThumbnail(file(turned(encoded(framed(size), "jpeg"), quint16(orientation))))),
                 seen);
}

void ThumbnailDecoderTest::hasRoundCorners() {
    const QImage thumbnail = decodeThumbnail(file(encoded(framed({300, 300}), "png")));
    for (const bool isRight : {false, true})
        for (const bool isLow : {false, true}) {
            const auto alpha = [&](int x, int y) {
                return thumbnail.pixelColor(isRight ? 191 - x : x, isLow ? 191 - y : y).alpha();
            };
            QCOMPARE(alpha(0, 0), 0);
            QCOMPARE(alpha(5, 5), 0);
            QCOMPARE(alpha(9, 9), 255);
            QCOMPARE(alpha(26, 0), 255);
            QCOMPARE(alpha(0, 26), 255);
        }
    QImage sheer(300, 300, QImage::Format_ARGB32);
    sheer.fill(QColor(255, 0, 0, 100));
    QCOMPARE(decodeThumbnail(file(encoded(sheer, "png"))).pixelColor(96, 96).alpha(), 100);
}

void ThumbnailDecoderTest::keepsColoursOfAWiderSpace() {
    QImage image(300, 300, QImage::Format_RGB32);
    image.fill(QColor(200, 100, 100));
    image.setColorSpace(QColorSpace::DisplayP3);
    const QColor wanted =
        image.convertedToColorSpace(QColorSpace::SRgb).pixelColor(0, 0); // about 215, 94, 97
    QVERIFY(wanted.red() > 205);
    for (const char* format : {"jpeg", "png"}) {
        const QColor color = decodeThumbnail(file(encoded(image, format))).pixelColor(96, 96);
        QVERIFY2(std::abs(color.red() - wanted.red()) < 4, format);
    }
}

void ThumbnailDecoderTest::survivesAnyFile_data() {
    QTest::addColumn<QByteArray>("bytes");
    QTest::addColumn<QString>("right"); // what may come of it: a picture or nothing
    const QByteArray jpeg = encoded(framed({400, 300}), "jpeg");
    const QByteArray progressive = encoded(framed({400, 300}), "jpeg", true);
    const QByteArray png = encoded(framed({400, 300}), "png");
    const QByteArray bmp = encoded(framed({40, 30}), "bmp");
    const QByteArray svg =
        "<svg xmlns='http://www.w3.org/2000/svg' width='9' height='9'><image href='/x.png'/></svg>";

    QTest::newRow("GIF") << gif(1, 1) << "picture";
    QTest::newRow("progressive JPEG") << progressive << "picture";
    QTest::newRow("grey JPEG") << encoded(framed({400, 300}).convertToFormat(QImage::Format_Grayscale8),
                                          "jpeg")
                               << "picture";
    QTest::newRow("PNG of one bit") << encoded(framed({400, 300}).convertToFormat(QImage::Format_Mono), "png")
                                    << "picture";
    QTest::newRow("PNG of 16 bits") << encoded(framed({400, 300}).convertToFormat(QImage::Format_RGBA64),
                                               "png")
                                    << "picture";
    for (const char* format : {"png", "jpeg", "bmp"})
        for (const QSize size : {QSize(1, 1), {1, 30'000}, {30'000, 1}, {193, 30'000}})
            QTest::addRow("%s, %d by %d", format, size.width(), size.height())
                << encoded(framed(size), format) << "picture";

    QTest::newRow("empty") << QByteArray() << "nothing";
    QTest::newRow("text") << QByteArray("not a picture\n") << "nothing";
    QTest::newRow("film") << QByteArray("\0\0\0\x14"
                                        "ftypqt  \0\0\0\0qt  ",
                                        20)
                                 + QByteArray(5'000, '\0')
                          << "nothing";
    QTest::newRow("SVG") << svg << "nothing";
    QTest::newRow("SVG that is said to be a JPEG") << "\xFF\xD8\xFF" + svg << "nothing";
    QTest::newRow("XPM") << encoded(framed({20, 20}), "xpm") << "nothing";
    QTest::newRow("PPM") << encoded(framed({20, 20}), "ppm") << "nothing";
    QTest::newRow("too long") << jpeg + QByteArray(64'000'000, '\0') << "nothing";

    for (const auto& [name, bytes] : {std::pair("JPEG", jpeg),
                                      {"progressive JPEG", progressive},
                                      {"PNG", png},
                                      {"BMP", bmp},
                                      {"GIF", gif(300, 300)}})
        for (const qsizetype length :
             {qsizetype(1), qsizetype(3), qsizetype(10), qsizetype(40), bytes.size() / 2, bytes.size() - 3}) {
            QTest::addRow("%s cut off after %d bytes", name, int(length))
                << bytes.left(length) << "picture or nothing";
            QByteArray spoilt = bytes;
            for (qsizetype i = length; i < spoilt.size(); i += 7)
                spoilt[i] = static_cast<char>(i * 37);
            QTest::addRow("%s spoilt from byte %d", name, int(length)) << spoilt << "picture or nothing";
        }

    QTest::newRow("huge JPEG") << jpegSaying(jpeg, 30'000, 30'000) << "nothing";
    QTest::newRow("huge progressive JPEG") << jpegSaying(progressive, 30'000, 30'000) << "nothing";
    QTest::newRow("large JPEG") << jpegSaying(jpeg, 15'000, 15'000) << "picture or nothing";
    QTest::newRow("large progressive JPEG") << jpegSaying(progressive, 15'000, 15'000) << "nothing";
    QTest::newRow("large JPEG, colour by colour")
        << colourByColour(jpegSaying(jpeg, 15'000, 15'000)) << "nothing";
    QTest::newRow("large JPEG behind rubbish")
        << jpegSaying(progressive, 15'000, 15'000).insert(2, "\0\xFF\0\xFF\xFF") << "nothing";
    QTest::newRow("huge PNG") << pngSaying(png, 30'000, 30'000) << "nothing";
    QTest::newRow("large PNG") << pngSaying(png, 15'000, 15'000) << "picture or nothing";
    QTest::newRow("PNG full of texts") << pngFullOfTexts() << "picture";
    QTest::newRow("huge BMP") << bmpSaying(bmp, 30'000, 30'000) << "nothing";
    QTest::newRow("large BMP") << bmpSaying(bmp, 15'000, 15'000) << "nothing";
    QTest::newRow("huge GIF") << gif(65'535, 65'535) << "nothing";
    QTest::newRow("large GIF") << gif(15'000, 15'000) << "nothing";
}

void ThumbnailDecoderTest::survivesAnyFile() {
    QFETCH(QByteArray, bytes);
    QFETCH(QString, right);
    // In a process of its own, whose memory can be measured and whose end is seen.
    (void)file(bytes);
    QProcess process;
    process.start(QCoreApplication::applicationFilePath(), {"--decode", m_folder.filePath("picture")});
    QVERIFY(process.waitForFinished());
    QVERIFY(process.readAllStandardError().count('\n') <= 1); // one decoder has a last word of its own
    QCOMPARE(process.exitStatus(), QProcess::NormalExit);
    QCOMPARE(process.exitCode(), 0);
    const QString said = process.readAllStandardOutput();
    QVERIFY2(right.contains(said.section(' ', 0, 0)), qPrintable(said));
    QVERIFY2(said.section(' ', 1).toInt() < 250'000, qPrintable(said));
}

void ThumbnailDecoderTest::givesUpInTime() {
    const QByteArray bytes = neverDone(jpegSaying(encoded(framed({400, 300}), "jpeg", true), 4'000, 4'000));
    QElapsedTimer timer;
    timer.start();
    QVERIFY(decodeThumbnail(file(bytes), 300ms).isNull());
    QVERIFY2(timer.elapsed() < 10'000, qPrintable(QString::number(timer.elapsed())));
}

void ThumbnailDecoderTest::survivesAFileThatShrinksMeanwhile() {
    for (const char* format : {"jpeg", "png", "bmp"}) {
        const QByteArray bytes = encoded(framed({2'000, 1'500}), format);
        for (int i = 0; i < 10; ++i) {
            platform::Descriptor descriptor = file(bytes);
            const int number = dup(descriptor.number());
            std::jthread shrinking([number, i, size = bytes.size()] {
                for (int step = 1; step <= 50; ++step) {
                    std::this_thread::sleep_for(std::chrono::microseconds(50 * i));
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
