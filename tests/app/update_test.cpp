#include "app/i18n/localizer.h"
#include "app/update/update_checker.h"
#include "app/update/update_page.h"
#include "app/update/version.h"
#include "tests/app/update_server.h"

#include <QNetworkProxy>
#include <QPointer>
#include <QSettings>
#include <QTcpServer>
#include <QTest>
#include <QThread>

#include <gtest/gtest.h>

using namespace Qt::StringLiterals;
using namespace std::chrono_literals;

namespace {

using Then = UpdateServer::Then;

const QString lastCheck = u"orvane.update.lastCheck"_s;
const QString notifiedVersion = u"orvane.update.notifiedVersion"_s;
const QByteArray newer = R"({"version":"1.5","page":"https://localhost/get"})";

constexpr double today = 1'790'000'000.25; // seconds since 1970
constexpr double aDay = 86'400;
constexpr int patience = 60'000; // milliseconds; reached only if a check never ends

class UpdateTest : public testing::Test {
protected:
    UpdateTest() {
        QNetworkProxy::setApplicationProxy(QNetworkProxy::NoProxy);
        qInstallMessageHandler([](QtMsgType, const QMessageLogContext&, const QString& message) {
            ADD_FAILURE() << "logged: " << message.toStdString();
        });
    }

    ~UpdateTest() override {
        qInstallMessageHandler(nullptr);
        QSettings().clear();
    }

    void serve(const QByteArray& answer, Then then = Then::closes) {
        m_server.serve("/maj/lumvale.json", answer, then);
    }

    /// Runs a check to its end, and returns the announced messages and pages.
    QStringList check() {
        QObject owner;
        QStringList announced;
        Localizer::shared().setLanguage(AppLanguage::fr);
        UpdateChecker::startIfNeeded(
            &owner,
            [&](const UpdateAlert& alert) { announced.append(alert.message + u' ' + alert.page.toString()); },
            m_options);
        // The language that counts is the one at the time of the announcement.
        Localizer::shared().setLanguage(AppLanguage::en);
        EXPECT_TRUE(QTest::qWaitFor([&] { return owner.children().isEmpty(); }, patience));
        m_requests = m_server.takeRequests();
        return announced;
    }

    /// Runs a check whose success depends on the answer of the server, and returns whether it succeeded.
    bool succeeds() {
        QSettings().clear();
        const bool isAnnounced = !check().isEmpty();
        EXPECT_EQ(QSettings().contains(lastCheck), isAnnounced);
        return isAnnounced;
    }

    UpdateServer m_server;
    double m_now = today;
    UpdateChecker::Options m_options{
        .name = u"Lumvale"_s,
        .version = u"1.4"_s,
        .folder = m_server.url(u"/maj/"_s),
        .authorities = m_server.certificate(),
        .clock = [this] { return platform::Date(platform::Date::duration(m_now)); },
        .timeout = 1h,
        .delay = 0s,
    };
    QList<QByteArray> m_requests; ///< of the last check
};

} // namespace

TEST(UpdateAddress, IsHttpsOnTheHostOfTheBuild) {
    EXPECT_EQ(UpdateChecker::Options().folder, QUrl(u"https://" LUMVALE_UPDATE_HOST u"/maj/"_s));
}

TEST(IsNewer, ComparesNumbersOfAnyLengthPlaceByPlace) {
    const struct {
        const char* version;
        const char* than;
        bool isNewer;
    } cases[]{{"1.10", "1.9", true},   {"1.2.0.1", "1.2", true},
              {"2", "1.9.9", true},    {"1.2", "1.2b", true},
              {".1.2.", "1.1", true},  {"01.010", "1.9", true},
              {"1.2", "1.2.0", false}, {"18446744073709551617", "2", true},
              {"1..2", "1.2", false},  {"", "0", false},
              {"-1", "0", false},      {"\u0665", "0", false} /* an Arabic digit */};
    for (const auto& [version, than, isNewer] : cases) {
        EXPECT_EQ(UpdateChecker::isNewer(version, than), isNewer) << version << " " << than;
        EXPECT_FALSE(UpdateChecker::isNewer(than, version)) << version << " " << than;
    }
}

TEST(AcceptablePage, IsAPlainHttpsAddressOnTheDomainOrBelowIt) {
    for (const char* page :
         {"https://lumvale.example", "HTTPS://LUMVALE.Example/Download?a=%20#b",
          "https://a.b.lumvale.example:8443/x", "https://lumvale.example/\x7E@evil.test/"}) {
        const auto accepted = UpdateChecker::acceptablePage(page, u"Lumvale.example"_s);
        ASSERT_TRUE(accepted) << page;
        // The browser parses the text again and must find the same host.
        EXPECT_EQ(QUrl::fromEncoded(accepted->toEncoded()).host(), accepted->host()) << page;
    }
    for (const char* page :
         {"", "http://lumvale.example/", "https:///lumvale.example", "https://evillumvale.example/",
          "https://lumvale.example.evil.test/", "https://lumvale.example@evil.test/",
          "https://evil.test\\.lumvale.example/", "https://lumvale.example/a\\b",
          "https://lumvale.ex\nample/", "https://lumvale.example/a b", "https://lumvale.example/a|b",
          "https://evil.test%2F.lumvale.example/", "https://lumv\u0430le.example/" /* a Cyrillic letter */})
        EXPECT_FALSE(UpdateChecker::acceptablePage(page, u"lumvale.example"_s)) << page;
    EXPECT_FALSE(UpdateChecker::acceptablePage("https:///", u""_s));
}

