#pragma once

#include <QFont>
#include <QObject>
#include <QString>
#include <QtQmlIntegration>

/// Widths of wrapped texts, a QML singleton.
class TextBalance : public QObject {
    Q_OBJECT
    QML_ELEMENT
    QML_SINGLETON

public:
    using QObject::QObject;

    /// Returns the smallest width, at most `maxWidth`, at which the text needs no more lines than at
    /// `maxWidth`. The lines then have similar lengths, and no word is alone in the last one.
    Q_INVOKABLE static qreal width(const QString& text, const QFont& font, qreal maxWidth);
};
