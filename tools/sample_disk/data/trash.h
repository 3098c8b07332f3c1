#pragma once

#include "tools/sample_disk/data/fillings.h"

namespace SampleDisk {

/// The names repeat some of other places: what is moved here from there needs another name.
inline constexpr Row trashed[] = {
    {".DS_Store", 8_KB, 0},
    {"com.spotify.client/", 240_MB, 33, mediaCache},
    {"Install macOS Monterey.dmg", 1'870_MB, 61},
    {"Screen Recording 2024-02-11 at 18.04.22.mov", 1'124_MB, 45},
    {"Old Portfolio/", 386_MB, 38, pictures},
    {"Quarterly report draft.docx", 2_MB, 12},
    {"ubuntu-22.04-desktop-amd64.iso", 1'460_MB, 80},
    {"Invoices 2019/", 54_MB, 22, sheets},
    {"Untitled folder/", 0, 3},
    {"locked contract.pdf", 3_MB, 120},
    {"Archive.zip", 412_MB, 9},
    {"Wedding/master.psd", 690_MB, 150},
};

} // namespace SampleDisk
