#pragma once

#include <QColor>
#include <QQuickPaintedItem>
#include <QString>
#include <QtQmlIntegration>

/// Draws one of the SVG files of symbols/ in a single color, centered in the item.
class Symbol : public QQuickPaintedItem {
    Q_OBJECT
    Q_PROPERTY(QString name READ name WRITE setName NOTIFY nameChanged)
    Q_PROPERTY(QColor color READ color WRITE setColor NOTIFY colorChanged)
    Q_PROPERTY(qreal size READ size WRITE setSize NOTIFY sizeChanged)
    QML_ELEMENT

public:
    using QQuickPaintedItem::QQuickPaintedItem;

    QString name() const { return m_name; }
    void setName(const QString& name);
    QColor color() const { return m_color; }
    void setColor(const QColor& color);
    qreal size() const { return m_size; }
    /// Side in pixels; 0 (the default) fits the symbol to the item. Other values also set the implicit size,
    /// rounded up to whole pixels.
    void setSize(qreal size);

    void paint(QPainter* painter) override;

Q_SIGNALS:
    void nameChanged();
    void colorChanged();
    void sizeChanged();

private:
    QString m_name;
    QColor m_color = Qt::white;
    qreal m_size = 0;
};
