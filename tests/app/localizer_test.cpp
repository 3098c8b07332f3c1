#include "app/i18n/localizer.h"

#include "app/i18n/translations.h"

#include <QFile>
#include <QJsonDocument>
#include <QJsonObject>
#include <QRegularExpression>
#include <QSet>
#include <QSettings>

#include <gtest/gtest.h>

using namespace Qt::StringLiterals;

namespace {

/// Returns the table and the additional texts.
QJsonObject textsIn(AppLanguage language) {
    QJsonObject texts;
    for (const char* const folder : {":/i18n", ":/additional_texts"}) {
        QFile file(u"%1/%2.json"_s.arg(QLatin1String(folder), rawValue(language)));
        EXPECT_TRUE(file.open(QIODevice::ReadOnly)) << folder;
        const QJsonObject part = QJsonDocument::fromJson(file.readAll()).object();
        for (const QString& key : part.keys()) {
            EXPECT_FALSE(texts.contains(key)) << key.toStdString();
            if (part[key].isObject())
                texts[key + u"/other"_s] = part[key].toObject()[u"other"_s]; // one of the plural forms
            else
                texts[key] = part[key];
        }
    }
    return texts;
}

/// Transliterates Serbian from Cyrillic to Latin letters. The opposite direction is ambiguous: "nj" may be
/// one letter or two.
QString inLatin(QString serbian) {
    static const QString cyrillic = u"абвгдђежзијклљмнњопрстћуфхцчџш"_s;
    static const QStringList latin =
        u"a b v g d đ e ž z i j k l lj m n nj o p r s t ć u f h c č dž š"_s.split(u' ');
    for (qsizetype i = 0; i < cyrillic.size(); ++i)
        serbian.replace(cyrillic[i], latin[i])
            .replace(cyrillic[i].toUpper(), latin[i].left(1).toUpper() + latin[i].mid(1));
    return serbian;
}

QSet<QString> latinWords(const QString& text) {
    static const QRegularExpression word(u"\\p{Latin}+"_s);
    QSet<QString> words;
    for (auto match = word.globalMatch(text); match.hasNext();)
        words.insert(match.next().captured());
    return words;
}

} // namespace

TEST(EffectiveLanguage, IsTheChosenOneOrThatOfTheFirstPreferredLanguage) {
    using enum AppLanguage;
    const std::pair<std::vector<std::string>, AppLanguage> cases[]{
        {{}, fr},          {{"pt-BR", "en-US"}, pt},     {{"ja-JP", "en-US"}, fr}, {{"es-419"}, es},
        {{"sr"}, srLatin}, {{"SR-CYRL-RS"}, srCyrillic}, {{"uz-Cyrl"}, fr},        {{"\xff\xfe"}, fr}};
    for (const auto& [preferred, effective] : cases)
        EXPECT_EQ(effectiveLanguage(automatic, preferred), effective) << testing::PrintToString(preferred);
    EXPECT_EQ(effectiveLanguage(de, {"pt-BR"}), de);
}

TEST(Localizer, StoresTheLanguageBeforeItSignalsTheChange) {
    QSettings().setValue(u"LumvaleLanguage"_s, u"DE"_s);
    Localizer localizer;
    EXPECT_EQ(localizer.language(), AppLanguage::automatic); // codes are case-sensitive
    QStringList storedAtSignal;
    QObject::connect(&localizer, &Localizer::languageChanged, &localizer,
                     [&] { storedAtSignal.append(QSettings().value(u"LumvaleLanguage"_s).toString()); });
    for (const int index : {5, 0, -1, 10}) // German, automatic, two that are out of range
        localizer.setLanguageIndex(index);
    EXPECT_EQ(storedAtSignal, (QStringList{u"de"_s, u"automatic"_s}));
}

TEST(Localizer, ReturnsTheKeyOfAMissingText) {
    Localizer::shared().setLanguage(AppLanguage::en);
    EXPECT_EQ(localizedCategoryName(core::ScanCategory::trash), u"Trash");
    EXPECT_EQ(tr(u"no_such_key"_s), u"no_such_key");
}

TEST(Translations, HaveTheSameKeysAndWellFormedTextsInAllNineLanguages) {
    const QJsonObject french = textsIn(AppLanguage::fr);
    EXPECT_EQ(Translations::table().size(), 142);
    EXPECT_EQ(allAppLanguages.size(), 1 + 9); // the first is "automatic"
    // A text that mentions a button or a tab does so by its own text.
    const std::pair<QString, QString> mentions[]{{u"duplicates_empty_prompt"_s, u"btn_scan"_s},
                                                 {u"onboard_fda_step1"_s, u"btn_open_settings"_s},
                                                 {u"onboard_fda_step3"_s, u"btn_check_again"_s},
                                                 {u"onboard_message_ready"_s, u"btn_scan"_s},
                                                 {u"onboard_message_ready"_s, u"tab_cleanup"_s}};
    for (auto language = allAppLanguages.begin() + 1; language != allAppLanguages.end(); ++language) {
        SCOPED_TRACE(rawValue(*language).toStdString());
        const QJsonObject texts = textsIn(*language);
        EXPECT_EQ(texts.keys(), french.keys());
        for (const QString& key : texts.keys()) {
            const QString text = texts[key].toString();
            SCOPED_TRACE((key + u": "_s + text).toStdString());
            EXPECT_TRUE(!text.isEmpty() && text == text.trimmed());
            for (const QString& wrong : {u"..."_s, QString(QChar::ReplacementCharacter)})
                EXPECT_FALSE(text.contains(wrong));
            for (const QString& sign : {u"Lumvale"_s, u"…"_s, u"%"_s, u"%1"_s, u"%2"_s, u"%3"_s})
                EXPECT_EQ(text.contains(sign), french[key].toString().contains(sign)) << sign.toStdString();
            for (int number = key.endsWith(u"/other"_s) ? 0 : 30; number < 30; ++number) {
                const QString form = Translations::text(key.chopped(6), *language, number);
                EXPECT_TRUE(form.contains(u"%1"_s) && form.contains(u"%2"_s) == text.contains(u"%2"_s))
                    << number << form.toStdString();
            }
        }
        for (const auto& [key, mentioned] : mentions)
            EXPECT_TRUE(texts[key].toString().contains(texts[mentioned].toString())) << key.toStdString();
    }
}

TEST(Translations, AreTheSameInBothScriptsOfSerbian) {
    const QJsonObject latin = textsIn(AppLanguage::srLatin);
    const QJsonObject cyrillic = textsIn(AppLanguage::srCyrillic);
    const QJsonObject french = textsIn(AppLanguage::fr);
    const QJsonObject english = textsIn(AppLanguage::en);
    ASSERT_FALSE(cyrillic.isEmpty());
    // macOS has no Serbian, so the path that a Mac shows follows the translated one, as in the English text.
    static const QRegularExpression englishPath(u" \\((System Settings [^)]*)\\)"_s);
    for (const QString& key : latin.keys()) {
        QString text = cyrillic[key].toString();
        QString sameInLatin = latin[key].toString();
        SCOPED_TRACE((key + u": "_s + text).toStdString());
        EXPECT_EQ(inLatin(text).toStdString(), sameInLatin.toStdString());
        EXPECT_TRUE(english[key].toString().contains(englishPath.match(text).captured(1)));
        // Only names, which French and English share, stay in Latin letters. This also finds a Latin "a" that
        // looks like the Cyrillic one.
        EXPECT_EQ(latinWords(text.remove(englishPath)), latinWords(sameInLatin.remove(englishPath))
                                                            & latinWords(french[key].toString())
                                                            & latinWords(english[key].toString()));
    }
}
