#pragma once

#include "tools/sample_disk/data/fillings.h"

namespace SampleDisk {

/// What stays in ~/Library of applications that aren't on the disk any more, with entries of the Mac itself
/// and of applications that are, beside them.
inline constexpr Row leftovers[] = {
    {"Application Support/com.bohemiancoding.sketch3.beta/", 412_MB, 520, appSupport},
    {"Application Support/com.github.atom.ShipIt/", 186_MB, 700, updateStage},
    {"Application Support/com.skype.s4l.ShipIt/", 94_MB, 460, updateStage},
    {"Application Support/org.openemu.OEXPCCAgent.Agents/", 27_MB, 830, appSupport},
    {"Application Support/com.apple.sharedfilelist/", 2_MB, 0, appSupport},
    {"Application Support/AddressBook/", 14_MB, 1, appSupport},
    {"Application Support/CallHistoryDB/", 3_MB, 2, appSupport},
    {"Application Support/CloudDocs/", 36_MB, 0, appSupport},
    {"Application Support/MobileSync/", 4_MB, 35, appSupport},

    {"Preferences/com.adobe.Reader.plist", 46_KB, 980},
    {"Preferences/com.evernote.Evernote.plist", 61_KB, 610},
    {"Preferences/com.skype.skype.plist", 18_KB, 460},
    {"Preferences/com.tapbots.Tweetbot3Mac.plist", 23_KB, 655},
    {"Preferences/com.apple.dock.plist", 9_KB, 0},
    {"Preferences/com.apple.finder.plist", 14_KB, 0},
    {"Preferences/com.apple.Safari.plist", 11_KB, 1},
    {"Preferences/.GlobalPreferences.plist", 6_KB, 3},
    {"Preferences/com.microsoft.teams.plist", 0, 190},

    {"Saved Application State/com.evernote.Evernote.savedState/", 1_MB, 610, windows},
    {"Saved Application State/com.tapbots.Tweetbot3Mac.savedState/", 680_KB, 655, windows},
    {"Saved Application State/com.apple.Preview.savedState/", 2_MB, 1, windows},

    {"Containers/com.tapbots.Tweetbot3Mac.ShareExtension/", 37_MB, 655, sandboxData},
    {"Containers/com.readdle.PDFExpert-Mac.QuickLook/", 8_MB, 590, sandboxData},
    {"Containers/com.apple.mail/", 64_MB, 0, sandboxData},
    {"Containers/com.apple.Notes.datastore/", 22_MB, 0, sandboxData},

    {"Group Containers/group.com.fournova.Tower3/", 118_MB, 720, sharedData},
    {"Group Containers/group.net.mullvad.vpn.helper/", 5_MB, 340, sharedData},
    {"Group Containers/group.us.zoom.xos.Hotkey/", 83_MB, 0, sharedData},
    {"Group Containers/group.com.apple.notes/", 48_MB, 0, sharedData},

    {"WebKit/com.evernote.Evernote.WebHelper/", 56_MB, 610, webData},
    {"WebKit/com.apple.Safari/", 31_MB, 1, webData},

    {"HTTPStorages/com.skype.skype.binarycookies", 12_KB, 460},
    {"HTTPStorages/com.bohemiancoding.sketch3.beta/", 2_MB, 520, httpStorage},
    {"HTTPStorages/com.apple.AddressBook/", 260_KB, 4, httpStorage},

    {"Application Scripts/group.com.fournova.Tower3/", 24_KB, 720, script},
    {"Application Scripts/com.readdle.PDFExpert-Mac.QuickLook/", 0, 590},
    {"Application Scripts/com.apple.mail/", 0, 30},
};

} // namespace SampleDisk
