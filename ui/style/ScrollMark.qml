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
    minimumSize: 0.06
    visible: size < 1
    Accessible.ignored: true

    contentItem: Rectangle {
        radius: 3
        color: GCColor.white(root.pressed ? 0.4 : root.hovered ? 0.3 : 0.16)
    }
}
