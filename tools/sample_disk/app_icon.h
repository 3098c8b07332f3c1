#pragma once

#include <string>
#include <string_view>

namespace sample_disk {

/// The formats of the pictures in an icon file.
enum class IconFormat {
    png,
    argb,     ///< compressed pixels in the small sizes, PNG in the large one
    rgb,      ///< compressed pixels with separate masks, as old applications have them
    jpeg2000, ///< which Lumvale does not decode
};

/// Returns the bytes of an application's icon file (.icns): a tile with the first letter of the name, in a
/// color that depends on the name.
std::string iconFile(std::string_view name, IconFormat format);

} // namespace sample_disk
