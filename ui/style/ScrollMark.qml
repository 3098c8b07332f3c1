import QtQuick
import QtQuick.Templates as T

/// A slim scroll bar, there only when there is something to scroll.
T.ScrollBar {
    id: root

    implicitWidth: 12
    padding: 3
    // Clear of the round corners that lists have.
    topPadding: 10
    bottomPadding: 10
    // Long enough to be caught, also beside a view of a few lines.
    minimumSize: Math.min(1, 24 / availableHeight)
    visible: size < 1
    Accessible.ignored: true

    contentItem: Rectangle {
        radius: 3
        color: GCColor.white(root.pressed ? 0.4 : root.hovered ? 0.3 : 0.16)
    }
}
