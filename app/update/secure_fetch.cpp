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

    // By default Qt also sends the system's language.
    request.setRawHeader("User-Agent", Identity::name().toUtf8());
    request.setRawHeader("Accept-Language", "*");
    // No compression, so that a small response cannot expand to a large one.
    request.setRawHeader("Accept-Encoding", "identity");

    request.setAttribute(CacheLoadControlAttribute, QNetworkRequest::AlwaysNetwork);
    request.setAttribute(CookieLoadControlAttribute, QNetworkRequest::Manual);
    request.setAttribute(CookieSaveControlAttribute, QNetworkRequest::Manual);
    request.setAttribute(AuthenticationReuseAttribute, QNetworkRequest::Manual);
    request.setAttribute(Http2AllowedAttribute, false);
    // With automatic redirects Qt downloads the body of a redirect and may repeat the request.
    request.setAttribute(RedirectPolicyAttribute, QNetworkRequest::ManualRedirectPolicy);

    if (!authorities.isEmpty()) {
        QSslConfiguration tls = QSslConfiguration::defaultConfiguration();
        tls.setCaCertificates(QSslCertificate::fromData(authorities));
        request.setSslConfiguration(tls);
    }
    return request;
}

/// Returns whether the reply has succeeded and is complete.
bool isComplete(const QNetworkReply& reply) {
    constexpr int ok = 200;
    return reply.isFinished() && reply.error() == QNetworkReply::NoError
           && reply.attribute(QNetworkRequest::HttpStatusCodeAttribute).toInt() == ok;
}

} // namespace

std::optional<QByteArray> SecureFetch::run() const {
    // Local, so that no cookies, credentials or connections are shared with other requests.
    QNetworkAccessManager manager;
    QEventLoop loop;
    QTimer::singleShot(timeout, &loop, [] { QThread::currentThread()->quit(); });

    constexpr int maxRequests = 6;
    QUrl next = url;
    for (int requests = 0; requests < maxRequests && next.scheme() == "https"_L1; ++requests) {
        const std::unique_ptr<QNetworkReply> reply(manager.get(request(next, authorities)));
        reply->setReadBufferSize(maxBytes + 1);
        const auto redirection = [&] {
            return reply->attribute(QNetworkRequest::RedirectionTargetAttribute).toUrl();
        };
        const auto quitIfDone = [&] {
            if (reply->bytesAvailable() > maxBytes || !redirection().isEmpty())
                loop.quit();
        };
        QObject::connect(reply.get(), &QNetworkReply::metaDataChanged, &loop, quitIfDone);
        QObject::connect(reply.get(), &QIODevice::readyRead, &loop, quitIfDone);
        QObject::connect(reply.get(), &QNetworkReply::finished, &loop, &QEventLoop::quit);
        loop.exec();

        if (redirection().isEmpty())
            return isComplete(*reply) && reply->bytesAvailable() <= maxBytes ? std::optional(reply->readAll())
                                                                             : std::nullopt;
        next = next.resolved(redirection());
    }
    return std::nullopt;
}
