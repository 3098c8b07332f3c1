#include "app/models/uninstall_view_model.h"

#include "platform/removal/trash.h"
#include "tests/app/hand_cranked.h"
#include "tests/support/temporary_disk.h"

#include <QAbstractItemModelTester>
#include <QSignalSpy>

#include <gtest/gtest.h>

using namespace Qt::StringLiterals;

namespace {

using Texts = std::vector<std::string>;

// Rows of the list of applications.
constexpr int notes = 0;
constexpr int paint = 1;

class UninstallViewModelTest : public testing::Test {
protected:
    /// Two applications and their files; the preferences belong to both.
    UninstallViewModelTest() {
        m_disk.make({"/Applications/Notes.app/x 1000", "/Applications/Paint.app/x 2000",
                     "~/Library/Caches/notes/x 10", "~/Library/Logs/notes 200", "~/Library/Logs/paint 30",
                     "~/Library/Preferences/com.paint-notes.plist 4", "~/Library/Preferences/other 9"});
        load();
    }

    void load() {
        m_model.loadApps();
        m_jobs.run();
    }

    void pick(int row) {
        m_model.select(row);
        m_jobs.run();
    }

    void confirmUninstall() {
        m_model.confirmUninstall();
        m_jobs.run();
    }

    Texts files() const {
        Texts paths;
        for (const core::ScanItem& item : m_model.leftovers())
            paths.push_back(item.path);
        return paths;
    }

    OrdinaryUser m_user; // permissions do not hold for root
    TemporaryDisk m_disk;
    HistoryStore m_history{m_disk.disk()};
    HandCranked m_jobs;
    std::string m_running; ///< identifier of the only running application
    UninstallViewModel m_model{m_disk.disk(), m_history, m_jobs.executor(), nullptr,
                               [this](const platform::Disk&, const std::string& identifier) {
                                   return identifier == m_running;
                               }};
    QAbstractItemModelTester m_tester{m_model.appsModel(),
                                      QAbstractItemModelTester::FailureReportingMode::Fatal};
};

} // namespace

TEST_F(UninstallViewModelTest, ShowsTheFilesOfTheLastPickedApplicationAndKeepsItsTicks) {
    pick(notes);
    m_model.select(notes);
    m_model.select(paint);
    EXPECT_EQ(files(), Texts());
    EXPECT_EQ(m_model.checked(), setAt({"/Applications/Paint.app"}));
    m_jobs.run(); // the result for the first one is dropped
    EXPECT_EQ(files(), at({"~/Library/Preferences/com.paint-notes.plist", "~/Library/Logs/paint"}));
    EXPECT_EQ(m_model.checkedCount(), 3);

    // A second result for the same application leaves the ticks as the user changed them.
    m_model.select(notes);
    m_model.select(notes);
    m_jobs.runLast();
    m_model.leftoversModel()->toggle(0);
    m_model.toggleSelectedApp();
    EXPECT_EQ(m_model.checkedCount(), 2);
    m_jobs.run();
    EXPECT_EQ(m_model.checkedCount(), 2);

    m_model.select(paint);
    m_jobs.runBackground();
    m_model.clearSelection();
    m_jobs.publish();
    EXPECT_TRUE(files().empty() && m_model.checked().empty());
}

TEST_F(UninstallViewModelTest, SortsItsApplicationsBySizeOrName) {
    InstalledAppsModel& apps = *m_model.appsModel();
    EXPECT_EQ(apps.sortBySize(true, notes), 1);
    m_model.select(0);
    EXPECT_EQ(m_model.selectedApp()->name, "Paint");
    confirmUninstall();
    EXPECT_EQ(apps.at(0).name, "Notes");
    m_disk.make("/Applications/Solo.app/x 3000");
    load();
    EXPECT_EQ(apps.at(0).name, "Solo");
    EXPECT_EQ(apps.sortBySize(false, 0), 1);
    EXPECT_EQ(apps.sortBySize(true, -1), -1);
}

TEST_F(UninstallViewModelTest, ChecksAtEachRequestWhetherTheApplicationRuns) {
    const std::string plist =
        "<plist><dict><key>CFBundleIdentifier</key><string>a.notes</string></dict></plist>";
    m_disk.write("/Applications/Notes.app/Contents/Info.plist", plist);
    load();
    for (const auto& [row, running, expected] :
         {std::tuple(notes, "a.notes", true), {notes, "a.paint", false}, {paint, "a.notes", false}}) {
        m_running = running;
        m_model.select(row);
        m_model.requestUninstall();
        EXPECT_EQ(m_model.isSelectedAppRunning(), expected) << row << ' ' << running;
    }
}

TEST_F(UninstallViewModelTest, MovesTickedFilesInTheirOrderAndTheApplication) {
    m_disk.make("~/Applications/Notes.app/x");
    load();
    pick(notes);
    ASSERT_EQ(files().at(1), at("~/Library/Preferences/com.paint-notes.plist"));
    m_model.leftoversModel()->toggle(1);
    const QSignalSpy freeSpace(&m_model, &UninstallViewModel::freeSpaceTextChanged);
    confirmUninstall();
    EXPECT_EQ(*platform::listTrash(m_disk.disk()), (Texts{"Notes.app", "notes", "notes 2"}));
    EXPECT_TRUE(m_disk.exists("~/.Trash/notes/x")); // of the folder of caches, which comes first
    EXPECT_EQ(m_history.entries().at(0).name, "Notes");
    EXPECT_EQ(m_history.entries().at(0).sizeBytes, 1210);
    EXPECT_EQ(m_model.apps().at(0).path, at("~/Applications/Notes.app")) << "of the same name";
    EXPECT_EQ(freeSpace.size(), 1);

    m_disk.make("~/Library/Logs/notes"); // the place is taken
    m_model.putBackModel()->start();
    m_jobs.run();
    EXPECT_EQ(*platform::listTrash(m_disk.disk()), Texts{"notes 2"});
    EXPECT_EQ(HistoryStore(m_disk.disk()).entries().at(0).sizeBytes, 200);
}

TEST_F(UninstallViewModelTest, TellsWhatStayedAndKeepsItsApplicationInTheList) {
    pick(notes);
    m_disk.setMode("/Applications", 0500);
    m_disk.setMode("~/Library/Logs", 0500);
    confirmUninstall();
    m_disk.setMode("/Applications", 0700);
    m_disk.setMode("~/Library/Logs", 0700);
    const QString reason = u"le système ne l'a pas permis"_s;
    EXPECT_EQ(m_model.stayedText(),
              u"« Notes » est toujours là : "_s + reason + u"\n1 élément est resté à sa place : "_s + reason);
    EXPECT_EQ(m_model.movedText(), u"2 éléments mis à la corbeille");
    EXPECT_FALSE(m_model.hasUninstalled());
    EXPECT_EQ(m_model.apps().at(0).name, "Notes");
    load();
    EXPECT_EQ(m_model.stayedText(), u"1 élément est resté à sa place : "_s + reason);

    pick(paint);
    m_model.toggleSelectedApp(); // moves its files only
    confirmUninstall();
    confirmUninstall(); // does nothing without a selection
    EXPECT_TRUE(m_disk.exists("/Applications/Paint.app/x") && !m_disk.exists("~/Library/Logs/paint"));
    EXPECT_TRUE(m_model.stayedText().isEmpty() && !m_model.hasUninstalled());
    ASSERT_EQ(m_history.entries().size(), 2U);
    EXPECT_EQ(m_history.entries()[0].sizeBytes, 30);
    EXPECT_EQ(m_history.entries()[1].sizeBytes, 14);
}
