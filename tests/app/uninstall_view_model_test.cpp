#include "app/models/uninstall_view_model.h"
#include "core/health/health_score.h"
#include "core/items/scan_item.h"
#include "core/uninstall/installed_app.h"

#include "app/i18n/localizer.h"
#include "app/text/display.h"
#include "tests/app/hand_cranked.h"
#include "tests/support/temporary_disk.h"

#include <QAbstractItemModelTester>
#include <QSignalSpy>

#include <limits>

#include <gtest/gtest.h>

namespace {

using Lines = std::vector<std::string>;
using Paths = std::set<std::string>;

class UninstallViewModelTest : public testing::Test {
protected:
    /// Two applications with files of theirs, one of which is both's.
    void makeNotesAndPaint() const {
        m_disk.make({"/Applications/Notes.app/x 1000", "/Applications/Paint.app/x 2000",
                     "~/Library/Caches/notes/x 10", "~/Library/Logs/notes 200", "~/Library/Logs/paint 30",
                     "~/Library/Preferences/com.paint-notes.plist 4", "~/Library/Preferences/other 9"});
    }

    void pick(const std::string& name) {
        for (int row = 0; row < m_model.appsModel()->rowCount(); ++row)
            if (appNames()[static_cast<std::size_t>(row)] == name)
                return m_model.select(row);
        FAIL() << name;
    }

    void load() {
        m_model.loadApps();
        m_jobs.run();
    }

    void loadAndPick(const char* name) {
        load();
        pick(name);
        m_jobs.run();
    }

    Lines appNames() const {
        Lines names;
        for (const core::InstalledApp& app : m_model.apps())
            names.push_back(app.name);
        return names;
    }

    Lines leftovers() const {
        Lines paths;
        for (const core::ScanItem& item : m_model.leftovers())
            paths.push_back(item.path);
        return paths;
    }

    Lines recorded() const {
        Lines names;
        for (const HistoryEntry& entry : m_history.entries())
            names.push_back(entry.name + " " + std::to_string(entry.sizeBytes));
        return names;
    }

    /// Unticks and ticks by what the rows are.
    void toggle(std::string_view path) {
        for (int row = 0; row < m_model.leftoversModel()->rowCount(); ++row)
            if (leftovers()[static_cast<std::size_t>(row)] == at(path))
                return m_model.leftoversModel()->toggle(row);
        FAIL() << path;
    }

    void expectNothingSelected() const {
        EXPECT_FALSE(m_model.hasSelectedApp());
        EXPECT_TRUE(m_model.leftovers().empty() && m_model.checked().empty());
        EXPECT_EQ(m_model.selectedBytes(), 0);
    }

    // Made and removed as the user whom the disk belongs to, so that modes count.
    OrdinaryUser m_user;
    TemporaryDisk m_disk;
    HistoryStore m_history{m_disk.disk()};
    HandCranked m_jobs;
    mutable UninstallViewModel m_model{m_disk.disk(), m_history, m_jobs.executor()};
    QAbstractItemModelTester m_appsTester{m_model.appsModel(),
                                          QAbstractItemModelTester::FailureReportingMode::Fatal};
    QAbstractItemModelTester m_filesTester{m_model.leftoversModel(),
                                           QAbstractItemModelTester::FailureReportingMode::Fatal};
};

} // namespace

TEST_F(UninstallViewModelTest, SaysTheFreeSpaceInTheLanguageOfTheMoment) {
    m_model.loadApps();
    const std::string line = m_model.freeSpaceText().toStdString();
    EXPECT_TRUE(line.starts_with("Espace libre : ")) << line;
    EXPECT_TRUE(line.ends_with(
        " sur "
        + display::size(core::LumvaleScanner::healthScore(m_disk.disk()).totalDiskBytes).toStdString()))
        << line;
    Localizer::shared().setLanguage(AppLanguage::en);
    EXPECT_TRUE(m_model.freeSpaceText().startsWith(u"Free space : "));
    Localizer::shared().setLanguage(AppLanguage::automatic);
}

TEST_F(UninstallViewModelTest, ShowsTheFilesOfTheLastPickedWhicheverSearchEndsFirst) {
    makeNotesAndPaint();
    load();
    const Lines paints = at({"~/Library/Preferences/com.paint-notes.plist", "~/Library/Logs/paint"});
    for (const bool lastEndsFirst : {false, true}) {
        pick("Notes");
        m_jobs.run();
        pick("Notes");
        pick("Paint");
        // Nothing of the older selection stays while the newer is searched.
        EXPECT_TRUE(m_model.leftovers().empty());
        EXPECT_EQ(m_model.checked(), setAt({"/Applications/Paint.app"}));
        if (lastEndsFirst)
            m_jobs.runLast();
        m_jobs.run();
        EXPECT_EQ(leftovers(), paints);
        EXPECT_EQ(m_model.checkedCount(), 3);
        EXPECT_FALSE(m_model.isSearchingLeftovers());
    }
    pick("Notes");
    pick("Paint");
    m_jobs.runBackground();
    pick("Notes"); // the results of both are on their way
    m_jobs.publish();
    EXPECT_EQ(leftovers().size(), 3u);
    EXPECT_FALSE(m_model.isSearchingLeftovers());
    // The second search for the same ticks nothing that was unticked meanwhile.
    toggle("~/Library/Logs/notes");
    m_model.toggleSelectedApp();
    const Paths ticked = m_model.checked();
    m_jobs.run();
    EXPECT_EQ(m_model.checked(), ticked);
    EXPECT_EQ(ticked.size(), 2u);

    pick("Paint");
    m_jobs.runBackground();
    m_model.clearSelection();
    m_jobs.publish();
    expectNothingSelected();
}

