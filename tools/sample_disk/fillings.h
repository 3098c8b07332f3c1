#pragma once

#include "tools/sample_disk/rows.h"

namespace sample_disk {

inline constexpr Piece urlCache[] = {
    {"Cache.db", 1, 20}, {"Cache.db-wal", 1, 5}, {"fsCachedData/%U", 12, 75}};
inline constexpr Piece browserCache[] = {
    {"Default/Cache/Cache_Data/data_%N", 4, 6},
    {"Default/Cache/Cache_Data/f_%H", 40, 64},
    {"Default/Code Cache/js/%H_0", 16, 30},
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
inline constexpr Piece logFiles[] = {
    {"main.log", 1, 40}, {"main.%N.log", 4, 40}, {"archive/%H.log.gz", 3, 20}};
inline constexpr Piece crashReports[] = {
    {"Firefox_%H_Camilles-MacBook.crash", 3, 20},
    {"Blender_%H_Camilles-MacBook.diag", 2, 60},
};

inline constexpr Piece buildProducts[] = {
    {"Build/Intermediates.noindex/Debug/Objects-normal/arm64/%H.o", 30, 50},
    {"Build/Products/Debug/App.app/Contents/MacOS/App", 1, 15},
    {"Index.noindex/DataStore/v5/units/%H", 24, 25},
};
inline constexpr Piece sourceTree[] = {
    {".git/objects/pack/pack-%H.pack", 2, 40},
    {"src/module-%N.ts", 24, 9},
    {"node_modules/library-%N/index.js", 60, 40},
    {"node_modules/library-%N/package.json", 60, 10},
};

inline constexpr Piece appSupport[] = {
    {"databases/main.sqlite", 1, 44},
    {"Local Storage/leveldb/%N.ldb", 5, 25},
    {"blobs/%U", 6, 30},
};
inline constexpr Piece sandboxData[] = {
    {"Data/Library/Application Support/%A/store.sqlite", 1, 60},
};
inline constexpr Piece sharedData[] = {
    {"Library/Application Support/Shared.sqlite", 1, 70},
    {"Library/Caches/%U", 4, 30},
};
inline constexpr Piece windows[] = {{"data.data", 1, 40}, {"window_%N.data", 2, 60}};
inline constexpr Piece webData[] = {{"WebsiteData/LocalStorage/%H.localstorage", 4, 1}};

inline constexpr Piece pictures[] = {{"IMG_%H.HEIC", 24, 80}, {"IMG_%H.JPG", 8, 20}, {".DS_Store", 1, 0}};
inline constexpr Piece sheets[] = {{"Budget %N.numbers", 6, 40}, {"Invoice %H.pdf", 18, 60}};
inline constexpr Piece songs[] = {{"%N Track.m4a", 11, 95}, {"Booklet.pdf", 1, 5}};
inline constexpr Piece sparseBands[] = {{"Info.plist", 1, 0}, {"token", 1, 0}, {"bands/%H", 24, 100}};
inline constexpr Piece filmProject[] = {{"Original Media/Clip %N.mov", 6, 90},
                                        {"Render Files/%H.mov", 4, 10}};

inline constexpr Piece virtualMachine[] = {{"Machine.config", 1, 0}, {"Disk-s%N.img", 8, 100}};

inline constexpr Piece nativeBundle[] = {
    {"MacOS/%A", 1, 35},
    {"Resources/Assets.car", 1, 12},
    {"Resources/en.lproj/Localizable.strings", 1, 1},
    {"Frameworks/%A Core.framework/Versions/A/%A Core", 1, 33},
    {"Frameworks/lib%H.dylib", 6, 12},
};
inline constexpr Piece electronBundle[] = {
    {"MacOS/%A", 1, 2},
    {"Resources/app.asar", 1, 38},
    {"Frameworks/Electron Framework.framework/Versions/A/Electron Framework", 1, 60},
};
inline constexpr Piece suiteBundle[] = {
    {"MacOS/%A", 1, 20},
    {"Resources/Media/%H.m4a", 24, 35},
    {"PlugIns/Extension %N.appex/Contents/MacOS/Extension", 5, 10},
};

} // namespace sample_disk
