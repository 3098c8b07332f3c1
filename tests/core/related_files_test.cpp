#include "core/uninstall/related_files.h"
#include "core/uninstall/uninstaller.h"
#include "tests/support/codes.h"
#include "tests/support/temporary_disk.h"

#include <algorithm>
#include <filesystem>

#include <gtest/gtest.h>

namespace {

using Lines = std::vector<std::string>;

core::InstalledApp app(std::string name, std::optional<std::string> identifier,
                       std::string path = "/Applications/x.app") {
    return core::InstalledApp(std::move(name), std::move(identifier), std::move(path), 7);
}

const core::InstalledApp notes = app("Notes", "com.example.notes", "/Applications/Notes.app");

struct RelatedFiles : testing::Test {
    /// Path from the home on, and size, of each finding.
    Lines found(const core::InstalledApp& of = notes) const {
        Lines lines;
        for (const core::ScanItem& item : core::LumvaleUninstaller::relatedFiles(of, disk.disk()))
            lines.push_back((item.path.starts_with(at("~/")) ? item.path.substr(at("~/").size()) : item.path)
                            + " " + std::to_string(item.sizeBytes));
        return lines;
    }

    platform::Disk withUserCache(std::string_view folder) const {
        return *platform::Disk::open(disk.host(""), at("~"), folder);
    }

    const OrdinaryUser user; // so that modes count
    const TemporaryDisk disk;
};

} // namespace

