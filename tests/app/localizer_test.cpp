#include "app/i18n/localizer.h"

#include "app/i18n/translations.h"

#include <QDir>
#include <QFile>
#include <QJsonDocument>
#include <QJsonObject>
#include <QSettings>
#include <QSignalSpy>

#include <gtest/gtest.h>

using namespace Qt::StringLiterals;

namespace {

const QString settingsKey = u"LumvaleLanguage"_s;

class LocalizerTest : public testing::Test {
protected:
    LocalizerTest() { QSettings().clear(); }
    ~LocalizerTest() override { QSettings().clear(); }
};

QJsonObject fileOf(const QString& name) {
    QFile file(u":/i18n/"_s + name);
    EXPECT_TRUE(file.open(QIODevice::ReadOnly));
    return QJsonDocument::fromJson(file.readAll()).object();
}

} // namespace

TEST(EffectiveLanguage, FollowsTheChoiceOrTheFirstPreferredLanguage) {
    using enum AppLanguage;
    const struct {
        AppLanguage choice;
        std::vector<std::string> preferred;
        AppLanguage effective;
    } cases[]{
        {automatic, {}, fr},
        {automatic, {"pt-BR", "en-US"}, pt},
        {automatic, {"ja-JP", "en-US"}, fr},
        {automatic, {"EN"}, en},
        {automatic, {"de-AT"}, de},
        {automatic, {"es-419"}, es},
        {automatic, {"it"}, it},
        {automatic, {"ru-RU"}, ru},
        {automatic, {"fr-CA", "en"}, fr},
        {automatic, {"sr"}, srLatin},
        {automatic, {"sr-Latn-RS"}, srLatin},
        {automatic, {"sr-Cyrl-RS"}, srCyrillic},
        {automatic, {"SR-CYRL"}, srCyrillic},
        {automatic, {"uz-Cyrl"}, fr},
        {automatic, {""}, fr},
        {automatic, {"\xff\xfe"}, fr},
        {de, {"pt-BR"}, de},
        {fr, {"en"}, fr},
    };
    for (const auto& [choice, preferred, effective] : cases)
        EXPECT_EQ(effectiveLanguage(choice, preferred), effective)
            << (preferred.empty() ? "none" : preferred.front());
}

TEST_F(LocalizerTest, ReadsTheStoredChoiceAndWritesNothing) {
    const struct {
        QVariant stored;
        AppLanguage language;
    } cases[]{
        {{}, AppLanguage::automatic},
        {u"de"_s, AppLanguage::de},
        {u"srCyrillic"_s, AppLanguage::srCyrillic},
        {u"automatic"_s, AppLanguage::automatic},
        {u"DE"_s, AppLanguage::automatic},
        {u"de "_s, AppLanguage::automatic},
        {u""_s, AppLanguage::automatic},
        {u"sr-Latn"_s, AppLanguage::automatic},
        {7, AppLanguage::automatic},
        {QStringList{u"de"_s, u"fr"_s}, AppLanguage::automatic},
        {QByteArray("\0\xff", 2), AppLanguage::automatic},
    };
    for (const auto& [stored, language] : cases) {
        QSettings().clear();
        if (stored.isValid())
            QSettings().setValue(settingsKey, stored);
        EXPECT_EQ(Localizer().language(), language) << stored.toString().toStdString();
        EXPECT_EQ(QSettings().contains(settingsKey), stored.isValid());
    }
}

TEST_F(LocalizerTest, StoresEveryAssignmentBeforeItTells) {
    Localizer localizer;
    QStringList storedWhenTold;
    QObject::connect(&localizer, &Localizer::languageChanged, &localizer,
                     [&] { storedWhenTold.append(QSettings().value(settingsKey).toString()); });
    localizer.setLanguage(AppLanguage::de);
    QSettings().remove(settingsKey); // only an assignment of what is held already can bring it back
    localizer.setLanguage(AppLanguage::de);
    localizer.setLanguageIndex(0);
    EXPECT_EQ(storedWhenTold, (QStringList{u"de"_s, u"de"_s, u"automatic"_s}));
    for (const int outside : {-1, 10, 1'000'000})
        localizer.setLanguageIndex(outside);
    EXPECT_EQ(storedWhenTold.size(), 3);
}

TEST_F(LocalizerTest, SurvivesASettingsFileThatIsNone) {
    const QString path = QSettings().fileName();
    for (const QByteArray& content : {QByteArray("\0\xff\xfe[[[=\n%%=@Variant(\0\0\xff", 23),
                                      QByteArray("LumvaleLanguage\nde"), QByteArray(100'000, '[')}) {
        QFile file(path);
        ASSERT_TRUE(QDir().mkpath(QFileInfo(path).path()) && file.open(QIODevice::WriteOnly));
        file.write(content);
        file.close();
        Localizer localizer;
        EXPECT_EQ(localizer.language(), AppLanguage::automatic);
        localizer.setLanguage(AppLanguage::de);
        EXPECT_EQ(Localizer().language(), AppLanguage::de);
        QFile::remove(path);
    }
}

TEST_F(LocalizerTest, ChangesEveryTextWithTheLanguage) {
    Localizer& localizer = Localizer::shared();
    localizer.setLanguage(AppLanguage::en);
    EXPECT_EQ(tr(u"btn_scan"_s), u"Scan my Mac");
    EXPECT_EQ(tr(u"no_such_key"_s), u"no_such_key");
    const QString categories[]{u"Temporary files"_s,  u"App logs"_s,           u"Trash"_s,
                               u"Old downloads"_s,    u"App leftovers"_s,      u"Leftovers from old apps"_s,
                               u"Virtual machines"_s, u"Large and old files"_s};
    for (const ScanCategory category : allScanCategories)
        EXPECT_EQ(localizedCategoryName(category), categories[static_cast<std::size_t>(category)]);
    localizer.setLanguage(AppLanguage::fr);
    EXPECT_EQ(tr(u"btn_scan"_s), u"Analyser mon Mac");
    // Automatic, on a system that prefers nothing.
    localizer.setLanguage(AppLanguage::automatic);
    EXPECT_EQ(tr(u"btn_scan"_s), u"Analyser mon Mac");
}

TEST(Translations, EveryFileHoldsTheSameTextsInGoodForm) {
    const QJsonObject french = fileOf(u"fr.json"_s);
    EXPECT_EQ(french.size(), 142);
    EXPECT_EQ(Translations::table().size(), 142);
    const QStringList files = QDir(u":/i18n"_s).entryList();
    ASSERT_TRUE(files.contains(u"en.json"_s));
    for (const QString& name : files) {
        SCOPED_TRACE(name.toStdString());
        const auto language = appLanguage(name.chopped(5));
        ASSERT_TRUE(name.endsWith(u".json") && language && *language != AppLanguage::automatic);
        const QJsonObject texts = fileOf(name);
        EXPECT_EQ(texts.keys(), french.keys());
        for (const QString& key : texts.keys()) {
            const QString text = texts[key].toString();
            SCOPED_TRACE((key + u": "_s + text).toStdString());
            EXPECT_FALSE(text.isEmpty());
            EXPECT_EQ(text, text.trimmed());
            EXPECT_FALSE(text.contains(u"..."));
            EXPECT_FALSE(text.contains(QChar::ReplacementCharacter) || text.contains(u'%'));
            for (const QString& sign : {u"Lumvale"_s, u"…"_s})
                EXPECT_EQ(text.contains(sign), french[key].toString().contains(sign)) << sign.toStdString();
            EXPECT_EQ(Translations::table()[key][*language], text);
        }
    }
}
