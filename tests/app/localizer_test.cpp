#include "app/i18n/localizer.h"

#include "app/i18n/translations.h"

#include <QDir>
#include <QFile>
#include <QJsonDocument>
#include <QJsonObject>
#include <QRegularExpression>
#include <QSet>
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
    return file.open(QIODevice::ReadOnly) ? QJsonDocument::fromJson(file.readAll()).object() : QJsonObject();
}

/// Serbian in Latin letters. Each Cyrillic letter has one Latin spelling; the way back is not so clear, since
/// "nj" may be one letter or two.
QString inLatin(QString serbian) {
    static const QString cyrillic = u"абвгдђежзијклљмнњопрстћуфхцчџш"_s;
    static const QStringList latin =
        u"a b v g d đ e ž z i j k l lj m n nj o p r s t ć u f h c č dž š"_s.split(u' ');
    for (qsizetype i = 0; i < cyrillic.size(); ++i) {
        QString capital = latin[i];
        capital[0] = capital[0].toUpper();
        serbian.replace(cyrillic[i], latin[i]).replace(cyrillic[i].toUpper(), capital);
    }
    return serbian;
}

/// The words in Latin letters, a lone letter too.
QSet<QString> latinWords(const QString& text) {
    static const QRegularExpression word(u"\\p{Latin}+"_s);
    QSet<QString> words;
    for (auto match = word.globalMatch(text); match.hasNext();)
        words.insert(match.next().captured());
    return words;
}

} // namespace

TEST(EffectiveLanguage, FollowsTheChoiceOrTheFirstPreferredLanguage) {
    using enum AppLanguage;
    const struct {
        AppLanguage choice;
        std::vector<std::string> preferred;
        AppLanguage effective;
    } cases[]{{automatic, {}, fr},
              {automatic, {"pt-BR", "en-US"}, pt},
              {automatic, {"ja-JP", "en-US"}, fr},
              {automatic, {"es-419"}, es},
              {automatic, {"sr"}, srLatin},
              {automatic, {"sr-Cyrl-RS"}, srCyrillic},
              {automatic, {"SR-CYRL"}, srCyrillic},
              {automatic, {"uz-Cyrl"}, fr},
              {automatic, {"\xff\xfe"}, fr},
              {de, {"pt-BR"}, de}};
    for (const auto& [choice, preferred, effective] : cases)
        EXPECT_EQ(effectiveLanguage(choice, preferred), effective)
            << (preferred.empty() ? "none" : preferred.front());
}

TEST_F(LocalizerTest, ReadsTheStoredChoiceAndWritesNothing) {
    using enum AppLanguage;
    const std::pair<QVariant, AppLanguage> cases[]{{{}, automatic},
                                                   {u"de"_s, de},
                                                   {u"DE"_s, automatic},
                                                   {7, automatic},
                                                   {QStringList{u"de"_s, u"fr"_s}, automatic},
                                                   {QByteArray("\0\xff", 2), automatic}};
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

TEST_F(LocalizerTest, FindsTextsInTheLanguageOfTheMoment) {
    Localizer::shared().setLanguage(AppLanguage::en);
    EXPECT_EQ(localizedCategoryName(core::ScanCategory::trash), u"Trash");
    EXPECT_EQ(tr(u"no_such_key"_s), u"no_such_key");
    Localizer::shared().setLanguage(AppLanguage::automatic); // on a system that prefers nothing
    EXPECT_EQ(tr(u"btn_scan"_s), u"Analyser mon Mac");
}

TEST(Translations, EveryFileHoldsTheSameTextsInGoodForm) {
    const QJsonObject french = fileOf(u"fr.json"_s);
    EXPECT_EQ(french.size(), 142);
    const QStringList files = QDir(u":/i18n"_s).entryList();
    ASSERT_EQ(files.size(), 9);
    for (const QString& name : files) {
        SCOPED_TRACE(name.toStdString());
        const auto language = appLanguage(name.chopped(5));
        ASSERT_TRUE(language && *language != AppLanguage::automatic);
        const QJsonObject texts = fileOf(name);
        EXPECT_EQ(texts.keys(), french.keys());
        for (const QString& key : texts.keys()) {
            const QString text = texts[key].toString();
            SCOPED_TRACE((key + u": "_s + text).toStdString());
            EXPECT_TRUE(!text.isEmpty() && text == text.trimmed());
            for (const QString& wrong : {u"..."_s, u"%"_s, QString(QChar::ReplacementCharacter)})
                EXPECT_FALSE(text.contains(wrong));
            for (const QString& sign : {u"Lumvale"_s, u"…"_s})
                EXPECT_EQ(text.contains(sign), french[key].toString().contains(sign)) << sign.toStdString();
            EXPECT_EQ(Translations::table()[key][*language], text);
        }
    }
}

TEST(Translations, SayTheSameInBothScriptsOfSerbian) {
    const QJsonObject latin = fileOf(u"srLatin.json"_s);
    const QJsonObject cyrillic = fileOf(u"srCyrillic.json"_s);
    const QJsonObject french = fileOf(u"fr.json"_s);
    const QJsonObject english = fileOf(u"en.json"_s);
    ASSERT_FALSE(latin.isEmpty() || cyrillic.isEmpty());
    for (const QString& key : latin.keys()) {
        const QString text = cyrillic[key].toString();
        SCOPED_TRACE((key + u": "_s + text).toStdString());
        EXPECT_EQ(inLatin(text).toStdString(), latin[key].toString().toStdString());
        // What three languages call alike is a name. Names stay in Latin letters and nothing else does: no
        // word left over, no "a" that merely looks Cyrillic.
        EXPECT_EQ(latinWords(text), latinWords(latin[key].toString()) & latinWords(french[key].toString())
                                        & latinWords(english[key].toString()));
    }
}

TEST(Translations, NameButtonsAndTabsByTheirOwnTexts) {
    const std::pair<QString, QString> namings[]{{u"duplicates_empty_prompt"_s, u"btn_scan"_s},
                                                {u"onboard_fda_step1"_s, u"btn_open_settings"_s},
                                                {u"onboard_fda_step3"_s, u"btn_check_again"_s},
                                                {u"onboard_message_ready"_s, u"btn_scan"_s},
                                                {u"onboard_message_ready"_s, u"tab_cleanup"_s}};
    for (const QString& name : QDir(u":/i18n"_s).entryList()) {
        const QJsonObject texts = fileOf(name);
        for (const auto& [key, named] : namings)
            EXPECT_TRUE(texts[key].toString().contains(texts[named].toString()))
                << name.toStdString() << ": " << key.toStdString();
    }
}
