import QtQuick
import QtQuick.Templates as T

/// A slim scroll bar, visible only if the content overflows.
T.ScrollBar {
    id: root

    readonly property real length: horizontal ? availableWidth : availableHeight

    implicitWidth: 12
    implicitHeight: 12
    padding: 3
    // Keeps clear of the round corners of lists.
    topPadding: horizontal ? padding : 10
    bottomPadding: topPadding
    // At least 24 pixels, so that it can be grabbed in small views as well.
    minimumSize: Math.min(1, 24 / length)
    visible: size < 1
    Accessible.ignored: true

    contentItem: Rectangle {
        radius: 3
        color: GCColor.white(root.pressed ? 0.4 : root.hovered ? 0.3 : 0.16)
    }
}
