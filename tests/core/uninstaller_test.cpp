#include "core/uninstall/installed_apps.h"
#include "core/uninstall/orphaned_leftovers.h"
#include "core/uninstall/virtual_machines.h"
#include "tests/support/temporary_disk.h"

#include <gtest/gtest.h>

namespace {

using Lines = std::vector<std::string>;

std::string entry(const std::string& key, const std::string& value) {
    return "<key>" + key + "</key><string>" + value + "</string>";
}

void makeApp(const TemporaryDisk& disk, const std::string& path, const std::string& entries) {
    disk.write(path + "/Contents/Info.plist", "<plist><dict>" + entries + "</dict></plist>");
}

/// Where they are below the home; none of them may be ticked.
Lines paths(const std::vector<core::ScanItem>& items) {
    Lines result;
    for (const core::ScanItem& item : items) {
        result.push_back(item.path.substr(std::string("/Users/me/").size()));
        EXPECT_FALSE(item.safeByDefault) << item.path;
    }
    return result;
}

} // namespace

TEST(InstalledApps, AreListedByNameFromBothFolders) {
    const TemporaryDisk disk;
    makeApp(disk, "/Applications/Zed.app", entry("CFBundleIdentifier", "dev.zed"));
    makeApp(disk, "~/Applications/alpha.app", "");
    makeApp(disk, "/Applications/Both.app", entry("CFBundleName", "Both"));
    makeApp(disk, "~/Applications/Both.app", entry("CFBundleName", "both"));
    makeApp(disk, "/Applications/NoName.app",
            entry("CFBundleDisplayName", "") + entry("CFBundleName", "Unused"));
    makeApp(disk, "/Applications/Wrong.app",
            "<key>CFBundleDisplayName</key><integer>3</integer>" + entry("CFBundleName", "Écran")
                + "<key>CFBundleIdentifier</key><array/>");
    makeApp(disk, "/Applications/Safari.app", "");
    makeApp(disk, "/Applications/Utilities/Deep.app", "");
    disk.make({"/Applications/Foo.APP/x 1", "/Applications/.Hidden.app/x 3", "/Applications/safari.app/x 4",
               "/Applications/Bare.app/x 5", "/Applications/notes.txt 6"});
    disk.write("/Applications/Broken.app/Contents/Info.plist", "<plist><dict>");

    const Lines expected{"  /Applications/NoName.app",
                         ".Hidden  /Applications/.Hidden.app",
                         "alpha  /Users/me/Applications/alpha.app",
                         "Bare  /Applications/Bare.app",
                         "Both  /Applications/Both.app",
                         "both  /Users/me/Applications/Both.app",
                         "Broken  /Applications/Broken.app",
                         "Écran  /Applications/Wrong.app",
                         "safari  /Applications/safari.app",
                         "Zed dev.zed /Applications/Zed.app"};
    Lines found;
    for (const core::InstalledApp& app : core::LumvaleUninstaller::scanInstalledApps(disk.disk())) {
        found.push_back(app.name + " " + app.bundleIdentifier.value_or("") + " " + app.path);
        EXPECT_GT(app.sizeBytes, 0) << app.path;
    }
    EXPECT_EQ(found, expected);
}

TEST(OrphanedLeftovers, AreWhatNoInstalledApplicationAndNotAppleOwns) {
    const TemporaryDisk disk;
    makeApp(disk, "/Applications/Notes.app", entry("CFBundleIdentifier", "com.example.editor"));
    disk.make({"~/Library/Preferences/com.gone.tool.plist 10",
               "~/Library/Preferences/com.gone.empty.plist",
               "~/Library/Preferences/com.example.Editor.plist 10",
               "~/Library/Preferences/com.maker.supernotes2.plist 10",
               "~/Library/Preferences/com.Apple.Safari.plist 10",
               "~/Library/Preferences/My App.beta.x 10",
               "~/Library/Preferences/.hidden.gone.tool.plist 10",
               "~/Library/Containers/com.gone.tool/x 10",
               "~/Library/Containers/com.gone.tool.app/x 10",
               "~/Library/Group Containers/group.com.apple.notes/x 10",
               "~/Library/Group Containers/GROUP.com.apple.mail.x/x 10",
               "~/Library/Group Containers/group.com.gone.tool/x 10",
               "~/Library/WebKit/com.gone.tool.only/.hidden 10",
               "~/Library/Application Scripts/com.gone.tool.script -> /Applications",
               "~/Library/Caches/com.gone.tool.cache/x 10",
               "~/Library/Preferences/two.pieces.plist 10",
               "~/Library/Preferences/a.b..plist 10",
               "~/Library/Preferences/com.ex\xC3\xA4mple.app.plist 10",
               "~/Library/Preferences/a-b..c_d.E1.plist 10",
               "~/Library/Preferences/a.b.(c).plist 10",
               "~/Library/Preferences/....plist 10",
               "~/Library/Saved Application State/com.gone.tool.savedState/x 10"});
    EXPECT_EQ(
        paths(core::LumvaleUninstaller::orphanedLeftovers(disk.disk())),
        (Lines{"Library/Preferences/.hidden.gone.tool.plist", "Library/Preferences/a-b..c_d.E1.plist",
               "Library/Preferences/com.gone.tool.plist",
               "Library/Saved Application State/com.gone.tool.savedState",
               "Library/Containers/com.gone.tool.app", "Library/Group Containers/group.com.gone.tool"}));
}

TEST(VirtualMachines, AreFoundInTheirPlacesWithTheirResidue) {
    const TemporaryDisk disk;
    disk.make({"~/Parallels/Guest.pvm/disk 10", "~/Parallels/Old.PVM 20", "~/Parallels/notes.txt 30",
               "~/Parallels/Empty.pvm/", "~/VirtualBox VMs/Anything/disk 10",
               "~/VirtualBox VMs/plain.vbox 10", "~/VirtualBox VMs/link -> Anything",
               "~/Documents/Other.vmwarevm/disk 10",
               "~/Documents/Virtual Machines.localized/Win.vmwarevm/disk 10", "~/Library/Logs/VirtualBox/",
               "~/Library/Preferences/Parallels/x 10", "~/Library/Preferences/VMware Fusion 10"});
    EXPECT_EQ(paths(core::LumvaleUninstaller::virtualMachineItems(disk.disk())),
              (Lines{"Parallels/Guest.pvm", "Parallels/Old.PVM", "VirtualBox VMs/Anything",
                     "Documents/Virtual Machines.localized/Win.vmwarevm", "Library/Preferences/Parallels",
                     "Library/Preferences/VMware Fusion"}));
}
