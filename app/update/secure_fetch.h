#pragma once

#include <chrono>
#include <optional>

#include <QByteArray>
#include <QUrl>

/// A download of a small file by HTTPS.
struct SecureFetch {
    QUrl url; ///< https
    qint64 maxBytes = 0;
    std::chrono::milliseconds timeout{}; ///< for the whole download, redirects included
    QByteArray authorities;              ///< trusted certificate authorities as PEM; the system's if empty

    /// Returns the content of the file. Returns nothing unless the server has a valid certificate, every
    /// redirect is HTTPS, the status is 200, and the file is complete, in time and at most `maxBytes` long.
    /// Sends no cookies and no information about this machine except its address, stores nothing and logs
    /// nothing.
    ///
    /// Blocks. Must run on its own QThread: QThread::quit() aborts it, and a timeout calls quit().
    std::optional<QByteArray> run() const;
};
