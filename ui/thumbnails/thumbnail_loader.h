#pragma once

#include "platform/base/executor.h"
#include "platform/photos/photo_library.h"

#include <QByteArray>
#include <QCache>
#include <QImage>
#include <QObject>
#include <QPointer>
#include <QQmlEngine>

#include <functional>
#include <set>
#include <vector>

/// The thumbnail of an asset, or the reason why there is none.
struct Thumbnail {
    QImage image;           ///< null if there is none
    bool isInCloud = false; ///< the original is in iCloud only; `image` is null
};

/// Loads thumbnails of the photo library's assets in the background and caches the most recent ones. The
/// latest requests are served first, since after scrolling they are the visible ones. A QML singleton with
/// one instance per engine; interface thread only. Asset identifiers are byte strings without a text
/// encoding.
class ThumbnailLoader : public QObject {
    Q_OBJECT
    QML_ELEMENT
    QML_SINGLETON

public:
    using Callback = std::function<void(const Thumbnail&)>;

    ThumbnailLoader(platform::PhotoLibrary photos, platform::Executor executor, QQmlEngine* engine);

    static ThumbnailLoader* create(QQmlEngine* engine, QJSEngine* = nullptr); ///< null if the engine has none

    /// Calls `callback` once: before returning if the thumbnail is cached, otherwise later from the event
    /// loop. A new request replaces the previous one of the same receiver. The callback is not called after
    /// the receiver has been destroyed, or after cancel().
    void load(const QByteArray& assetID, QObject* receiver, Callback callback);
    void cancel(const QObject* receiver);

    /// Empties the cache. Discards the results of loads that are running and repeats them.
    Q_INVOKABLE void clear();

private:
    static constexpr qsizetype maxCachedBytes = 24'000'000; // about 160 thumbnails

    struct Request {
        QByteArray assetID;
        QPointer<QObject> receiver;
        Callback callback;
    };

    void startNext();
    void finish(const QByteArray& assetID, Thumbnail thumbnail, int generation);

    platform::PhotoLibrary m_photos;
    platform::Executor m_executor;
    std::vector<Request> m_requests; ///< not answered yet; the last one is served first
    std::set<QByteArray> m_loading;  ///< assets that are being loaded
    QCache<QByteArray, Thumbnail> m_cache{maxCachedBytes};
    int m_generation = 0; ///< incremented by clear(); results of earlier generations are discarded
};
