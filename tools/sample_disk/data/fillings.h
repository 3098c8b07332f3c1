#pragma once

#include "tools/sample_disk/contents.h"

namespace SampleDisk {

inline constexpr Piece urlCache[] = {
    {"Cache.db", 1, 20},
    {"Cache.db-wal", 1, 4},
    {"Cache.db-shm", 1, 1},
    {"fsCachedData/%U", 12, 75},
};

inline constexpr Piece browserCache[] = {
    {"Default/Cache/Cache_Data/index", 1, 1},  {"Default/Cache/Cache_Data/data_%N", 4, 6},
    {"Default/Cache/Cache_Data/f_%H", 40, 60}, {"Default/Code Cache/js/%H_0", 16, 25},
    {"Default/Code Cache/wasm/%H_0", 3, 8},    {"Default/Storage/ext/.lock", 1, 0},
};

inline constexpr Piece mediaCache[] = {
    {"Data/%H.file", 30, 90},
    {"PersistentCache/Storage/index.dat", 1, 1},
    {"Browser/Cache/Cache_Data/f_%H", 8, 9},
};

inline constexpr Piece packageCache[] = {
    {"downloads/%H--package-%N.tar.gz", 16, 80},
    {"_cacache/content-v2/sha512/%H", 24, 20},
    {"api/formula.jws.json", 1, 2},
};

inline constexpr Piece updateStage[] = {
    {"update.%H/Update.app/Contents/MacOS/Update", 1, 30},
    {"update.%H/Update.zip", 1, 70},
    {"ShipItState.plist", 1, 1},
};

inline constexpr Piece mapTiles[] = {
    {"MapTiles/MapTiles.sqlitedb", 1, 60},
    {"MapTiles/MapTiles.sqlitedb-wal", 1, 5},
    {"Resources/%H.styl", 6, 35},
};

inline constexpr Piece passes[] = {
    {"Passes/%H.pkpass/logo.png", 3, 60},
    {"Passes/%H.pkpass/pass.json", 3, 40},
};

inline constexpr Piece onlyHidden[] = {
    {".keep", 1, 1},
    {".state/%H", 2, 3},
};

inline constexpr Piece logFiles[] = {
    {"main.log", 1, 40},
    {"main.%N.log", 4, 40},
    {"archive/%H.log.gz", 3, 20},
};

inline constexpr Piece crashReports[] = {
    {"Firefox_%H_Camilles-MacBook.crash", 3, 20},
    {"Spotify_%H_Camilles-MacBook.ips", 4, 20},
    {"Blender_%H_Camilles-MacBook.diag", 2, 50},
    {"Retired/Skype_%H_Camilles-MacBook.crash", 5, 10},
};

inline constexpr Piece buildProducts[] = {
    {"info.plist", 1, 1},
    {"Build/Intermediates.noindex/Debug/Objects-normal/arm64/%H.o", 30, 45},
    {"Build/Products/Debug/App.app/Contents/MacOS/App", 1, 15},
    {"Index.noindex/DataStore/v5/units/%H", 24, 25},
    {"Logs/Build/%U.xcactivitylog", 5, 4},
    {"ModuleCache.noindex/%H.pcm", 8, 10},
};

inline constexpr Piece modules[] = {{"%H/Foundation-%H.pcm", 10, 70},
                                    {"%H/SwiftShims-%H.swiftmodule", 10, 30}};

inline constexpr Piece simulatorRuntime[] = {
    {"com.apple.CoreSimulator.SimRuntime.iOS-17-2/dyld_sim_shared_cache_arm64", 1, 96},
    {"com.apple.CoreSimulator.SimRuntime.iOS-17-2/dyld_sim_shared_cache_arm64.map", 1, 4},
};

inline constexpr Piece appSupport[] = {
    {"settings.json", 1, 1},
    {"databases/main.sqlite", 1, 40},
    {"databases/main.sqlite-wal", 1, 4},
    {"Local Storage/leveldb/%N.ldb", 5, 25},
    {"blobs/%U", 6, 30},
    {".DS_Store", 1, 0},
};

inline constexpr Piece sandboxData[] = {
    {".com.apple.containermanagerd.metadata.plist", 1, 0},
    {"Data/Library/Application Support/%A/store.sqlite", 1, 60},
    {"Data/Library/Caches/%A/Cache.db", 1, 20},
    {"Data/Library/Preferences/%A.plist", 1, 1},
    {"Data/Documents/Item %N.data", 4, 19},
};

inline constexpr Piece sharedData[] = {
    {"Library/Preferences/shared.plist", 1, 1},
    {"Library/Application Support/Shared.sqlite", 1, 70},
    {"Library/Caches/%U", 4, 29},
};

inline constexpr Piece windows[] = {{"data.data", 1, 40}, {"window_%N.data", 2, 58}, {"windows.plist", 1, 2}};
inline constexpr Piece webData[] = {
    {"WebsiteData/LocalStorage/%H.localstorage", 4, 60},
    {"WebsiteData/ResourceLoadStatistics/observations.db", 1, 40},
};
inline constexpr Piece httpStorage[] = {{"httpstorages.sqlite", 1, 90}, {"httpstorages.sqlite-shm", 1, 10}};
inline constexpr Piece script[] = {{"Open in browser.scpt", 1, 1}};

inline constexpr Piece pictures[] = {{"IMG_%H.HEIC", 24, 80}, {"IMG_%H.JPG", 8, 20}, {".DS_Store", 1, 0}};
inline constexpr Piece letters[] = {{"Letter %N.pages", 14, 50}, {"Scan %H.pdf", 10, 50}};
inline constexpr Piece sheets[] = {{"Budget %N.numbers", 6, 40}, {"Invoice %H.pdf", 18, 60}};
inline constexpr Piece songs[] = {{"%N Track.m4a", 11, 95}, {"Booklet.pdf", 1, 5}};

inline constexpr Piece sourceTree[] = {
    {"README.md", 1, 1},
    {"package.json", 1, 1},
    {".gitignore", 1, 0},
    {".git/HEAD", 1, 0},
    {".git/objects/pack/pack-%H.pack", 2, 40},
    {"src/module-%N.ts", 24, 8},
    {"node_modules/library-%N/index.js", 60, 30},
    {"node_modules/library-%N/package.json", 60, 10},
    {"node_modules/.bin/tool-%N", 12, 1},
};

inline constexpr Piece sparseBands[] = {{"Info.plist", 1, 0}, {"token", 1, 0}, {"bands/%H", 24, 100}};
inline constexpr Piece filmProject[] = {
    {"CurrentVersion.fcpevent", 1, 1},
    {"Original Media/Clip %N.mov", 6, 90},
    {"Render Files/High Quality Media/%H.mov", 4, 9},
};

inline constexpr Piece guestDisk[] = {
    {"config.pvs", 1, 0},
    {"parallels.log", 1, 0},
    {"harddisk.hdd/harddisk.hdd.0.{%U}.hds", 1, 100},
};
inline constexpr Piece virtualBoxGuest[] = {
    {"Disk.vdi", 1, 100},
    {"Guest.vbox", 1, 0},
    {"Logs/VBox.log", 1, 0},
    {"Snapshots/{%U}.vdi", 1, 12},
};
inline constexpr Piece vmwareGuest[] = {
    {"Guest.vmx", 1, 0},
    {"Guest.nvram", 1, 0},
    {"vmware.log", 1, 0},
    {"Virtual Disk-s%N.vmdk", 8, 100},
};

} // namespace SampleDisk
