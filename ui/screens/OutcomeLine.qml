import QtQuick
import Lumvale
import Lumvale.Style

/// The result of a removal, and beside it a button that puts back what was moved to the Trash.
Item {
    id: root

    property alias text: label.text
    property alias font: label.font
    property alias labelName: label.objectName
    /// The entries can be put back; otherwise the button is hidden.
    property bool isOffered: false

    signal requested

    implicitHeight: Math.max(label.height, button.visible ? button.height : 0)
    visible: text.length > 0 || isOffered

    Label {
        id: label
        anchors.verticalCenter: parent.verticalCenter
        width: Math.min(Math.ceil(implicitWidth), root.width - (button.visible ? button.width + 12 : 0))
        visible: text.length > 0
        color: GCColor.glowTeal
        Accessible.role: Accessible.AlertMessage
    }

    QuietButton {
        id: button
        objectName: "putBackButton"
        anchors.left: label.right
        anchors.leftMargin: label.visible ? 12 : 0
        anchors.verticalCenter: parent.verticalCenter
        visible: root.isOffered
        horizontalPadding: 12
        verticalPadding: 6
        text: Texts.tr("btn_put_back")
        onClicked: root.requested()
    }
}
