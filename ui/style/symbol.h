#pragma once

#include <QColor>
#include <QQuickPaintedItem>
#include <QString>
#include <QtQmlIntegration>

/// One of the program's own drawings, in a colour of the palette. It stands in the middle of the item, as
/// sharp where that lies between two pixels, and is as large as the item unless it has a size of its own.
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
    void setSize(qreal size); ///< 0: of the item; other sizes give it one as well, in whole pixels

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
