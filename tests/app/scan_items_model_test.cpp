#include "app/models/scan_items_model.h"

#include "app/text/display.h"

#include <QAbstractItemModelTester>

#include <limits>

#include <gtest/gtest.h>

namespace {

core::ScanItem item(std::string path, core::ScanCategory category, std::int64_t sizeBytes = 1) {
    return core::ScanItem(std::move(path), sizeBytes, category, "exp_cache", true, std::nullopt);
}

std::vector<bool> ticks(const ScanItemsModel& model) {
    std::vector<bool> ticks;
    for (int row = 0; row < model.rowCount(); ++row)
        ticks.push_back(model.data(model.index(row), ScanItemsModel::CheckedRole).toBool());
    return ticks;
}

using Ticks = std::vector<bool>;

class ScanItemsModelTest : public testing::Test {
protected:
    ScanItemsModel m_model;
    QAbstractItemModelTester m_tester{&m_model, QAbstractItemModelTester::FailureReportingMode::Fatal};
};

} // namespace

TEST(Display, ShowsEveryNameInOneLineAndInItsOwnOrder) {
    const std::pair<const char*, QStringView> cases[]{
        {"two\nlines\t\x7F", u"two\u240Alines\u2409\u2421"},
        {"zw\u202Egnp.exe", u"zw\uFFFDgnp.exe"},
        {"a\u2028b\u200Fc\u2066d\u0085", u"a\uFFFDb\uFFFDc\uFFFDd\uFFFD"},
        {"\xFF \u05E9\u05DC \U0001F469\u200D\U0001F680", u"\uFFFD \u05E9\u05DC \U0001F469\u200D\U0001F680"},
    };
    for (const auto& [bytes, shown] : cases)
        EXPECT_EQ(display::text(bytes), shown.toString()) << bytes;
}

TEST_F(ScanItemsModelTest, ListsByCategoryAndThenInTheOrderOfTheResultAsPeopleReadIt) {
    core::ScanItem dated = item("/Users/me/Downloads/b\xffok", core::ScanCategory::oldDownloads, 1'230'000);
    dated.modifiedDate = platform::Date(platform::Date::duration(1'700'000'000));
    m_model.setItems({dated, item("/cache/2", core::ScanCategory::cache),
                      item("/trash", core::ScanCategory::trash),
                      item("/cache/1", core::ScanCategory::cache)});
    std::vector<std::string> paths;
    for (const core::ScanItem& row : m_model.rows())
        paths.push_back(row.path);
    EXPECT_EQ(paths, (std::vector<std::string>{"/cache/2", "/cache/1", "/trash", dated.path}));
    const auto shown = [&](int row, int role) {
        return m_model.data(m_model.index(row), role).toString().toStdString();
    };
    EXPECT_EQ(shown(3, ScanItemsModel::NameRole), "b\uFFFDok");
    EXPECT_EQ(shown(3, ScanItemsModel::SizeRole), "1.2 MB");
    EXPECT_NE(shown(3, ScanItemsModel::DateRole).find("2023"), std::string::npos);
    EXPECT_EQ(shown(0, ScanItemsModel::DateRole), "");
}

TEST_F(ScanItemsModelTest, TicksBothRowsOfOnePathAndTellsOfNothingElse) {
    m_model.setItems({item("/twice", core::ScanCategory::largeOldFiles, 5),
                      item("/other", core::ScanCategory::cache, 1),
                      item("/twice", core::ScanCategory::oldDownloads, 5)});
    std::vector<int> told;
    QObject::connect(&m_model, &QAbstractItemModel::dataChanged, &m_model,
                     [&](const QModelIndex& first, const QModelIndex& last, const QList<int>& roles) {
                         EXPECT_EQ(roles, QList<int>{ScanItemsModel::CheckedRole});
                         EXPECT_TRUE(ticks(m_model) == Ticks({false, true, true})
                                     || ticks(m_model) == Ticks({false, false, false}));
                         for (int row = first.row(); row <= last.row(); ++row)
                             told.push_back(row);
                     });
    for (const int row : {-1, 3, std::numeric_limits<int>::max(), 2})
        m_model.toggle(row);
    EXPECT_EQ(told, (std::vector<int>{1, 2}));
    EXPECT_EQ(m_model.checked().size(), 1u);
    EXPECT_EQ(m_model.checkedBytes(), 10);
    m_model.toggle(1);
    EXPECT_EQ(ticks(m_model), (Ticks{false, false, false}));
    EXPECT_EQ(m_model.checkedBytes(), 0);
}
