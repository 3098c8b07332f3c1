#pragma once

#include "ui/thumbnails/thumbnail_loader.h"

#include <QImage>
#include <QPointer>
#include <QQuickItem>
#include <QtQmlIntegration>

/// Base class of items that draw a thumbnail in their center; draws nothing if there is none. Requests the
/// thumbnail when the item becomes visible and cancels the request when it is hidden. Unlike Qt's Image it
/// reports that an asset is in iCloud only, and reads files of the disk.
class ThumbnailItem : public QQuickItem {
    Q_OBJECT
    Q_PROPERTY(bool isLoaded READ isLoaded NOTIFY thumbnailChanged)
    Q_PROPERTY(bool isMissing READ isMissing NOTIFY thumbnailChanged)
    QML_ANONYMOUS

public:
    explicit ThumbnailItem(QQuickItem* parent = nullptr);

    bool isLoaded() const { return !m_thumbnail.image.isNull(); }
    bool isMissing() const { return m_isKnown && !isLoaded(); } ///< there is no thumbnail

Q_SIGNALS:
    void thumbnailChanged();

protected:
    virtual ThumbnailSource source() const = 0; ///< no thumbnail if its id is empty
    void refresh();                             ///< to be called when source() has changed
    const Thumbnail& thumbnail() const { return m_thumbnail; }

    void componentComplete() override;
    void itemChange(ItemChange change, const ItemChangeData& data) override;
    void geometryChange(const QRectF& newGeometry, const QRectF& oldGeometry) override;
    QSGNode* updatePaintNode(QSGNode* node, UpdatePaintNodeData*) override;

private:
    void show(const Thumbnail& thumbnail, bool isKnown);

    ThumbnailSource m_source;
    QPointer<ThumbnailLoader> m_loader; ///< of the item's engine; null before the first request
    Thumbnail m_thumbnail;
    bool m_isKnown = false; ///< the loader has answered for this source
    bool m_isNodeOutdated = false;
};
