#include "app/models/duplicate_photos_view_model.h"

#include "app/i18n/localizer.h"
#include "tests/app/hand_cranked.h"
#include "tests/support/photo_catalogue.h"
#include "tests/support/temporary_disk.h"

#include <QAbstractItemModelTester>

#include <limits>
#include <memory>

#include <gtest/gtest.h>

namespace {

using Ids = std::set<std::string>;

class DuplicatePhotosViewModelTest : public testing::Test {
protected:
    /// Three duplicates of three million bytes, A1 to A3, and two of two million, B1 and B2.
    DuplicatePhotosViewModelTest() {
        for (const char* uuid : {"A1", "A2", "A3"})
            m_catalogue.add({.uuid = uuid, .size = "3000000"});
        for (const char* uuid : {"B1", "B2"})
            m_catalogue.add({.uuid = uuid, .size = "2000000", .created = "NULL"});
        Localizer::shared().setLanguage(AppLanguage::de);
    }

    void scan() {
        m_model->scan();
        m_jobs.run();
    }

    TemporaryDisk m_disk;
    HandCranked m_jobs;
    HistoryStore m_history{m_disk.disk()};
    CatalogueWriter m_catalogue{m_disk, CatalogueWriter::Maker::lumvale};
    std::unique_ptr<DuplicatePhotosViewModel> m_model = std::make_unique<DuplicatePhotosViewModel>(
        platform::PhotoLibrary(m_disk.disk(), photoAccess()), m_history, m_jobs.executor());
    const QAbstractItemModelTester m_tester{m_model->groupsModel(),
                                            QAbstractItemModelTester::FailureReportingMode::Fatal};
};

} // namespace

TEST_F(DuplicatePhotosViewModelTest, TicksAndCountsOnlyCopiesNeverTheKeptPhoto) {
    scan();
    EXPECT_EQ(m_model->totalWastedBytes(), 8'000'000);
    m_model->requestDelete();
    EXPECT_FALSE(m_model->showDeleteConfirm()); // nothing is ticked

    constexpr int far = std::numeric_limits<int>::max();
    for (const auto& [group, item] :
         {std::pair{0, 0}, {1, 0}, {-1, 1}, {2, 1}, {0, -1}, {0, 3}, {far, 1}, {0, far}, {0, 1}, {0, 2}})
        m_model->groupsModel()->toggle(group, item);
    EXPECT_EQ(m_model->checked(), (Ids{"A2/L0/001", "A3/L0/001"}));
    EXPECT_EQ(m_model->selectedBytes(), 6'000'000);
    m_model->groupsModel()->toggle(0, 1);
    EXPECT_EQ(m_model->checkedCount(), 1);

    m_model->setChecked({"A3/L0/001", "B2/L0/001", "no such photo"});
    EXPECT_EQ(m_model->checkedCount(), 2);
    EXPECT_EQ(m_model->selectedBytes(), 5'000'000);
}

TEST_F(DuplicatePhotosViewModelTest, DeletesTickedPhotosOnceRecordsThemAndScansAgain) {
    scan();
    m_model->setChecked({"A2/L0/001", "A3/L0/001", "B2/L0/001", "no such photo"});
    m_catalogue.run("PRAGMA application_id = 0"); // a Mac's library refuses
    m_model->confirmDelete();
    m_jobs.run();
    EXPECT_TRUE(m_history.entries().empty() && !m_model->lastDeletedCount());
    m_catalogue.run("PRAGMA application_id = 0x4C756D76");
    m_model->confirmDelete();
    m_model->removalTask()->stop();
    m_jobs.run();
    EXPECT_TRUE(m_model->wasDeletionStopped() && m_history.entries().empty() && !m_model->lastDeletedCount());
    EXPECT_EQ(m_catalogue.value("SELECT count(*) FROM ZASSET WHERE ZTRASHEDSTATE = 1"), "0");
    EXPECT_EQ(m_model->checkedCount(), 3);
    m_model->confirmDelete();
    m_model->confirmDelete(); // while the first deletion is running
    m_jobs.run();
    EXPECT_EQ(m_model->lastDeletedCount(), 3);
    EXPECT_FALSE(m_model->wasDeletionStopped());
    ASSERT_EQ(m_history.entries().size(), 1U);
    EXPECT_EQ(m_history.entries()[0].name, "Doppelte Fotos/Videos");
    EXPECT_EQ(m_history.entries()[0].sizeBytes, 8'000'000);
    EXPECT_EQ(m_model->groupCount(), 2); // until the new result arrives
    m_jobs.run();
    EXPECT_EQ(m_model->groupCount(), 0);
    EXPECT_EQ(m_catalogue.value("SELECT group_concat(ZUUID) FROM ZASSET WHERE ZTRASHEDSTATE = 1"),
              "A2,A3,B2");
}

TEST_F(DuplicatePhotosViewModelTest, UnticksAPhotoThatALaterResultKeeps) {
    scan();
    m_model->scan();
    m_model->setChecked({"A2/L0/001", "A3/L0/001", "B2/L0/001"});
    m_catalogue.run("UPDATE ZASSET SET ZHIDDEN = 1 WHERE ZUUID IN ('A1', 'B1')");
    m_jobs.run();
    EXPECT_EQ(m_model->checked(), (Ids{"A3/L0/001", "B2/L0/001"})); // B2 is no duplicate any more
    EXPECT_EQ(m_model->checkedCount(), 1);
    EXPECT_EQ(m_model->selectedBytes(), 3'000'000);
}

TEST_F(DuplicatePhotosViewModelTest, StopsASearchAndLeavesNoGroups) {
    scan();
    m_model->stopScan(); // too late
    EXPECT_EQ(m_model->groupCount(), 2);
    m_model->scan();
    EXPECT_TRUE(m_model->isLoading() && !m_model->wasScanStopped());
    m_jobs.runBackground();
    m_model->stopScan();
    m_jobs.publish(); // dropped
    EXPECT_TRUE(!m_model->isLoading() && m_model->wasScanStopped());
    EXPECT_EQ(m_model->groupCount(), 0);
    EXPECT_EQ(m_model->totalWastedBytes(), 0);
}

TEST_F(DuplicatePhotosViewModelTest, RecordsADeletionThatEndsAfterItsDestruction) {
    scan();
    m_model->setChecked({"A2/L0/001"});
    m_model->confirmDelete();
    m_model->requestAccess();
    m_model->scan();
    m_jobs.runBackground();
    m_model.reset();
    m_jobs.run();
    EXPECT_TRUE(m_jobs.isIdle() && m_history.entries().size() == 1);
}
