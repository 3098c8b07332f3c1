#include "ui/thumbnails/thumbnail_item.h"

#include <QQuickWindow>
#include <QSGImageNode>
#include <QSGTexture>

ThumbnailItem::ThumbnailItem(QQuickItem* parent) : QQuickItem(parent) {
    setFlag(ItemHasContents);
}

void ThumbnailItem::componentComplete() {
    QQuickItem::componentComplete();
    refresh();
}

void ThumbnailItem::itemChange(ItemChange change, const ItemChangeData& data) {
    QQuickItem::itemChange(change, data);
    if (change == ItemVisibleHasChanged || change == ItemSceneChange
        || change == ItemDevicePixelRatioHasChanged)
        refresh();
}

void ThumbnailItem::geometryChange(const QRectF& newGeometry, const QRectF& oldGeometry) {
    QQuickItem::geometryChange(newGeometry, oldGeometry);
    refresh();
}

void ThumbnailItem::refresh() {
    if (!isComponentComplete())
        return;
    if (const ThumbnailSource current = source(); current != m_source) {
        m_source = current;
        show({}, false);
    }
    if (m_isKnown)
        return;
    if (!m_loader)
        m_loader = ThumbnailLoader::create(qmlEngine(this));
    if (!m_loader)
        return;
    if (isVisible() && !m_source.id.isEmpty())
        m_loader->load(m_source, this, [this](const Thumbnail& thumbnail) { show(thumbnail, true); });
    else
        m_loader->cancel(this);
}

void ThumbnailItem::show(const Thumbnail& thumbnail, bool isKnown) {
    const bool isSame = thumbnail.image.isNull() && !isLoaded()
                        && thumbnail.isInCloud == m_thumbnail.isInCloud
                        && thumbnail.originalPath == m_thumbnail.originalPath && isKnown == m_isKnown;
    if (isSame)
        return;
    m_thumbnail = thumbnail;
    m_isKnown = isKnown;
    m_isNodeOutdated = true;
    update();
    Q_EMIT thumbnailChanged();
}

QSGNode* ThumbnailItem::updatePaintNode(QSGNode* node, UpdatePaintNodeData*) {
    if (m_isNodeOutdated) {
        delete node; // recreated, since not every renderer releases the old texture in setTexture()
        node = nullptr;
        m_isNodeOutdated = false;
    }
    auto* picture = static_cast<QSGImageNode*>(node);
    if (!picture && isLoaded()) {
        picture = window()->createImageNode();
        picture->setOwnsTexture(true);
        picture->setTexture(
            window()->createTextureFromImage(m_thumbnail.image, QQuickWindow::TextureHasMipmaps));
        picture->setFiltering(QSGTexture::Linear);
        picture->setMipmapFiltering(QSGTexture::Linear);
    }
    if (picture) {
        QRectF place(QPointF(), m_thumbnail.image.size().scaled(size().toSize(), Qt::KeepAspectRatio));
        place.moveCenter(boundingRect().center());
        picture->setRect(place.toRect());
    }
    return picture;
}
