#include "core/uninstall/app_icon.h"

#include "platform/files/path.h"
#include "platform/property_lists/property_list.h"
#include "platform/text/text.h"

#include <cerrno>
#include <optional>
#include <string>

namespace core::LumvaleUninstaller {

platform::Result<platform::Descriptor> openAppIcon(const platform::Disk& disk, std::string_view bundle) {
    const std::string contents = platform::joined(bundle, "Contents");
    const auto information = platform::PropertyList::read(disk, platform::joined(contents, "Info.plist"));
    if (!information)
        return information.error();
    std::optional<std::string> name = information->string("CFBundleIconFile");
    if (!name || name->empty() || name->find('/') != std::string::npos)
        return platform::posixError(ENOENT);
    if (platform::lowercased(platform::extension(*name)) != "icns")
        name->append(".icns");
    return disk.openFile(platform::joined(platform::joined(contents, "Resources"), *name));
}

} // namespace core::LumvaleUninstaller
