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

    std::string changes;
    QObject::connect(&model, &QAbstractItemModel::rowsInserted, &model,
                     [&](const QModelIndex&, int first, int last) {
                         changes += "+" + std::to_string(first) + "-" + std::to_string(last) + " ";
                     });
    QObject::connect(&model, &QAbstractItemModel::rowsRemoved, &model,
                     [&](const QModelIndex&, int first, int last) {
                         changes += "-" + std::to_string(first) + "-" + std::to_string(last) + " ";
                     });
    /// The names in their order, then the changes since the last call.
    const auto state = [&] {
        std::string names;
        for (int row = 0; row < model.rowCount(); ++row)
            names += model.data(model.index(row), HistoryModel::NameRole).toString().toStdString() + " ";
        return names + std::exchange(changes, {});
    };

    EXPECT_EQ(state(), "b a ");
    store.record("c", 1);
    store.record("c", 1);
    EXPECT_EQ(state(), "c c b a +0-0 +0-0 ");
    store.prune(now + 360h); // "a" is older than 30 days then
    EXPECT_EQ(state(), "c c b -3-3 ");
    store.prune(now + 2'400h);
    EXPECT_EQ(state(), "-0-2 ");
}