TEST_F(UninstallViewModelTest, MovesTheTickedInTheirOrderAndChangesNothingElse) {
    makeNotesAndPaint();
    m_disk.make({"~/Library/WebKit/Notes.app/x 5", "~/Applications/Notes.app/x", "~/.Trash/keep",
                 "~/Library/Application Support/Lumvale/historique.json"});
    loadAndPick("Notes");
    ASSERT_EQ(m_model.selectedApp()->path, "/Applications/Notes.app");
    toggle("~/Library/Preferences/com.paint-notes.plist");
    auto expected = m_disk.entries();
    // Of the two of one name the file came first, the application last.
    moveToTrash(expected, "~/Library/Caches/notes", "notes");
    moveToTrash(expected, "~/Library/Logs/notes", "notes 2");
    moveToTrash(expected, "~/Library/WebKit/Notes.app", "Notes.app");
    moveToTrash(expected, "/Applications/Notes.app", "Notes 2.app");

    QSignalSpy freeSpace(&m_model, &UninstallViewModel::freeSpaceTextChanged);
    QSignalSpy told(&m_model, &UninstallViewModel::lastUninstalledChanged);
    QObject::connect(&m_model, &UninstallViewModel::lastUninstalledChanged, &m_model, [&] {
        EXPECT_EQ(m_model.lastUninstalled(), "Notes"); // and all of it is done
        EXPECT_TRUE(m_disk.exists("~/.Trash/Notes 2.app"));
    });
    m_model.confirmUninstall();
    EXPECT_EQ(told.size(), 1);
    auto after = m_disk.entries();
    const std::string history = m_history.path();
    EXPECT_GT(m_disk.read(history).size(), 2u);
    after.erase(history);
    expected.erase(history);
    EXPECT_EQ(after, expected);

    EXPECT_EQ(recorded(), Lines{"Notes 1215"});
    EXPECT_EQ(appNames(), (Lines{"Notes", "Paint"})) << "the other of that name stays";
    EXPECT_EQ(m_model.apps()[0].path, at("~/Applications/Notes.app"));
    EXPECT_EQ(freeSpace.size(), 1);
    expectNothingSelected();
}

TEST_F(UninstallViewModelTest, LeavesWhatItCannotMoveAndSaysWhatWasAskedFor) {
    makeNotesAndPaint();
    m_disk.write("/Applications/Plain.app/Contents/Info.plist",
                 "<plist><dict><key>CFBundleDisplayName</key><string/></dict></plist>");
    loadAndPick("Notes");
    m_disk.setMode("/Applications", 0500);
    m_disk.setMode("~/Library/Logs", 0500);
    m_model.confirmUninstall();
    m_disk.setMode("/Applications", 0700);
    m_disk.setMode("~/Library/Logs", 0700);
    EXPECT_TRUE(m_disk.exists("/Applications/Notes.app/x") && m_disk.exists("~/Library/Logs/notes"));
    EXPECT_TRUE(m_disk.exists("~/.Trash/notes/x"));
    EXPECT_EQ(recorded(), Lines{"Notes 1214"});
    EXPECT_EQ(m_model.lastUninstalledName(), u"Notes");
    EXPECT_EQ(appNames(), (Lines{"", "Paint"}));

    // Without the application ticked, and without anything, it leaves the list as well.
    pick("Paint");
    m_jobs.run();
    m_model.toggleSelectedApp();
    m_model.confirmUninstall();
    EXPECT_TRUE(m_disk.exists("/Applications/Paint.app/x") && !m_disk.exists("~/Library/Logs/paint"));
    pick("");
    m_model.setChecked({});
    m_model.confirmUninstall();
    EXPECT_TRUE(m_disk.exists("/Applications/Plain.app"));
    EXPECT_EQ(recorded(), (Lines{" 0", "Paint 30", "Notes 1214"}));
    EXPECT_TRUE(m_model.hasUninstalled() && m_model.lastUninstalledName().isEmpty());
    EXPECT_FALSE(m_model.hasApps());

    m_model.confirmUninstall(); // with nothing selected
    EXPECT_EQ(recorded().size(), 3u);
}

TEST_F(UninstallViewModelTest, GoesByRowsNotByWhatTheyLookLike) {
    m_disk.make({"/Applications/Note\xFE.app/x 5", "/Applications/Note\xFF.app/x 7",
                 "~/Library/Logs/note\xFE 1", "~/Library/Logs/note\xFF 2"});
    load();
    for (const int outside : {-1, 2, std::numeric_limits<int>::max()})
        m_model.select(outside);
    EXPECT_FALSE(m_model.hasSelectedApp());
    m_model.select(1);
    m_jobs.run();
    EXPECT_EQ(m_model.selectedAppName(), u"Note\uFFFD");
    EXPECT_EQ(m_model.selectedAppSize(), display::size(7));
    EXPECT_FALSE(m_model.hasLeftovers()) << "bytes that aren't text tell no application";
    m_model.confirmUninstall();
    EXPECT_TRUE(m_disk.exists("/Applications/Note\xFE.app") && m_disk.exists("~/.Trash/Note\xFF.app"));
    EXPECT_EQ(recorded(), Lines{"Note\uFFFD 7"});

    m_disk.make(
        {"/Applications/Other.app/x", "~/Library/Caches/other\xFE 1", "~/Library/Caches/other\xFF 2"});
    loadAndPick("Other");
    m_model.leftoversModel()->toggle(0);
    m_model.confirmUninstall();
    EXPECT_TRUE(m_disk.exists("~/Library/Caches/other\xFE") && m_disk.exists("~/.Trash/other\xFF"));
}
