#pragma once

#include "platform/files/descriptor.h"

#include <QImage>

#include <chrono>

/// Side in pixels: twice the side of a tile, for displays with a device pixel ratio of 2.
constexpr int thumbnailSide = 192;
/// Longest side in pixels of a preview.
constexpr int previewSide = 2560;
/// Corner radius as a fraction of the side, equal to that of the other tiles.
constexpr double thumbnailRadiusRatio = 12.0 / 96;

/// Decodes an image file to a square thumbnail in sRGB: the center of the image, rotated according to its
/// metadata, with round corners. Returns a null image if the file is no image or is damaged, or if decoding
/// it would take too much memory or longer than `timeout`. Blocks; for any thread.
QImage decodeThumbnail(platform::Descriptor file,
                       std::chrono::milliseconds timeout = std::chrono::seconds(5));

/// Does the same for a preview: the whole image, scaled down to previewSide if it is larger.
QImage decodePreview(platform::Descriptor file, std::chrono::milliseconds timeout = std::chrono::seconds(20));
