#include "tools/sample_disk/applications.h"

#include "tools/sample_disk/app_icon.h"
#include "tools/sample_disk/fillings.h"
#include "tools/sample_disk/property_list.h"

#include <optional>
#include <string>

namespace sample_disk {

namespace {

enum Storage { library, sandbox }; ///< where an application keeps its files

struct Application {
    std::string_view name, identifier, version;
    std::int64_t bytes;
    int ageDays;
    Filling bundle;
    Storage storage = library;
    std::optional<IconFormat> icon = IconFormat::png;
};

constexpr Application installed[] = {
    {"1Password", "com.1password.1password", "8.10.23", 402_MB, 24, electronBundle},
    {"Anki", "net.ankiweb.dtop", "23.12.1", 386_MB, 190, nativeBundle, library, IconFormat::argb},
    {"Audacity", "org.audacityteam.audacity", "3.4.2", 164_MB, 210, nativeBundle},
    {"BBEdit", "com.barebones.bbedit", "15.0", 99_MB, 130, nativeBundle, sandbox, IconFormat::jpeg2000},
    {"Blender", "org.blenderfoundation.blender", "4.0.2", 1'118_MB, 212, suiteBundle},
    {"Discord", "com.hnc.Discord", "0.0.291", 374_MB, 8, electronBundle},
    {"Docker", "com.docker.docker", "4.26.1", 1'930_MB, 31, electronBundle},
    {"Dropbox", "com.getdropbox.dropbox", "189.4", 512_MB, 4, nativeBundle},
    {"Figma", "com.figma.Desktop", "116.15", 268_MB, 19, electronBundle},
    {"Firefox", "org.mozilla.firefox", "121.0", 394_MB, 11, nativeBundle},
    {"GIMP", "org.gimp.gimp-2.10", "2.10.36", 867_MB, 480, suiteBundle, library, IconFormat::rgb},
    {"GarageBand", "com.apple.garageband10", "10.4.8", 1'240_MB, 350, suiteBundle, sandbox},
    {"Google Chrome", "com.google.Chrome", "120.0.6099", 1'160_MB, 6, nativeBundle},
    {"IINA", "com.colliderli.iina", "1.3.3", 172_MB, 160, nativeBundle},
    {"iMovie", "com.apple.iMovieApp", "10.4", 2'780_MB, 350, suiteBundle, sandbox},
    {"Keynote", "com.apple.iWork.Keynote", "13.2", 684_MB, 120, suiteBundle, sandbox},
    {"LibreOffice", "org.libreoffice.script", "7.6.4", 796_MB, 133, suiteBundle},
    {"Parallels Desktop", "com.parallels.desktop.console", "19.1.1", 742_MB, 18, nativeBundle},
    {"Slack", "com.tinyspeck.slackmacgap", "4.36.136", 296_MB, 21, electronBundle},
    {"Spotify", "com.spotify.client", "1.2.27", 348_MB, 3, nativeBundle},
    {"Telegram", "ru.keepcoder.Telegram", "10.5", 214_MB, 27, nativeBundle, sandbox},
    {"Visual Studio Code", "com.microsoft.VSCode", "1.85.1", 586_MB, 12, electronBundle},
    {"VirtualBox", "org.virtualbox.app.VirtualBox", "7.0.12", 326_MB, 74, nativeBundle},
    {"VLC", "org.videolan.vlc", "3.0.20", 142_MB, 90, nativeBundle},
    {"WhatsApp", "net.whatsapp.WhatsApp", "23.25.85", 266_MB, 3, nativeBundle, sandbox},
    {"zoom.us", "us.zoom.xos", "5.17.1", 318_MB, 14, nativeBundle},
    // Their property lists are incomplete, missing or damaged.
    {"Pixel Ruler", "$(PRODUCT_BUNDLE_IDENTIFIER)", "0.9", 8_MB, 1'240, nativeBundle, library, {}},
    {"Label Printer", "", "", 31_MB, 1'510, nativeBundle, library, {}},
    {"Old Tax 2016", "<", "", 57_MB, 2'860, nativeBundle, library, {}},
};

/// In ~/Applications.
constexpr Application ofTheUser[] = {
    {"Inkscape", "org.inkscape.Inkscape", "1.3.2", 514_MB, 230, suiteBundle},
    {"Spotify", "com.spotify.client", "1.1.99", 322_MB, 730, nativeBundle},
    {"Zotero", "org.zotero.zotero", "6.0.30", 274_MB, 66, nativeBundle},
};

/// Parts of the Mac, which are not listed, and in Utilities, a folder that is not searched.
constexpr Application notListed[] = {
    {"Xcode", "com.apple.dt.Xcode", "15.1", 3'420_MB, 60, suiteBundle},
    {"Utilities/Disk Utility", "com.apple.DiskUtility", "22.6", 9_MB, 200, nativeBundle},
};

/// In ~/Library, at places where few applications keep anything.
constexpr Row rareFiles[] = {
    {"Preferences/ByHost/com.spotify.client.device.5C0E8A31-7D42-5B96-A1F3-0C9B64E2D718.plist", 2_KB, 3},
    {"WebKit/com.docker.docker.dashboard/", 14_MB, 31, webData},
    {"Group Containers/group.com.barebones.bbedit.shared/", 3_MB, 130, sharedData},
    {"HTTPStorages/org.mozilla.firefox.updates/", 240_KB, 11, webData},
    {"Cookies/us.zoom.xos.meetings.binarycookies", 7_KB, 14},
};

std::string information(const Application& application, PropertyListFormat format) {
    if (application.identifier == "<") // damaged
        return "<plist><dict><key>CFBundleName";
    return propertyList(textEntry("CFBundleIdentifier", application.identifier)
                            + textEntry("CFBundleName", application.name)
                            + (application.icon ? textEntry("CFBundleIconFile", "AppIcon") : std::string())
                            + textEntry("CFBundlePackageType", "APPL")
                            + textEntry("CFBundleShortVersionString", application.version),
                        format);
}

void makeBundles(DiskWriter& disk, const std::string& folder, std::span<const Application> applications,
                 Random& random) {
    bool isBinary = false;
    for (const Application& application : applications) {
        const auto format = isBinary ? PropertyListFormat::binary : PropertyListFormat::xml;
        const std::string contents = folder + std::string(application.name) + ".app/Contents";
        const std::string_view name = application.name.substr(application.name.find('/') + 1);
        makeFolder(disk, contents, application.bytes, application.ageDays, application.bundle, random, name);
        if (!application.identifier.empty())
            disk.text(contents + "/Info.plist", information(application, format), application.ageDays);
        if (application.icon)
            disk.text(contents + "/Resources/AppIcon.icns", iconFile(name, *application.icon),
                      application.ageDays);
        isBinary = !isBinary;
    }
}

void makeRelatedFiles(DiskWriter& disk, const Application& application, Random& random) {
    const std::string name(application.name);
    const std::string identifier(application.identifier);
    const int ageDays = random.between(0, application.ageDays);
    const auto folder = [&](const std::string& path, Filling filling, std::int64_t bytes) {
        makeFolder(disk, "~/Library/" + path, bytes, ageDays, filling, random, identifier);
    };
    const auto file = [&](const std::string& path, int percent, std::int64_t bytes) {
        if (random.chance(percent))
            disk.file("~/Library/" + path, bytes, ageDays);
    };
    if (application.storage == sandbox) {
        folder("Containers/" + identifier, sandboxData, random.between(2, 240) * 1_MB);
        folder("Application Scripts/" + identifier, {}, 0);
        if (random.chance(50))
            folder("Group Containers/group." + identifier, sharedData, random.between(1, 90) * 1_MB);
        return;
    }
    folder("Application Support/" + name, appSupport, random.between(1, 640) * 1_MB);
    folder("Saved Application State/" + identifier + ".savedState", windows, random.between(20, 900) * 1_KB);
    if (random.chance(30))
        folder("WebKit/" + identifier, webData, random.between(1, 30) * 1_MB);
    file("Preferences/" + identifier + ".plist", 100, random.between(1, 40) * 1_KB);
    file("HTTPStorages/" + identifier + ".binarycookies", 70, random.between(4, 90) * 1_KB);
    file("Preferences/ByHost/" + identifier + "." + random.uuid() + ".plist", 25, 2_KB);
    file("Cookies/" + identifier + ".binarycookies", 25, 9_KB);
}

} // namespace

void makeApplications(DiskWriter& disk, Random& random) {
    makeBundles(disk, "Applications/", installed, random);
    makeBundles(disk, "Applications/", notListed, random);
    makeBundles(disk, "~/Applications/", ofTheUser, random);
    disk.symbolicLink("Applications/Moved away.app", "/Volumes/Backup/Moved away.app", 900);
    disk.symbolicLink("Applications/Safari.app", "../System/Cryptexes/App/System/Applications/Safari.app",
                      200);
    constexpr std::size_t withoutIdentifier = 3; // the last ones
    for (const Application& application :
         std::span(installed).first(std::size(installed) - withoutIdentifier))
        makeRelatedFiles(disk, application, random);
    makeRelatedFiles(disk, ofTheUser[0], random);
    makeRelatedFiles(disk, ofTheUser[2], random);
    makeRows(disk, "~/Library/", rareFiles, random);
}

} // namespace sample_disk
