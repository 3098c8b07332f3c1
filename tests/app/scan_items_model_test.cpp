#include "app/models/scan_items_model.h"

#include "app/text/display.h"

#include <QAbstractItemModelTester>

#include <limits>

#include <gtest/gtest.h>

using namespace Qt::StringLiterals;

namespace {

core::ScanItem item(std::string path, core::ScanCategory category, std::int64_t sizeBytes) {
    return core::ScanItem(std::move(path), sizeBytes, category, "exp_cache", true, std::nullopt);
}

} // namespace

TEST(Display, ShowsNamesInOneLineWithoutDirectionMarksAndOfLimitedLength) {
    const QString longest(255, u'1');
    const QString accented = u"1\u0301\u0302"_s; // one character of three code units, which is never cut
    const std::pair<QByteArray, QString> cases[]{
        {"two\nlines\t\x7F", u"two\u240Alines\u2409\u2421"_s},
        {"zw\u202Egnp.exe", u"zw\uFFFDgnp.exe"_s},
        {"a\u2028b\u200Fc\u2066d\u0085", u"a\uFFFDb\uFFFDc\uFFFDd\uFFFD"_s},
        {"\xFF \u05E9\u05DC \U0001F469\u200D\U0001F680", u"\uFFFD \u05E9\u05DC \U0001F469\u200D\U0001F680"_s},
        {longest.toUtf8(), longest},
        {longest.repeated(99).toUtf8(), longest + u'…'},
        {(u'1' + accented.repeated(999)).toUtf8(), u'1' + accented.repeated(84) + u'…'}};
    for (const auto& [bytes, shown] : cases)
        EXPECT_EQ(display::name(bytes.toStdString()).toStdString(), shown.toStdString());
}

TEST(ScanItemsModel, SortsByCategoryAndTicksAllRowsOfAPath) {
    ScanItemsModel model;
    const QAbstractItemModelTester tester(&model, QAbstractItemModelTester::FailureReportingMode::Fatal);
    model.setItems({item("/twice", core::ScanCategory::largeOldFiles, 5),
                    item("/other", core::ScanCategory::cache, 1),
                    item("/twice", core::ScanCategory::oldDownloads, 5)});
    EXPECT_EQ(model.rows()[0].path, "/other");

    const auto ticks = [&] {
        std::string signs;
        for (int row = 0; row < model.rowCount(); ++row)
            signs += model.data(model.index(row), ScanItemsModel::CheckedRole).toBool() ? '*' : '-';
        return signs;
    };
    std::string changes; // each changed row, with all ticks at the time of the signal
    QObject::connect(&model, &QAbstractItemModel::dataChanged, &model, [&](const QModelIndex& changed) {
        changes += std::to_string(changed.row()) + ticks() + " ";
    });
    for (const int row : {-1, 3, std::numeric_limits<int>::max(), 2})
        model.toggle(row);
    EXPECT_EQ(model.checked().size(), 1U);
    EXPECT_EQ(model.checkedBytes(), 10);
    model.toggle(1);
    EXPECT_EQ(model.checkedBytes(), 0);
    EXPECT_EQ(changes, "1-** 2-** 1--- 2--- ");
}
