#pragma once

#include <QColor>
#include <QQuickPaintedItem>
#include <QString>
#include <QtQmlIntegration>

/// One of the program's own drawings, in a colour of the palette.
class Symbol : public QQuickPaintedItem {
    Q_OBJECT
    Q_PROPERTY(QString name READ name WRITE setName NOTIFY nameChanged)
    Q_PROPERTY(QColor color READ color WRITE setColor NOTIFY colorChanged)
    QML_ELEMENT

public:
    using QQuickPaintedItem::QQuickPaintedItem;

    QString name() const { return m_name; }
    void setName(const QString& name);
    QColor color() const { return m_color; }
    void setColor(const QColor& color);

    void paint(QPainter* painter) override;

Q_SIGNALS:
    void nameChanged();
    void colorChanged();

private:
    QString m_name;
    QColor m_color = Qt::white;
};
