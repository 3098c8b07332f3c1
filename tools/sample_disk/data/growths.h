#pragma once

#include <span>
#include <string_view>

namespace SampleDisk {

/// A family of names: one for each number.
struct NameForm {
    std::string_view before;
    std::string_view after;
};

struct Range {
    int low;
    int high;
};

/// How a part of the disk grows: the folders that its entries are shared among, and the trees in them.
struct Growth {
    std::string_view place;
    std::span<const std::string_view> units; ///< below the place
    int percent;                             ///< of all that is to grow
    int depth;                               ///< of the trees
    Range folders;                           ///< in each folder that isn't at the bottom
    Range files;                             ///< in each folder
    NameForm folderName;
    std::span<const NameForm> fileNames;
};

inline constexpr std::string_view cacheUnits[] = {
    "BraveSoftware",
    "CocoaPods",
    "com.adobe.Photoshop",
    "com.apple.Music",
    "com.apple.akd",
    "com.apple.appstore",
    "com.apple.nsurlsessiond",
    "com.apple.Spotlight",
    "com.apple.iTunes",
    "com.docker.helper",
    "com.github.GitHubClient",
    "com.googlecode.iterm2",
    "com.microsoft.Word",
    "com.microsoft.Excel",
    "com.microsoft.teams",
    "com.operasoftware.Opera",
    "com.sublimetext.4",
    "com.vivaldi.Vivaldi",
    "go-build",
    "Mozilla",
    "ms-playwright",
    "node-gyp",
    "org.mozilla.firefox",
    "pnpm",
    "typescript",
    "Coursier",
    "deno",
    "electron",
    "org.inkscape.Inkscape",
    "QGIS",
    "Thunderbird",
    "Zotero",
};

inline constexpr std::string_view projectUnits[] = {
    "almanac/node_modules",      "beacon/node_modules",      "cartographer/node_modules",
    "delta-shop/node_modules",   "ember/node_modules",       "fjord-admin/node_modules",
    "gazette/node_modules",      "harbour-web/node_modules", "inkwell/node_modules",
    "juniper-site/node_modules", "kestrel/node_modules",     "lighthouse/node_modules",
    "meridian/node_modules",     "notebook/node_modules",    "orchard/node_modules",
    "almanac/.git/objects",      "beacon/.git/objects",      "kestrel/.git/objects",
    "meridian/.git/objects",     "orchard/.git/objects",
};

inline constexpr std::string_view containerUnits[] = {
    "com.apple.mail/Data/Library/Mail Downloads", "com.apple.Notes/Data/Library/Notes",
    "com.apple.Maps/Data/Library/Maps",           "com.apple.photoanalysisd/Data/Library/Caches",
    "com.apple.podcasts/Data/Documents/Episodes", "com.apple.Safari/Data/Library/WebKit",
    "com.apple.stocks/Data/Library/Caches",       "ru.keepcoder.Telegram/Data/Library/Media",
    "net.whatsapp.WhatsApp/Data/Library/Media",   "com.barebones.bbedit/Data/Library/Backups",
};

inline constexpr std::string_view bundleUnits[] = {
    "Blender.app/Contents/Resources/4.0/scripts", "calibre.app/Contents/Resources/Python/lib",
    "GarageBand.app/Contents/Resources/Loops",    "GIMP.app/Contents/Resources/share",
    "iMovie.app/Contents/Resources/Titles",       "LibreOffice.app/Contents/Resources/gallery",
    "VirtualBox.app/Contents/MacOS/sdk",          "Visual Studio Code.app/Contents/Resources/app/extensions",
    "Xcode.app/Contents/Developer/Platforms",
};

inline constexpr NameForm cacheFiles[] = {{"f_", ""},       {"", ".cache"},      {"", "_0"},
                                          {"data-", ".db"}, {"image-", ".webp"}, {"entry-", ".json"},
                                          {".tmp-", ""}};
inline constexpr NameForm projectFiles[] = {
    {"index-", ".js"}, {"types-", ".d.ts"}, {"module-", ".mjs"}, {"map-", ".js.map"}, {".rc-", ".json"}};
inline constexpr NameForm containerFiles[] = {{"Item ", ".data"}, {"Photo ", ".jpeg"}, {"Part ", ".emlx"}};
inline constexpr NameForm bundleFiles[] = {{"module_", ".py"}, {"Icon ", ".png"}, {"strings-", ".strings"}};

inline constexpr Growth growths[] = {
    {"Users/camille/Library/Caches", cacheUnits, 38, 0, {0, 0}, {40, 260}, {"", ""}, cacheFiles},
    {"Users/camille/Documents/Developer", projectUnits, 28, 3, {0, 3}, {2, 9}, {"lib-", ""}, projectFiles},
    {"Users/camille/Library/Containers",
     containerUnits,
     14,
     2,
     {1, 4},
     {6, 40},
     {"Group ", ""},
     containerFiles},
    {"Applications", bundleUnits, 8, 2, {0, 5}, {4, 18}, {"part-", ".bundle"}, bundleFiles},
};

/// The folder that takes all that the growths leave, flat, and the one that goes down a long way.
inline constexpr std::string_view crowdedPlace = "Users/camille/Documents/Mail archive/Messages";
inline constexpr std::string_view deepPlace = "Users/camille/Documents/Archive/Nested backups";
inline constexpr int deepestLevel = 150;

} // namespace SampleDisk