TEST_F(RelatedFiles, AreFoundInTheirPlacesInOrder) {
    const platform::Date modified(platform::Date::duration(1'700'000'000.5));
    const std::pair<const char*, const char*> places[]{
        // the first and the last ones, and one within another
        {"~/Library/Application Support", "exp_app_support"},
        {"~/Library/Logs", "exp_app_logs"},
        {"~/Library/Logs/DiagnosticReports", "exp_app_crash_reports"},
        {"~/Library/LaunchAgents", "exp_app_launchagents_user"},
        {"/Library/Application Support", "exp_app_support_system"},
        {"/Library/PreferencePanes", "exp_app_prefpane_system"},
        {"/private/var/folders/ab/C", "exp_app_darwin_cache"}};
    std::vector<core::ScanItem> expected;
    for (const auto& [folder, explanation] : places) {
        for (const char* name : {"/A Notes folder", "/b.notes"}) {
            const std::string path = at(folder) + name;
            const std::int64_t bytes = static_cast<std::int64_t>(expected.size()) + 1;
            disk.make(path + (name[1] == 'A' ? "/in/it " : " ") + std::to_string(bytes));
            disk.setModified(path, modified);
            expected.emplace_back(path, bytes, core::ScanCategory::appLeftovers, explanation, true, modified);
        }
        disk.make(std::string(folder) + "/other");
    }
    disk.make({"/Applications/Notes.app/Contents/x 9", "~/Documents/notes", "/Library/Caches/notes"});
    EXPECT_EQ(core::LumvaleUninstaller::relatedFiles(notes, withUserCache("/private//var/folders/ab/C/")),
              expected);
    expected.erase(expected.end() - 2, expected.end());
    EXPECT_EQ(core::LumvaleUninstaller::relatedFiles(notes, disk.disk()), expected);
    for (const char* elsewhere : {"/Users/me/Documents", "/private/var/folders", "/var/folders/ab/C",
                                  "/private/var/folders/../db/C", "private/var/folders/ab/C", ""})
        EXPECT_FALSE(core::LumvaleUninstaller::darwinUserCacheDirectory(withUserCache(elsewhere)))
            << elsewhere;
}

TEST_F(RelatedFiles, AreThoseWhoseNamesContainAKey) {
    const Lines names{"COM.Example.Notes.plist",
                      "Code Editor",
                      "MY$(PRODUCT_BUNDLE_IDENTIFIER)",
                      "a.b.c",
                      "codeeditor-old",
                      "com.example.note",
                      "com_example_notes",
                      "caf\xE9",
                      "footnotes",
                      "go",
                      "\xC3\x89T\xC3\x89",
                      "x\xFF\xFF\xFF",
                      "e\u0301e\u0301",
                      "\xCE\xA3\xCE\xAF\xCF\x83\xCF\x85\xCF\x86\xCE\xBF\xCF\x82"};
    for (const std::string& name : names)
        disk.make("~/Library/Services/" + name);
    const struct {
        core::InstalledApp of;
        Lines expected;
    } cases[]{
        {notes, {"COM.Example.Notes.plist", "com_example_notes", "footnotes"}},
        {app("Code Editor", std::nullopt), {"codeeditor-old"}}, // spaces go from the key alone
        {app("Code\u00A0Editor", std::nullopt), {}},
        {app("", "com.Example.NOTE"), {"COM.Example.Notes.plist", "com.example.note"}},
        {app("Pixel Ruler", "$(PRODUCT_BUNDLE_IDENTIFIER)"), {"MY$(PRODUCT_BUNDLE_IDENTIFIER)"}},
        {app("Go", "a.b"), {}},             // two characters and three
        {app("e\u0301e\u0301", "go."), {}}, // two to the eye
        {app("Go", "a.b."), {"a.b.c"}},
        {app("été", std::nullopt), {"\xC3\x89T\xC3\x89"}},
        {app("e\u0301te\u0301", std::nullopt), {}}, // the same to the eye, other letters
        {app("ΣΊΣΥΦΟΣ", std::nullopt), {"\xCE\xA3\xCE\xAF\xCF\x83\xCF\x85\xCF\x86\xCE\xBF\xCF\x82"}},
        {app("\xFE\xFE\xFE", std::nullopt), {}}, // whatever these are, others' bytes are not them
        {app("", std::nullopt), {}},
        {app("   ", "..."), {}},
    };
    for (const auto& [of, expected] : cases) {
        Lines wanted;
        for (const std::string& name : expected)
            wanted.push_back("Library/Services/" + name + " 0");
        std::sort(wanted.begin(), wanted.end());
        EXPECT_EQ(found(of), wanted) << of.name << " " << of.bundleIdentifier.value_or("–");
    }
}

TEST_F(RelatedFiles, AreListedWhateverTheirSizeFromThePlacesThatCanBeListed) {
    disk.make({"~/Library/Caches/notes 0 bytes", "~/Library/Caches/notes folder/.hidden 50",
               "~/Library/Caches/notes folder/x 30", "~/Library/Caches/.notes 20",
               "~/Library/Caches/notes to-a-folder -> /Applications",
               "~/Library/Caches/notes to-a-file -> .notes", "~/Library/Caches/notes to-nothing -> gone",
               "~/Library/Caches/notes |", "~/Library/Caches/notes closed/x 5",
               "/Applications/Big.app/x 99"});
    disk.make({"~/Library/Preferences", "~/Library/Logs -> /elsewhere", "/elsewhere/notes 2",
               "~/Library/Saved Application State/notes 1", "~/Library/WebKit -> WebKit",
               "~/Library/Containers/notes/x 3", "/Library/LaunchDaemons -> ../../../../.."});
    disk.setMode("~/Library/Caches/notes closed", 0);
    disk.setMode("~/Library/Saved Application State", 0300);
    EXPECT_EQ(found(), (Lines{"Library/Caches/.notes 20", "Library/Caches/notes 0",
                              "Library/Caches/notes 0 bytes 0", "Library/Caches/notes closed 0",
                              "Library/Caches/notes folder 30", "Library/Caches/notes to-a-file 6",
                              "Library/Caches/notes to-a-folder 0", "Library/Caches/notes to-nothing 0",
                              "Library/Logs/notes 2", "Library/Containers/notes 3"}));
    // A place within a place may bear a key itself.
    disk.make("/elsewhere/DiagnosticReports/DiagnosticReports_1.crash 4");
    EXPECT_EQ(found(app("", "diagnosticreports")),
              (Lines{"Library/Logs/DiagnosticReports 4",
                     "Library/Logs/DiagnosticReports/DiagnosticReports_1.crash 4"}));
}

TEST_F(RelatedFiles, AreUninstalledInTheirOrderBeforeTheBundleAndNothingElseIs) {
    disk.make({"/Applications/Notes.app/Contents/x 9", "/Applications/Notes.app.old/x",
               "~/Applications/Notes.app/x", "~/Library/Caches/notes/x", "~/Library/Logs/notes",
               "~/Library/Preferences/notes", "~/Library/WebKit/notes -> ../Logs", "~/.Trash/notes",
               "/System/Finder.app/x"});
    disk.setMode("~/Library/Preferences", 0500);
    disk.setMode("/Applications", 0500);
    const auto uninstall = [&](const core::InstalledApp& of,
                               std::initializer_list<std::string_view> related) {
        return core::LumvaleUninstaller::uninstall(of, at(related), disk.disk());
    };
    auto expected = disk.entries();
    const core::DeletionOutcome outcome =
        uninstall(notes, {"~/Library/WebKit/notes", "/System/Finder.app", "~/Library/Preferences/notes",
                          "~/Library/Caches/notes", "~/Library/Caches/gone", "~/Library/Caches/notes"});
    EXPECT_EQ(outcome.succeeded, at({"~/Library/WebKit/notes", "~/Library/Caches/notes"}));
    EXPECT_EQ(failures(outcome), at({"/System/Finder.app Lumvale 1", "~/Library/Preferences/notes 513:13",
                                     "~/Library/Caches/gone 4:2", "~/Library/Caches/notes 4:2",
                                     "/Applications/Notes.app 513:13"}));
    moveToTrash(expected, "~/Library/WebKit/notes", "notes 2");
    moveToTrash(expected, "~/Library/Caches/notes", "notes 3");
    EXPECT_EQ(disk.entries(), expected);

    EXPECT_EQ(failures(uninstall(app("Finder", {}, "/System/Finder.app"), {})),
              Lines{"/System/Finder.app Lumvale 1"});
    disk.setMode("/Applications", 0755);
    EXPECT_EQ(uninstall(notes, {"~/Library/Logs/notes"}).succeeded,
              at({"~/Library/Logs/notes", "/Applications/Notes.app"}));
    EXPECT_TRUE(disk.exists("~/.Trash/Notes.app/Contents/x") && disk.exists("~/Applications/Notes.app/x"));
}
