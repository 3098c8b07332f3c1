#include "core/uninstall/uninstaller.h"

#include "core/uninstall/app_icon.h"
#include "core/uninstall/installed_apps.h"
#include "core/uninstall/orphaned_leftovers.h"
#include "core/uninstall/related_files.h"
#include "core/uninstall/virtual_machines.h"
#include "tests/support/codes.h"
#include "tests/support/process.h"
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

core::InstalledApp app(std::string name, std::optional<std::string> identifier) {
    return core::InstalledApp(std::move(name), std::move(identifier), "/Applications/Notes.app", 7);
}

const core::InstalledApp notes = app("Notes", "com.example.notes");

/// Returns the path of each item relative to the folder.
Lines lines(const std::vector<core::ScanItem>& items, std::string_view folder = "~/") {
    Lines result;
    for (const core::ScanItem& item : items)
        result.push_back(item.path.substr(at(folder).size()));
    return result;
}

} // namespace

TEST(InstalledApps, AreListedByNameFromBothFolders) {
    const TemporaryDisk disk;
    makeApp(disk, "/Applications/Zed.app", entry("CFBundleIdentifier", "dev.zed"));
    makeApp(disk, "~/Applications/alpha.app", "");
    makeApp(disk, "~/Applications/Both.app", entry("CFBundleName", "both"));
    makeApp(disk, "/Applications/NoName.app",
            entry("CFBundleDisplayName", "") + entry("CFBundleName", "Unused"));
    makeApp(disk, "/Applications/Wrong.app",
            "<key>CFBundleDisplayName</key><integer>3</integer>" + entry("CFBundleName", "Écran")
                + "<key>CFBundleIdentifier</key><array/>");
    for (const char* excluded : {"Safari", "Finder", "System Settings", "App Store", "Mail", "Messages",
                                 "FaceTime", "Photos", "Music", "Terminal", "Xcode", "Lumvale"})
        makeApp(disk, "/Applications/" + std::string(excluded) + ".app", "");
    disk.make({"/Applications/Foo.APP/x 1", "/Applications/.Hidden.app/x 3", "/Applications/safari.app/x 4",
               "/Applications/Both.app/x 5", "/Applications/notes.txt 6", "/Applications/Utilities/A.app/x"});
    disk.write("/Applications/Broken.app/Contents/Info.plist", "<plist><dict>");
    Lines found;
    for (const core::InstalledApp& listed : core::LumvaleUninstaller::scanInstalledApps(disk.disk())) {
        found.push_back(listed.name + " " + listed.bundleIdentifier.value_or("") + " " + listed.path);
        EXPECT_GT(listed.sizeBytes, 0) << listed.path;
    }
    EXPECT_EQ(found, (Lines{"  /Applications/NoName.app", ".Hidden  /Applications/.Hidden.app",
                            "alpha  /Users/me/Applications/alpha.app", "Both  /Applications/Both.app",
                            "both  /Users/me/Applications/Both.app", "Broken  /Applications/Broken.app",
                            "Écran  /Applications/Wrong.app", "safari  /Applications/safari.app",
                            "Zed dev.zed /Applications/Zed.app"}));
}

TEST(AppIcon, IsTheFileOfItsResourcesThatTheBundleNames) {
    const TemporaryDisk disk;
    disk.make({"/Applications/A.app/Contents/Resources/App Icon.icns 5",
               "/Applications/A.app/Contents/out.icns 5",
               "/Applications/A.app/Contents/Resources/link.icns -> ../../../../../../etc/hostname"});
    for (const auto& [name, isOpened] : {std::pair("App Icon", true),
                                         {"App Icon.icns", true},
                                         {"../out.icns", false},
                                         {"link", false},
                                         {"", false}}) {
        makeApp(disk, "/Applications/A.app", entry("CFBundleIconFile", name));
        EXPECT_EQ(bool(core::LumvaleUninstaller::openAppIcon(disk.disk(), "/Applications/A.app")), isOpened);
    }
}

TEST(OrphanedLeftovers, AreSearchedForInEightFoldersAndBelongToNoInstalledApplication) {
    const TemporaryDisk disk;
    Lines expected;
    for (const char* folder : {"Application Support", "Preferences", "Saved Application State", "Containers",
                               "Group Containers", "WebKit", "HTTPStorages", "Application Scripts"}) {
        expected.push_back("Library/" + std::string(folder) + "/com.gone.tool.plist");
        disk.make("~/" + expected.back() + " 10");
    }
    makeApp(disk, "/Applications/Notes.app", entry("CFBundleIdentifier", "com.example.editor"));
    for (const char* name :
         {"com.gone.empty", "com.example.Editor.plist 9", "com.maker.supernotes2.plist 9",
          "com.Apple.Safari.plist 9", "com.apple.tool 9", "group.com.apple.notes 9",
          "GROUP.com.apple.mail.x 9", "My App.beta.x 9", ".hidden.gone.tool.plist 9", "com.gone.tool.app/x 9",
          "com.gone.only.hidden/.x 9", "com.gone.tool.link -> /Applications", "two.pieces.plist 9",
          "a.b..plist 9", "com.ex\xC3\xA4mple.app.plist 9", "a-b..c_d.E1.plist 9", "a.b.(c).plist 9"})
        disk.make("~/Library/Application Scripts/" + std::string(name));
    disk.make("~/Library/Caches/com.gone.tool.plist 10");
    for (const char* listed : {".hidden.gone.tool.plist", "a-b..c_d.E1.plist", "com.gone.tool.app"})
        expected.insert(expected.end() - 1, "Library/Application Scripts/" + std::string(listed));
    EXPECT_EQ(lines(core::LumvaleUninstaller::orphanedLeftovers(disk.disk())), expected);
}

