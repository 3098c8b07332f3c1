#include "app/update/secure_fetch.h"

#include "app/identity.h"

#include <QEventLoop>
#include <QNetworkAccessManager>
#include <QNetworkReply>
#include <QNetworkRequest>
#include <QSslCertificate>
#include <QSslConfiguration>
#include <QThread>
#include <QTimer>

#include <memory>

using namespace Qt::StringLiterals;

namespace {

QNetworkRequest request(const QUrl& url, const QByteArray& authorities) {
    using enum QNetworkRequest::Attribute;
    QNetworkRequest request(url);

    // All that is told is which program asks; of itself the toolkit would tell the system's language, too.
    request.setRawHeader("User-Agent", Identity::name().toUtf8());
    request.setRawHeader("Accept-Language", "*");
    // What comes is as long as it says: nothing small can unfold to something large.
    request.setRawHeader("Accept-Encoding", "identity");

    request.setAttribute(CacheLoadControlAttribute, QNetworkRequest::AlwaysNetwork);
    request.setAttribute(CookieLoadControlAttribute, QNetworkRequest::Manual);
    request.setAttribute(CookieSaveControlAttribute, QNetworkRequest::Manual);
    request.setAttribute(AuthenticationReuseAttribute, QNetworkRequest::Manual);
    request.setAttribute(Http2AllowedAttribute, false);
    // Left to itself, the toolkit waits for the end of what nobody reads, and may ask twice.
    request.setAttribute(RedirectPolicyAttribute, QNetworkRequest::ManualRedirectPolicy);

    if (!authorities.isEmpty()) {
        QSslConfiguration tls = QSslConfiguration::defaultConfiguration();
        tls.setCaCertificates(QSslCertificate::fromData(authorities));
        request.setSslConfiguration(tls);
    }
    return request;
}

/// Whether what was asked for is there, from beginning to end.
bool isWhole(const QNetworkReply& reply) {
    constexpr int ok = 200;
    return reply.isFinished() && reply.error() == QNetworkReply::NoError
           && reply.attribute(QNetworkRequest::HttpStatusCodeAttribute).toInt() == ok;
}

} // namespace

std::optional<QByteArray> SecureFetch::run() const {
    // Made for this one file and gone with it: cookies, credentials and connections die here.
    QNetworkAccessManager manager;
    QEventLoop loop;
    QTimer::singleShot(limit, &loop, [] { QThread::currentThread()->quit(); });

    constexpr int mostRequests = 6;
    QUrl next = url;
    for (int requests = 0; requests < mostRequests && next.scheme() == "https"_L1; ++requests) {
        const std::unique_ptr<QNetworkReply> reply(manager.get(request(next, authorities)));
        reply->setReadBufferSize(mostBytes + 1);
        const auto redirection = [&] {
            return reply->attribute(QNetworkRequest::RedirectionTargetAttribute).toUrl();
        };
        const auto endIfEnough = [&] {
            if (reply->bytesAvailable() > mostBytes || !redirection().isEmpty())
                loop.quit();
        };
        QObject::connect(reply.get(), &QNetworkReply::metaDataChanged, &loop, endIfEnough);
        QObject::connect(reply.get(), &QIODevice::readyRead, &loop, endIfEnough);
        QObject::connect(reply.get(), &QNetworkReply::finished, &loop, &QEventLoop::quit);
        loop.exec();

        if (redirection().isEmpty())
            return isWhole(*reply) && reply->bytesAvailable() <= mostBytes ? std::optional(reply->readAll())
                                                                           : std::nullopt;
        next = next.resolved(redirection());
    }
    return std::nullopt;
}
