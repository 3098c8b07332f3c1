#include "tools/sample_disk/files.h"

#include "tools/sample_disk/fillings.h"

#include <string>
#include <system_error>

namespace sample_disk {

namespace {

constexpr Row systemFiles[] = {
    {"System/Library/CoreServices/SystemVersion.plist", 1_KB, 200},
    {"System/Applications/Calculator.app/Contents/MacOS/Calculator", 6_MB, 200},
    {"System/Cryptexes/App/System/Applications/Safari.app/Contents/MacOS/Safari", 14_MB, 200},
    {"Library/PreferencePanes/VirtualBox Network.prefPane/Contents/MacOS/VirtualBox Network", 520_KB, 74},
};

constexpr Row userCacheFiles[] = {
    {"com.spotify.client/", 18_MB, 0, urlCache},
    {"org.mozilla.firefox/", 9_MB, 2, urlCache},
};

constexpr Row caches[] = {
    {"Google/", 2'870_MB, 0, browserCache},
    {"com.spotify.client/", 3'412_MB, 0, mediaCache},
    {"com.google.Chrome/", 384_MB, 0, urlCache},
    {"com.apple.Safari/", 612_MB, 1, urlCache},
    {"Firefox/", 1'164_MB, 2, browserCache},
    {"Homebrew/", 1'930_MB, 9, packageCache},
    {"JetBrains/", 1'547_MB, 4, appSupport},
    {"com.microsoft.VSCode/", 296_MB, 0, urlCache},
    {"com.microsoft.VSCode.ShipIt/", 418_MB, 12, updateStage},
    {"com.hnc.Discord/", 233_MB, 1, urlCache},
    {"ru.keepcoder.Telegram/", 742_MB, 0, mediaCache},
    {"com.parallels.desktop.console/", 174_MB, 18, urlCache},
    {"pip/", 872_MB, 48, packageCache},
    {"Yarn/", 655_MB, 61, packageCache},
    {"icon-services.store", 7_MB, 5},
    {"nothing left/", 0, 130},
    {".com.apple.backgroundtasks/", 12_MB, 4, urlCache},
};

constexpr Row logs[] = {
    {"DiagnosticReports/", 46_MB, 2, crashReports},
    {"CoreSimulator/", 212_MB, 11, logFiles},
    {"Docker Desktop/", 138_MB, 1, logFiles},
    {"JetBrains/", 87_MB, 4, logFiles},
    {"parallels/", 12_MB, 18, logFiles},
    {"fsck_apfs.log", 340_KB, 30},
    {"Dropbox_debug.log", 5_MB, 0},
    {".hidden.log", 900_KB, 20},
};

/// Some names repeat names of other folders, so that a move to the Trash has to choose another name.
constexpr Row trash[] = {
    {".DS_Store", 8_KB, 0},
    {"com.spotify.client/", 240_MB, 33, mediaCache},
    {"Install macOS Monterey.dmg", 1'870_MB, 61},
    {"Screen Recording 2024-02-11 at 18.04.22.mov", 1'124_MB, 45},
    {"Old Portfolio/", 386_MB, 38, pictures},
    {"ubuntu-22.04-desktop-amd64.iso", 1'460_MB, 80},
    {"Invoices 2019/", 54_MB, 22, sheets},
    {"locked contract.pdf", 3_MB, 120},
    {"Archive.zip", 412_MB, 9},
    {"Wedding/master.psd", 690_MB, 150},
};

constexpr Row downloads[] = {
    {"Blender-4.0-macos-arm64.dmg", 318_MB, 212},
    {"Firefox 121.0.dmg", 139_MB, 96},
    {"Affinity Photo Trial.dmg", 742_MB, 410},
    {"LibreOffice_7.6_MacOS_aarch64.dmg", 276_MB, 133},
    {"holiday-photos-mallorca.zip", 1'284_MB, 365},
    {"train-tickets.pdf", 412_KB, 71},
    {"dataset-2023/", 366_MB, 288, sheets},
    {"com.spotify.client/", 12_MB, 77, urlCache},
    {"Empty invitation/", 0, 200},
    {"zoomusInstallerFull.pkg", 88_MB, 12},
    {"Archive.zip", 205_MB, 6},
    {"slides final FINAL.key", 47_MB, 0},
};

/// In ~/Library: first what removed applications left there, then entries that belong to the Mac or to an
/// installed application.
constexpr Row leftovers[] = {
    {"Application Support/com.bohemiancoding.sketch3.beta/", 412_MB, 520, appSupport},
    {"Application Support/com.github.atom.ShipIt/", 186_MB, 700, updateStage},
    {"Application Support/org.openemu.OEXPCCAgent.Agents/", 27_MB, 830, appSupport},
    {"Preferences/com.evernote.Evernote.plist", 61_KB, 610},
    {"Preferences/com.tapbots.Tweetbot3Mac.plist", 23_KB, 655},
    {"Preferences/com.microsoft.teams.plist", 0, 190},
    {"Saved Application State/com.evernote.Evernote.savedState/", 1_MB, 610, windows},
    {"Containers/com.tapbots.Tweetbot3Mac.ShareExtension/", 37_MB, 655, sandboxData},
    {"Containers/com.readdle.PDFExpert-Mac.QuickLook/", 8_MB, 590, sandboxData},
    {"Group Containers/group.com.fournova.Tower3/", 118_MB, 720, sharedData},
    {"HTTPStorages/com.skype.skype.binarycookies", 12_KB, 460},

    {"Preferences/com.apple.dock.plist", 9_KB, 0},
    {"Containers/com.apple.mail/", 64_MB, 0, sandboxData},
    {"Mail/V10/MailData/Envelope Index", 38_MB, 0},
};

constexpr Row developerFiles[] = {
    {"Xcode/DerivedData/Harbour-fkzbqmdwyovhsxctaelg/", 1'486_MB, 5, buildProducts},
    {"Xcode/DerivedData/Atlas-gqhxrwopvmtzcdnlbeys/", 917_MB, 88, buildProducts},
    {"Xcode/DerivedData/Playground-bznwtqhlexukvdcimfoa/", 143_MB, 402, buildProducts},
    {"Xcode/DerivedData/ModuleCache.noindex/", 702_MB, 5, buildProducts},
    {"CoreSimulator/Caches/dyld/", 2'310_MB, 33, packageCache},
};

constexpr Row virtualMachines[] = {
    {"Parallels/Windows 11.pvm/", 14'480_MB, 18, virtualMachine},
    {"Parallels/Old Windows 7.PVM/", 5'930_MB, 1'460, virtualMachine},
    {"VirtualBox VMs/Debian 12/", 6'270_MB, 74, virtualMachine},
    {"Documents/Virtual Machines.localized/Fedora 38.vmwarevm/", 8'640_MB, 233, virtualMachine},
    {"Library/Application Support/Parallels/", 38_MB, 18, appSupport},
    {"Library/VirtualBox/", 420_KB, 74, logFiles},
};

/// A file of at least 50 MiB (52,428,800 bytes) is offered as a large one.
constexpr Row documents[] = {
    {"Documents/Finances/2023/", 39_MB, 330, sheets},
    {"Documents/Thesis/Interviews.wav", 1'412_MB, 1'630},
    {"Documents/Backups/phone-2022-08.tar", 3'940_MB, 845},
    {"Documents/Archive/2014/Office/Clients/North/Site/Media/Raw/Day 1/interview.mov", 2'260_MB, 3'650},
    {"Documents/Limits/exactly large.bin", 52'428'800, 60},
    {"Documents/Limits/one byte less.bin", 52'428'799, 60},
    {"Documents/Developer/atlas-web/", 142_MB, 5, sourceTree},
    {"Documents/Developer/harbour-api/", 61_MB, 48, sourceTree},
    {"Documents/Developer/harbour-api/dump.sql", 874_MB, 48},
    {"Desktop/Screen Recording 2023-10-02 at 09.12.40.mov", 1'036_MB, 405},
    {"Movies/Holiday in Brittany.mp4", 2'310_MB, 820},
    {"Movies/Birthday 2019.mov", 2'730_MB, 1'870},
    {"Movies/TV recordings/Documentary.ts", 3'460_MB, 130},
    {"Music/Albums/First Light/", 118_MB, 1'300, songs},
    {"Pictures/Scans/negatives-1988.tif", 612_MB, 2'100},
    // Packages: folders that count as one file. A scan does not list large files inside them.
    {"Movies/Wedding.fcpbundle/", 6'120_MB, 640, filmProject},
    {"Movies/Old Holiday.iMovieLibrary/", 2'040_MB, 1'400, filmProject},
    {"Documents/Backups/Keys.sparsebundle/", 1'280_MB, 90, sparseBands},
};

constexpr struct {
    std::string_view place;
    std::span<const Row> rows;
} tables[] = {
    {"", systemFiles},
    {"~/Library/Caches/", caches},
    {"~/Library/Logs/", logs},
    {"~/.Trash/", trash},
    {"~/Downloads/", downloads},
    {"~/Library/", leftovers},
    {"~/Library/Developer/", developerFiles},
    {"~/", virtualMachines},
    {"~/", documents},
};

constexpr struct {
    std::string_view path, target;
} symbolicLinks[] = {
    {"tmp", "private/tmp"},
    {"var", "private/var"},
    {"etc", "private/etc"},
    {"Volumes/Macintosh HD", "/"},
    {"~/Documents/Current project", "Developer/atlas-web"},
    {"~/Documents/itself", "itself"},
    {"~/Desktop/Backup disk", "/Volumes/Backup"},
    {"~/Library/Caches/com.example.linked", "../../Documents"},
    {"~/.Trash/link to documents", "../Documents"},
    {"~/Downloads/link to film", "../Movies/Birthday 2019.mov"},
};

/// Names that a disk may hold and that are difficult to show or to process.
constexpr std::string_view oddNames[] = {
    "first line\nsecond line.txt",
    "\"quoted\" and 'quoted'.txt",
    "\xF0\x9F\x8E\x89 party \xF0\x9F\x91\xA9\xE2\x80\x8D\xF0\x9F\x9A\x80.png", // emoji, two of them joined
    "r\xC3\xA9sum\xC3\xA9.pdf",                                                // composed
    "re\xCC\x81sume\xCC\x81.pdf",                                              // decomposed
    "caf\xE8 menu.txt",                                                        // invalid UTF-8
    "100% & <b>bold %s %N.html",
    "\xE2\x80\xAEtxt.reversed", // right-to-left override
};

void makeOddNames(DiskWriter& disk, std::string_view place, std::size_t count, Random& random) {
    for (const std::string_view name : std::span(oddNames).first(count)) {
        try {
            disk.file(std::string(place).append(name), random.between(2, 900) * 1_KB,
                      random.between(40, 900));
        } catch (const std::system_error&) {
            // Some file systems refuse such a name, or take two of them for one.
        }
    }
}

} // namespace

void makeFiles(DiskWriter& disk, Random& random) {
    for (const char* folder : {"~/Desktop", "~/Downloads", "~/Library/Caches", "~/Library/Logs", "~/.Trash"})
        disk.folder(folder, 0);
    disk.setMode("~/.Trash", 0700);
    for (const auto& [place, rows] : tables)
        makeRows(disk, place, rows, random);
    makeRows(disk, std::string(userCachePath.substr(1)) + '/', userCacheFiles, random);
    for (const auto& [path, target] : symbolicLinks)
        disk.symbolicLink(path, std::string(target), 200);
    constexpr std::size_t shownInTrash = 5;
    makeOddNames(disk, "~/.Trash/", shownInTrash, random);
    makeOddNames(disk, "~/.Trash/Recovered files/", std::size(oddNames), random);
    disk.lock("~/.Trash/locked contract.pdf");
    disk.lock("~/.Trash/Wedding/master.psd");
}

} // namespace sample_disk
