#include "ui/shell/input_filter.h"

#include <QGuiApplication>
#include <QKeyEvent>
#include <QMouseEvent>
#include <QStyleHints>

#include <utility>

namespace {

bool actsOnce(int key) {
    return key == Qt::Key_Return || key == Qt::Key_Enter || key == Qt::Key_Space || key == Qt::Key_Escape;
}

} // namespace

InputFilter::InputFilter(QObject* window) : QObject(window) {
    window->installEventFilter(this);
}

bool InputFilter::eventFilter(QObject* /*watched*/, QEvent* event) {
    switch (event->type()) {
    case QEvent::KeyPress:
    case QEvent::KeyRelease: {
        const auto& key = static_cast<const QKeyEvent&>(*event);
        return key.isAutoRepeat() && actsOnce(key.key());
    }
    case QEvent::MouseButtonPress:
    case QEvent::MouseButtonDblClick:
    case QEvent::MouseButtonRelease:
        return drops(static_cast<const QMouseEvent&>(*event));
    default:
        return false;
    }
}

bool InputFilter::drops(const QMouseEvent& mouse) {
    // A button of the interface with a handler for the pointer in it would take any of them for the left one.
    if (mouse.button() != Qt::LeftButton)
        return true;
    if (mouse.type() == QEvent::MouseButtonRelease)
        return std::exchange(m_dropping, false);
    if (mouse.type() == QEvent::MouseButtonPress) // what tells of a double click follows its second press
        m_dropping = isSecondOfDoubleClick(mouse);
    return m_dropping;
}

bool InputFilter::isSecondOfDoubleClick(const QMouseEvent& press) {
    const QStyleHints& hints = *QGuiApplication::styleHints();
    const QPointF distance = press.position() - m_pressedWhere;
    const bool isSecond =
        m_pressedAt > 0
        && press.timestamp() - m_pressedAt < static_cast<quint64>(hints.mouseDoubleClickInterval())
        && distance.manhattanLength() <= hints.mouseDoubleClickDistance();
    m_pressedAt = isSecond ? 0 : press.timestamp();
    m_pressedWhere = press.position();
    return isSecond;
}
