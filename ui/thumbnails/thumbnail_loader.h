#pragma once

#include "platform/base/executor.h"
#include "platform/files/disk.h"
#include "platform/photos/photo_library.h"

#include <QByteArray>
#include <QCache>
#include <QImage>
#include <QObject>
#include <QPointer>
#include <QQmlEngine>
#include <QSet>

#include <cstddef>
#include <functional>
#include <vector>

/// The object that a thumbnail shows.
struct ThumbnailSource {
    enum class Kind {
        photo,
        photoPreview, ///< the whole photo, as large as a window
        appIcon,
    };
    Kind kind = Kind::photo;
    QByteArray id; ///< identifier of an asset or path of an application's bundle; not text in an encoding
    int side = 0;  ///< of an icon, in pixels; 0 for a photo

    bool operator==(const ThumbnailSource&) const = default;
};
std::size_t qHash(const ThumbnailSource& source, std::size_t seed = 0);

/// The thumbnail of an object, or the reason why there is none.
struct Thumbnail {
    QImage image;              ///< null if there is none
    bool isInCloud = false;    ///< the original is not in the library on this disk; `image` is null
    QByteArray originalPath{}; ///< exact path of a photo's original; empty if it isn't on the disk
};

/// Loads thumbnails of the photo library's assets and icons of applications in the background and caches the
/// most recent ones, except previews. The latest requests are served first, since after scrolling they are
/// the visible ones. A QML singleton with one instance per engine; interface thread only.
class ThumbnailLoader : public QObject {
    Q_OBJECT
    QML_ELEMENT
    QML_SINGLETON

public:
    using Callback = std::function<void(const Thumbnail&)>;

    ThumbnailLoader(platform::Disk disk, platform::PhotoLibrary photos, platform::Executor executor,
                    QQmlEngine* engine);

    static ThumbnailLoader* create(QQmlEngine* engine, QJSEngine* = nullptr); ///< null if the engine has none

    /// Calls `callback` once: before returning if the thumbnail is cached, otherwise later from the event
    /// loop. A new request replaces the previous one of the same receiver. The callback is not called after
    /// the receiver has been destroyed, or after cancel().
    void load(const ThumbnailSource& source, QObject* receiver, Callback callback);
    void cancel(const QObject* receiver);

    /// Empties the cache. Discards the results of loads that are running and repeats them.
    Q_INVOKABLE void clear();

private:
    static constexpr qsizetype maxCachedBytes = 24'000'000; // about 160 thumbnails

    struct Request {
        ThumbnailSource source;
        QPointer<QObject> receiver;
        Callback callback;
    };

    void startNext();
    void finish(const ThumbnailSource& source, Thumbnail thumbnail, int generation);

    platform::Disk m_disk;
    platform::PhotoLibrary m_photos;
    platform::Executor m_executor;
    std::vector<Request> m_requests; ///< not answered yet; the last one is served first
    QSet<ThumbnailSource> m_loading; ///< not yet decoded
    QCache<ThumbnailSource, Thumbnail> m_cache{maxCachedBytes};
    int m_generation = 0; ///< incremented by clear(); results of earlier generations are discarded
};