TEST(UpdateAlert, IsTranslatedAndNamesTheProgramAndBothVersions) {
    const auto texts = [](const QString& code, const std::string& version) {
        const UpdateAlert alert = UpdateChecker::alertIn(code, u"Lumvale"_s, version, u"1.4"_s, {});
        return QStringList{alert.title, alert.message, alert.download, alert.later};
    };
    const QStringList french = texts(u"en-GB"_s, "1.5"); // an unknown code
    EXPECT_EQ(texts(u"fr"_s, "1.5"), french);
    for (auto language = allAppLanguages.begin() + 2; language != allAppLanguages.end(); ++language) {
        const QStringList translated = texts(rawValue(*language), "1.5");
        for (const QString& part : {u"Lumvale"_s, u"1.5"_s, u"1.4"_s})
            EXPECT_TRUE(translated[1].contains(part)) << translated[1].toStdString();
        for (qsizetype i = 0; i < french.size(); ++i)
            EXPECT_NE(translated[i], french[i]) << translated[i].toStdString();
    }
    EXPECT_EQ(texts(u"sr"_s, "1.5"), texts(u"srLatin"_s, "1.5"));
    EXPECT_EQ(texts(u"sr-Cyrl"_s, "1.5"), texts(u"srCyrillic"_s, "1.5"));
    // The version may be any text.
    EXPECT_TRUE(texts(u"en"_s, "1\n\u202E5")[1].contains(u"Version 1\u21B5\uFFFD5 of"));
    EXPECT_LT(texts(u"en"_s, std::string(9'000, '7'))[1].size(), 400);
}

TEST_F(UpdateTest, AnnouncesEachNewerVersionOnce) {
    const struct {
        QString version;
        bool isAnnounced;
        QVariant notified;
    } days[]{{u"1.4"_s, false, {}},
             {u"1.5"_s, true, u"1.5"_s},
             {u"1.5"_s, false, u"1.5"_s},
             {u"1.5.0"_s, true, u"1.5.0"_s}}; // compared as text
    for (const auto& [version, isAnnounced, notified] : days) {
        serve(UpdateServer::ok(QByteArray(newer).replace("1.5", version.toUtf8())));
        const QString announcement =
            u"Version %1 of Lumvale is available. It is free for you. You have version "
            "1.4. https://localhost/get"_s.arg(version);
        EXPECT_EQ(check(), isAnnounced ? QStringList(announcement) : QStringList());
        EXPECT_EQ(QSettings().value(lastCheck), m_now);
        EXPECT_EQ(QSettings().value(notifiedVersion), notified);
        m_now += aDay;
    }
}

TEST_F(UpdateTest, AsksOnceADayByARequestThatIdentifiesOnlyTheProgram) {
    const std::pair<QVariant, bool> cases[]{
        {{}, true},           {today - aDay, true}, {today - aDay + 0.5, false},
        {today + 1e9, false}, {u"inf"_s, true},     {u"yesterday"_s, true}};
    serve(UpdateServer::ok(newer));
    for (const auto& [stored, asks] : cases) {
        QSettings().clear();
        QSettings().setValue(lastCheck, stored);
        EXPECT_EQ(check().size(), asks) << stored.toString().toStdString();
        ASSERT_EQ(m_requests.size(), asks);
        EXPECT_EQ(QSettings().value(lastCheck), asks ? QVariant(today) : stored);
    }
    QStringList lines = QString::fromUtf8(m_requests[0]).trimmed().split(u"\r\n"_s);
    std::sort(lines.begin() + 1, lines.end());
    EXPECT_EQ(lines.join(u'\n').toStdString(),
              "GET /maj/lumvale.json HTTP/1.1\nAccept-Encoding: identity\nAccept-Language: *\n"
              "Cache-Control: no-cache\nConnection: Keep-Alive\nHost: localhost:"
                  + std::to_string(m_options.folder.port()) + "\nPragma: no-cache\nUser-Agent: Lumvale");

    m_options.name.reset();
    EXPECT_FALSE(succeeds());
}

TEST_F(UpdateTest, AcceptsOnlyACompleteAndValidDescription) {
    const auto padded = [](int size) {
        return newer + QByteArray(size - newer.size(), ' ');
    };
    const std::pair<QByteArray, bool> answers[]{
        {UpdateServer::ok(padded(9'999)), true},
        {UpdateServer::ok(R"({"a":[{}],)" + newer.mid(1)), true},
        {UpdateServer::ok(padded(10'000)), false},
        {UpdateServer::ok(newer).replace("Length: ", "Length: 1"), false}, // ends too early
        {UpdateServer::ok(newer).replace("200 OK", "201 Created"), false},
        {UpdateServer::ok('[' + newer + ']'), false},
        {UpdateServer::ok(newer + '\0'), false},
        {UpdateServer::ok(R"({"version":"1.5"})"), false},
        {UpdateServer::ok(R"({"version":1.5,"page":"https://localhost/get"})"), false},
        {UpdateServer::ok(R"({"version":"1.5","page":"https://localhost@evil.test/"})"), false}};
    for (const auto& [answer, isAccepted] : answers) {
        serve(answer);
        EXPECT_EQ(succeeds(), isAccepted) << answer.left(99).toStdString();
    }
    serve("HTTP/1.1 200 OK\r\n\r\n" + padded(10'000), Then::fallsSilent); // is not read to its end
    EXPECT_FALSE(succeeds());
}

TEST_F(UpdateTest, FollowsRedirectsOnlyToHttps) {
    m_server.serve("/elsewhere.json", UpdateServer::ok(newer));
    m_server.serve("/again", UpdateServer::redirect(m_server.url(u"/again"_s)), Then::fallsSilent);
    QTcpServer unencrypted;
    ASSERT_TRUE(unencrypted.listen(QHostAddress::LocalHost));
    const struct {
        QUrl to;
        int requests;
        bool isAccepted;
    } cases[]{{m_server.url(u"/elsewhere.json"_s, u"127.0.0.1"_s), 2, true},
              {QUrl(u"/elsewhere.json"_s), 2, true},
              {QUrl(u"http://localhost:%1/elsewhere.json"_s.arg(unencrypted.serverPort())), 1, false},
              {m_server.url(u"/again"_s), 6, false}};
    for (const auto& [to, requests, isAccepted] : cases) {
        serve(UpdateServer::redirect(to), Then::fallsSilent);
        EXPECT_EQ(succeeds(), isAccepted) << to.toString().toStdString();
        EXPECT_EQ(m_requests.size(), requests);
        EXPECT_FALSE(unencrypted.hasPendingConnections());
    }
}

TEST_F(UpdateTest, SendsNothingWithoutATrustedCertificateAndIgnoresAMissingServer) {
    UpdateServer expired(-1);
    UpdateServer misnamed(1, u"DNS:lumvale.example"_s);
    UpdateServer unknown;
    m_options.authorities += expired.certificate() + misnamed.certificate();
    for (UpdateServer* server : {&expired, &misnamed, &unknown}) {
        server->serve("/maj/lumvale.json", UpdateServer::ok(newer));
        m_options.folder = server->url(u"/maj/"_s);
        EXPECT_FALSE(succeeds());
        EXPECT_TRUE(server->takeRequests().isEmpty());
    }
    m_options.folder = UpdateServer().url(u"/maj/"_s); // which has ended by now
    EXPECT_FALSE(succeeds());
}

TEST_F(UpdateTest, EndsAtTheTimeLimitWhateverTheServerDoes) {
    m_server.serve("/silent", "", Then::fallsSilent);
    for (const QByteArray& answer :
         {QByteArray(), QByteArray("HTTP/1.1 200 OK\r\nContent-Length: 50\r\n\r\n{"),
          UpdateServer::redirect(m_server.url(u"/silent"_s))}) {
        serve(answer, Then::fallsSilent);
        // On a busy machine the time may be over before the request is sent; then the next attempt has
        // longer.
        m_requests.clear();
        for (m_options.timeout = 100ms; m_requests.isEmpty() && m_options.timeout < 30s;
             m_options.timeout *= 2)
            EXPECT_FALSE(succeeds()) << answer.toStdString();
        EXPECT_FALSE(m_requests.isEmpty());
    }
}

TEST_F(UpdateTest, AnnouncesNothingBeforeTheDelayIsOver) {
    serve(UpdateServer::ok(newer));
    m_options.delay = 1h;
    {
        QObject owner;
        UpdateChecker::startIfNeeded(
            &owner, [](const UpdateAlert&) { ADD_FAILURE(); }, m_options);
        const QPointer<QThread> thread = owner.findChild<QThread*>(); // is deleted if the check fails
        ASSERT_TRUE(QTest::qWaitFor([&] { return thread && thread->isFinished(); }, patience));
        thread->wait();                    // until it has sent its last signal,
        QCoreApplication::processEvents(); // which is handled here
    }
    EXPECT_EQ(QSettings().allKeys(), QStringList(lastCheck)); // it is announced at the next start
}
