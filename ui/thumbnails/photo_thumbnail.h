#pragma once

#include "ui/thumbnails/thumbnail_loader.h"

#include <QByteArray>
#include <QImage>
#include <QPointer>
#include <QQuickItem>
#include <QtQmlIntegration>

/// The small picture of one asset of the photo library, square and with round corners; nothing while there is
/// none. It is asked for when it can be seen. The toolkit's own image couldn't say why there is none.
class PhotoThumbnail : public QQuickItem {
    Q_OBJECT
    Q_PROPERTY(QByteArray assetID READ assetID WRITE setAssetID NOTIFY assetIDChanged)
    Q_PROPERTY(bool isLoaded READ isLoaded NOTIFY thumbnailChanged)
    Q_PROPERTY(bool iCloudOnly READ iCloudOnly NOTIFY thumbnailChanged)
    QML_ELEMENT

public:
    explicit PhotoThumbnail(QQuickItem* parent = nullptr);

    const QByteArray& assetID() const { return m_assetID; } ///< bytes, in QML an array buffer
    void setAssetID(const QByteArray& assetID);
    bool isLoaded() const { return !m_thumbnail.image.isNull(); }
    bool iCloudOnly() const { return m_thumbnail.isInCloud; } ///< no picture, because it isn't on the disk

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
    QPointer<ThumbnailLoader> m_loader; ///< while it is asked
    Thumbnail m_thumbnail;
    bool m_isKnown = false; ///< the answer for this asset has come
    bool m_isNodeOutdated = false;
};
