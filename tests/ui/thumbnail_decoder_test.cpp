#include "ui/thumbnails/thumbnail_decoder.h"

#include "ui/thumbnails/icon_decoder.h"
#include "ui/thumbnails/picture_file.h"

#include <QBuffer>
#include <QByteArray>
#include <QCoreApplication>
#include <QDeadlineTimer>
#include <QFile>
#include <QImage>
#include <QImageWriter>
#include <QPainter>
#include <QProcess>
#include <QTemporaryDir>
#include <QTest>

#include <algorithm>
#include <chrono>
#include <string_view>
#include <tuple>

#include <fcntl.h>
#include <sys/resource.h>

namespace {

QByteArray encoded(const QImage& image, const char* format, bool isProgressive = false) {
    QBuffer buffer;
    buffer.open(QIODevice::WriteOnly);
    QImageWriter writer(&buffer, format);
    writer.setProgressiveScanWrite(isProgressive);
    return writer.write(image) ? buffer.data() : QByteArray();
}

/// A big-endian number.
QByteArray bytesOf(quint16 number) {
    return QByteArray(1, static_cast<char>(number >> 8)) + static_cast<char>(number & 0xFF);
}

/// A block of an application's icon file.
QByteArray block(const char* type, const QByteArray& content) {
    const auto length = quint32(content.size()) + 8;
    return type + bytesOf(quint16(length >> 16)) + bytesOf(quint16(length & 0xFFFF)) + content;
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

/// The colors at the left and the upper edge, a letter each.
QString edges(const QImage& thumbnail) {
    QString found;
    for (const QPoint point : {QPoint(8, 96), QPoint(96, 8)}) {
        const QRgb color = thumbnail.pixel(point);
        found +=
            QLatin1Char("kbgcrmyw"[qRed(color) / 128 * 4 + qGreen(color) / 128 * 2 + qBlue(color) / 128]);
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

/// The JPEG with another size in its header.
QByteArray claiming(quint16 side, QByteArray jpeg) {
    const qsizetype frame = std::max(jpeg.indexOf("\xFF\xC0"), jpeg.indexOf("\xFF\xC2"));
    return jpeg.replace(frame + 5, 4, bytesOf(side).repeated(2));
}

/// A PNG with text chunks that inflate to a thousand times their size.
QByteArray pngWithTexts() {
    QImage image = framed({300, 300});
    for (int i = 0; i < 25; ++i)
        image.setText(QString::number(i), QString(7'900'000, QLatin1Char('a')));
    return encoded(image, "png");
}

enum Outcome { nothing, picture, tooMuchMemory };

/// Returns the outcome of decoding the file. Run in a process of its own.
Outcome decoding(const char* path) {
    // Systems report the peak in different units.
    const auto peakMemory = [] {
        rusage usage{};
        getrusage(RUSAGE_SELF, &usage);
        return usage.ru_maxrss;
    };
    const auto before = peakMemory();
    const QImage thumbnail = decodeThumbnail(platform::Descriptor(open(path, O_RDONLY | O_CLOEXEC)));
    return peakMemory() > 8 * before ? tooMuchMemory : thumbnail.isNull() ? nothing : picture;
}

} // namespace

class ThumbnailDecoderTest : public QObject {
    Q_OBJECT

private Q_SLOTS:
    void cropsToASquareInTheStoredOrientation();
    void decodesIconsOfBothKinds();
    void survivesHostileFiles();
    void endsAtItsDeadline();
    void survivesAFileThatShrinks();

private:
    platform::Descriptor file(const QByteArray& bytes) const;
    QString path() const { return m_folder.filePath("picture"); }

    QTemporaryDir m_folder;
};

platform::Descriptor ThumbnailDecoderTest::file(const QByteArray& bytes) const {
    QFile file(path());
    if (!file.open(QIODevice::WriteOnly) || file.write(bytes) != bytes.size())
        return {};
    file.close();
    return platform::Descriptor(open(path().toLocal8Bit().constData(), O_RDONLY | O_CLOEXEC));
}

void ThumbnailDecoderTest::cropsToASquareInTheStoredOrientation() {
    for (const QSize size : {QSize(192, 192), {400, 200}, {32, 64}, {3008, 2000}, {199, 5000}, {1, 30'000}}) {
        const QImage thumbnail = decodeThumbnail(file(encoded(framed(size), "png")));
        QCOMPARE(thumbnail.size(), QSize(192, 192));
        QVERIFY(size.width() == 1 || edges(thumbnail) == "gb");
        QCOMPARE(thumbnail.pixelColor(0, 0).alpha(), 0); // round corners
    }
    for (const auto& [orientation, seen] : {std::pair(1, "gb"), {2, "wb"}, {3, "ww"}, {6, "wg"}, {8, "bw"}})
        QCOMPARE(
            edges(decodeThumbnail(file(turned(encoded(framed({1200, 800}), "jpeg"), quint16(orientation))))),
            seen);
    for (const auto& [size, seen] : {std::pair(QSize(300, 200), QSize(300, 200)),
                                     {{5120, 2000}, {2560, 1000}},
                                     {{1, 30'000}, {1, 2560}}})
        QCOMPARE(decodePreview(file(encoded(framed(size), "png"))).size(), seen);
}

void ThumbnailDecoderTest::decodesIconsOfBothKinds() {
    const QColor color(255, 0, 0, 64);
    QImage image(64, 64, QImage::Format_ARGB32);
    image.fill(color);
    const QByteArray png = encoded(image, "png");
    QByteArray raw = "ARGB";
    for (const char value : {'\x40', '\xFF', '\0', '\0'}) // 8 times 128 pixels for each channel
        raw += (QByteArray("\xFD") + value).repeated(8);
    const std::tuple<const char*, QByteArray, QColor> cases[]{
        {"PNG", block("TOC ", "ic12") + block("ic12", png) + block("name", "x"), color},
        {"truncated PNG", block("ic12", png).chopped(png.size() / 2), {}},
        {"PNG with inflating texts", block("ic08", pngWithTexts()), Qt::white},
        {"pixels", block("ic05", raw), color},
    };
    for (const auto& [what, blocks, expected] : cases) {
        const QImage icon = decodeIcon(file("icns0000" + blocks), 24);
        QVERIFY2(icon.isNull() != expected.isValid(), what);
        QVERIFY2(icon.isNull() || (icon.size() == QSize(24, 24) && icon.pixelColor(12, 12) == expected),
                 what);
    }
}

void ThumbnailDecoderTest::survivesHostileFiles() {
    const QByteArray jpeg = encoded(framed({400, 300}), "jpeg");
    const QByteArray progressive = encoded(framed({400, 300}), "jpeg", true);
    const QByteArray svg =
        "<svg xmlns='http://www.w3.org/2000/svg' width='9' height='9'><image href='/x.png'/></svg>";
    const std::tuple<const char*, QByteArray, Outcome> cases[]{
        {"progressive JPEG", progressive, picture},
        {"PNG with inflating texts", pngWithTexts(), picture},
        {"SVG", svg, nothing},
        {"SVG with the signature of JPEG", "\xFF\xD8\xFF" + svg, nothing},
        {"too long", jpeg + QByteArray(64'000'000, '\0'), nothing},
        {"large JPEG", claiming(15'000, jpeg), picture},
        {"huge JPEG", claiming(17'000, jpeg), nothing},
        {"large progressive JPEG", claiming(15'000, progressive), nothing},
        {"large JPEG, not interleaved", notInterleaved(claiming(15'000, jpeg)), nothing},
        {"large progressive JPEG after padding",
         claiming(15'000, progressive).insert(2, QByteArray("\xFF\0\xFF", 3)), nothing},
    };
    for (const auto& [what, bytes, expected] : cases) {
        (void)file(bytes);
        const int outcome = QProcess::execute(QCoreApplication::applicationFilePath(), {"--decode", path()});
        QVERIFY2(outcome == expected, what);
    }
}

void ThumbnailDecoderTest::endsAtItsDeadline() {
    const QByteArray bytes = endless(claiming(4'000, encoded(framed({400, 300}), "jpeg", true)));
    QVERIFY(decodeThumbnail(file(bytes), std::chrono::milliseconds(300)).isNull());
}

void ThumbnailDecoderTest::survivesAFileThatShrinks() {
    PictureFile picture(file(encoded(framed({400, 300}), "jpeg")), QDeadlineTimer(QDeadlineTimer::Forever));
    QVERIFY(QFile::resize(path(), 1'000));
    QCOMPARE(picture.readAll().size(), 1'000);
}

int main(int argc, char** argv) {
    const QCoreApplication application(argc, argv);
    if (argc == 3 && argv[1] == std::string_view("--decode"))
        return decoding(argv[2]);
    ThumbnailDecoderTest test;
    return QTest::qExec(&test, argc, argv);
}

#include "thumbnail_decoder_test.moc"
