#pragma once

#include <QObject>

class QKeyEvent;

/// Event filter of a window for keyboard layouts whose digits need Shift, such as the French one: sends Ctrl
/// with a key of the digit row as Ctrl with the digit. On a Mac, Qt's Ctrl is the Command key.
class DigitRow : public QObject {
    Q_OBJECT

public:
    explicit DigitRow(QObject* window); ///< owned by the window

    bool eventFilter(QObject* watched, QEvent* event) override;

private:
    /// Returns the digit, 1 to 9, of the key in this position of the keyboard; 0 for other keys. Implemented
    /// by each system.
    static int digitAt(const QKeyEvent& key);
};
