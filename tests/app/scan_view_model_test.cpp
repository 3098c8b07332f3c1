#include "app/models/scan_view_model.h"

#include "app/text/display.h"
#include "tests/app/hand_cranked.h"
#include "tests/support/mounted_volume.h"
#include "tests/support/temporary_disk.h"

#include <QAbstractItemModelTester>
#include <QSignalSpy>

#include <filesystem>

#include <gtest/gtest.h>

namespace {

using Texts = std::vector<std::string>;

class ScanViewModelTest : public testing::Test {
protected:
    void scan() {
        m_model.runScan();
        m_jobs.run();
    }

    std::set<std::string> listed() {
        std::set<std::string> paths;
        for (const core::ScanItem& item : m_model.items()->rows())
            paths.insert(item.path);
        return paths;
    }

    Texts recorded() const {
        Texts entries;
        for (const HistoryEntry& entry : m_history.entries())
            entries.push_back(entry.name + " " + std::to_string(entry.sizeBytes));
        return entries;
    }

    OrdinaryUser m_user; // permissions do not hold for root
    TemporaryDisk m_disk;
    HistoryStore m_history{m_disk.disk()};
    HandCranked m_jobs;
    ScanViewModel m_model{m_disk.disk(), m_history, m_jobs.executor()};
    QAbstractItemModelTester m_tester{m_model.items(), QAbstractItemModelTester::FailureReportingMode::Fatal};
    QSignalSpy m_healthChanges{&m_model, &ScanViewModel::healthChanged};
};

} // namespace

