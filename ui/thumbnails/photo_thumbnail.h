#pragma once

#include "ui/thumbnails/thumbnail_item.h"

#include <QByteArray>

/// Item that draws the thumbnail of one asset of the photo library: square with round corners, or the whole
/// photo if `isLarge`.
class PhotoThumbnail : public ThumbnailItem {
    Q_OBJECT
    Q_PROPERTY(QByteArray assetID READ assetID WRITE setAssetID NOTIFY assetIDChanged)
    Q_PROPERTY(bool isLarge MEMBER m_isLarge FINAL) // set before the item is complete
    Q_PROPERTY(bool iCloudOnly READ iCloudOnly NOTIFY thumbnailChanged)
    Q_PROPERTY(QByteArray originalPath READ originalPath NOTIFY thumbnailChanged)
    QML_ELEMENT

public:
    using ThumbnailItem::ThumbnailItem;

    const QByteArray& assetID() const { return m_assetID; } ///< an ArrayBuffer in QML
    void setAssetID(const QByteArray& assetID);
    bool iCloudOnly() const {
        return thumbnail().isInCloud;
    } ///< no thumbnail: the original isn't on the disk
    QByteArray originalPath() const { return thumbnail().originalPath; } ///< empty until it is known

Q_SIGNALS:
    void assetIDChanged();

protected:
    ThumbnailSource source() const override {
        return {m_isLarge ? ThumbnailSource::Kind::photoPreview : ThumbnailSource::Kind::photo, m_assetID};
    }

private:
    QByteArray m_assetID;
    bool m_isLarge = false;
};
