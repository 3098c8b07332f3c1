import QtQuick
import Lumvale
import Lumvale.Style

/// How much is ticked, what the last move came to, and the button that moves.
Item {
    id: root

    required property ScanViewModel model

    implicitHeight: Math.max(texts.height, button.height) + 2 * Metrics.footerPadding

    Column {
        id: texts
        anchors.left: parent.left
        anchors.leftMargin: Metrics.footerPadding
        anchors.right: button.left
        anchors.rightMargin: 16
        anchors.verticalCenter: button.verticalCenter
        spacing: 3

        Label {
            objectName: "selectionLabel"
            width: parent.width
            text: root.model.checkedCount + " " + Texts.tr("selected_count_suffix") + " · " + root.model.selectedSize
            color: GCColor.textSecondary
        }

        Label {
            objectName: "deletedLabel"
            width: parent.width
            visible: root.model.deletedCount >= 1
            text: root.model.deletedCount + " " + Texts.tr("deleted_confirmation")
            color: GCColor.glowTeal
            Accessible.role: Accessible.AlertMessage
        }
    }

    GradientButton {
        id: button
        objectName: "deleteButton"
        anchors.right: parent.right
        anchors.bottom: parent.bottom
        anchors.margins: Metrics.footerPadding
        from: GCColor.danger
        to: GCColor.dangerLight
        glow: GCColor.alpha(GCColor.danger, 0.3)
        text: Texts.tr("btn_trash_selection")
        enabled: root.model.checkedCount > 0
        onClicked: root.model.requestDelete()
    }
}
