#pragma once

#include <utility>

#include <QByteArray>
#include <QHash>
#include <QList>
#include <QSslConfiguration>
#include <QSslServer>
#include <QString>
#include <QTemporaryDir>
#include <QUrl>

class QSslSocket;

/// A certificate authority that only the tests trust.
class TestAuthority {
public:
    TestAuthority();

    QByteArray certificate() const { return file(QStringLiteral("authority.pem")); } ///< PEM

    /// Returns the TLS configuration of a server with these names, valid for `days` from now on.
    QSslConfiguration identity(const QString& names = QStringLiteral("DNS:localhost,IP:127.0.0.1"),
                               int days = 1) const;

private:
    QByteArray file(const QString& name) const;
    void openssl(const QString& command) const;

    QTemporaryDir m_folder;
};

/// An HTTPS server on the loopback interface. It answers while the thread that made it runs an event loop,
/// and sends answers byte for byte as given.
class UpdateServer {
public:
    enum class Then { closes, fallsSilent };
    struct Answer {
        QByteArray bytes;
        Then then = Then::closes;
    };

    explicit UpdateServer(const QSslConfiguration& identity);

    QUrl url(const QString& path, const QString& host = QStringLiteral("localhost")) const;

    /// Sets the answer to requests for `path`. Other paths are not found (404).
    void serve(const QByteArray& path, const Answer& answer) { m_answers[path] = answer; }

    /// Returns the heads of the requests since the last call.
    QList<QByteArray> takeRequests() { return std::exchange(m_requests, {}); }

    static QByteArray ok(const QByteArray& body);
    static QByteArray redirect(const QUrl& to);

private:
    void answer(QSslSocket& socket);

    QHash<QByteArray, Answer> m_answers;
    QList<QByteArray> m_requests;
    QSslServer m_server;
};
