#pragma once

#include "platform/files/descriptor.h"

#include <QImage>

#include <chrono>

/// Decodes an application's icon file (.icns) to a square of `side` pixels, which must be positive. Returns a
/// null image if the file has no picture that can be decoded, or if decoding it would take too much memory or
/// longer than `timeout`. Blocks; for any thread.
QImage decodeIcon(platform::Descriptor file, int side,
                  std::chrono::milliseconds timeout = std::chrono::seconds(5));
