#include "app/models/history_model.h"

#include "tests/support/temporary_disk.h"

#include <QAbstractItemModelTester>

#include <optional>
#include <string>
#include <utility>

#include <gtest/gtest.h>

using namespace std::chrono_literals;

namespace {

class HistoryModelTest : public testing::Test {
protected:
    void load(const std::vector<HistoryEntry>& entries) {
        m_disk.write(HistoryStore(m_disk.disk()).path(), encodeHistory(entries));
        m_store.emplace(m_disk.disk());
        m_model.emplace(*m_store);
        m_tester.emplace(&*m_model, QAbstractItemModelTester::FailureReportingMode::Fatal);
        const auto tell = [this](const char* what) {
            return [this, what](const QModelIndex&, int first, int last) {
                m_told += what + std::to_string(first) + '-' + std::to_string(last) + ' ';
            };
        };
        QObject::connect(&*m_model, &QAbstractItemModel::rowsInserted, &*m_model, tell("+"));
        QObject::connect(&*m_model, &QAbstractItemModel::rowsRemoved, &*m_model, tell("-"));
    }

    /// The names in their order, and what was told since the last time.
    std::string names() const {
        std::string names;
        for (int row = 0; row < m_model->rowCount(); ++row)
            names +=
                m_model->data(m_model->index(row), HistoryModel::NameRole).toString().toStdString() + ' ';
        return names;
    }
    std::string told() { return std::exchange(m_told, {}); }

    const platform::Date m_now = platform::now();
    TemporaryDisk m_disk;
    std::optional<HistoryStore> m_store;
    std::optional<HistoryModel> m_model;
    std::optional<QAbstractItemModelTester> m_tester;
    std::string m_told;
};

} // namespace

TEST_F(HistoryModelTest, FollowsTheStoreAndMovesNoMoreThanHasChanged) {
    load({{m_now - 240h, "b", 1}, {m_now - 480h, "a", 1}});
    EXPECT_EQ(names(), "b a ");
    m_store->record("c", 1);
    m_store->record("d", 1);
    EXPECT_EQ(names(), "d c b a ");
    EXPECT_EQ(told(), "+0-0 +0-0 ");
    m_store->prune(m_now + 360h); // "a" is older than thirty days then
    EXPECT_EQ(names(), "d c b ");
    EXPECT_EQ(told(), "-3-3 ");
    m_store->prune();
    EXPECT_EQ(told(), "");
    m_store->prune(m_now + 2'400h);
    EXPECT_EQ(names(), "");
    EXPECT_EQ(told(), "-0-2 ");
    m_store->record("e", 1);
    EXPECT_EQ(names(), "e ");
    EXPECT_EQ(told(), "+0-0 ");
}

TEST_F(HistoryModelTest, StaysRightWhenTheClockHasGoneBackOrEntriesAreTheSame) {
    const HistoryEntry future{m_now + 240h, "future", 1};
    load({future, future, {m_now - 240h, "past", 1}});
    m_store->record("now", 1);
    EXPECT_EQ(names(), "future future now past ");
    m_store->record("now", 1);
    EXPECT_EQ(names(), "future future now now past ");
}
