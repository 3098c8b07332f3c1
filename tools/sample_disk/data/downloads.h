#pragma once

#include "tools/sample_disk/data/fillings.h"

namespace SampleDisk {

inline constexpr Row downloads[] = {
    {"Blender-4.0-macos-arm64.dmg", 318_MB, 212},
    {"Firefox 121.0.dmg", 139_MB, 96},
    {"Affinity Photo Trial.dmg", 742_MB, 410},
    {"LibreOffice_7.6_MacOS_aarch64.dmg", 276_MB, 133},
    {"holiday-photos-mallorca.zip", 1'284_MB, 365},
    {"train-tickets.pdf", 412_KB, 71},
    {"User manual washing machine.pdf", 9_MB, 540},
    {"dataset-2023/", 366_MB, 288, sheets},
    {"raspios-bookworm-arm64.img.xz", 1'098_MB, 157},
    {"lecture-07.mp4", 634_MB, 44},
    {"com.spotify.client/", 12_MB, 77, urlCache},
    {".old-partial-download", 18_MB, 90},
    {"Empty invitation/", 0, 200},
    {"zoomusInstallerFull.pkg", 88_MB, 12},
    {"Boarding pass.pkpass", 31_KB, 3},
    {"invoice-november.pdf", 220_KB, 1},
    {"podcast-episode-118.mp3", 44_MB, 20},
    {"Archive.zip", 205_MB, 6},
    {"slides final FINAL.key", 47_MB, 0},
    {".DS_Store", 8_KB, 0},
};

} // namespace SampleDisk
