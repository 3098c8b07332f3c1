#include "ui/thumbnails/thumbnail_loader.h"

#include "app/execution/qt_executor.h"
#include "ui/thumbnails/thumbnail_decoder.h"

#include <algorithm>
#include <iterator>
#include <utility>

namespace {

/// Two threads: enough to have a screenful of pictures at once, and the disk stays free for others.
constexpr std::size_t mostUnderWay = 2;

} // namespace

ThumbnailLoader::ThumbnailLoader(platform::PhotoLibrary photos, platform::Executor executor,
                                 QQmlEngine* engine)
    : QObject(engine), m_photos(std::move(photos)), m_executor(std::move(executor)) {
    QJSEngine::setObjectOwnership(this, QJSEngine::CppOwnership);
}

ThumbnailLoader* ThumbnailLoader::create(QQmlEngine* engine, QJSEngine*) {
    return !engine ? nullptr : engine->findChild<ThumbnailLoader*>({}, Qt::FindDirectChildrenOnly);
}

void ThumbnailLoader::load(const QByteArray& assetID, QObject* asker, Answer answer) {
    cancel(asker);
    if (const Thumbnail* known = m_remembered.object(assetID)) {
        answer(Thumbnail(*known)); // a copy: the answer may make this forget it
        return;
    }
    m_requests.push_back({assetID, asker, std::move(answer)});
    startNext();
}

void ThumbnailLoader::cancel(const QObject* asker) {
    std::erase_if(m_requests,
                  [asker](const Request& request) { return !request.asker || request.asker == asker; });
}

void ThumbnailLoader::clear() {
    m_remembered.clear();
    ++m_generation;
}

void ThumbnailLoader::startNext() {
    cancel(nullptr); // those whose askers are gone
    const auto isWaiting = [this](const Request& request) {
        return !m_underWay.contains(request.assetID);
    };
    while (m_underWay.size() < mostUnderWay) {
        const auto next = std::find_if(m_requests.rbegin(), m_requests.rend(), isWaiting);
        if (next == m_requests.rend())
            return;
        const QByteArray assetID = next->assetID;
        m_underWay.insert(assetID);
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
    m_underWay.erase(assetID);
    if (generation == m_generation) {
        constexpr qsizetype costOfEntry = 200;
        m_remembered.insert(assetID, new Thumbnail(thumbnail),
                            thumbnail.image.sizeInBytes() + assetID.size() + costOfEntry);
        // Answers may ask anew.
        std::vector<Request> answered;
        const auto asked =
            std::stable_partition(m_requests.begin(), m_requests.end(),
                                  [&assetID](const Request& request) { return request.assetID != assetID; });
        std::move(asked, m_requests.end(), std::back_inserter(answered));
        m_requests.erase(asked, m_requests.end());
        for (const Request& request : answered)
            if (request.asker)
                request.answer(thumbnail);
    }
    startNext();
}
