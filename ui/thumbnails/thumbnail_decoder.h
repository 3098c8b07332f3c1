#pragma once

#include "platform/files/descriptor.h"

#include <QImage>

#include <chrono>

/// Pixels of a side; a tile is half as wide in points, so that it is sharp on a fine display too.
constexpr int thumbnailSide = 192;
/// What of a side a corner's radius is: as round as the other tiles.
constexpr double thumbnailCorner = 12.0 / 96;

/// The picture in an open file, filling a square from its middle, with round corners; it stands as it was
/// taken. A null image where the file is no picture, is a broken one, or would take unreasonably much memory
/// or longer than `patience`. Blocks; for any thread.
QImage decodeThumbnail(platform::Descriptor file,
                       std::chrono::milliseconds patience = std::chrono::seconds(5));
