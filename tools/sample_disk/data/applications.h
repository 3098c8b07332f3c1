#pragma once

#include "tools/sample_disk/data/fillings.h"

#include <string_view>

namespace SampleDisk {

enum class Kit { native, electron, suite };
enum class Storage { library, sandbox }; ///< where an application keeps its files

struct Application {
    std::string_view name;
    std::string_view identifier;
    std::string_view version;
    std::int64_t bytes;
    int ageDays;
    Kit kit;
    Storage storage;
};

inline constexpr Application installedApplications[] = {
    {"1Password", "com.1password.1password", "8.10.23", 402_MB, 24, Kit::electron, Storage::library},
    {"Anki", "net.ankiweb.dtop", "23.12.1", 386_MB, 190, Kit::native, Storage::library},
    {"Audacity", "org.audacityteam.audacity", "3.4.2", 164_MB, 210, Kit::native, Storage::library},
    {"BBEdit", "com.barebones.bbedit", "15.0", 99_MB, 130, Kit::native, Storage::sandbox},
    {"Blender", "org.blenderfoundation.blender", "4.0.2", 1'118_MB, 212, Kit::suite, Storage::library},
    {"calibre", "net.kovidgoyal.calibre", "7.2.0", 684_MB, 310, Kit::native, Storage::library},
    {"Discord", "com.hnc.Discord", "0.0.291", 374_MB, 8, Kit::electron, Storage::library},
    {"Docker", "com.docker.docker", "4.26.1", 1'930_MB, 31, Kit::electron, Storage::library},
    {"Dropbox", "com.getdropbox.dropbox", "189.4", 512_MB, 4, Kit::native, Storage::library},
    {"Figma", "com.figma.Desktop", "116.15", 268_MB, 19, Kit::electron, Storage::library},
    {"Firefox", "org.mozilla.firefox", "121.0", 394_MB, 11, Kit::native, Storage::library},
    {"GIMP", "org.gimp.gimp-2.10", "2.10.36", 867_MB, 480, Kit::suite, Storage::library},
    {"GarageBand", "com.apple.garageband10", "10.4.8", 1'240_MB, 350, Kit::suite, Storage::sandbox},
    {"Google Chrome", "com.google.Chrome", "120.0.6099", 1'160_MB, 6, Kit::native, Storage::library},
    {"HandBrake", "fr.handbrake.HandBrake", "1.7.2", 104_MB, 260, Kit::native, Storage::sandbox},
    {"IINA", "com.colliderli.iina", "1.3.3", 172_MB, 160, Kit::native, Storage::library},
    {"iMovie", "com.apple.iMovieApp", "10.4", 2'780_MB, 350, Kit::suite, Storage::sandbox},
    {"iTerm", "com.googlecode.iterm2", "3.4.23", 78_MB, 88, Kit::native, Storage::library},
    {"KeePassXC", "org.keepassxc.keepassxc", "2.7.6", 96_MB, 140, Kit::native, Storage::library},
    {"Keynote", "com.apple.iWork.Keynote", "13.2", 684_MB, 120, Kit::suite, Storage::sandbox},
    {"LibreOffice", "org.libreoffice.script", "7.6.4", 796_MB, 133, Kit::suite, Storage::library},
    {"Numbers", "com.apple.iWork.Numbers", "13.2", 578_MB, 120, Kit::suite, Storage::sandbox},
    {"OBS", "com.obsproject.obs-studio", "30.0.2", 436_MB, 101, Kit::native, Storage::library},
    {"Pages", "com.apple.iWork.Pages", "13.2", 624_MB, 120, Kit::suite, Storage::sandbox},
    {"Parallels Desktop", "com.parallels.desktop.console", "19.1.1", 742_MB, 18, Kit::native,
     Storage::library},
    {"Signal", "org.whispersystems.signal-desktop", "6.43", 462_MB, 15, Kit::electron, Storage::library},
    {"Slack", "com.tinyspeck.slackmacgap", "4.36.136", 296_MB, 21, Kit::electron, Storage::library},
    {"Spotify", "com.spotify.client", "1.2.27", 348_MB, 3, Kit::native, Storage::library},
    {"Telegram", "ru.keepcoder.Telegram", "10.5", 214_MB, 27, Kit::native, Storage::sandbox},
    {"Thunderbird", "org.mozilla.thunderbird", "115.6", 312_MB, 43, Kit::native, Storage::library},
    {"Visual Studio Code", "com.microsoft.VSCode", "1.85.1", 586_MB, 12, Kit::electron, Storage::library},
    {"VirtualBox", "org.virtualbox.app.VirtualBox", "7.0.12", 326_MB, 74, Kit::native, Storage::library},
    {"VLC", "org.videolan.vlc", "3.0.20", 142_MB, 90, Kit::native, Storage::library},
    {"WhatsApp", "net.whatsapp.WhatsApp", "23.25.85", 266_MB, 3, Kit::native, Storage::sandbox},
    {"zoom.us", "us.zoom.xos", "5.17.1", 318_MB, 14, Kit::native, Storage::library},
};

/// In the user's own ~/Applications.
inline constexpr Application ownApplications[] = {
    {"Inkscape", "org.inkscape.Inkscape", "1.3.2", 514_MB, 230, Kit::suite, Storage::library},
    {"Spotify", "com.spotify.client", "1.1.99", 322_MB, 730, Kit::native, Storage::library},
    {"Zotero", "org.zotero.zotero", "6.0.30", 274_MB, 66, Kit::native, Storage::library},
};

/// Of the Mac itself, which the product leaves out of its list.
inline constexpr Application applicationsOfTheMac[] = {
    {"App Store", "com.apple.AppStore", "3.0", 18_MB, 200, Kit::native, Storage::sandbox},
    {"FaceTime", "com.apple.FaceTime", "36", 12_MB, 200, Kit::native, Storage::sandbox},
    {"Finder", "com.apple.finder", "14.2", 15_MB, 200, Kit::native, Storage::library},
    {"Lumvale", "com.lumvale.app", "1.0", 24_MB, 0, Kit::native, Storage::library},
    {"Mail", "com.apple.mail", "16.0", 28_MB, 200, Kit::native, Storage::sandbox},
    {"Messages", "com.apple.MobileSMS", "14.0", 6_MB, 200, Kit::native, Storage::sandbox},
    {"Music", "com.apple.Music", "1.4.2", 96_MB, 200, Kit::native, Storage::sandbox},
    {"Photos", "com.apple.Photos", "9.0", 44_MB, 200, Kit::native, Storage::sandbox},
    {"System Settings", "com.apple.systempreferences", "15.0", 9_MB, 200, Kit::native, Storage::library},
    {"Terminal", "com.apple.Terminal", "2.14", 10_MB, 200, Kit::native, Storage::library},
    {"Xcode", "com.apple.dt.Xcode", "15.1", 3'420_MB, 60, Kit::suite, Storage::library},
};

/// In /Applications/Utilities, below the top level that is listed.
inline constexpr Application utilities[] = {
    {"Activity Monitor", "com.apple.ActivityMonitor", "10.14", 11_MB, 200, Kit::native, Storage::library},
    {"Disk Utility", "com.apple.DiskUtility", "22.6", 9_MB, 200, Kit::native, Storage::library},
    {"XQuartz", "org.xquartz.X11", "2.8.5", 64_MB, 520, Kit::native, Storage::library},
};

/// What a few of them keep where few applications keep anything; below the home, and for every user.
inline constexpr Row rarerFiles[] = {
    {"Library/Preferences/ByHost/com.spotify.client.device.5C0E8A31-7D42-5B96-A1F3-0C9B64E2D718.plist", 2_KB,
     3},
    {"Library/WebKit/com.docker.docker.dashboard/", 14_MB, 31, webData},
    {"Library/Group Containers/group.com.barebones.bbedit.shared/", 3_MB, 130, sharedData},
    {"Library/HTTPStorages/org.mozilla.firefox.updates/", 240_KB, 11, httpStorage},
    {"Library/Cookies/us.zoom.xos.meetings.binarycookies", 7_KB, 14},
    {"Library/Autosave Information/Unsaved LibreOffice Document.plist", 12_KB, 40},
    {"Library/PreferencePanes/KeePassXC.prefPane/Contents/MacOS/KeePassXC", 380_KB, 140},
    {"Library/Services/Open in BBEdit.workflow/Contents/document.wflow", 18_KB, 130},
};
inline constexpr Row rarerSharedFiles[] = {
    {"Library/PreferencePanes/VirtualBox Network.prefPane/Contents/MacOS/VirtualBox Network", 520_KB, 74},
};

inline constexpr Piece nativeBundle[] = {
    {"PkgInfo", 1, 0},
    {"MacOS/%A", 1, 35},
    {"Resources/AppIcon.icns", 1, 2},
    {"Resources/Assets.car", 1, 12},
    {"Resources/en.lproj/Localizable.strings", 1, 1},
    {"Resources/fr.lproj/Localizable.strings", 1, 1},
    {"Resources/de.lproj/Localizable.strings", 1, 1},
    {"Resources/es.lproj/Localizable.strings", 1, 1},
    {"Resources/ja.lproj/Localizable.strings", 1, 1},
    {"Resources/Base.lproj/MainMenu.nib", 1, 1},
    {"Resources/Image %N.png", 10, 4},
    {"Frameworks/%A Core.framework/Versions/A/%A Core", 1, 34},
    {"Frameworks/%A Core.framework/Versions/A/Resources/Info.plist", 1, 0},
    {"Frameworks/Sparkle.framework/Versions/B/Sparkle", 1, 3},
    {"Frameworks/lib%H.dylib", 6, 12},
    {"_CodeSignature/CodeResources", 1, 0},
};

inline constexpr Piece electronBundle[] = {
    {"PkgInfo", 1, 0},
    {"MacOS/%A", 1, 1},
    {"Resources/electron.icns", 1, 1},
    {"Resources/app.asar", 1, 30},
    {"Resources/app.asar.unpacked/node_modules/native-%N/build/Release/addon.node", 5, 8},
    {"Resources/en.lproj/locale.pak", 1, 0},
    {"Resources/fr.lproj/locale.pak", 1, 0},
    {"Resources/de.lproj/locale.pak", 1, 0},
    {"Frameworks/Electron Framework.framework/Versions/A/Electron Framework", 1, 52},
    {"Frameworks/Electron Framework.framework/Versions/A/Libraries/lib%H.dylib", 4, 6},
    {"Frameworks/%A Helper (Renderer).app/Contents/MacOS/%A Helper (Renderer)", 1, 1},
    {"Frameworks/%A Helper (Renderer).app/Contents/Info.plist", 1, 0},
    {"_CodeSignature/CodeResources", 1, 0},
};

inline constexpr Piece suiteBundle[] = {
    {"PkgInfo", 1, 0},
    {"MacOS/%A", 1, 10},
    {"Resources/AppIcon.icns", 1, 1},
    {"Resources/Templates/Template %N.nmbtemplate", 24, 30},
    {"Resources/Media/%H.m4a", 24, 25},
    {"Resources/en.lproj/Localizable.strings", 1, 1},
    {"Resources/fr.lproj/Localizable.strings", 1, 1},
    {"Resources/.build-stamp", 1, 0},
    {"Frameworks/%A Kit.framework/Versions/A/%A Kit", 1, 20},
    {"PlugIns/Extension %N.appex/Contents/MacOS/Extension", 5, 10},
    {"_CodeSignature/CodeResources", 1, 0},
};

} // namespace SampleDisk
