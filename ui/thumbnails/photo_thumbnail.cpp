#include "ui/thumbnails/photo_thumbnail.h"

#include <QQuickWindow>
#include <QSGImageNode>
#include <QSGTexture>

PhotoThumbnail::PhotoThumbnail(QQuickItem* parent) : QQuickItem(parent) {
    setFlag(ItemHasContents);
}

void PhotoThumbnail::setAssetID(const QByteArray& assetID) {
    if (m_assetID == assetID)
        return;
    m_assetID = assetID;
    show({});
    m_isKnown = false;
    load();
    Q_EMIT assetIDChanged();
}

void PhotoThumbnail::componentComplete() {
    QQuickItem::componentComplete();
    load();
}

void PhotoThumbnail::itemChange(ItemChange change, const ItemChangeData& data) {
    QQuickItem::itemChange(change, data);
    if (change == ItemVisibleHasChanged)
        load();
}

void PhotoThumbnail::load() {
    if (m_isKnown || !isComponentComplete())
        return;
    if (!m_loader)
        m_loader = ThumbnailLoader::create(qmlEngine(this));
    if (!m_loader)
        return;
    if (isVisible() && !m_assetID.isEmpty())
        m_loader->load(m_assetID, this, [this](const Thumbnail& thumbnail) {
            m_isKnown = true;
            show(thumbnail);
        });
    else
        m_loader->cancel(this);
}

void PhotoThumbnail::show(const Thumbnail& thumbnail) {
    const bool isSame =
        thumbnail.image.isNull() && !isLoaded() && thumbnail.isInCloud == m_thumbnail.isInCloud;
    if (isSame)
        return;
    m_thumbnail = thumbnail;
    m_isNodeOutdated = true;
    update();
    Q_EMIT thumbnailChanged();
}

QSGNode* PhotoThumbnail::updatePaintNode(QSGNode* node, UpdatePaintNodeData*) {
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
    if (picture)
        picture->setRect(boundingRect());
    return picture;
}
