#include "app/i18n/translations.h"
#include "app/identity.h"
#include "platform/property_lists/property_list.h"
#include "ui/icon/program_icon.h"

#include <QDataStream>
#include <QFile>

#include <gtest/gtest.h>

#include <algorithm>

using namespace Qt::StringLiterals;

namespace {

const QString folder = QStringLiteral(LUMVALE_PACKAGING);

/// Permissions that a Mac asks for, and the key of the text that it shows.
const std::pair<const char*, QString> usageTexts[]{
    {"NSDesktopFolderUsageDescription", u"usage_folder"_s},
    {"NSDocumentsFolderUsageDescription", u"usage_folder"_s},
    {"NSDownloadsFolderUsageDescription", u"usage_folder"_s},
    {"NSPhotoLibraryUsageDescription", u"duplicates_permission_text"_s},
    {"NSRemovableVolumesUsageDescription", u"usage_volume"_s}};

QByteArray bytesOf(const QString& name) {
    QFile file(folder + name);
    EXPECT_TRUE(file.open(QIODevice::ReadOnly)) << name.toStdString();
    return file.readAll();
}

QString contentOf(const QString& name) {
    return QString::fromUtf8(bytesOf(name));
}

std::string textOf(const QString& propertyList, const std::string& key) {
    const std::string bytes = contentOf(u"macos/"_s + propertyList).toStdString();
    const auto list = platform::PropertyList::parse(bytes);
    return list ? list->string(key).value_or("missing") : list.error().description;
}

} // namespace

TEST(PackagingFiles, ContainTheTextsOfEveryLanguageUnderItsTag) {
    const QString menuEntry = contentOf(Identity::identifier() + u".desktop"_s);
    const QString metainfo = contentOf(Identity::identifier() + u".metainfo.xml"_s);
    for (auto language = allAppLanguages.begin() + 1; language != allAppLanguages.end(); ++language) {
        const auto text = [&](const QString& key) {
            return Translations::table()[key][*language];
        };
        // RFC 5646 tags; menu entries name scripts as the C library does.
        const QString tag =
            rawValue(*language).replace(u"srLatin"_s, u"sr-Latn"_s).replace(u"srCyrillic"_s, u"sr"_s);
        const QString menuTag = QString(tag).replace(u"-Latn"_s, u"@latin"_s);
        QStringList expected{u"\nComment[%1]=%2\n"_s.arg(menuTag, text(u"cleanup_subtitle"_s))};
        for (const auto& [element, key] : {std::pair{u"summary"_s, u"cleanup_subtitle"_s},
                                           {u"p"_s, u"onboard_message_welcome"_s},
                                           {u"li"_s, u"onboard_feature_cleanup"_s},
                                           {u"li"_s, u"onboard_feature_uninstall"_s},
                                           {u"li"_s, u"onboard_feature_startup"_s},
                                           {u"li"_s, u"onboard_feature_duplicates"_s}})
            expected.append(u"<%1 xml:lang=\"%2\">%3</%1>\n"_s.arg(element, tag, text(key)));
        for (QString& part :
             expected.replaceInStrings(u" xml:lang=\"en\""_s, u""_s).replaceInStrings(u"[en]"_s, u""_s))
            EXPECT_TRUE((menuEntry + metainfo).contains(part)) << part.toStdString();
        EXPECT_TRUE(contentOf(u"macos/Info.plist"_s).contains(u"    <string>%1</string>\n"_s.arg(tag)));
        for (const auto& [permission, key] : usageTexts)
            EXPECT_EQ(textOf(tag + u".lproj/InfoPlist.strings"_s, permission),
                      Translations::text(key, *language).toStdString());
    }
}

TEST(PackagingFiles, BundleHasTheIdentityOfTheProgram) {
    const std::string name = Identity::name().toStdString();
    const std::string version = Identity::version().toStdString();
    const std::pair<const char*, std::string> expected[]{
        {"CFBundleIdentifier", Identity::identifier().toStdString()},
        {"CFBundleName", name},
        {"CFBundleExecutable", name},
        {"CFBundleIconFile", name},
        {"CFBundleShortVersionString", version},
        {"CFBundleVersion", version},
        {"LSMinimumSystemVersion", LUMVALE_DEPLOYMENT_TARGET}};
    for (const auto& [key, value] : expected)
        EXPECT_EQ(textOf(u"Info.plist"_s, key), value) << key;
    for (const auto& [permission, key] : usageTexts)
        EXPECT_EQ(textOf(u"Info.plist"_s, permission),
                  Translations::text(key, AppLanguage::fr).toStdString());
}

TEST(PackagingFiles, IconIsATileWithAStarInEverySize) {
    for (const int side : {16, 22, 24, 32, 48, 64, 128, 256, 512}) {
        SCOPED_TRACE(side);
        const QImage icon(u"%1icons/%2.png"_s.arg(folder).arg(side));
        ASSERT_EQ(icon.convertToFormat(programImage(side).format()), programImage(side));
        EXPECT_EQ(icon.pixelColor(0, 0).alpha(), 0);
        EXPECT_GT(icon.pixelColor(side / 2, side * 36 / 100).lightness(), 225);
        EXPECT_LT(icon.pixelColor(side / 5, side / 5).lightness(), 90);
    }
}

TEST(PackagingFiles, MacIconHasAPictureForEachSizeAndResolution) {
    const QByteArray icon = bytesOf(u"macos/%1.icns"_s.arg(Identity::name()));
    QDataStream stream(icon); // big-endian, as the file is
    const auto nextBlock = [&stream] {
        char type[5]{};
        quint32 length = 0;
        stream.readRawData(type, 4);
        stream >> length;
        return std::pair(QString::fromLatin1(type), length);
    };
    EXPECT_EQ(nextBlock(), std::pair(u"icns"_s, static_cast<quint32>(icon.size())));
    QStringList found;
    while (!stream.atEnd()) {
        const auto [type, length] = nextBlock();
        QByteArray content(std::max(length, 8U) - 8, 0);
        stream.readRawData(content.data(), static_cast<int>(content.size()));
        const QImage picture = QImage::fromData(content, "PNG");
        EXPECT_EQ(picture.convertToFormat(programImage(picture.width()).format()),
                  programImage(picture.width()));
        found.append(u"%1 %2"_s.arg(type).arg(picture.width()));
    }
    EXPECT_EQ(found.join(u", "),
              u"ic11 32, ic12 64, ic07 128, ic08 256, ic13 256, ic09 512, ic14 512, ic10 1024");
}
