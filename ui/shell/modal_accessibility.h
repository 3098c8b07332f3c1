#pragma once

#include <QObject>
#include <QPointer>

class QQuickItem;
class QQuickWindow;

/// Confines assistive technology to the topmost modal popup of a window, as Qt Quick does with pointer and
/// key events.
///
/// While a modal popup is open, the window's accessible children are that popup and what is above it. Items
/// behind it can still be reached by references obtained earlier and by events, but are invisible there and
/// have no actions. Popups are dialogs or menus, with their properties `accessibleName` and
/// `accessibleDescription` as name and description, which Qt 6.4 doesn't offer for popups. Interface thread
/// only.
class ModalAccessibility : public QObject {
    Q_OBJECT

public:
    /// Has to be called before the first window is created.
    static void install();

    /// Follows the popups of `window`, which becomes the parent. Requires install().
    explicit ModalAccessibility(QQuickWindow* window);

private:
    void followOverlay();
    void update();

    QQuickWindow& m_window;
    QPointer<QQuickItem> m_overlay;
    QPointer<QQuickItem> m_modal; ///< topmost modal popup at the last update
};
