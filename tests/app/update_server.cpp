#include "tests/app/update_server.h"

#include <QProcess>
#include <QSslCertificate>
#include <QSslConfiguration>
#include <QSslKey>
#include <QSslSocket>
#include <QTemporaryDir>

#include <gtest/gtest.h>

using namespace Qt::StringLiterals;

UpdateServer::UpdateServer(int days, const QString& names) {
    const QTemporaryDir folder;
    QProcess openssl; // "openssl req" makes no expired certificates, "openssl x509" does
    openssl.setWorkingDirectory(folder.path());
    const QString script = u"openssl req -x509 -newkey ec -pkeyopt ec_paramgen_curve:prime256v1 -nodes "
                           "-subj /CN=Tests -addext subjectAltName=%1 -keyout key "
                           "| openssl x509 -signkey key -days %2; cat key"_s;
    openssl.start(u"sh"_s, {u"-c"_s, script.arg(names, QString::number(days))});
    EXPECT_TRUE(openssl.waitForFinished(-1));
    const QByteArray pem = openssl.readAllStandardOutput();
    QSslConfiguration configuration = QSslConfiguration::defaultConfiguration();
    configuration.setLocalCertificate(QSslCertificate(pem));
    configuration.setPrivateKey(QSslKey(pem, QSsl::Ec));
    EXPECT_FALSE(configuration.privateKey().isNull()) << openssl.readAllStandardError().toStdString();

    m_server.setSslConfiguration(configuration);
    QObject::connect(&m_server, &QTcpServer::pendingConnectionAvailable, &m_server, [this] {
        while (auto* socket = qobject_cast<QSslSocket*>(m_server.nextPendingConnection()))
            QObject::connect(socket, &QIODevice::readyRead, socket, [this, socket] { answer(*socket); });
    });
    EXPECT_TRUE(m_server.listen(QHostAddress::LocalHost));
}

QByteArray UpdateServer::certificate() const {
    return m_server.sslConfiguration().localCertificate().toPem();
}

QUrl UpdateServer::url(const QString& path, const QString& host) const {
    return QUrl(u"https://%1:%2%3"_s.arg(host).arg(m_server.serverPort()).arg(path));
}

QByteArray UpdateServer::ok(const QByteArray& body) {
    return "HTTP/1.1 200 OK\r\nContent-Length: " + QByteArray::number(body.size()) + "\r\n\r\n" + body;
}

QByteArray UpdateServer::redirect(const QUrl& to) {
    return "HTTP/1.1 302 Found\r\nContent-Length: 0\r\nLocation: " + to.toEncoded() + "\r\n\r\n";
}

void UpdateServer::answer(QSslSocket& socket) {
    if (!socket.peek(1'000'000).contains("\r\n\r\n"))
        return;
    const QByteArray head = socket.readAll();
    m_requests.append(head);
    const auto [bytes, then] = m_answers.value(head.split(' ').value(1));
    socket.write(bytes);
    if (then == Then::closes)
        socket.disconnectFromHost();
}
