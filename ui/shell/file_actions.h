#pragma once

#include "platform/files/disk.h"

#include <QByteArray>
#include <QObject>
#include <QQmlEngine>

/// Actions on the entry of a row, a QML singleton with one instance per engine. Entries are given by their
/// exact paths on the disk, as bytes.
class FileActions : public QObject {
    Q_OBJECT
    QML_ELEMENT
    QML_SINGLETON
    Q_PROPERTY(QString showKey READ showKey CONSTANT)

public:
    FileActions(platform::Disk disk, QQmlEngine* engine); ///< owned by `engine`

    static FileActions* create(QQmlEngine* engine, QJSEngine*);

    QString showKey() const; ///< translation key of the name of show()

    Q_INVOKABLE QString text(const QByteArray& path) const; ///< the path as displayed
    Q_INVOKABLE void show(const QByteArray& path);          ///< in the desktop's file manager
    /// Copies the path as displayed: in a terminal, a line break in a name would run what follows it.
    Q_INVOKABLE void copy(const QByteArray& path);

Q_SIGNALS:
    /// An action has ended with a result that isn't visible by itself.
    void reported(const QString& sentence);

private:
    platform::Disk m_disk;
};
