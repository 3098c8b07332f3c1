#include "app/i18n/app_language.h"
#include "app/update/update_checker.h"
#include "app/update/update_page.h"
#include "app/update/version.h"
#include "tests/app/update_server.h"

#include <QMutex>
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

QMutex messagesMutex;
QStringList messages;

class UpdateTest : public testing::Test {
protected:
    UpdateTest() {
        for (const char* proxy : {"http_proxy", "https_proxy", "all_proxy", "HTTP_PROXY", "HTTPS_PROXY"})
            qunsetenv(proxy);
        qInstallMessageHandler([](QtMsgType, const QMessageLogContext&, const QString& message) {
            const QMutexLocker locker(&messagesMutex);
            messages.append(message);
        });
        m_options.folder = m_server.url(m_options.folder.path());
    }

    ~UpdateTest() override {
        qInstallMessageHandler(nullptr);
        EXPECT_EQ(messages.join(u'\n').toStdString(), "");
        messages.clear();
        QSettings().clear();
    }

    void serve(const QByteArray& answer, Then then = Then::closes) {
        m_server.serve("/maj/lumvale.json", {answer, then});
    }

    void start(QObject& owner) {
        UpdateChecker::startIfNeeded(
            &owner,
            [this](const UpdateAlert& alert) {
                m_announced.append(alert.message + u' ' + alert.page.toString());
            },
            m_options);
    }

    /// Runs a check to its end, and returns the announced messages and pages.
    QStringList check() {
        QObject owner;
        UpdateChecker::languageCode = [] {
            return u"fr"_s;
        };
        start(owner);
        // The language that counts is the one at the time of the announcement.
        UpdateChecker::languageCode = [] {
            return u"en"_s;
        };
        EXPECT_TRUE(QTest::qWaitFor([&] { return owner.children().isEmpty(); }, patience));
        m_requests = m_server.takeRequests();
        return std::exchange(m_announced, {});
    }

    void expectCheckFails() {
        EXPECT_EQ(check(), QStringList());
        EXPECT_EQ(QSettings().allKeys(), QStringList());
    }

    const TestAuthority m_authority;
    UpdateServer m_server{m_authority.identity()};
    double m_now = today;
    UpdateChecker::Options m_options{
        .name = u"Lumvale"_s,
        .version = u"1.4"_s,
        .authorities = m_authority.certificate(),
        .clock = [this] { return platform::Date(platform::Date::duration(m_now)); },
        .timeout = 1h,
        .delay = 0s,
    };
    QList<QByteArray> m_requests; ///< of the last check
    QStringList m_announced;
};

} // namespace

TEST(UpdateAddress, IsHttpsOnTheHostOfTheBuild) {
    EXPECT_EQ(UpdateChecker::Options().folder, QUrl(u"https://" LUMVALE_UPDATE_HOST u"/maj/"_s));
}

TEST(IsNewer, ComparesNumbersOfAnyLengthPlaceByPlace) {
    for (const QByteArray line : {"1.10 > 1.9", "1.2.0.1 > 1.2", "2 > 1.9.9", "1.2 > 1.2b", ".1.2. > 1.1",
                                  "01.010 > 1.9", "18446744073709551617 > 2", "1.2 = 1.2.0", "1..2 = 1.2",
                                  " = 0", "-1 = 0", "\u0665 = 0" /* an Arabic digit */}) {
        const qsizetype sign = line.contains('>') ? line.indexOf('>') : line.indexOf('=');
        const std::string version = line.left(sign - 1).toStdString();
        const std::string than = line.mid(sign + 2).toStdString();
        EXPECT_EQ(UpdateChecker::isNewer(version, than), line[sign] == '>') << line.constData();
        EXPECT_FALSE(UpdateChecker::isNewer(than, version)) << line.constData();
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
         {"", "http://lumvale.example/", "//lumvale.example/", "https:///lumvale.example",
          "javascript:alert(1)//lumvale.example", "https://evillumvale.example/",
          "https://lumvale.example.evil.test/", "https://lumvale.example@evil.test/",
          "https://evil.test?.lumvale.example", "https://evil.test\\.lumvale.example/",
          "https://lumvale.example/a\\b", "https://lumvale.ex\nample/", "https://lumvale.example/a b",
          "https://evil.test%2F.lumvale.example/", "https://lumv\u0430le.example/" /* a Cyrillic letter */})
        EXPECT_FALSE(UpdateChecker::acceptablePage(page, u"lumvale.example"_s)) << page;
    EXPECT_FALSE(UpdateChecker::acceptablePage("https:///", u""_s));
}

