#pragma once

#include "tools/sample_disk/data/fillings.h"

namespace SampleDisk {

inline constexpr Row userCaches[] = {
    {"Google/", 2'870_MB, 0, browserCache},
    {"com.spotify.client/", 3'412_MB, 0, mediaCache},
    {"com.google.Chrome/", 384_MB, 0, urlCache},
    {"com.apple.Safari/", 612_MB, 1, urlCache},
    {"Firefox/", 1'164_MB, 2, browserCache},
    {"Homebrew/", 1'930_MB, 9, packageCache},
    {"JetBrains/", 1'547_MB, 4, appSupport},
    {"com.microsoft.VSCode/", 296_MB, 0, urlCache},
    {"com.microsoft.VSCode.ShipIt/", 418_MB, 12, updateStage},
    {"com.tinyspeck.slackmacgap.ShipIt/", 187_MB, 21, updateStage},
    {"com.hnc.Discord/", 233_MB, 1, urlCache},
    {"ru.keepcoder.Telegram/", 742_MB, 0, mediaCache},
    {"WhatsApp/", 158_MB, 3, urlCache},
    {"com.docker.docker/", 64_MB, 17, urlCache},
    {"geoservices/", 214_MB, 2, mapTiles},
    {"PassKit/", 3_MB, 33, passes},
    {"GoogleUpdater/", 28_MB, 6, updateStage},
    {"com.apple.helpd/", 41_MB, 75, urlCache},
    {"com.apple.parsecd/", 88_MB, 1, urlCache},
    {"com.apple.iCloudMailAgent/", 2_MB, 40, urlCache},
    {"org.swift.swiftpm/", 523_MB, 26, packageCache},
    {"pip/", 872_MB, 48, packageCache},
    {"Yarn/", 655_MB, 61, packageCache},
    {"Animoji/", 640_KB, 210, urlCache},
    {"icon-services.store", 7_MB, 5},
    {"only hidden things/", 4_MB, 50, onlyHidden},
    {"nothing left/", 0, 130},
    {".com.apple.backgroundtasks/", 12_MB, 4, urlCache},
    {".DS_Store", 10_KB, 1},
};

inline constexpr Row userLogs[] = {
    {"DiagnosticReports/", 46_MB, 2, crashReports},
    {"CoreSimulator/", 212_MB, 11, logFiles},
    {"Docker Desktop/", 138_MB, 1, logFiles},
    {"JetBrains/", 87_MB, 4, logFiles},
    {"Microsoft Teams/", 64_MB, 190, logFiles},
    {"Spotify/", 11_MB, 0, logFiles},
    {"Homebrew/", 31_MB, 9, logFiles},
    {"iStat Menus/", 2_MB, 300, logFiles},
    {"fsck_apfs.log", 340_KB, 30},
    {"DiscRecording.log", 84_KB, 640},
    {"Dropbox_debug.log", 5_MB, 0},
    {"empty/", 0, 400},
    {".hidden.log", 900_KB, 20},
};

} // namespace SampleDisk
