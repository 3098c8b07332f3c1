#pragma once

#include "tools/sample_disk/data/fillings.h"

namespace SampleDisk {

/// In the home: guests of three products where these keep them, and what the products leave in Library.
inline constexpr Row machines[] = {
    {"Parallels/Windows 11.pvm/", 14'480_MB, 18, guestDisk},
    {"Parallels/Old Windows 7.PVM/", 5'930_MB, 1'460, guestDisk},
    {"Parallels/notes.txt", 4_KB, 1'460},
    {"VirtualBox VMs/Debian 12/", 6'270_MB, 74, virtualBoxGuest},
    {"VirtualBox VMs/Empty guest/", 0, 300},
    {"VirtualBox VMs/readme.txt", 2_KB, 300},
    {"Documents/Virtual Machines.localized/Fedora 38.vmwarevm/", 8'640_MB, 233, vmwareGuest},
    {"Documents/Virtual Machines.localized/.localized", 0, 233},
    {"Library/Application Support/Parallels/", 38_MB, 18, appSupport},
    {"Library/Preferences/Parallels/network.desktop.xml", 26_KB, 18},
    {"Library/Caches/com.parallels.desktop.console/", 174_MB, 18, urlCache},
    {"Library/Logs/parallels/", 12_MB, 18, logFiles},
    {"Library/VirtualBox/", 420_KB, 74, logFiles},
    {"Library/Application Support/VMware Fusion/", 21_MB, 233, appSupport},
    {"Library/Preferences/VMware Fusion/preferences", 3_KB, 233},
    {"Library/Logs/VirtualBox/", 0, 74},
};

} // namespace SampleDisk