TEST(UpdateAlert, NamesTheProgramAndBothVersionsInEveryLanguage) {
    const auto alert = [](const QString& code, const std::string& version) {
        return UpdateChecker::alertIn(code, u"Lumvale"_s, version, u"1.4"_s, {});
    };
    for (auto language = allAppLanguages.begin() + 1; language != allAppLanguages.end(); ++language) {
        const UpdateAlert texts = alert(rawValue(*language), "1.5");
        for (const QString& part : {u"Lumvale"_s, u"1.5"_s, u"1.4"_s})
            EXPECT_TRUE(texts.message.contains(part)) << texts.message.toStdString();
        EXPECT_FALSE(texts.title.isEmpty() || texts.download.isEmpty() || texts.later.isEmpty());
    }
    const std::pair<QString, QString> otherCodes[]{
        {u"sr"_s, u"srLatin"_s}, {u"sr-Cyrl"_s, u"srCyrillic"_s}, {u"en-GB"_s, u"fr"_s}};
    for (const auto& [code, same] : otherCodes)
        EXPECT_EQ(alert(code, "1.5").message, alert(same, "1.5").message) << code.toStdString();
    // The version may be any text.
    EXPECT_TRUE(alert(u"en"_s, "1\n\u202E5").message.contains(u"Version 1\u240A\uFFFD5 of"));
    EXPECT_LT(alert(u"en"_s, std::string(9'000, '7')).message.size(), 400);
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

TEST_F(UpdateTest, SendsOneRequestThatIdentifiesOnlyTheProgram) {
    serve(UpdateServer::ok(newer));
    check();
    ASSERT_EQ(m_requests.size(), 1);
    QStringList lines = QString::fromUtf8(m_requests[0]).trimmed().split(u"\r\n"_s);
    std::sort(lines.begin() + 1, lines.end());
    EXPECT_EQ(lines.join(u'\n').toStdString(),
              "GET /maj/lumvale.json HTTP/1.1\nAccept-Encoding: identity\nAccept-Language: *\n"
              "Cache-Control: no-cache\nConnection: Keep-Alive\nHost: localhost:"
                  + std::to_string(m_options.folder.port()) + "\nPragma: no-cache\nUser-Agent: Lumvale");
}

TEST_F(UpdateTest, AsksOnceADay) {
    const std::pair<QVariant, bool> cases[]{
        {{}, true},           {today - aDay, true},  {today - aDay + 0.5, false},
        {today + 1e9, false}, {u"nan"_s, true},      {u"-inf"_s, true},
        {u"inf"_s, true},     {u"yesterday"_s, true}};
    serve(UpdateServer::ok(newer));
    for (const auto& [stored, asks] : cases) {
        SCOPED_TRACE(stored.toString().toStdString());
        QSettings().clear();
        if (stored.isValid())
            QSettings().setValue(lastCheck, stored);
        EXPECT_EQ(check().size(), asks);
        EXPECT_EQ(m_requests.size(), asks);
        EXPECT_EQ(QSettings().value(lastCheck), asks ? QVariant(today) : stored);
    }
    QSettings().clear();
    m_options.name.reset();
    expectCheckFails();
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
        SCOPED_TRACE(answer.left(60).toStdString() + " ... " + answer.right(60).toStdString());
        QSettings().clear();
        serve(answer);
        EXPECT_EQ(check().size(), isAccepted);
        EXPECT_EQ(QSettings().contains(lastCheck), isAccepted);
    }
    QSettings().clear();
    serve("HTTP/1.1 200 OK\r\n\r\n" + padded(10'000), Then::fallsSilent); // is not read to its end
    expectCheckFails();
}

TEST_F(UpdateTest, FollowsRedirectsOnlyToHttps) {
    m_server.serve("/elsewhere.json", {UpdateServer::ok(newer)});
    m_server.serve("/again", {UpdateServer::redirect(m_server.url(u"/again"_s)), Then::fallsSilent});
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
        SCOPED_TRACE(to.toString().toStdString());
        QSettings().clear();
        serve(UpdateServer::redirect(to), Then::fallsSilent);
        EXPECT_EQ(check().size(), isAccepted);
        EXPECT_EQ(m_requests.size(), requests);
        EXPECT_FALSE(unencrypted.hasPendingConnections());
    }
}

TEST_F(UpdateTest, SendsNothingWithoutATrustedCertificateAndIgnoresAMissingServer) {
    const TestAuthority unknown;
    for (const QSslConfiguration& identity :
         {m_authority.identity(u"DNS:localhost"_s, -1), m_authority.identity(u"DNS:lumvale.example"_s),
          unknown.identity()}) {
        UpdateServer server(identity);
        server.serve("/maj/lumvale.json", {UpdateServer::ok(newer)});
        m_options.folder = server.url(u"/maj/"_s);
        expectCheckFails();
        EXPECT_TRUE(server.takeRequests().isEmpty());
    }
    expectCheckFails(); // the server is not running any more
}

TEST_F(UpdateTest, EndsAtTheTimeLimitWhateverTheServerDoes) {
    m_server.serve("/silent", {"", Then::fallsSilent});
    for (const QByteArray& answer :
         {QByteArray(), QByteArray("HTTP/1.1 200 OK\r\nContent-Length: 50\r\n\r\n{"),
          UpdateServer::redirect(m_server.url(u"/silent"_s))}) {
        SCOPED_TRACE(answer.toStdString());
        serve(answer, Then::fallsSilent);
        // On a busy machine the time may be over before the request is sent; then the next attempt has
        // longer.
        m_requests.clear();
        for (m_options.timeout = 100ms; m_requests.isEmpty() && m_options.timeout < 30s;
             m_options.timeout *= 2)
            expectCheckFails();
        EXPECT_FALSE(m_requests.isEmpty());
    }
}

TEST_F(UpdateTest, AnnouncesNothingBeforeTheDelayIsOver) {
    serve(UpdateServer::ok(newer));
    m_options.delay = 1h;
    {
        QObject owner;
        start(owner);
        auto* thread = owner.findChild<QThread*>();
        ASSERT_TRUE(QTest::qWaitFor([&] { return thread->isFinished(); }, patience));
        thread->wait();                    // until it has sent its last signal,
        QCoreApplication::processEvents(); // which is handled here
    }
    EXPECT_EQ(m_announced, QStringList());
    EXPECT_EQ(QSettings().allKeys(), QStringList(lastCheck)); // it is announced at the next start
}
