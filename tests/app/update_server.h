#pragma once

#include <atomic>

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

/// Vouches for servers of its own; nobody trusts it who isn't told to.
class TestAuthority {
public:
    TestAuthority();

    QByteArray certificate() const { return file(QStringLiteral("authority.pem")); } ///< PEM

    /// What a server needs to be these from now on, for so many days.
    QSslConfiguration identity(const QString& names = QStringLiteral("DNS:localhost,IP:127.0.0.1"),
                               int days = 1) const;

private:
    QByteArray file(const QString& name) const;
    void openssl(const QString& command) const;

    QTemporaryDir m_folder;
};

/// A real https server on the loopback, on a thread of its own. It says what it was told to say, byte for
/// byte.
class UpdateServer {
public:
    enum class Then { closes, fallsSilent, goesOn };
    struct Answer {
        QByteArray bytes;
        Then then = Then::closes;
    };

    explicit UpdateServer(const QSslConfiguration& identity);
    ~UpdateServer();
    UpdateServer(const UpdateServer&) = delete;
    UpdateServer& operator=(const UpdateServer&) = delete;

    QUrl url(const QString& path, const QString& host = QStringLiteral("localhost")) const;

    /// What is answered to a request of this path; of any other it falls silent. Each request that is
    /// answered has been recorded.
    void serve(const QByteArray& path, const Answer& answer);
    QList<QByteArray> takeRequests();                ///< their heads as they came
    qint64 bytesSent() const { return m_bytesSent; } ///< of the last answer

    static QByteArray ok(const QByteArray& body);
    static QByteArray redirect(const QUrl& to);

private:
    void answer(QSslSocket& socket);

    QThread m_thread;
    QSslServer* m_server = nullptr; ///< lives there
    quint16 m_port = 0;

    QMutex m_mutex;
    QHash<QByteArray, Answer> m_answers;
    QList<QByteArray> m_requests;
    std::atomic<qint64> m_bytesSent = 0;
};
