#include "app/text/display.h"

#include <gtest/gtest.h>

using namespace Qt::StringLiterals;

TEST(Display, ShowsNamesInOneLineWithoutDirectionMarksAndOfLimitedLength) {
    const QString longest(255, u'1');
    const QString accented = u"1\u0301\u0302"_s; // one character of three code units, which is never cut
    const std::pair<QByteArray, QString> cases[]{
        {"two\nlines\t\x7F", u"two\u21B5lines\u21E5\uFFFD"_s},
        {"zw\u202Egnp.exe", u"zw\uFFFDgnp.exe"_s},
        {"a\u2028b\u200Fc\u2066d\u0085", u"a\u21B5b\uFFFDc\uFFFDd\u21B5"_s},
        {"\xFF \u05E9\u05DC \U0001F469\u200D\U0001F680", u"\uFFFD \u05E9\u05DC \U0001F469\u200D\U0001F680"_s},
        {longest.toUtf8(), longest},
        {longest.repeated(99).toUtf8(), longest + u'…'},
        {(u'1' + accented.repeated(999)).toUtf8(), u'1' + accented.repeated(84) + u'…'}};
    for (const auto& [bytes, shown] : cases)
        EXPECT_EQ(display::name(bytes.toStdString()).toStdString(), shown.toStdString());
}
