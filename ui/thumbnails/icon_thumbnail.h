#pragma once

#include "ui/thumbnails/thumbnail_item.h"

#include <QByteArray>

/// Item that draws the icon of an application, which is decoded for the item's size in pixels of the screen.
class IconThumbnail : public ThumbnailItem {
    Q_OBJECT
    Q_PROPERTY(QByteArray bundle READ bundle WRITE setBundle NOTIFY bundleChanged)
    QML_ELEMENT

public:
    using ThumbnailItem::ThumbnailItem;

    const QByteArray& bundle() const { return m_bundle; } ///< a path; an ArrayBuffer in QML
    void setBundle(const QByteArray& bundle);

Q_SIGNALS:
    void bundleChanged();

protected:
    ThumbnailSource source() const override;

private:
    QByteArray m_bundle;
};
