#include "ui/thumbnails/thumbnail_decoder.h"

#include "app/qt_log.h"
#include "ui/thumbnails/picture_file.h"

#include <QBrush>
#include <QColorSpace>
#include <QDeadlineTimer>
#include <QImageReader>
#include <QPainter>

#include <algorithm>
#include <utility>

namespace {

/// More than cameras produce, and still decoded within seconds. Images that are decoded at full size are
/// limited further by QImageReader's allocation limit.
constexpr qint64 maxPixels = 256'000'000;

QImage square(const QImage& picture) {
    const int side = std::min(picture.width(), picture.height());
    const QImage middle =
        picture.copy((picture.width() - side) / 2, (picture.height() - side) / 2, side, side);
    return middle.scaled(thumbnailSide, thumbnailSide, Qt::IgnoreAspectRatio, Qt::SmoothTransformation);
}

QImage rounded(const QImage& picture) {
    QImage result(picture.size(), QImage::Format_ARGB32_Premultiplied);
    result.fill(Qt::transparent);
    QPainter painter(&result);
    painter.setRenderHint(QPainter::Antialiasing);
    painter.setPen(Qt::NoPen);
    painter.setBrush(picture);
    constexpr double radius = thumbnailRadiusRatio * thumbnailSide;
    painter.drawRoundedRect(result.rect(), radius, radius);
    return result;
}

/// Decodes an image, scaled down to a square of this side according to `mode`.
QImage decode(platform::Descriptor file, int side, Qt::AspectRatioMode mode,
              std::chrono::milliseconds timeout) {
    silenceQt();
    const QDeadlineTimer deadline(timeout);
    PictureFile pictureFile(std::move(file), deadline);
    if (pictureFile.format().isEmpty())
        return {};
    QImageReader reader(&pictureFile, pictureFile.format());
    reader.setAutoDetectImageFormat(false);
    reader.setDecideFormatFromContent(false);
    reader.setAutoTransform(true);
    const QSize size = reader.size();
    if (size.isEmpty() || qint64(size.width()) * size.height() > maxPixels)
        return {};
    // Never scaled up: a very narrow image, expanded to fill the square, could become a million pixels long.
    const QSize scaled = size.scaled(side, side, mode).expandedTo({1, 1});
    if (scaled.width() < size.width() || scaled.height() < size.height())
        reader.setScaledSize(scaled);
    QImage picture = reader.read();
    return deadline.hasExpired() ? QImage() : picture;
}

QImage inScreenColors(const QImage& picture) {
    QImage result = picture.convertToFormat(QImage::Format_ARGB32_Premultiplied);
    result.convertToColorSpace(QColorSpace::SRgb);
    return result;
}

} // namespace

QImage decodeThumbnail(platform::Descriptor file, std::chrono::milliseconds timeout) {
    const QImage picture = decode(std::move(file), thumbnailSide, Qt::KeepAspectRatioByExpanding, timeout);
    return picture.isNull() ? picture : rounded(inScreenColors(square(picture)));
}

QImage decodePreview(platform::Descriptor file, std::chrono::milliseconds timeout) {
    const QImage picture = decode(std::move(file), previewSide, Qt::KeepAspectRatio, timeout);
    return picture.isNull() ? picture : inScreenColors(picture);
}
