import QtQuick
import QtQuick.Templates as T
import Lumvale.Style

/// One of the choices in a menu; the present one has a mark. Not checkable by itself: choosing the present one again
/// would take its mark.
T.MenuItem {
    id: root

    property bool isChosen: false

    objectName: "menuEntry"
    font: Type.message
    horizontalPadding: 10
    verticalPadding: 6
    implicitHeight: implicitContentHeight + topPadding + bottomPadding
    Accessible.name: text
    Accessible.checkable: true
    Accessible.checked: isChosen

    indicator: Symbol {
        x: root.leftPadding
        y: (root.height - height) / 2
        size: 10
        name: "checkmark"
        color: GCColor.glowTeal
        visible: root.isChosen
    }

    contentItem: PlainText {
        leftPadding: 20
        text: root.text
        font: root.font
    }

    background: Rectangle {
        radius: 6
        color: root.highlighted || root.hovered ? GCColor.quietButton : "transparent"
    }
}
