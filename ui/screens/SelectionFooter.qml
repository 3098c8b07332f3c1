import QtQuick
import Lumvale
import Lumvale.Style

/// Footer with the number and size of the selected entries, the result of the last deletion, and the delete button.
Item {
    id: root

    required property int count
    required property string size
    required property string action
    /// Result of the last deletion; not shown if empty.
    property string outcome
    /// The entries that it moved to the Trash can be put back.
    property bool canPutBack: false
    /// The entries that the last deletion left, with the reasons; not shown if empty.
    property string failure
    /// A deletion is running or not possible; the button is disabled.
    property bool isBusy: false

    signal requested
    signal putBackRequested

    function request(): void {
        if (visible && button.enabled)
            requested();
    }

    implicitHeight: Math.max(texts.height, button.height) + 2 * Metrics.footerPadding

    Column {
        id: texts
        anchors.left: parent.left
        anchors.leftMargin: Metrics.footerPadding
        anchors.right: button.left
        anchors.rightMargin: 16
        anchors.verticalCenter: parent.verticalCenter
        spacing: 3

        Label {
            objectName: "selectionLabel"
            width: parent.width
            text: root.count + " " + Texts.tr("selected_count_suffix") + " · " + root.size
            color: GCColor.textSecondary
        }

        OutcomeLine {
            labelName: "deletedLabel"
            width: parent.width
            text: root.outcome
            isOffered: root.canPutBack
            onRequested: root.putBackRequested()
        }

        Label {
            objectName: "stayedLabel"
            width: parent.width
            visible: text.length > 0
            text: root.failure
            color: GCColor.danger
            Accessible.role: Accessible.AlertMessage
        }
    }

    GradientButton {
        id: button
        objectName: "deleteButton"
        anchors.right: parent.right
        anchors.rightMargin: Metrics.footerPadding
        anchors.verticalCenter: parent.verticalCenter
        from: GCColor.danger
        to: GCColor.dangerLight
        glow: GCColor.alpha(GCColor.danger, 0.3)
        text: root.action
        shortcut: Texts.deletionKeys
        enabled: root.count > 0 && !root.isBusy
        onClicked: root.request()
    }
}
