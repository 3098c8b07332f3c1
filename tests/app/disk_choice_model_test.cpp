#include "app/models/disk_choice_model.h"

#include "tests/support/temporary_disk.h"

#include <gtest/gtest.h>

using namespace Qt::StringLiterals;

TEST(DiskChoiceModel, OpensTheChosenHomeOrTheFolderOfAMacsDisk) {
    const TemporaryDisk one, two;
    two.make(
        {"/Users/you/", "/Users/Shared/", "/Users/.hidden/", "/Users/file", "/private/var/folders/a/b/C/"});
    DiskChoiceModel model({{two.disk().hostRoot(), {"/Users/me", "/Users/absent"}}}, one.host("/"));
    QStringList opened;
    QObject::connect(&model, &DiskChoiceModel::chosen, &model, [&](const platform::Disk& disk) {
        opened.append(
            QString::fromStdString(disk.hostRoot() + disk.home() + ' ' + disk.userCache().value_or("-")));
    });
    const auto names = [&model] {
        QStringList all;
        for (int row = 0; row < model.rowCount(); ++row)
            all.append(model.data(model.index(row), DiskChoiceModel::NameRole).toString());
        return all.join(u' ');
    };
    const auto choose = [&model](const std::string& folder) {
        model.chooseFolder(QUrl::fromLocalFile(QString::fromStdString(folder)));
    };
    const auto expected = [](const TemporaryDisk& disk, const char* rest) {
        return QString::fromStdString(disk.disk().hostRoot() + rest);
    };

    EXPECT_EQ(names(), u"me absent me");
    model.choose(1); // unplugged since
    EXPECT_FALSE(model.problem().isEmpty());
    model.choose(0);
    EXPECT_TRUE(model.problem().isEmpty());
    choose(one.disk().hostRoot());
    choose(one.host("/Users")); // not the disk's root
    EXPECT_FALSE(model.problem().isEmpty());
    EXPECT_EQ(opened, (QStringList{expected(two, "/Users/me /private/var/folders/a/b/C"),
                                   expected(one, "/Users/me -")}));
    choose(two.disk().hostRoot());
    EXPECT_EQ(names(), u"me you");
    EXPECT_EQ(opened.size(), 2);
}
