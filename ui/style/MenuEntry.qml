import QtQuick
import QtQuick.Templates as T

/// An item of a PopupMenu.
T.MenuItem {
    id: root

    objectName: "menuEntry"
    font: Type.message
    horizontalPadding: 10
    verticalPadding: 6
    implicitWidth: implicitContentWidth + leftPadding + rightPadding
    implicitHeight: implicitContentHeight + topPadding + bottomPadding
    Accessible.name: text
    Accessible.onPressAction: triggered()

    contentItem: PlainText {
        text: root.text
        font: root.font
    }

    background: Rectangle {
        radius: 6
        color: root.highlighted || root.hovered ? GCColor.quietButton : "transparent"
    }
}
