#include "ui/thumbnails/icon_decoder.h"

#include "app/qt_log.h"
#include "platform/pictures/icon_file.h"
#include "ui/thumbnails/picture_file.h"

#include <QColorSpace>
#include <QDeadlineTimer>
#include <QImageReader>

#include <cstring>
#include <utility>

namespace {

QImage decodePng(platform::Descriptor file, platform::FilePart part, std::chrono::milliseconds timeout) {
    const QDeadlineTimer deadline(timeout);
    PictureFile pictureFile(std::move(file), deadline, part);
    if (pictureFile.format() != "png")
        return {};
    QImageReader reader(&pictureFile, pictureFile.format());
    reader.setAutoDetectImageFormat(false);
    reader.setDecideFormatFromContent(false);
    QImage image = reader.read();
    if (deadline.hasExpired())
        return {};
    image.convertToColorSpace(QColorSpace::SRgb);
    return image;
}

QImage decodePixels(const platform::Descriptor& file, const platform::IconPicture& picture) {
    const std::vector<std::uint32_t> pixels = platform::readIconPixels(file, picture);
    if (pixels.empty())
        return {};
    QImage image(picture.side, picture.side, QImage::Format_ARGB32);
    std::memcpy(image.bits(), pixels.data(), pixels.size() * sizeof pixels.front());
    return image;
}

} // namespace

QImage decodeIcon(platform::Descriptor file, int side, std::chrono::milliseconds timeout) {
    silenceQt();
    const std::optional<platform::IconPicture> picture = platform::findIconPicture(file, side);
    if (!picture)
        return {};
    const bool isPng = picture->format == platform::IconPicture::Format::png;
    const QImage image =
        isPng ? decodePng(std::move(file), picture->content, timeout) : decodePixels(file, *picture);
    if (image.isNull())
        return {};
    // Multiplied by the opacity before it is scaled: transparent pixels have any color.
    return image.convertToFormat(QImage::Format_ARGB32_Premultiplied)
        .scaled(side, side, Qt::IgnoreAspectRatio, Qt::SmoothTransformation);
}
