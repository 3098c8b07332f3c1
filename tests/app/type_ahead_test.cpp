#include "app/models/type_ahead.h"

#include "app/models/duplicate_groups_model.h"

#include <gtest/gtest.h>

using namespace Qt::StringLiterals;

TEST(TypeAhead, FindsTheNextRowThatBeginsWithTheTypedLetters) {
    std::vector<core::DuplicatePhotoGroup> groups;
    const auto item = [](const char* name) {
        return core::DuplicatePhotoItem{name, name, 1, {}, false, false};
    };
    for (const char* name : {"Atlas", "E\u0301cran", "écho", "Eclipse 2", "ЁЛКА"})
        groups.emplace_back(std::vector{item(name)});
    groups.emplace_back(std::vector{item("IMG_1"), item("photo")});
    DuplicateGroupsModel model;
    model.setGroups(std::move(groups));

    constexpr int none = -1;
    const struct {
        QString typed; // one key per letter
        int from;
        int row;
    } cases[]{
        {u"e"_s, none, 1}, {u"e"_s, 1, 2},      {u"ee"_s, 0, 2}, {u"eee"_s, 1, 1},
        {u"É"_s, 3, 1},    {u"ECH"_s, none, 2}, {u"ec"_s, 2, 3}, {u"eclipse 2"_s, none, 3},
        {u"a"_s, 0, 0},    {u"елк"_s, 2, 4},    {u"aa"_s, 0, 0}, {u"ae"_s, 0, none},
        {u"x"_s, 2, none}, {u"Photo"_s, 0, 5},
    };
    for (const auto& [typed, from, row] : cases) {
        TypeAhead typeAhead;
        int current = from;
        QModelIndex found;
        for (const QChar letter : typed) {
            found = typeAhead.type(&model, letter, current);
            if (found.isValid())
                current = (found.parent().isValid() ? found.parent() : found).row();
        }
        EXPECT_EQ(found.isValid() ? current : none, row) << typed.toStdString() << " from " << from;
        EXPECT_EQ(typeAhead.hasMatch(), found.isValid());
        EXPECT_EQ(typeAhead.text(), typed);
    }
}
