#include "app/update/update_alert.h"

#include "app/text/display.h"

#include <algorithm>
#include <iterator>

namespace {

struct Texts {
    QStringView code;
    QStringView olderCode;
    QStringView title;
    QStringView message; ///< %1 is the new version, %2 the program, %3 the version that the user has
    QStringView download;
    QStringView later;
};

constexpr Texts languages[] = {
    {u"fr", u"", u"Une nouvelle version est disponible",
     u"La version %1 de %2 est disponible. Elle est gratuite pour toi. Tu as la version %3.", u"Télécharger",
     u"Plus tard"},
    {u"en", u"", u"A new version is available",
     u"Version %1 of %2 is available. It is free for you. You have version %3.", u"Download", u"Later"},
    {u"srLatin", u"sr", u"Dostupna je nova verzija",
     u"Verzija %1 programa %2 je dostupna. Besplatna je za tebe. Imaš verziju %3.", u"Preuzmi", u"Kasnije"},
    {u"srCyrillic", u"sr-Cyrl", u"Доступна је нова верзија",
     u"Верзија %1 програма %2 је доступна. Бесплатна је за тебе. Имаш верзију %3.", u"Преузми", u"Касније"},
    {u"de", u"", u"Neue Version verfügbar",
     u"Version %1 von %2 ist verfügbar. Sie ist kostenlos für dich. Du hast Version %3.", u"Herunterladen",
     u"Später"},
    {u"es", u"", u"Hay una nueva versión",
     u"La versión %1 de %2 está disponible. Es gratuita para ti. Tienes la versión %3.", u"Descargar",
     u"Más tarde"},
    {u"it", u"", u"Nuova versione disponibile",
     u"La versione %1 di %2 è disponibile. È gratuita per te. Hai la versione %3.", u"Scarica", u"Più tardi"},
    {u"pt", u"", u"Nova versão disponível",
     u"A versão %1 de %2 está disponível. É gratuita para ti. Tens a versão %3.", u"Transferir",
     u"Mais tarde"},
    {u"ru", u"", u"Доступна новая версия",
     u"Версия %1 программы %2 доступна. Она бесплатна для тебя. У тебя версия %3.", u"Скачать", u"Позже"},
};

const Texts& textsIn(const QString& code) {
    const auto* found = std::find_if(std::begin(languages), std::end(languages), [&](const Texts& texts) {
        return !code.isEmpty() && (texts.code == code || texts.olderCode == code);
    });
    return found == std::end(languages) ? languages[0] : *found;
}

} // namespace

UpdateAlert UpdateChecker::alertIn(const QString& languageCode, const QString& name, std::string_view version,
                                   const QString& current, const QUrl& page) {
    const Texts& texts = textsIn(languageCode);
    QString message = texts.message.toString();
    message.replace(QLatin1String("%1"), display::name(version));
    message.replace(QLatin1String("%2"), name);
    message.replace(QLatin1String("%3"), current);
    return {texts.title.toString(), message, texts.download.toString(), texts.later.toString(), page};
}
