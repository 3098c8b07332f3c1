#pragma once

#include "tools/sample_disk/rows.h"

namespace sample_disk {

inline constexpr Piece urlCache[] = {
    {"Cache.db", 1, 20}, {"Cache.db-wal", 1, 5}, {"fsCachedData/%U", 12, 75}};
inline constexpr Piece browserCache[] = {
    {"Default/Cache/Cache_Data/data_%N", 4, 6},
    {"Default/Cache/Cache_Data/f_%H", 40, 64},
    {"Default/Code Cache/js/%H_0", 16, 30},
    {"Default/Storage/ext/.lock", 1, 0},
};
inline constexpr Piece mediaCache[] = {{"Data/%H.file", 30, 90}, {"Browser/Cache/Cache_Data/f_%H", 8, 10}};
inline constexpr Piece packageCache[] = {
    {"downloads/%H--package-%N.tar.gz", 16, 80},
    {"_cacache/content-v2/sha512/%H", 24, 20},
};
inline constexpr Piece updateStage[] = {
    {"update.%H/Update.app/Contents/MacOS/Update", 1, 30},
    {"update.%H/Update.zip", 1, 70},
};
inline constexpr Piece onlyHidden[] = {{".keep", 1, 1}, {".state/%H", 2, 3}};
inline constexpr Piece logFiles[] = {
    {"main.log", 1, 40}, {"main.%N.log", 4, 40}, {"archive/%H.log.gz", 3, 20}};
inline constexpr Piece crashReports[] = {
    {"Firefox_%H_Camilles-MacBook.crash", 3, 20},
    {"Blender_%H_Camilles-MacBook.diag", 2, 60},
    {"Retired/Skype_%H_Camilles-MacBook.crash", 5, 20},
};

inline constexpr Piece buildProducts[] = {
    {"Build/Intermediates.noindex/Debug/Objects-normal/arm64/%H.o", 30, 50},
    {"Build/Products/Debug/App.app/Contents/MacOS/App", 1, 15},
    {"Index.noindex/DataStore/v5/units/%H", 24, 25},
    {"Logs/Build/%U.xcactivitylog", 5, 10},
};
inline constexpr Piece modules[] = {{"%H/Foundation-%H.pcm", 10, 70}, {"%H/Shims-%H.swiftmodule", 10, 30}};
inline constexpr Piece simulatorRuntime[] = {
    {"com.apple.CoreSimulator.SimRuntime.iOS-17-2/dyld_sim_shared_cache_arm64", 1, 1},
};
inline constexpr Piece sourceTree[] = {
    {"README.md", 1, 1},
    {".git/objects/pack/pack-%H.pack", 2, 40},
    {"src/module-%N.ts", 24, 9},
    {"node_modules/library-%N/index.js", 60, 40},
    {"node_modules/library-%N/package.json", 60, 10},
};

inline constexpr Piece appSupport[] = {
    {"settings.json", 1, 1},
    {"databases/main.sqlite", 1, 44},
    {"Local Storage/leveldb/%N.ldb", 5, 25},
    {"blobs/%U", 6, 30},
};
inline constexpr Piece sandboxData[] = {
    {".com.apple.containermanagerd.metadata.plist", 1, 0},
    {"Data/Library/Application Support/%A/store.sqlite", 1, 60},
    {"Data/Library/Caches/%A/Cache.db", 1, 20},
    {"Data/Documents/Item %N.data", 4, 20},
};
inline constexpr Piece sharedData[] = {
    {"Library/Application Support/Shared.sqlite", 1, 70},
    {"Library/Caches/%U", 4, 30},
};
inline constexpr Piece windows[] = {{"data.data", 1, 40}, {"window_%N.data", 2, 60}};
inline constexpr Piece webData[] = {{"WebsiteData/LocalStorage/%H.localstorage", 4, 1}};
inline constexpr Piece httpStorage[] = {{"httpstorages.sqlite", 1, 90}, {"httpstorages.sqlite-shm", 1, 10}};

inline constexpr Piece pictures[] = {{"IMG_%H.HEIC", 24, 80}, {"IMG_%H.JPG", 8, 20}, {".DS_Store", 1, 0}};
inline constexpr Piece sheets[] = {{"Budget %N.numbers", 6, 40}, {"Invoice %H.pdf", 18, 60}};
inline constexpr Piece songs[] = {{"%N Track.m4a", 11, 95}, {"Booklet.pdf", 1, 5}};
inline constexpr Piece sparseBands[] = {{"Info.plist", 1, 0}, {"token", 1, 0}, {"bands/%H", 24, 100}};
inline constexpr Piece filmProject[] = {{"Original Media/Clip %N.mov", 6, 90},
                                        {"Render Files/%H.mov", 4, 10}};

inline constexpr Piece parallelsMachine[] = {
    {"config.pvs", 1, 0},
    {"harddisk.hdd/harddisk.hdd.0.{%U}.hds", 1, 100},
};
inline constexpr Piece virtualBoxMachine[] = {
    {"Guest.vbox", 1, 0},
    {"Disk.vdi", 1, 88},
    {"Snapshots/{%U}.vdi", 1, 12},
};
inline constexpr Piece vmwareMachine[] = {{"Guest.vmx", 1, 0}, {"Virtual Disk-s%N.vmdk", 8, 100}};

inline constexpr Piece nativeBundle[] = {
    {"PkgInfo", 1, 0},
    {"MacOS/%A", 1, 35},
    {"Resources/AppIcon.icns", 1, 2},
    {"Resources/Assets.car", 1, 12},
    {"Resources/en.lproj/Localizable.strings", 1, 1},
    {"Resources/fr.lproj/Localizable.strings", 1, 1},
    {"Resources/Image %N.png", 10, 4},
    {"Frameworks/%A Core.framework/Versions/A/%A Core", 1, 33},
    {"Frameworks/lib%H.dylib", 6, 12},
};
inline constexpr Piece electronBundle[] = {
    {"PkgInfo", 1, 0},
    {"MacOS/%A", 1, 2},
    {"Resources/app.asar", 1, 38},
    {"Resources/en.lproj/locale.pak", 1, 0},
    {"Frameworks/Electron Framework.framework/Versions/A/Electron Framework", 1, 60},
    {"Frameworks/%A Helper.app/Contents/MacOS/%A Helper", 1, 0},
};
inline constexpr Piece suiteBundle[] = {
    {"PkgInfo", 1, 0},
    {"MacOS/%A", 1, 20},
    {"Resources/Templates/Template %N.nmbtemplate", 24, 35},
    {"Resources/Media/%H.m4a", 24, 35},
    {"PlugIns/Extension %N.appex/Contents/MacOS/Extension", 5, 10},
};

} // namespace sample_disk
