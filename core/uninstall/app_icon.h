#pragma once

#include "platform/base/result.h"
#include "platform/files/descriptor.h"
#include "platform/files/disk.h"

#include <string_view>

namespace core::LumvaleUninstaller {

/// Opens the icon file of the application with this bundle: the one in "Contents/Resources" that its
/// Info.plist names as CFBundleIconFile, with or without ".icns". Fails for a bundle without one, such as
/// that of an application whose icon is in a catalogue of assets only. Blocks; for any thread.
platform::Result<platform::Descriptor> openAppIcon(const platform::Disk& disk, std::string_view bundle);

} // namespace core::LumvaleUninstaller
