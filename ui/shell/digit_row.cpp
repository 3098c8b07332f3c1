#include "ui/shell/digit_row.h"

#include <QCoreApplication>
#include <QKeyEvent>

DigitRow::DigitRow(QObject* window) : QObject(window) {
    window->installEventFilter(this);
}

bool DigitRow::eventFilter(QObject* watched, QEvent* event) {
    if (event->type() != QEvent::KeyPress && event->type() != QEvent::KeyRelease)
        return false;
    const auto& key = static_cast<const QKeyEvent&>(*event);
    const bool isDigit = key.key() >= Qt::Key_0 && key.key() <= Qt::Key_9;
    const int digit = digitAt(key);
    if (key.modifiers() != Qt::ControlModifier || isDigit || digit == 0)
        return false;
    QKeyEvent replacement(key.type(), Qt::Key_0 + digit, key.modifiers(), QString::number(digit),
                          key.isAutoRepeat());
    QCoreApplication::sendEvent(watched, &replacement);
    event->setAccepted(replacement.isAccepted());
    return true;
}
