#pragma once

#include <QAbstractItemModel>
#include <QObject>
#include <QString>
#include <QTimer>

/// The type-ahead of a list: collects typed letters and finds the row whose name begins with them. Names are
/// the role "name" of the rows, or of their children in a tree model. Letter case and accents are ignored.
/// Typing the same letter again leads to the next row with that letter.
class TypeAhead : public QObject {
    Q_OBJECT
    Q_PROPERTY(QString text READ text NOTIFY textChanged)
    Q_PROPERTY(bool hasMatch READ hasMatch NOTIFY textChanged)
    Q_PROPERTY(int pause READ pause WRITE setPause)

public:
    explicit TypeAhead(QObject* parent = nullptr);

    const QString& text() const { return m_text; } ///< what has been typed since the last clear()
    bool hasMatch() const { return m_hasMatch; }   ///< a name begins with it

    /// Milliseconds without typing after which the text is cleared.
    int pause() const { return m_pause.interval(); }
    void setPause(int milliseconds) { m_pause.setInterval(milliseconds); }

    /// Appends letters to the text. Returns the row, or the child of a row, whose name begins with the text:
    /// the next after `currentRow`, or that row itself once the text has several letters. Searches from the
    /// beginning after the last row. Returns an invalid index if there is none.
    Q_INVOKABLE QModelIndex type(const QAbstractItemModel* model, const QString& letters, int currentRow);
    Q_INVOKABLE void clear();

Q_SIGNALS:
    void textChanged();

private:
    QString m_text;
    bool m_hasMatch = false;
    QTimer m_pause;
};
