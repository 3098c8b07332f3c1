#pragma once

#include <utility>

#include <QByteArray>
#include <QHash>
#include <QList>
#include <QSslServer>
#include <QString>
#include <QUrl>

class QSslSocket;

/// An HTTPS server on the loopback interface with a self-signed certificate. It answers while the thread that
/// made it runs an event loop, and sends answers byte for byte as given.
class UpdateServer {
public:
    enum class Then { closes, fallsSilent };

    /// The certificate is valid for `days` from now on, and for these names.
    explicit UpdateServer(int days = 1, const QString& names = QStringLiteral("DNS:localhost,IP:127.0.0.1"));

    QByteArray certificate() const; ///< PEM
    QUrl url(const QString& path, const QString& host = QStringLiteral("localhost")) const;

    /// Sets the answer to requests for `path`, and the state of the connection after it. Requests for other
    /// paths get no answer.
    void serve(const QByteArray& path, const QByteArray& answer, Then then = Then::closes) {
        m_answers[path] = {answer, then};
    }

    /// Returns the heads of the requests since the last call.
    QList<QByteArray> takeRequests() { return std::exchange(m_requests, {}); }

    static QByteArray ok(const QByteArray& body);
    static QByteArray redirect(const QUrl& to);

private:
    void answer(QSslSocket& socket);

    QHash<QByteArray, std::pair<QByteArray, Then>> m_answers;
    QList<QByteArray> m_requests;
    QSslServer m_server;
};
