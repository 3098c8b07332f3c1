#include "app/models/scan_view_model.h"

#include "tests/app/hand_cranked.h"
#include "tests/support/temporary_disk.h"

#include <QAbstractItemModelTester>

#include <algorithm>
#include <filesystem>

#include <gtest/gtest.h>

namespace {

using Paths = std::set<std::string>;

class ScanViewModelTest : public testing::Test {
protected:
    void scan() {
        m_model.runScan();
        m_jobs.run();
    }

    Paths listed() const {
        Paths paths;
        for (const core::ScanItem& item : m_model.items()->rows())
            paths.insert(item.path);
        return paths;
    }

    std::vector<std::string> recorded() const {
        std::vector<std::string> names;
        for (const HistoryEntry& entry : m_history.entries())
            names.push_back(entry.name + " " + std::to_string(entry.sizeBytes));
        return names;
    }

    using Recorded = std::vector<std::string>;

    // Made and removed as the user whom the disk belongs to, so that modes count.
    OrdinaryUser m_user;
    TemporaryDisk m_disk;
    HistoryStore m_history{m_disk.disk()};
    HandCranked m_jobs;
    mutable ScanViewModel m_model{m_disk.disk(), m_history, m_jobs.executor()};
    QAbstractItemModelTester m_tester{m_model.items(), QAbstractItemModelTester::FailureReportingMode::Fatal};
};

} // namespace

TEST_F(ScanViewModelTest, MovesWhatItCanAndKeepsTheRestUnticked) {
    m_disk.make({"~/Library/Caches/one 3", "~/Library/Logs/two 20", "~/Library/Caches/Google 100"});
    scan();
    // One of the three is beyond reach.
    m_disk.setMode("~/Library/Logs", 0500);
    m_model.confirmDelete();
    m_disk.setMode("~/Library/Logs", 0700);

    EXPECT_EQ(m_model.lastDeletedCount(), 2);
    EXPECT_EQ(recorded(), (Recorded{"one 3", "Google (Chrome) 100"})); // the larger came first in the result
    EXPECT_EQ(listed(), setAt({"~/Library/Logs/two"}));
    EXPECT_EQ(m_model.result()->totalBytes, 20);
    EXPECT_TRUE(m_model.checked().empty());
    EXPECT_TRUE(m_disk.exists("~/.Trash/one") && m_disk.exists("~/.Trash/Google"));

    // What vanished meanwhile is a failure like any other.
    m_model.setChecked(setAt({"~/Library/Logs/two", "~/Library/Logs/gone", "~/Documents"}));
    std::filesystem::remove(m_disk.host("~/Library/Logs/two"));
    m_model.confirmDelete();
    EXPECT_EQ(m_model.lastDeletedCount(), 0);
    EXPECT_EQ(m_history.entries().size(), 2u);
    EXPECT_TRUE(listed().contains(at("~/Library/Logs/two")));
}

TEST_F(ScanViewModelTest, MovesWhatLiesInATickedFolderBeforeTheFolder) {
    // A large file in an old folder of Downloads: both are proposed, one inside the other.
    m_disk.make("~/Downloads/old/film.mov 60000000");
    const platform::Date longAgo = platform::now() - std::chrono::days(90);
    m_disk.setModified("~/Downloads/old/film.mov", longAgo);
    m_disk.setModified("~/Downloads/old", longAgo);
    scan();
    m_model.setChecked(setAt({"~/Downloads/old", "~/Downloads/old/film.mov"}));
    m_model.confirmDelete();
    EXPECT_EQ(m_model.lastDeletedCount(), 2);
    EXPECT_TRUE(m_model.result()->items.empty());
    EXPECT_TRUE(m_disk.exists("~/.Trash/film.mov") && m_disk.exists("~/.Trash/old"));
}

TEST_F(ScanViewModelTest, CountsAPathInTwoRowsOnceAndRecordsItTwice) {
    m_disk.make("~/Downloads/film.mov 60000000");
    m_disk.setModified("~/Downloads/film.mov", platform::now() - std::chrono::days(90));
    scan();
    ASSERT_EQ(m_model.items()->rowCount(), 2);
    m_model.items()->toggle(1);
    EXPECT_EQ(m_model.checkedCount(), 1);
    EXPECT_EQ(m_model.selectedBytes(), 120'000'000);
    m_model.confirmDelete();
    EXPECT_EQ(m_model.lastDeletedCount(), 1);
    EXPECT_EQ(recorded(), (Recorded{"film.mov 60000000", "film.mov 60000000"}));
    EXPECT_EQ(m_model.items()->rowCount(), 0);
}

TEST_F(ScanViewModelTest, MovesTheClickedOneOfTwoFilesThatLookTheSame) {
    m_disk.make({"~/Library/Logs/a\xff 10", "~/Library/Logs/a\xfe 3"});
    scan();
    m_model.setChecked({});
    m_model.items()->toggle(1);
    EXPECT_EQ(m_model.selectedBytes(), 3);
    m_model.confirmDelete();
    EXPECT_EQ(listed(), setAt({"~/Library/Logs/a\xff"}));
    EXPECT_TRUE(m_disk.exists("~/.Trash/a\xfe") && m_disk.exists("~/Library/Logs/a\xff"));
    EXPECT_EQ(recorded(), (Recorded{"a\uFFFD 3"}));
}

TEST_F(ScanViewModelTest, NeverRemovesForGoodWhatItHasJustMovedToTheTrash) {
    m_disk.make({"~/.Trash/d.log 1", "~/Library/Logs/d.log 20"});
    scan();
    std::filesystem::remove(m_disk.host("~/.Trash/d.log")); // whose name is free now
    ASSERT_EQ(m_model.checkedCount(), 2);
    m_model.confirmDelete();
    EXPECT_EQ(m_model.lastDeletedCount(), 1);
    EXPECT_TRUE(m_disk.exists("~/.Trash/d.log"));
    EXPECT_EQ(listed(), setAt({"~/.Trash/d.log"}));
}

TEST_F(ScanViewModelTest, EmptiesTheTrashAndKeepsTheOtherTicks) {
    m_disk.make({"~/.Trash/a 100", "~/.Trash/.hidden/b 20", "~/.Trash/closed/c 3", "~/Library/Logs/d.log 7"});
    m_disk.setMode("~/.Trash/closed", 0500);
    scan();
    m_model.setChecked(setAt({"~/.Trash/a", "~/.Trash/closed", "~/Library/Logs/d.log", "/elsewhere"}));
    m_model.confirmEmptyTrash();
    EXPECT_EQ(m_model.trashFailedNames(), QStringList{QStringLiteral("closed")});
    EXPECT_EQ(m_model.trashFailedReasonKeys(), QStringList{QStringLiteral("err_trash_permission")});
    EXPECT_EQ(recorded(), (Recorded{"Corbeille 120"}));
    EXPECT_EQ(listed(), setAt({"~/Library/Logs/d.log"})); // also without what could not be removed
    EXPECT_EQ(m_model.checked(), setAt({"~/Library/Logs/d.log", "/elsewhere"}));
    EXPECT_TRUE(m_disk.exists("~/.Trash/closed/c"));
    m_model.runScan();
    EXPECT_TRUE(m_model.trashFailedNames().isEmpty());
    m_disk.setMode("~/.Trash/closed", 0700);
}
