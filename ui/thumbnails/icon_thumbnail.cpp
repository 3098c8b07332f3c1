#include "ui/thumbnails/icon_thumbnail.h"

#include <QQuickWindow>

#include <cmath>

void IconThumbnail::setBundle(const QByteArray& bundle) {
    if (m_bundle == bundle)
        return;
    m_bundle = bundle;
    refresh();
    Q_EMIT bundleChanged();
}

ThumbnailSource IconThumbnail::source() const {
    if (!window() || width() <= 0)
        return {};
    const auto side = static_cast<int>(std::ceil(width() * window()->effectiveDevicePixelRatio()));
    return {ThumbnailSource::Kind::appIcon, m_bundle, side};
}
