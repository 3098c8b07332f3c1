import QtQuick
import QtQuick.Templates as T

/// A slim scroll bar, there only when there is something to scroll.
T.ScrollBar {
    id: root

    readonly property real length: horizontal ? availableWidth : availableHeight

    implicitWidth: 12
    implicitHeight: 12
    padding: 3
    // Clear of the round corners that lists have.
    topPadding: horizontal ? padding : 10
    bottomPadding: topPadding
    // Long enough to be caught, also beside a view of a few lines.
    minimumSize: Math.min(1, 24 / length)
    visible: size < 1
    Accessible.ignored: true

    contentItem: Rectangle {
        radius: 3
        color: GCColor.white(root.pressed ? 0.4 : root.hovered ? 0.3 : 0.16)
    }
}
