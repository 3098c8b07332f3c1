import QtQuick
import QtQuick.Templates as T
import Lumvale.Style

/// An exclusive menu item; the selected one has a check mark and stays selected when triggered again.
T.MenuItem {
    id: root

    property bool isChosen: false

    objectName: "menuEntry"
    font: Type.message
    horizontalPadding: 10
    verticalPadding: 6
    implicitHeight: implicitContentHeight + topPadding + bottomPadding
    checkable: true
    autoExclusive: true
    checked: isChosen
    Accessible.name: text
    Accessible.checkable: true
    Accessible.checked: isChosen
    Accessible.onPressAction: triggered()

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
