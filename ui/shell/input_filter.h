#pragma once

#include <QObject>
#include <QPointF>

class QKeyEvent;
class QMouseEvent;

/// Keeps from a window what a hand does without meaning it. A Return, Space or Escape that is held down acts
/// once, however often it repeats, and of a double click only the first is a click. Otherwise the rest would
/// go to what the first had brought: the next page of an introduction, or what lay under the dialog that it
/// closed. The mouse's other buttons do nothing.
class InputFilter : public QObject {
    Q_OBJECT

public:
    explicit InputFilter(QObject* window);

    bool eventFilter(QObject* watched, QEvent* event) override;

private:
    bool drops(const QMouseEvent& mouse);
    bool isSecondOfDoubleClick(const QMouseEvent& press);

    quint64 m_pressedAt = 0; ///< milliseconds; 0 when the next press begins anew
    QPointF m_pressedWhere;
    bool m_dropping = false; ///< until the button is released
};
