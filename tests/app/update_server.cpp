#include "tests/app/update_server.h"

#include <QFile>
#include <QProcess>
#include <QSslCertificate>
#include <QSslKey>
#include <QSslSocket>

#include <gtest/gtest.h>

using namespace Qt::StringLiterals;

TestAuthority::TestAuthority() {
    openssl(u"req -x509 -newkey ec -pkeyopt ec_paramgen_curve:prime256v1 -nodes "
            "-subj /CN=Tests -days 1 -keyout authority.key -out authority.pem"_s);
}

void TestAuthority::openssl(const QString& command) const {
    QProcess openssl;
    openssl.setWorkingDirectory(m_folder.path());
    openssl.start(u"openssl"_s, command.split(u' '));
    EXPECT_TRUE(openssl.waitForFinished() && openssl.exitCode() == 0)
        << openssl.readAllStandardError().toStdString();
}

QSslConfiguration TestAuthority::identity(const QString& names, int days) const {
    openssl(u"req -newkey ec -pkeyopt ec_paramgen_curve:prime256v1 -nodes "
            "-subj /CN=server -addext subjectAltName=%1 -keyout server.key -out server.csr"_s.arg(names));
    openssl(u"x509 -req -in server.csr -CA authority.pem -CAkey authority.key "
            "-CAcreateserial -copy_extensions copy -out server.pem -days %1"_s.arg(days));
    QSslConfiguration identity = QSslConfiguration::defaultConfiguration();
    identity.setLocalCertificate(QSslCertificate(file(u"server.pem"_s)));
    identity.setPrivateKey(QSslKey(file(u"server.key"_s), QSsl::Ec));
    return identity;
}

QByteArray TestAuthority::file(const QString& name) const {
    QFile file(m_folder.filePath(name));
    EXPECT_TRUE(file.open(QIODevice::ReadOnly)) << name.toStdString();
    return file.readAll();
}

UpdateServer::UpdateServer(const QSslConfiguration& identity) {
    m_server.setSslConfiguration(identity);
    QObject::connect(&m_server, &QTcpServer::pendingConnectionAvailable, &m_server, [this] {
        while (auto* socket = qobject_cast<QSslSocket*>(m_server.nextPendingConnection()))
            QObject::connect(socket, &QIODevice::readyRead, socket, [this, socket] { answer(*socket); });
    });
    EXPECT_TRUE(m_server.listen(QHostAddress::LocalHost));
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
    const auto [bytes, then] = m_answers.value(head.split(' ').value(1), {"HTTP/1.1 404 Not Found\r\n\r\n"});
    socket.write(bytes);
    if (then == Then::closes)
        socket.disconnectFromHost();
}
