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

using platform::PhotoAuthorization;

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
    void fill(CatalogueWriter::Maker maker = CatalogueWriter::Maker::lumvale) {
        m_catalogue.emplace(m_disk, maker);
        for (const char* uuid : {"A1", "A2", "A3"})
            m_catalogue->add({.uuid = uuid, .size = "3000000", .favorite = uuid[1] == '2' ? "1" : "0"});
        for (const char* uuid : {"B1", "B2"})
            m_catalogue->add(
                {.uuid = uuid, .size = "2000000", .created = "NULL", .kind = "1", .name = "'B\n.mov'"});
        m_catalogue->add({.uuid = "C1", .size = "9000000"});
    }

    DuplicatePhotosViewModel& open(PhotoAuthorization status = PhotoAuthorization::authorized,
                                   PhotoAuthorization asked = PhotoAuthorization::authorized) {
        m_status = status;
        const platform::PhotoAccess access{[this](const platform::Disk&) { return m_status; },
                                           [this, asked](const platform::Disk&) {
                                               return m_status = asked;
                                           }};
        m_tester.reset();
        m_model = std::make_unique<DuplicatePhotosViewModel>(platform::PhotoLibrary(m_disk.disk(), access),
                                                             m_history, m_jobs.executor());
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
    PhotoAuthorization m_status = PhotoAuthorization::authorized;
    std::optional<CatalogueWriter> m_catalogue;
    std::unique_ptr<DuplicatePhotosViewModel> m_model;
    std::unique_ptr<QAbstractItemModelTester> m_tester;
};

} // namespace

TEST_F(DuplicatePhotosViewModelTest, ScansOnceAccessIsGivenAndOnlyThen) {
    fill();
    struct Case {
        PhotoAuthorization answer;
        PhotoAccessState state;
        bool scans;
    };
    for (const auto& [answer, state, scans] : {
             Case{PhotoAuthorization::authorized, PhotoAccessState::authorized, true},
             Case{PhotoAuthorization::limited, PhotoAccessState::limited, true},
             Case{PhotoAuthorization::denied, PhotoAccessState::denied, false},
             Case{PhotoAuthorization::restricted, PhotoAccessState::denied, false},
             Case{PhotoAuthorization::notDetermined, PhotoAccessState::notDetermined, false},
         }) {
        DuplicatePhotosViewModel& model = open(PhotoAuthorization::notDetermined, answer);
        EXPECT_TRUE(model.isUndecided());
        model.requestAccess();
        EXPECT_TRUE(model.isUndecided());
        m_jobs.run();
        EXPECT_EQ(model.authState(), state);
        EXPECT_EQ(model.isLoading(), scans);
        m_jobs.run();
        EXPECT_EQ(model.hasScanned(), scans);
        EXPECT_EQ(model.groupCount(), scans ? 2 : 0);
    }
    // What changes later shows only in a new model.
    const DuplicatePhotosViewModel& model = open(PhotoAuthorization::denied);
    m_status = PhotoAuthorization::authorized;
    EXPECT_TRUE(model.isDenied());
}

TEST_F(DuplicatePhotosViewModelTest, ListsTheGroupsAsPeopleReadThem) {
    fill();
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
    EXPECT_EQ(model.totalWasted(), QStringLiteral("8 MB"));

    const DuplicateGroupsModel& groups = *model.groupsModel();
    const auto group = [&](int row, int role) {
        return groups.data(groups.index(row), role);
    };
    EXPECT_EQ(group(0, DuplicateGroupsModel::ItemCountRole), 3);
    EXPECT_EQ(group(0, DuplicateGroupsModel::ItemSizeRole), QStringLiteral("3 MB"));
    EXPECT_EQ(group(0, DuplicateGroupsModel::WastedRole), QStringLiteral("6 MB"));
    EXPECT_NE(group(0, DuplicateGroupsModel::DateRole), QString());
    EXPECT_EQ(group(1, DuplicateGroupsModel::DateRole), QString());
    const auto item = [&](int row, int column, int role) {
        return groups.data(groups.index(column, 0, groups.itemsOf(row)), role);
    };
    EXPECT_EQ(item(0, 0, DuplicateGroupsModel::IsKeptRole), true);
    EXPECT_EQ(item(0, 1, DuplicateGroupsModel::IsKeptRole), false);
    EXPECT_EQ(item(0, 0, DuplicateGroupsModel::IsFavoriteRole), false);
    EXPECT_EQ(item(0, 1, DuplicateGroupsModel::IsFavoriteRole), true);
    EXPECT_EQ(item(0, 0, DuplicateGroupsModel::IsVideoRole), false);
    EXPECT_EQ(item(1, 0, DuplicateGroupsModel::IsVideoRole), true);
    EXPECT_EQ(item(0, 0, DuplicateGroupsModel::NameRole), QStringLiteral("IMG_1.JPG"));
    EXPECT_EQ(item(1, 0, DuplicateGroupsModel::NameRole), QString::fromUtf8("B\u240A.mov"));
    EXPECT_EQ(item(1, 1, DuplicateGroupsModel::AssetIdRole), QByteArray("B2/L0/001"));
}

TEST_F(DuplicatePhotosViewModelTest, CountsWhatIsTickedAndNeverTicksTheKept) {
    fill();
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
    EXPECT_EQ(model.selectedSize(), QStringLiteral("3 MB"));
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
    fill();
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
    EXPECT_EQ(m_catalogue->value("SELECT group_concat(ZUUID) FROM ZASSET WHERE ZTRASHEDSTATE = 1"),
              "A2,A3,B2");
    model.confirmDelete(); // nothing is left to delete
    EXPECT_TRUE(m_jobs.isIdle());
}

TEST_F(DuplicatePhotosViewModelTest, LeavesEverythingAsItWasWhenTheLibraryRefuses) {
    fill(CatalogueWriter::Maker::mac);
    DuplicatePhotosViewModel& model = openScanned();
    model.setChecked({"A2/L0/001", "B2/L0/001"});
    const auto entries = m_disk.entries();
    for (int attempt = 0; attempt < 2; ++attempt) { // it can be tried again
        model.confirmDelete();
        m_jobs.run();
        EXPECT_FALSE(model.isDeleting() || model.isLoading());
        EXPECT_EQ(shown(model), (Texts{"A1 A2* A3", "B1 B2*"}));
        EXPECT_EQ(model.checkedCount(), 2);
        EXPECT_EQ(model.lastDeletedCount(), std::nullopt);
        EXPECT_TRUE(m_history.entries().empty());
    }
    EXPECT_EQ(m_disk.entries(), entries);
    EXPECT_TRUE(m_jobs.isIdle());
}

TEST_F(DuplicatePhotosViewModelTest, AppliesScansInTheOrderInWhichTheyEnd) {
    fill();
    DuplicatePhotosViewModel& model = open();
    model.scan();
    model.scan();
    m_jobs.runLast();
    EXPECT_EQ(model.groupCount(), 2);
    model.setChecked({"A2/L0/001", "A3/L0/001", "B2/L0/001"});
    m_catalogue->run("UPDATE ZASSET SET ZHIDDEN = 1 WHERE ZUUID IN ('A1', 'B1')");
    m_jobs.run();
    EXPECT_EQ(shown(model), Texts{"A2 A3*"}); // what is kept now was ticked before
    EXPECT_EQ(model.checkedCount(), 1);
    EXPECT_EQ(model.selectedBytes(), 3'000'000);
}

TEST_F(DuplicatePhotosViewModelTest, DropsWhatComesAfterTheScreenHasGone) {
    fill();
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
