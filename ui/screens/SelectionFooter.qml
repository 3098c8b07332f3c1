import QtQuick
import Lumvale
import Lumvale.Style

/// How much is ticked, and the button that takes it away.
Item {
    id: root

    required property int count
    required property string size
    required property string action

    signal requested

    implicitHeight: Math.max(label.height, button.height) + 14

    Label {
        id: label
        objectName: "selectionLabel"
        anchors.left: parent.left
        anchors.right: button.left
        anchors.rightMargin: 16
        anchors.verticalCenter: button.verticalCenter
        text: root.count + " " + Texts.tr("selected_count_suffix") + " · " + root.size
        color: GCColor.textSecondary
    }

    GradientButton {
        id: button
        objectName: "removeButton"
        anchors.right: parent.right
        anchors.bottom: parent.bottom
        from: GCColor.danger
        to: GCColor.dangerLight
        glow: GCColor.alpha(GCColor.danger, 0.3)
        symbol: "trash.fill"
        text: root.action
        enabled: root.count > 0
        onClicked: root.requested()
    }
}
