#include "ui/thumbnails/thumbnail_loader.h"

#include "app/execution/qt_executor.h"
#include "ui/thumbnails/thumbnail_decoder.h"

#include <algorithm>
#include <iterator>
#include <utility>

namespace {

/// Fills a screen quickly without saturating the disk.
constexpr std::size_t maxConcurrentLoads = 2;

} // namespace

ThumbnailLoader::ThumbnailLoader(platform::PhotoLibrary photos, platform::Executor executor,
                                 QQmlEngine* engine)
    : QObject(engine), m_photos(std::move(photos)), m_executor(std::move(executor)) {
    QJSEngine::setObjectOwnership(this, QJSEngine::CppOwnership);
}

ThumbnailLoader* ThumbnailLoader::create(QQmlEngine* engine, QJSEngine*) {
    return !engine ? nullptr : engine->findChild<ThumbnailLoader*>({}, Qt::FindDirectChildrenOnly);
}

void ThumbnailLoader::load(const QByteArray& assetID, QObject* receiver, Callback callback) {
    cancel(receiver);
    if (const Thumbnail* cached = m_cache.object(assetID)) {
        callback(Thumbnail(*cached)); // a copy: the callback may clear the cache
        return;
    }
    m_requests.push_back({assetID, receiver, std::move(callback)});
    startNext();
}

void ThumbnailLoader::cancel(const QObject* receiver) {
    std::erase_if(m_requests, [receiver](const Request& request) {
        return !request.receiver || request.receiver == receiver;
    });
}

void ThumbnailLoader::clear() {
    m_cache.clear();
    ++m_generation;
}

void ThumbnailLoader::startNext() {
    cancel(nullptr); // removes requests of destroyed receivers
    const auto isWaiting = [this](const Request& request) {
        return !m_loading.contains(request.assetID);
    };
    while (m_loading.size() < maxConcurrentLoads) {
        const auto next = std::find_if(m_requests.rbegin(), m_requests.rend(), isWaiting);
        if (next == m_requests.rend())
            return;
        const QByteArray assetID = next->assetID;
        m_loading.insert(assetID);
        runInBackground(
            m_executor, this,
            [photos = m_photos, assetID] {
                platform::PhotoPicture picture =
                    photos.picture({assetID.constData(), static_cast<std::size_t>(assetID.size())});
                return picture.file ? Thumbnail{decodeThumbnail(std::move(picture.file))}
                                    : Thumbnail{{}, picture.isInCloud};
            },
            [assetID, generation = m_generation](ThumbnailLoader& loader, Thumbnail thumbnail) {
                loader.finish(assetID, std::move(thumbnail), generation);
            });
    }
}

void ThumbnailLoader::finish(const QByteArray& assetID, Thumbnail thumbnail, int generation) {
    m_loading.erase(assetID);
    if (generation == m_generation) {
        constexpr qsizetype entryOverhead = 200; // bytes
        m_cache.insert(assetID, new Thumbnail(thumbnail),
                       thumbnail.image.sizeInBytes() + assetID.size() + entryOverhead);
        // Removed before the callbacks run, since these may add requests.
        std::vector<Request> answered;
        const auto asked =
            std::stable_partition(m_requests.begin(), m_requests.end(),
                                  [&assetID](const Request& request) { return request.assetID != assetID; });
        std::move(asked, m_requests.end(), std::back_inserter(answered));
        m_requests.erase(asked, m_requests.end());
        for (const Request& request : answered)
            if (request.receiver)
                request.callback(thumbnail);
    }
    startNext();
}