TEST_F(ScanViewModelTest, ShowsTheFreeSpaceOfTheVolumeAndRefreshesItAfterDeletions) {
    const MountedVolume volume(m_disk.host("~")); // no other program writes to it
    SKIP_UNLESS_MOUNTED(volume);
    m_disk.make({"~/.Trash/a", "~/Library/Logs/b 1"});
    scan();
    const QString atFirst = m_model.freeSpaceText();
    EXPECT_TRUE(atFirst.endsWith(u' ' + display::size(64 * 1024))) << atFirst.toStdString();
    m_disk.write("~/film", std::string(20'000, 'x'));
    m_model.confirmDelete();
    const QString afterDeletion = m_model.freeSpaceText();
    EXPECT_NE(afterDeletion, atFirst);
    m_disk.write("~/film", std::string(40'000, 'x'));
    m_model.confirmEmptyTrash();
    EXPECT_NE(m_model.freeSpaceText(), afterDeletion);
}

TEST_F(ScanViewModelTest, MovesTickedItemsToTheTrashAndKeepsFailedOnesUnticked) {
    m_disk.make({"~/Library/Caches/one 3", "~/Library/Logs/two 20", "~/Library/Caches/Google 100"});
    scan();
    m_disk.setMode("~/Library/Logs", 0500);
    m_healthChanges.clear();
    m_model.confirmDelete();
    m_disk.setMode("~/Library/Logs", 0700);
    EXPECT_EQ(m_model.lastDeletedCount(), 2);
    EXPECT_EQ(recorded(), (Texts{"one 3", "Google (Chrome) 100"}));
    EXPECT_EQ(listed(), setAt({"~/Library/Logs/two"}));
    EXPECT_EQ(m_model.result()->totalBytes, 20);
    EXPECT_TRUE(m_model.checked().empty());
    EXPECT_TRUE(m_disk.exists("~/.Trash/one") && m_disk.exists("~/.Trash/Google"));
    EXPECT_EQ(m_healthChanges.size(), 1);

    // An item that was removed since the scan cannot be deleted either.
    m_model.setChecked(setAt({"~/Library/Logs/two", "~/Documents"}));
    std::filesystem::remove(m_disk.host("~/Library/Logs/two"));
    m_model.confirmDelete();
    EXPECT_EQ(m_model.lastDeletedCount(), 0);
    EXPECT_EQ(recorded().size(), 2U);
    EXPECT_EQ(listed(), setAt({"~/Library/Logs/two"}));
}

TEST_F(ScanViewModelTest, DeletesContentBeforeItsFolderAndCountsAPathWithTwoRowsOnce) {
    m_disk.make({"~/Downloads/old/film.mov 60000000", "~/Downloads/twice.mov 70000000"});
    for (const char* path : {"~/Downloads/old", "~/Downloads/twice.mov"})
        m_disk.setModified(path, platform::now() - std::chrono::days(90));
    scan();
    EXPECT_EQ(m_model.items()->rowCount(), 4); // large files and old downloads
    EXPECT_EQ(m_model.checkedCount(), 0);      // the user's own files start unticked
    for (const int row : {-1, 4, 0})           // the larger one of the large files
        m_model.items()->toggle(row);
    EXPECT_EQ(m_model.checkedCount(), 1);
    EXPECT_EQ(m_model.selectedBytes(), 140'000'000);
    m_model.setChecked(setAt({"~/Downloads/old", "~/Downloads/old/film.mov", "~/Downloads/twice.mov"}));
    m_model.confirmDelete();
    EXPECT_EQ(m_model.lastDeletedCount(), 3);
    EXPECT_EQ(recorded().size(), 4U);
    EXPECT_EQ(listed().size(), 0U);
    EXPECT_TRUE(m_disk.exists("~/.Trash/film.mov") && m_disk.exists("~/.Trash/old"));
}

TEST_F(ScanViewModelTest, DistinguishesTwoFilesThatLookTheSameByTheirBytes) {
    m_disk.make({"~/Library/Logs/a\xff 10", "~/Library/Logs/a\xfe 3"});
    scan();
    m_model.items()->toggle(0);
    EXPECT_EQ(m_model.selectedBytes(), 3);
    m_model.confirmDelete();
    EXPECT_EQ(listed(), setAt({"~/Library/Logs/a\xff"}));
    EXPECT_TRUE(m_disk.exists("~/.Trash/a\xfe") && m_disk.exists("~/Library/Logs/a\xff"));
    EXPECT_EQ(recorded(), Texts{"a\uFFFD 3"});
}

TEST_F(ScanViewModelTest, RemovesItemsOfTheTrashBeforeOthersTakeTheirNames) {
    m_disk.make({"~/.Trash/d.log 1", "~/Library/Logs/d.log 20"});
    scan();
    std::filesystem::remove(m_disk.host("~/.Trash/d.log"));
    ASSERT_EQ(m_model.checkedCount(), 2);
    m_model.confirmDelete();
    EXPECT_EQ(m_model.lastDeletedCount(), 1);
    EXPECT_TRUE(m_disk.exists("~/.Trash/d.log"));
    EXPECT_EQ(listed(), setAt({"~/.Trash/d.log"}));
}

TEST_F(ScanViewModelTest, EmptiesTheTrashAndReportsWhatCouldNotBeRemoved) {
    m_disk.make({"~/.Trash/a 100", "~/.Trash/.hidden/b 20", "~/.Trash/closed/c 3", "~/Library/Logs/d.log 7"});
    m_disk.setMode("~/.Trash/closed", 0500);
    scan();
    m_healthChanges.clear();
    m_model.confirmEmptyTrash();
    EXPECT_EQ(m_model.trashFailedNames(), QStringList{QStringLiteral("closed")});
    EXPECT_EQ(m_model.trashFailedReasonKeys(), QStringList{QStringLiteral("err_trash_permission")});
    EXPECT_EQ(recorded(), Texts{"Corbeille 120"});
    EXPECT_EQ(listed(), setAt({"~/Library/Logs/d.log"}));
    EXPECT_EQ(m_model.checked(), setAt({"~/Library/Logs/d.log"}));
    EXPECT_TRUE(m_disk.exists("~/.Trash/closed/c"));
    EXPECT_EQ(m_healthChanges.size(), 1);
    m_model.runScan();
    EXPECT_TRUE(m_model.trashFailedNames().isEmpty());
}
