#include "ui/thumbnails/thumbnail_loader.h"

#include "app/execution/qt_executor.h"
#include "core/uninstall/app_icon.h"
#include "ui/thumbnails/icon_decoder.h"
#include "ui/thumbnails/thumbnail_decoder.h"

#include <algorithm>
#include <iterator>
#include <string_view>
#include <utility>

namespace {

/// Fills a screen quickly without saturating the disk.
constexpr qsizetype maxConcurrentLoads = 2;

/// Returns the original, or the largest rendition if the original is missing or can't be decoded.
Thumbnail readPreview(const platform::PhotoLibrary& photos, std::string_view id) {
    using enum platform::PhotoPictureKind;
    Thumbnail preview;
    for (const platform::PhotoPictureKind kind : {original, rendition}) {
        platform::PhotoPicture picture = photos.picture(id, kind);
        preview.originalPath = QByteArray::fromStdString(picture.originalPath);
        if (picture.file)
            preview.image = decodePreview(std::move(picture.file));
        preview.isInCloud = preview.image.isNull() && (preview.isInCloud || picture.isInCloud);
        if (!preview.image.isNull())
            break;
    }
    return preview;
}

Thumbnail read(const platform::Disk& disk, const platform::PhotoLibrary& photos,
               const ThumbnailSource& source) {
    const std::string_view id(source.id.constData(), static_cast<std::size_t>(source.id.size()));
    if (source.kind == ThumbnailSource::Kind::appIcon) {
        platform::Result<platform::Descriptor> file = core::LumvaleUninstaller::openAppIcon(disk, id);
        return file ? Thumbnail{decodeIcon(std::move(*file), source.side)} : Thumbnail();
    }
    if (source.kind == ThumbnailSource::Kind::photoPreview)
        return readPreview(photos, id);
    platform::PhotoPicture picture = photos.picture(id, platform::PhotoPictureKind::thumbnail);
    return {picture.file ? decodeThumbnail(std::move(picture.file)) : QImage(), picture.isInCloud,
            QByteArray::fromStdString(picture.originalPath)};
}

} // namespace

std::size_t qHash(const ThumbnailSource& source, std::size_t seed) {
    return qHashMulti(seed, static_cast<int>(source.kind), source.id, source.side);
}

ThumbnailLoader::ThumbnailLoader(platform::Disk disk, platform::PhotoLibrary photos,
                                 platform::Executor executor, QQmlEngine* engine)
    : QObject(engine), m_disk(std::move(disk)), m_photos(std::move(photos)), m_executor(std::move(executor)) {
    QJSEngine::setObjectOwnership(this, QJSEngine::CppOwnership);
}

ThumbnailLoader* ThumbnailLoader::create(QQmlEngine* engine, QJSEngine*) {
    return !engine ? nullptr : engine->findChild<ThumbnailLoader*>({}, Qt::FindDirectChildrenOnly);
}

void ThumbnailLoader::load(const ThumbnailSource& source, QObject* receiver, Callback callback) {
    cancel(receiver);
    if (const Thumbnail* cached = m_cache.object(source)) {
        callback(Thumbnail(*cached)); // a copy: the callback may clear the cache
        return;
    }
    m_requests.push_back({source, receiver, std::move(callback)});
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
        return !m_loading.contains(request.source);
    };
    while (m_loading.size() < maxConcurrentLoads) {
        const auto next = std::find_if(m_requests.rbegin(), m_requests.rend(), isWaiting);
        if (next == m_requests.rend())
            return;
        const ThumbnailSource source = next->source;
        m_loading.insert(source);
        runInBackground(
            m_executor, this,
            [disk = m_disk, photos = m_photos, source] { return read(disk, photos, source); },
            [source, generation = m_generation](ThumbnailLoader& loader, Thumbnail thumbnail) {
                loader.finish(source, std::move(thumbnail), generation);
            });
    }
}

void ThumbnailLoader::finish(const ThumbnailSource& source, Thumbnail thumbnail, int generation) {
    m_loading.remove(source);
    if (generation == m_generation) {
        constexpr qsizetype entryOverhead = 200; // bytes
        if (source.kind != ThumbnailSource::Kind::photoPreview)
            m_cache.insert(source, new Thumbnail(thumbnail),
                           thumbnail.image.sizeInBytes() + source.id.size() + thumbnail.originalPath.size()
                               + entryOverhead);
        // Removed before the callbacks run, since these may add requests.
        std::vector<Request> answered;
        const auto asked =
            std::stable_partition(m_requests.begin(), m_requests.end(),
                                  [&source](const Request& request) { return request.source != source; });
        std::move(asked, m_requests.end(), std::back_inserter(answered));
        m_requests.erase(asked, m_requests.end());
        for (const Request& request : answered)
            if (request.receiver)
                request.callback(thumbnail);
    }
    startNext();
}
