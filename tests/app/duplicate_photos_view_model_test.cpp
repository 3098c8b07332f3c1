#include "app/models/duplicate_photos_view_model.h"

#include "app/i18n/localizer.h"
#include "tests/app/hand_cranked.h"
#include "tests/support/photo_catalogue.h"
#include "tests/support/temporary_disk.h"

#include <QAbstractItemModelTester>
#include <QSignalSpy>

#include <limits>
#include <memory>
#include <optional>
#include <string>
#include <vector>

#include <gtest/gtest.h>

namespace {

using Texts = std::vector<std::string>;

/// Of each group its items, those that are ticked with a "*".
Texts shown(DuplicatePhotosViewModel& viewModel) {
    const DuplicateGroupsModel& model = *viewModel.groupsModel();
    Texts groups;
    for (int group = 0; group < model.rowCount(); ++group) {
        std::string items;
        for (int item = 0; item < model.rowCount(model.index(group)); ++item) {
            const QModelIndex index = model.index(item, 0, model.index(group));
            items +=
                (item > 0 ? " " : "")
                + model.data(index, DuplicateGroupsModel::AssetIdRole).toByteArray().left(2).toStdString()
                + (model.data(index, DuplicateGroupsModel::CheckedRole).toBool() ? "*" : "");
        }
        groups.push_back(items);
    }
    return groups;
}

class DuplicatePhotosViewModelTest : public testing::Test {
protected:
    /// Three photos of three million bytes, "A1" to "A3", and two videos of two million, "B1" and "B2".
    DuplicatePhotosViewModelTest() {
        for (const char* uuid : {"A1", "A2", "A3"})
            m_catalogue.add({.uuid = uuid, .size = "3000000"});
        for (const char* uuid : {"B1", "B2"})
            m_catalogue.add(
                {.uuid = uuid, .size = "2000000", .created = "NULL", .kind = "1", .name = "'B\n.mov'"});
        m_catalogue.add({.uuid = "C1", .size = "9000000"});
    }

    DuplicatePhotosViewModel& open() {
        const auto allow = [](const platform::Disk&) {
            return platform::PhotoAuthorization::authorized;
        };
        m_tester.reset();
        m_model = std::make_unique<DuplicatePhotosViewModel>(
            platform::PhotoLibrary(m_disk.disk(), {allow, allow}), m_history, m_jobs.executor());
        m_tester = std::make_unique<QAbstractItemModelTester>(
            m_model->groupsModel(), QAbstractItemModelTester::FailureReportingMode::Fatal);
        return *m_model;
    }

    DuplicatePhotosViewModel& openScanned() {
        DuplicatePhotosViewModel& model = open();
        model.scan();
        m_jobs.run();
        return model;
    }

    TemporaryDisk m_disk;
    HandCranked m_jobs;
    HistoryStore m_history{m_disk.disk()};
    CatalogueWriter m_catalogue{m_disk, CatalogueWriter::Maker::lumvale};
    std::unique_ptr<DuplicatePhotosViewModel> m_model;
    std::unique_ptr<QAbstractItemModelTester> m_tester;
};

} // namespace

TEST_F(DuplicatePhotosViewModelTest, ListsTheGroupsAsPeopleReadThem) {
    DuplicatePhotosViewModel& model = open();
    model.scan();
    EXPECT_TRUE(model.isLoading() && !model.hasScanned());
    Texts told; // with what could be read at the time
    QObject::connect(&model, &DuplicatePhotosViewModel::groupsChanged, &model, [&] {
        told.push_back(std::to_string(model.groupCount()) + (model.isLoading() ? "…" : ""));
    });
    QObject::connect(&model, &DuplicatePhotosViewModel::hasScannedChanged, &model,
                     [&] { told.push_back(model.hasScanned() ? "scanned" : ""); });
    m_jobs.run();
    EXPECT_EQ(told, (Texts{"2…", "scanned"}));
    EXPECT_FALSE(model.isLoading());
    EXPECT_EQ(shown(model), (Texts{"A1 A2 A3", "B1 B2"}));
    EXPECT_EQ(model.totalWastedBytes(), 8'000'000);

    const DuplicateGroupsModel& groups = *model.groupsModel();
    const auto ofItem = [&](int group, int item, int role) {
        return groups.data(groups.index(item, 0, groups.itemsOf(group)), role);
    };
    EXPECT_EQ(ofItem(0, 0, DuplicateGroupsModel::IsVideoRole), false);
    EXPECT_EQ(ofItem(1, 0, DuplicateGroupsModel::IsVideoRole), true);
    EXPECT_EQ(ofItem(1, 0, DuplicateGroupsModel::NameRole), QString::fromUtf8("B\u240A.mov"));
    EXPECT_EQ(ofItem(1, 1, DuplicateGroupsModel::AssetIdRole), QByteArray("B2/L0/001"));
}

