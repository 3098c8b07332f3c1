#include "ui/shell/input_filter.h"

#include <QGuiApplication>
#include <QKeyEvent>
#include <QMouseEvent>
#include <QStyleHints>

#include <utility>

namespace {

bool isActivationKey(int key) {
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
        return key.isAutoRepeat() && isActivationKey(key.key());
    }
    case QEvent::MouseButtonPress:
    case QEvent::MouseButtonDblClick:
    case QEvent::MouseButtonRelease:
        return isDropped(static_cast<const QMouseEvent&>(*event));
    default:
        return false;
    }
}

bool InputFilter::isDropped(const QMouseEvent& mouse) {
    if (mouse.button() == Qt::RightButton)
        return false;
    // A control that contains a pointer handler treats every mouse button as the left one.
    if (mouse.button() != Qt::LeftButton)
        return true;
    if (mouse.type() == QEvent::MouseButtonRelease) {
        if (!m_isDropping)
            m_clicked = mouse.exclusiveGrabber(mouse.points().constFirst());
        return std::exchange(m_isDropping, false);
    }
    if (mouse.type() == QEvent::MouseButtonPress) // MouseButtonDblClick follows the second press
        m_isDropping = isSecondOfDoubleClick(mouse);
    else if (m_isDropping && m_clicked && m_clicked->inherits("QQuickAbstractButton"))
        QMetaObject::invokeMethod(m_clicked, "doubleClicked");
    return m_isDropping;
}

bool InputFilter::isSecondOfDoubleClick(const QMouseEvent& press) {
    const QStyleHints& hints = *QGuiApplication::styleHints();
    const QPointF distance = press.position() - m_pressPosition;
    const bool isSecond =
        m_pressTime > 0
        && press.timestamp() - m_pressTime < static_cast<quint64>(hints.mouseDoubleClickInterval())
        && distance.manhattanLength() <= hints.mouseDoubleClickDistance();
    m_pressTime = isSecond ? 0 : press.timestamp();
    m_pressPosition = press.position();
    return isSecond;
}
