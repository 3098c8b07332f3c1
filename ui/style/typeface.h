#pragma once

#include <QObject>
#include <QString>
#include <QtQmlIntegration>

/// The font families of the interface, which each system chooses among its own. Interface thread only.
class Typeface : public QObject {
    Q_OBJECT
    Q_PROPERTY(QString title READ title CONSTANT)
    QML_ELEMENT
    QML_SINGLETON

public:
    /// Sets the application's font, which all texts use except titles. Requires the application object.
    static void setApplicationFont();

    /// Returns the family of the title and of the score; by default that of the application's font.
    static QString title();
};
