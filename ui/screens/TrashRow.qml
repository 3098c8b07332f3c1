pragma ComponentBehavior: Bound
import QtQuick
import QtQuick.Templates as T
import Lumvale
import Lumvale.Style

/// Button that empties the Trash, and the result of the last attempt.
Column {
    id: root

    required property ScanViewModel model
    /// Item at whose right end the button is placed instead of in a line of this one.
    property Item buttonPlace: null
    readonly property alias button: button
    readonly property bool hasSuccess: model.trashEmptiedCount >= 1

    /// Fixed line height of the failures, so that the view shows whole lines only.
    readonly property int failureLineHeight: 17

    spacing: 8

    Item {
        id: line
        width: parent.width
        height: Math.max(success.height, root.buttonPlace ? 0 : button.height)
        visible: !root.buttonPlace || root.hasSuccess

        Label {
            id: success
            objectName: "trashSuccess"
            anchors.left: parent.left
            anchors.right: parent.right
            anchors.rightMargin: root.buttonPlace ? 0 : button.width + 16
            anchors.verticalCenter: parent.verticalCenter
            visible: root.hasSuccess
            text: "✓ " + root.model.trashEmptiedCount + " " + Texts.tr("trash_emptied_confirmation") + " · " + root.model.trashEmptiedSize
            font: Type.message
            color: GCColor.glowTeal
            Accessible.role: Accessible.AlertMessage
        }

        GradientButton {
            id: button
            objectName: "emptyTrashButton"
            parent: root.buttonPlace ?? line
            anchors.right: parent.right
            anchors.verticalCenter: parent.verticalCenter
            from: GCColor.dangerLight
            to: GCColor.danger
            radius: Metrics.smallButtonRadius
            horizontalPadding: 15
            verticalPadding: 9
            font: Type.smallButton
            symbol: "trash.fill"
            symbolSize: 11.5
            text: Texts.tr("btn_empty_trash")
            onClicked: root.model.requestEmptyTrash()
        }
    }

    Label {
        objectName: "trashNote"
        width: parent.width
        visible: text.length > 0
        text: root.model.trashNote
        font: Type.message
        color: GCColor.textSecondary
        Accessible.role: Accessible.AlertMessage
    }

    Label {
        id: warning
        objectName: "trashWarning"
        width: parent.width
        visible: text.length > 0
        text: root.model.trashWarning
        font: Type.caption
        color: GCColor.danger
        lineHeight: 1.2
        Accessible.role: Accessible.AlertMessage
    }

    // Shows a few lines and scrolls the others, so that the results below stay visible.
    Item {
        width: parent.width
        height: failures.height
        visible: !root.model.trashCouldNotAccess && root.model.trashFailedCount >= 1

        ListView {
            id: failures
            objectName: "trashFailures"

            width: parent.width
            height: Math.min(contentHeight, (root.buttonPlace ? 2 : 4) * root.failureLineHeight)
            clip: true
            snapMode: ListView.SnapToItem
            boundsBehavior: Flickable.StopAtBounds
            activeFocusOnTab: interactive
            interactive: contentHeight > height
            keyNavigationEnabled: true
            highlightMoveDuration: 0
            model: root.model.trashFailedNames
            T.ScrollBar.vertical: SlimScrollBar {
                topPadding: 0
                bottomPadding: 0
            }
            Accessible.role: Accessible.List
            Accessible.name: warning.text
            Accessible.ignored: !visible

            delegate: Label {
                required property int index
                required property string modelData

                width: ListView.view.width - 14
                // The left-to-right mark keeps name and reason in this order for right-to-left names as well.
                text: "\u200e" + modelData + " : " + Texts.tr(root.model.trashFailedReasonKeys[index])
                font: Type.fine
                color: GCColor.danger
                lineHeightMode: Text.FixedHeight
                lineHeight: root.failureLineHeight
            }
        }

        FocusRing {
            objectName: "failuresFocus"
            visible: failures.activeFocus
            parentRadius: 3
        }
    }
}