TEST(Orphans, AreNeverFilesOfAnApplicationThatWasNotReadForLackOfDescriptors) {
    const TemporaryDisk disk;
    makeApp(disk, "/Applications/Notes.app", entry("CFBundleIdentifier", "com.example.editor"));
    disk.make({"~/Library/Preferences/com.example.editor.plist 9", "~/Library/WebKit/com.gone.a.tool 9"});
    // Also, the undefined-behavior sanitizer needs descriptors when it meets a type for the first time.
    EXPECT_EQ(core::LumvaleUninstaller::orphanCandidates(disk.disk()).size(), 1U);
    int shortages = 0;
    for (std::size_t descriptors = 0; descriptors < 8; ++descriptors) {
        const DescriptorLimit limit(descriptors);
        platform::Progress progress;
        const auto found = core::LumvaleUninstaller::orphanCandidates(disk.disk(), &progress);
        EXPECT_EQ(found.size(), progress.unreadFolders() == 0 ? 1U : 0U) << descriptors;
        shortages += progress.unreadFolders() != 0 ? 1 : 0;
    }
    EXPECT_GT(shortages, 0);
}

TEST(VirtualMachines, AreFoundWithTheFilesOfTheirPrograms) {
    const TemporaryDisk disk;
    disk.make({"~/Parallels/Guest.pvm/disk 10", "~/Parallels/Old.PVM 20", "~/Parallels/notes.txt 30",
               "~/Parallels/Empty.pvm/", "~/VirtualBox VMs/Anything/disk 10",
               "~/VirtualBox VMs/plain.vbox 10", "~/VirtualBox VMs/link -> Anything",
               "~/Documents/Other.vmwarevm/disk 10",
               "~/Documents/Virtual Machines.localized/Win.vmwarevm/disk 10", "~/Library/Logs/VirtualBox/",
               "~/Library/Preferences/Parallels/x 10", "~/Library/Preferences/VMware Fusion 10"});
    EXPECT_EQ(lines(core::LumvaleUninstaller::virtualMachineItems(disk.disk())),
              (Lines{"Parallels/Guest.pvm", "Parallels/Old.PVM", "VirtualBox VMs/Anything",
                     "Documents/Virtual Machines.localized/Win.vmwarevm", "Library/Preferences/Parallels",
                     "Library/Preferences/VMware Fusion"}));
}

TEST(RelatedFiles, ShowThePartOfTheirNameThatMatches) {
    using core::LumvaleUninstaller::matchInName;
    using Match = core::LumvaleUninstaller::NameMatch;
    EXPECT_EQ(matchInName(notes, "Com.Example.Notes.plist"), (Match{0, 17}));
    EXPECT_EQ(matchInName(notes, "Footnotes"), (Match{4, 5}));
    EXPECT_EQ(matchInName(notes, "\u0130\xFF-NOTES"), (Match{4, 5})) << "longer in lower case";
    EXPECT_EQ(matchInName(app("İzmir", {}), "x.İZMIR"), (Match{2, 6}));
    EXPECT_EQ(matchInName(notes, "other"), std::nullopt);
}

