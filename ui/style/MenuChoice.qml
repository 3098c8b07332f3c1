import QtQuick
import Lumvale.Style

/// An exclusive menu item; the selected one has a check mark and stays selected when triggered again.
MenuEntry {
    id: root

    property bool isChosen: false

    leftPadding: 30
    checkable: true
    autoExclusive: true
    checked: isChosen
    Accessible.checkable: true
    Accessible.checked: isChosen

    indicator: Symbol {
        x: root.rightPadding
        y: (root.height - height) / 2
        size: 10
        name: "checkmark"
        color: GCColor.glowTeal
        visible: root.isChosen
    }
}
