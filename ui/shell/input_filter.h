#pragma once

#include <QObject>
#include <QPointF>
#include <QPointer>

class QMouseEvent;

/// Event filter that drops accidental input to a window: auto-repeats of Return, Enter, Space and Escape, the
/// second click of a double click, and all mouse buttons but the left one and the right one, which is for
/// context menus. Repeats and second clicks would otherwise act on what the first one opened or uncovered,
/// e.g. the next onboarding page or the items behind a dialog. A button receives the second click as its
/// signal doubleClicked() instead.
class InputFilter : public QObject {
    Q_OBJECT

public:
    explicit InputFilter(QObject* window); ///< owned by the window

    bool eventFilter(QObject* watched, QEvent* event) override;

private:
    bool isDropped(const QMouseEvent& mouse);
    bool isSecondOfDoubleClick(const QMouseEvent& press);

    quint64 m_pressTime = 0; ///< event timestamp in milliseconds; 0 if the next press is a first one
    QPointF m_pressPosition;
    QPointer<QObject> m_clicked; ///< the item that got the last click
    bool m_isDropping = false;   ///< until the button is released
};
