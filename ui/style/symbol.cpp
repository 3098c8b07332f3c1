#include "ui/style/symbol.h"

#include <QPainter>
#include <QSvgRenderer>

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

void Symbol::paint(QPainter* painter) {
    if (m_name.isEmpty())
        return;
    const QRectF area(0, 0, width(), height());
    QSvgRenderer(QStringLiteral(":/qml/Lumvale/Style/symbols/%1.svg").arg(m_name)).render(painter, area);
    painter->setCompositionMode(QPainter::CompositionMode_SourceIn);
    painter->fillRect(area, m_color);
}