TEST(RelatedFiles, AreFoundInEveryPlaceInOrder) {
    const TemporaryDisk disk;
    const platform::Date modified(platform::Date::duration(1'700'000'000.5));
    const std::pair<const char*, const char*> places[]{
        {"~/Library/Application Support", "exp_app_support"},
        {"~/Library/Caches", "exp_app_caches"},
        {"~/Library/Preferences", "exp_app_prefs"},
        {"~/Library/Preferences/ByHost", "exp_app_prefs_byhost"},
        {"~/Library/Logs", "exp_app_logs"},
        {"~/Library/Logs/DiagnosticReports", "exp_app_crash_reports"},
        {"~/Library/Saved Application State", "exp_app_saved_state"},
        {"~/Library/WebKit", "exp_app_webkit"},
        {"~/Library/Containers", "exp_app_containers"},
        {"~/Library/Group Containers", "exp_app_group_containers"},
        {"~/Library/HTTPStorages", "exp_app_httpstorages"},
        {"~/Library/Cookies", "exp_app_cookies"},
        {"~/Library/Application Scripts", "exp_app_scripts"},
        {"~/Library/Autosave Information", "exp_app_autosave"},
        {"~/Library/PreferencePanes", "exp_app_prefpane_user"},
        {"~/Library/Services", "exp_app_services"},
        {"~/Library/LaunchAgents", "exp_app_launchagents_user"},
        {"/Library/Application Support", "exp_app_support_system"},
        {"/Library/LaunchAgents", "exp_app_launchagents_system"},
        {"/Library/LaunchDaemons", "exp_app_launchdaemons"},
        {"/Library/PreferencePanes", "exp_app_prefpane_system"},
        {"/private/var/folders/ab/C", "exp_app_darwin_cache"}};
    std::vector<core::ScanItem> expected;
    for (const auto& [folder, explanation] : places) {
        const std::string path = at(folder) + "/A Notes folder";
        disk.make({path + "/in/it 5", std::string(folder) + "/other 5"});
        disk.setModified(path, modified);
        expected.emplace_back(path, 5, core::ScanCategory::appLeftovers, explanation, true, modified);
    }
    disk.make({"~/Documents/notes", "/Library/Caches/notes"});
    const auto withUserCache = [&](std::string_view folder) {
        return *platform::Disk::open(disk.host(""), at("~"), folder);
    };
    using namespace core::LumvaleUninstaller;
    EXPECT_EQ(relatedFiles(notes, withUserCache("/private//var/folders/ab/C/")), expected);
    expected.pop_back();
    EXPECT_EQ(relatedFiles(notes, disk.disk()), expected);
    for (const char* elsewhere : {"/Users/me/Documents", "/private/var/folders", "/var/folders/ab/C",
                                  "/private/var/folders/../db/C", "private/var/folders/ab/C", ""})
        EXPECT_FALSE(darwinUserCacheDirectory(withUserCache(elsewhere))) << elsewhere;
}

TEST(RelatedFiles, HaveNamesThatContainTheIdentifierOrTheName) {
    const TemporaryDisk disk;
    for (const std::string name : {"COM.Example.Notes.plist", "Code Editor", "a.b.c", "codeeditor-old",
                                   "com_example_notes", "caf\xE9", "footnotes", "go", "ÉTÉ", "x\xFF\xFF\xFF"})
        disk.make("~/Library/Services/" + name);
    const struct {
        core::InstalledApp of;
        Lines expected;
    } cases[]{{notes, {"COM.Example.Notes.plist", "com_example_notes", "footnotes"}},
              {app("Code Editor", {}), {"codeeditor-old"}}, // spaces are removed from the key only
              {app("", "com.Example.NOTE"), {"COM.Example.Notes.plist"}},
              {app("Go", "a.b"), {}}, // both too short
              {app("Go", "a.b."), {"a.b.c"}},
              {app("e\u0301e\u0301", {}), {}}, // two characters
              {app("été", {}), {"ÉTÉ"}},
              {app("\xFE\xFE\xFE", {}), {}}, // invalid UTF-8 matches no other invalid UTF-8
              {app("   ", "..."), {}}};
    for (const auto& [of, expected] : cases) {
        const auto found = core::LumvaleUninstaller::relatedFiles(of, disk.disk());
        EXPECT_EQ(lines(found, "~/Library/Services/"), expected) << of.name;
    }
}

TEST(Uninstaller, MovesRelatedFilesThenTheBundleToTheTrash) {
    const OrdinaryUser user;
    const TemporaryDisk disk;
    disk.make({"/Applications/Notes.app/Contents/x 9", "/Applications/Notes.app.old/x",
               "~/Library/Caches/notes/x", "~/Library/Logs/notes", "~/Library/Preferences/notes",
               "~/Library/WebKit/notes -> ../Logs", "/System/Finder.app/x"});
    disk.setMode("~/Library/Preferences", 0500);
    auto expected = disk.entries();
    const core::DeletionOutcome outcome = core::LumvaleUninstaller::uninstall(
        notes,
        at({"~/Library/WebKit/notes", "/System/Finder.app", "~/Library/Preferences/notes",
            "~/Library/Caches/notes", "~/Library/Caches/missing"}),
        disk.disk());
    EXPECT_EQ(outcome.succeeded,
              at({"~/Library/WebKit/notes", "~/Library/Caches/notes", "/Applications/Notes.app"}));
    EXPECT_EQ(failures(outcome), at({"/System/Finder.app Lumvale 1", "~/Library/Preferences/notes 513:13",
                                     "~/Library/Caches/missing 4:2"}));
    moveToTrash(expected, "~/Library/WebKit/notes", "notes");
    moveToTrash(expected, "~/Library/Caches/notes", "notes 2");
    moveToTrash(expected, "/Applications/Notes.app", "Notes.app");
    expected[at("~/.Trash")] = disk.entries()[at("~/.Trash")];
    EXPECT_EQ(disk.entries(), expected);
}
