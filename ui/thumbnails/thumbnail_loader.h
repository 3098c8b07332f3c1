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

/// What there is to show an asset by.
struct Thumbnail {
    QImage image;           ///< null when there is none
    bool isInCloud = false; ///< why there is none
};

/// Loads small pictures of the photo library's assets, in the background, and remembers the last ones. Those
/// asked for last come first: after a long scroll they are what is in sight. One for each engine, on the
/// interface thread; identifiers are bytes.
class ThumbnailLoader : public QObject {
    Q_OBJECT
    QML_ELEMENT
    QML_SINGLETON

public:
    using Answer = std::function<void(const Thumbnail&)>;

    ThumbnailLoader(platform::PhotoLibrary photos, platform::Executor executor, QQmlEngine* engine);

    static ThumbnailLoader* create(QQmlEngine* engine, QJSEngine* = nullptr); ///< null where none was made

    /// Answers once: at once what is remembered, else on a later turn of the event loop. A new question of
    /// the same asker takes the place of its last one, and one whose asker is gone isn't answered.
    void load(const QByteArray& assetID, QObject* asker, Answer answer);
    void cancel(const QObject* asker);

    /// Forgets all pictures, also those still to come: the library is not what it was, or nobody looks.
    Q_INVOKABLE void clear();

    qsizetype rememberedBytes() const { return m_remembered.totalCost(); }
    static constexpr qsizetype mostRememberedBytes = 24'000'000; ///< about 160 pictures

private:
    struct Request {
        QByteArray assetID;
        QPointer<QObject> asker;
        Answer answer;
    };

    void startNext();
    void finish(const QByteArray& assetID, Thumbnail thumbnail, int generation);

    platform::PhotoLibrary m_photos;
    platform::Executor m_executor;
    std::vector<Request> m_requests; ///< not answered yet; the last one is next
    std::set<QByteArray> m_underWay; ///< what is being loaded
    QCache<QByteArray, Thumbnail> m_remembered{mostRememberedBytes};
    int m_generation = 0; ///< of the pictures; what was asked for in an earlier one is out of date
};
