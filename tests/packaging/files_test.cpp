#include "app/i18n/translations.h"
#include "app/identity.h"
#include "platform/files/disk.h"
#include "platform/property_lists/property_list.h"
#include "ui/icon/program_icon.h"

#include <QFile>
#include <QMap>
#include <QSet>
#include <QXmlStreamReader>

#include <gtest/gtest.h>

using namespace Qt::StringLiterals;

namespace {

const QString folder = QStringLiteral(LUMVALE_PACKAGING);

/// Each language as a file for other programs names it; English, which they need no name for, is "en" here.
struct Named {
    AppLanguage language;
    QString tag;
    QString inMenuEntries;
};
const QList<Named> languages{
    {AppLanguage::en, u"en"_s, u"en"_s},
    {AppLanguage::fr, u"fr"_s, u"fr"_s},
    {AppLanguage::srLatin, u"sr-Latn"_s, u"sr@latin"_s},
    {AppLanguage::srCyrillic, u"sr"_s, u"sr"_s},
    {AppLanguage::de, u"de"_s, u"de"_s},
    {AppLanguage::es, u"es"_s, u"es"_s},
    {AppLanguage::it, u"it"_s, u"it"_s},
    {AppLanguage::pt, u"pt"_s, u"pt"_s},
    {AppLanguage::ru, u"ru"_s, u"ru"_s},
};

QString translated(const QString& key, AppLanguage language) {
    return Translations::table().value(key).value(language);
}

QString contentOf(const QString& name) {
    QFile file(folder + name);
    return file.open(QIODevice::ReadOnly) ? QString::fromUtf8(file.readAll()) : QString();
}

TEST(PackagingFiles, MenuEntrySpeaksEveryLanguage) {
    QMap<QString, QString> lines;
    for (const QString& line : contentOf(Identity::identifier() + u".desktop"_s).split(u'\n'))
        lines.insert(line.section(u'=', 0, 0), line.section(u'=', 1));
    EXPECT_EQ(lines[u"Name"_s], Identity::name());
    EXPECT_EQ(lines[u"Icon"_s], Identity::identifier());
    for (const Named& named : languages) {
        const QString key =
            named.language == AppLanguage::en ? u"Comment"_s : u"Comment[%1]"_s.arg(named.inMenuEntries);
        EXPECT_EQ(lines[key], translated(u"cleanup_subtitle"_s, named.language)) << qPrintable(key);
    }
    EXPECT_EQ(lines.keys().filter(u"Comment"_s).size(), languages.size());
}

TEST(PackagingFiles, SoftwareCentresShowTheTableInEveryLanguage) {
    QMap<QString, QStringList> said; // element and language, in the order of the file
    QXmlStreamReader reader(contentOf(Identity::identifier() + u".metainfo.xml"_s));
    while (!reader.atEnd()) {
        reader.readNext();
        const QString element = reader.name().toString();
        if (!reader.isStartElement())
            continue;
        if (element != u"summary" && element != u"p" && element != u"li")
            continue;
        const QString tag = reader.attributes().value(u"xml:lang"_s).toString();
        said[element + u' ' + (tag.isEmpty() ? u"en"_s : tag)].append(reader.readElementText());
    }
    ASSERT_FALSE(reader.hasError()) << qPrintable(reader.errorString());
    for (const auto& [language, tag, unused] : languages) {
        const auto texts = [language = language](const QStringList& keys) {
            QStringList all;
            for (const QString& key : keys)
                all.append(translated(key, language));
            return all;
        };
        EXPECT_EQ(said.take(u"summary "_s + tag), texts({u"cleanup_subtitle"_s})) << qPrintable(tag);
        EXPECT_EQ(said.take(u"p "_s + tag), texts({u"onboard_message_welcome"_s})) << qPrintable(tag);
        EXPECT_EQ(said.take(u"li "_s + tag),
                  texts({u"onboard_feature_cleanup"_s, u"onboard_feature_uninstall"_s,
                         u"onboard_feature_startup"_s, u"onboard_feature_duplicates"_s}))
            << qPrintable(tag);
    }
    EXPECT_TRUE(said.isEmpty()) << qPrintable(said.firstKey());
}

TEST(PackagingFiles, BundleCarriesTheIdentityAndAsksInEveryLanguage) {
    const auto read = [](const QString& name) {
        const auto bytes = contentOf(u"macos/"_s + name).toStdString();
        return platform::PropertyList::parse(bytes);
    };
    const auto information = read(u"Info.plist"_s);
    ASSERT_TRUE(information) << information.error().description;
    const auto usage = [](AppLanguage language) {
        return translated(u"duplicates_permission_text"_s, language).toStdString();
    };
    const std::string name = Identity::name().toStdString();
    const std::string version = Identity::version().toStdString();
    const std::pair<const char*, std::string> expected[] = {
        {"CFBundleIdentifier", Identity::identifier().toStdString()},
        {"CFBundleName", name},
        {"CFBundleExecutable", name},
        {"CFBundleIconFile", name},
        {"CFBundleShortVersionString", version},
        {"CFBundleVersion", version},
        {"CFBundlePackageType", "APPL"},
        {"CFBundleDevelopmentRegion", "fr"},
        {"LSMinimumSystemVersion", LUMVALE_DEPLOYMENT_TARGET},
        {"NSPhotoLibraryUsageDescription", usage(AppLanguage::fr)},
    };
    for (const auto& [key, value] : expected)
        EXPECT_EQ(information->string(key), value) << key;
    EXPECT_EQ(information->boolean("NSHighResolutionCapable"), true);

    QSet<QString> localizations;
    QXmlStreamReader reader(contentOf(u"macos/Info.plist"_s));
    for (bool inside = false; !reader.atEnd(); reader.readNext()) {
        if (reader.name() == u"array")
            inside = reader.isStartElement();
        else if (inside && reader.isStartElement())
            localizations.insert(reader.readElementText());
    }
    for (const Named& named : languages) {
        EXPECT_TRUE(localizations.remove(named.tag)) << qPrintable(named.tag);
        const auto strings = read(named.tag + u".lproj/InfoPlist.strings"_s);
        ASSERT_TRUE(strings) << qPrintable(named.tag);
        EXPECT_EQ(strings->string("NSPhotoLibraryUsageDescription"), usage(named.language))
            << qPrintable(named.tag);
    }
    EXPECT_TRUE(localizations.isEmpty());
}

TEST(PackagingFiles, SignIsATileWithALightAtEverySize) {
    for (const int side : {16, 22, 24, 32, 48, 64, 128, 256, 512}) {
        SCOPED_TRACE(side);
        const QImage image = programImage(side);
        ASSERT_EQ(image.size(), QSize(side, side));
        const QImage installed(u"%1icons/%2.png"_s.arg(folder).arg(side));
        EXPECT_EQ(installed.convertToFormat(image.format()), image);

        const auto at = [&](double x, double y) {
            return image.pixelColor(static_cast<int>(x * side), static_cast<int>(y * side));
        };
        EXPECT_EQ(at(0, 0).alpha(), 0);
        const QColor star = at(0.5, 0.36);
        const QColor sky = at(0.2, 0.2);
        const QColor slope = at(0.15, 0.7);
        EXPECT_EQ(sky.alpha(), 255);
        EXPECT_EQ(slope.alpha(), 255);
        EXPECT_GT(star.lightness(), 225);
        EXPECT_LT(sky.lightness(), 90);
        EXPECT_GT(slope.saturation(), 100);
        EXPECT_GT(slope.lightness(), sky.lightness() + 60);
    }
}

} // namespace
