#include "ui/style/symbol.h"

#include <QPainter>
#include <QSvgRenderer>

#include <algorithm>
#include <cmath>

void Symbol::setName(const QString& name) {
    if (m_name == name)
        return;
    m_name = name;
    Q_EMIT nameChanged();
    update();
}

void Symbol::setColor(const QColor& color) {
    if (m_color == color)
        return;
    m_color = color;
    Q_EMIT colorChanged();
    update();
}

void Symbol::setSize(qreal size) {
    if (m_size == size)
        return;
    m_size = size;
    setImplicitSize(std::ceil(size), std::ceil(size));
    Q_EMIT sizeChanged();
    update();
}

void Symbol::paint(QPainter* painter) {
    if (m_name.isEmpty())
        return;
    const qreal side = m_size > 0 ? m_size : std::min(width(), height());
    const QRectF area((width() - side) / 2, (height() - side) / 2, side, side);
    QSvgRenderer(QStringLiteral(":/qml/Lumvale/Style/symbols/%1.svg").arg(m_name)).render(painter, area);
    painter->setCompositionMode(QPainter::CompositionMode_SourceIn);
    painter->fillRect(area, m_color);
}
