#pragma once

#include "ui/thumbnails/thumbnail_loader.h"

#include <QByteArray>
#include <QImage>
#include <QPointer>
#include <QQuickItem>
#include <QtQmlIntegration>

/// Item that draws the thumbnail of one asset of the photo library, square with round corners; draws nothing
/// if there is none. Requests the thumbnail when the item becomes visible and cancels the request when it is
/// hidden. Unlike Qt's Image it reports that an asset is in iCloud only.
class PhotoThumbnail : public QQuickItem {
    Q_OBJECT
    Q_PROPERTY(QByteArray assetID READ assetID WRITE setAssetID NOTIFY assetIDChanged)
    Q_PROPERTY(bool isLoaded READ isLoaded NOTIFY thumbnailChanged)
    Q_PROPERTY(bool iCloudOnly READ iCloudOnly NOTIFY thumbnailChanged)
    QML_ELEMENT

public:
    explicit PhotoThumbnail(QQuickItem* parent = nullptr);

    const QByteArray& assetID() const { return m_assetID; } ///< an ArrayBuffer in QML
    void setAssetID(const QByteArray& assetID);
    bool isLoaded() const { return !m_thumbnail.image.isNull(); }
    bool iCloudOnly() const {
        return m_thumbnail.isInCloud;
    } ///< no thumbnail: the original isn't on the disk

Q_SIGNALS:
    void assetIDChanged();
    void thumbnailChanged();

protected:
    void componentComplete() override;
    void itemChange(ItemChange change, const ItemChangeData& data) override;
    QSGNode* updatePaintNode(QSGNode* node, UpdatePaintNodeData*) override;

private:
    void load();
    void show(const Thumbnail& thumbnail);

    QByteArray m_assetID;
    QPointer<ThumbnailLoader> m_loader; ///< of the item's engine; null before the first request
    Thumbnail m_thumbnail;
    bool m_isKnown = false; ///< the loader has answered for this asset
    bool m_isNodeOutdated = false;
};