TEST_F(DuplicatePhotosViewModelTest, CountsWhatIsTickedAndNeverTicksTheKept) {
    DuplicatePhotosViewModel& model = openScanned();
    DuplicateGroupsModel& groups = *model.groupsModel();
    EXPECT_TRUE(model.checked().empty());
    model.requestDelete();
    EXPECT_FALSE(model.showDeleteConfirm());

    constexpr int far = std::numeric_limits<int>::max();
    for (const auto& [group, item] :
         {std::pair{0, 0}, {1, 0}, {-1, 1}, {2, 1}, {0, -1}, {0, 3}, {1, 2}, {far, 1}, {0, far}})
        groups.toggle(group, item);
    EXPECT_TRUE(model.checked().empty());

    QSignalSpy changed(&groups, &QAbstractItemModel::dataChanged);
    groups.toggle(0, 1);
    groups.toggle(0, 2);
    EXPECT_EQ(changed.size(), 2);
    EXPECT_EQ(changed[1][0].toModelIndex(), groups.index(2, 0, groups.index(0)));
    EXPECT_EQ(shown(model), (Texts{"A1 A2* A3*", "B1 B2"}));
    EXPECT_EQ(model.selectedBytes(), 6'000'000);
    groups.toggle(0, 1);
    EXPECT_EQ(model.selectedBytes(), 3'000'000);
    EXPECT_EQ(model.checkedCount(), 1);

    // A set given whole may hold what no longer is there; it counts for nothing.
    changed.clear();
    model.setChecked({"A3/L0/001", "B2/L0/001", "gone"});
    EXPECT_EQ(changed.size(), 1);
    EXPECT_EQ(model.checkedCount(), 2);
    EXPECT_EQ(model.selectedBytes(), 5'000'000);
    model.requestDelete();
    EXPECT_TRUE(model.showDeleteConfirm());
}

TEST_F(DuplicatePhotosViewModelTest, SendsWhatIsTickedAndScansAnew) {
    Localizer::shared().setLanguage(AppLanguage::de);
    DuplicatePhotosViewModel& model = openScanned();
    model.setChecked({"A2/L0/001", "A3/L0/001", "B2/L0/001", "gone"});
    model.confirmDelete();
    EXPECT_TRUE(model.isDeleting());
    model.confirmDelete(); // a hasty second one
    m_jobs.run();
    EXPECT_FALSE(model.isDeleting());
    EXPECT_EQ(model.lastDeletedCount(), 3);
    EXPECT_TRUE(model.checked().empty());
    ASSERT_EQ(m_history.entries().size(), 1U);
    EXPECT_EQ(m_history.entries()[0].name, "Doppelte Fotos/Videos");
    EXPECT_EQ(m_history.entries()[0].sizeBytes, 8'000'000);
    EXPECT_TRUE(model.isLoading());
    EXPECT_EQ(model.groupCount(), 2); // those from before, until the new ones come
    m_jobs.run();
    EXPECT_EQ(model.groupCount(), 0);
    EXPECT_EQ(model.totalWastedBytes(), 0);
    EXPECT_EQ(model.deletedCount(), 3);
    EXPECT_EQ(m_catalogue.value("SELECT group_concat(ZUUID) FROM ZASSET WHERE ZTRASHEDSTATE = 1"),
              "A2,A3,B2");
    model.confirmDelete(); // nothing is left to delete
    EXPECT_TRUE(m_jobs.isIdle());
}

TEST_F(DuplicatePhotosViewModelTest, AppliesScansInTheOrderInWhichTheyEnd) {
    DuplicatePhotosViewModel& model = open();
    model.scan();
    model.scan();
    m_jobs.runLast();
    EXPECT_EQ(model.groupCount(), 2);
    model.setChecked({"A2/L0/001", "A3/L0/001", "B2/L0/001"});
    m_catalogue.run("UPDATE ZASSET SET ZHIDDEN = 1 WHERE ZUUID IN ('A1', 'B1')");
    m_jobs.run();
    EXPECT_EQ(shown(model), Texts{"A2 A3*"}); // what is kept now was ticked before
    EXPECT_EQ(model.checkedCount(), 1);
    EXPECT_EQ(model.selectedBytes(), 3'000'000);
}

TEST_F(DuplicatePhotosViewModelTest, DropsWhatComesAfterTheScreenHasGone) {
    for (void (*begin)(DuplicatePhotosViewModel&) : {
             +[](DuplicatePhotosViewModel& model) { model.requestAccess(); },
             +[](DuplicatePhotosViewModel& model) { model.scan(); },
             +[](DuplicatePhotosViewModel& model) {
                 model.setChecked({"A2/L0/001"});
                 model.confirmDelete();
             },
         }) {
        begin(openScanned());
        m_jobs.runBackground();
        m_tester.reset();
        m_model.reset();
        m_jobs.run();
        EXPECT_TRUE(m_jobs.isIdle());
    }
    EXPECT_TRUE(m_history.entries().empty());
}
