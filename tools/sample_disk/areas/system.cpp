#include "tools/sample_disk/areas.h"
#include "tools/sample_disk/data/fillings.h"
#include "tools/sample_disk/sample_disk.h"

#include <string>

namespace SampleDisk {

namespace {

constexpr Row systemFiles[] = {
    {"System/Library/CoreServices/SystemVersion.plist", 1_KB, 200},
    {"System/Library/CoreServices/Dock.app/Contents/MacOS/Dock", 9_MB, 200},
    {"System/Library/Fonts/Helvetica.ttc", 2_MB, 200},
    {"System/Library/Caches/com.apple.kext.caches/Startup/kernelcache", 64_MB, 200},
    {"System/Library/LaunchAgents/com.apple.Finder.plist", 1_KB, 200},
    {"System/Applications/Calculator.app/Contents/MacOS/Calculator", 6_MB, 200},
    {"System/Applications/Notes.app/Contents/MacOS/Notes", 21_MB, 200},
    {"System/Applications/Preview.app/Contents/MacOS/Preview", 11_MB, 200},
    {"System/Cryptexes/App/System/Applications/Safari.app/Contents/MacOS/Safari", 14_MB, 200},
    {"usr/bin/less", 260_KB, 200},
    {"usr/lib/dyld", 1_MB, 200},
    {"bin/zsh", 1_MB, 200},
    {"sbin/mount", 130_KB, 200},
    {"opt/homebrew/bin/git", 3_MB, 44},
    {"opt/homebrew/Cellar/ffmpeg/6.1/lib/libavcodec.dylib", 24_MB, 70},
    {"Library/Application Support/Microsoft/", 86_MB, 25, appSupport},
    {"Library/Application Support/VirtualBox/LaunchDaemons/VirtualBoxStartup.sh", 6_KB, 74},
    {"Library/Application Support/CrashReporter/SubmitDiagInfo.domains", 1_KB, 100},
    {"Library/Caches/com.apple.iconservices.store/", 58_MB, 7, urlCache},
    {"Library/LaunchDaemons/com.docker.vmnetd.plist", 1_KB, 31},
    {"Library/LaunchDaemons/org.virtualbox.startup.plist", 1_KB, 74},
    {"Library/Logs/DiagnosticReports/", 12_MB, 5, crashReports},
    {"Library/PreferencePanes/JavaControlPanel.prefPane/Contents/MacOS/JavaControlPanel", 400_KB, 900},
    {"Library/Preferences/com.apple.TimeMachine.plist", 4_KB, 2},
    {"Library/PrivilegedHelperTools/com.docker.vmnetd", 8_MB, 31},
    {"private/etc/hosts", 1_KB, 200},
    {"private/tmp/powerlog/tag", 0, 0},
    {"private/tmp/com.apple.launchd.3fK2/Listeners", 0, 0},
    {"private/var/log/system.log", 780_KB, 0},
    {"private/var/log/install.log", 3_MB, 7},
    {"private/var/db/receipts/org.libreoffice.script.bom", 90_KB, 133},
    {"private/var/vm/sleepimage", 1'073_MB, 0},
    {"private/var/folders/zz/zyxvpxvq6csfxvn_n0000000000000/C/com.apple.fontd.cache", 4_MB, 3},
    {"Volumes/.timemachine/.keep", 0, 40},
    {"Users/.localized", 0, 1'900},
};

constexpr Row userCacheFiles[] = {
    {"com.spotify.client/", 18_MB, 0, urlCache}, {"com.apple.Safari/", 7_MB, 1, urlCache},
    {"org.mozilla.firefox/", 9_MB, 2, urlCache}, {"com.colliderli.iina/", 3_MB, 40, urlCache},
    {"com.apple.dock.iconcache", 2_MB, 0},
};

constexpr Row homeLibrary[] = {
    {"Library/Mail/V10/MailData/Envelope Index", 38_MB, 0},
    {"Library/Mail/V10/MailData/Envelope Index-wal", 2_MB, 0},
    {"Library/Messages/chat.db", 74_MB, 0},
    {"Library/Keychains/login.keychain-db", 1_MB, 2},
    {"Library/Fonts/Inter-Regular.ttf", 310_KB, 610},
    {"Library/Calendars/Calendar.sqlitedb", 6_MB, 1},
};

} // namespace

void makeSystem(Folder& root, Folder& home, Random& random) {
    make(root, systemFiles, random);
    Folder caches = root.folder(userCachePath.substr(1), 0);
    make(caches, userCacheFiles, random);
    make(home, homeLibrary, random);

    constexpr int installed = 200;
    root.link("tmp", "private/tmp", installed);
    root.link("var", "private/var", installed);
    root.link("etc", "private/etc", installed);
    root.link("Volumes/Macintosh HD", "/", installed);
}

} // namespace SampleDisk
