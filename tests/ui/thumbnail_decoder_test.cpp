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

/// A number, high byte first.
template <class Number>
QByteArray bytesOf(Number number) {
    number = qToBigEndian(number);
    return {reinterpret_cast<const char*>(&number), sizeof number};
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
                            + bytesOf(orientation) + QByteArray(6, '\0');
    return jpeg.insert(2, "\xFF\xE1" + bytesOf(quint16(exif.size() + 2)) + exif);
}

/// A JPEG whose colours don't lie together but come one after the other.
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

/// A picture whose header tells of another size.
QByteArray saying(quint16 side, QByteArray picture) {
    const QByteArray high = bytesOf(side);
    const QByteArray low = QByteArray(1, high[1]) + high[0];
    if (picture.startsWith("BM"))
        return picture.replace(18, 8, (low + QByteArray(2, '\0')).repeated(2));
    if (picture.startsWith("GIF"))
        return picture.replace(6, 4, low + low).replace(24, 4, low + low);
    if (picture.startsWith("\x89PNG")) {
        picture.replace(16, 8, bytesOf(quint32(side)).repeated(2));
        return picture.replace(29, 4, bytesOf(checksum(picture.mid(12, 17))));
    }
    const qsizetype frame = std::max(picture.indexOf("\xFF\xC0"), picture.indexOf("\xFF\xC2"));
    return picture.replace(frame + 5, 4, high + high);
}

/// A PNG with texts that unpack to a thousand times their size.
QByteArray pngFullOfTexts() {
    QImage image = framed({300, 300});
    for (int i = 0; i < 25; ++i)
        image.setText(QString::number(i), QString(7'900'000, QLatin1Char('a')));
    return encoded(image, "png");
}

/// One pixel; the toolkit writes none.
const QByteArray gif("GIF89a\1\0\1\0\x80\0\0\xFF\0\0\0\0\xFF,\0\0\0\0\1\0\1\0\0\2\2\x44\1\0;", 35);

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
    void fillsASquareFromTheMiddle();
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

void ThumbnailDecoderTest::fillsASquareFromTheMiddle() {
    for (const char* format : {"jpeg", "png", "bmp"})
        for (const auto& [width, height] :
             {std::pair(192, 192), {400, 200}, {200, 400}, {32, 64}, {3008, 2000}, {2000, 40}, {199, 5000}}) {
            const QImage thumbnail = decodeThumbnail(file(encoded(framed({width, height}), format)));
            QCOMPARE(thumbnail.size(), QSize(192, 192));
            QCOMPARE(QString("%1 %2").arg(format, edges(thumbnail)), QString("%1 gbcmw").arg(format));
        }
}

void ThumbnailDecoderTest::standsAsItWasTaken() {
    for (const auto& [orientation, seen] :
         {std::pair(1, "gbcmw"), {2, "cbgmw"}, {3, "cmgbw"}, {6, "mgbcw"}, {8, "bcmgw"}})
        for (const QSize size : {QSize(1200, 800), QSize(60, 90)})
            QCOMPARE(
                edges(decodeThumbnail(file(turned(encoded(framed(size), "jpeg"), quint16(orientation))))),
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
    const QImage image = framed({400, 300});
    const QByteArray jpeg = encoded(image, "jpeg");
    const QByteArray progressive = encoded(image, "jpeg", true);
    const QByteArray png = encoded(image, "png");
    const QByteArray bmp = encoded(framed({40, 30}), "bmp");
    const QByteArray svg =
        "<svg xmlns='http://www.w3.org/2000/svg' width='9' height='9'><image href='/x.png'/></svg>";
    const QByteArray film = QByteArray("\0\0\0\x14", 4) + "ftypqt  " + QByteArray(5'000, '\0');
    const QString picture = "picture";
    const QString nothing = "nothing";
    const QString either = "picture or nothing";

    const struct {
        const char* name;
        QByteArray bytes;
        QString right;
    } files[]{
        {"GIF", gif, picture},
        {"progressive JPEG", progressive, picture},
        {"grey JPEG", encoded(image.convertToFormat(QImage::Format_Grayscale8), "jpeg"), picture},
        {"PNG of one bit", encoded(image.convertToFormat(QImage::Format_Mono), "png"), picture},
        {"PNG of 16 bits", encoded(image.convertToFormat(QImage::Format_RGBA64), "png"), picture},
        {"PNG full of texts", pngFullOfTexts(), picture},
        {"empty", "", nothing},
        {"text", "not a picture\n", nothing},
        {"film", film, nothing},
        {"SVG", svg, nothing},
        {"SVG that is said to be a JPEG", "\xFF\xD8\xFF" + svg, nothing},
        {"XPM", encoded(framed({20, 20}), "xpm"), nothing},
        {"PPM", encoded(framed({20, 20}), "ppm"), nothing},
        {"too long", jpeg + QByteArray(64'000'000, '\0'), nothing},
        {"large JPEG", saying(15'000, jpeg), either},
        {"large progressive JPEG", saying(15'000, progressive), nothing},
        {"large JPEG, colour by colour", colourByColour(saying(15'000, jpeg)), nothing},
        {"large JPEG behind rubbish", saying(15'000, progressive).insert(2, "\0\xFF\0\xFF\xFF"), nothing},
        {"large PNG", saying(15'000, png), either},
        {"large BMP", saying(15'000, bmp), nothing},
        {"large GIF", saying(15'000, gif), nothing},
        {"huge JPEG", saying(30'000, jpeg), nothing},
        {"huge progressive JPEG", saying(30'000, progressive), nothing},
        {"huge PNG", saying(30'000, png), nothing},
        {"huge BMP", saying(30'000, bmp), nothing},
        {"huge GIF", saying(65'535, gif), nothing},
    };
    for (const auto& [name, bytes, right] : files)
        QTest::newRow(name) << bytes << right;
    for (const char* format : {"png", "jpeg", "bmp"})
        for (const QSize size : {QSize(1, 1), {1, 30'000}, {30'000, 1}, {193, 30'000}})
            QTest::addRow("%s, %d by %d", format, size.width(), size.height())
                << encoded(framed(size), format) << picture;
    for (const QByteArray& bytes : {jpeg, progressive, png, bmp, saying(300, gif)})
        for (const qsizetype length : {qsizetype(1), qsizetype(3), qsizetype(10), bytes.size() / 3,
                                       bytes.size() / 2, bytes.size() - 3}) {
            const QByteArray name = bytes.mid(0, 4).toHex() + " after byte " + QByteArray::number(length);
            QTest::addRow("cut off, %s", name.data()) << bytes.left(length) << either;
            QByteArray spoilt = bytes;
            for (qsizetype i = length; i < spoilt.size(); i += 7)
                spoilt[i] = static_cast<char>(i * 37);
            QTest::addRow("spoilt, %s", name.data()) << spoilt << either;
        }
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
    const QByteArray bytes = neverDone(saying(4'000, encoded(framed({400, 300}), "jpeg", true)));
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
