#pragma once

#include <chrono>
#include <optional>

#include <QByteArray>
#include <QUrl>

/// What there is to know of a small file on the network.
struct SecureFetch {
    QUrl url; ///< https
    qint64 mostBytes = 0;
    std::chrono::milliseconds limit{}; ///< for everything
    QByteArray authorities;            ///< those that are trusted, as PEM; the system's where empty

    /// Gets the file: nothing unless it came whole, in time, with the status 200, by https alone and from
    /// whom the authorities vouch for. Keeps nothing, sends nothing of this machine, says nothing.
    ///
    /// Blocks. Belongs on a QThread of its own, whose quit() ends it.
    std::optional<QByteArray> run() const;
};
