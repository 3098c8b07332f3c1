#include "ui/thumbnails/photo_thumbnail.h"

void PhotoThumbnail::setAssetID(const QByteArray& assetID) {
    if (m_assetID == assetID)
        return;
    m_assetID = assetID;
    refresh();
    Q_EMIT assetIDChanged();
}
