#include "app/models/history_model.h"

#include "tests/support/temporary_disk.h"

#include <QAbstractItemModelTester>

#include <gtest/gtest.h>

using namespace std::chrono_literals;

TEST(HistoryModel, InsertsAndRemovesOnlyTheRowsThatChangedInTheStore) {
    const platform::Date now = platform::now();
    const TemporaryDisk disk;
    disk.write(HistoryStore(disk.disk()).path(), encodeHistory({{now - 240h, "b", 1}, {now - 480h, "a", 1}}));
    HistoryStore store(disk.disk());
    HistoryModel model(store);
    const QAbstractItemModelTester tester(&model, QAbstractItemModelTester::FailureReportingMode::Fatal);
    const QPersistentModelIndex a = model.index(1); // becomes invalid when its row is removed
    const QPersistentModelIndex b = model.index(0);
    store.record("c", 1);
    store.record("c", 1);
    EXPECT_EQ(model.rowCount(), 4);
    EXPECT_EQ(b.row(), 2);
    EXPECT_EQ(b.data(HistoryModel::NameRole), QStringLiteral("b"));
    store.prune(now + 360h); // "a" is older than 30 days then
    EXPECT_EQ(b.row(), 2);
    EXPECT_FALSE(a.isValid());
    store.prune(now + 2'400h);
    EXPECT_EQ(model.rowCount(), 0);
}
