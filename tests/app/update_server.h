#pragma once

#include <QByteArray>
#include <QHash>
#include <QList>
#include <QMutex>
#include <QSslConfiguration>
#include <QString>
#include <QTemporaryDir>
#include <QThread>
#include <QUrl>

class QSslServer;
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

/// An HTTPS server on the loopback interface, in a thread of its own. It sends answers byte for byte as
/// given.
class UpdateServer {
public:
    enum class Then { closes, fallsSilent };
    struct Answer {
        QByteArray bytes;
        Then then = Then::closes;
    };

    explicit UpdateServer(const QSslConfiguration& identity);
    ~UpdateServer();
    UpdateServer(const UpdateServer&) = delete;
    UpdateServer& operator=(const UpdateServer&) = delete;

    QUrl url(const QString& path, const QString& host = QStringLiteral("localhost")) const;

    /// Sets the answer to requests for `path`. Other paths are not found (404).
    void serve(const QByteArray& path, const Answer& answer);
    QList<QByteArray> takeRequests(); ///< the heads of the requests since the last call

    static QByteArray ok(const QByteArray& body);
    static QByteArray redirect(const QUrl& to);

private:
    void answer(QSslSocket& socket);

    QThread m_thread;
    QSslServer* m_server = nullptr; ///< lives in m_thread
    quint16 m_port = 0;

    QMutex m_mutex;
    QHash<QByteArray, Answer> m_answers;
    QList<QByteArray> m_requests;
};
