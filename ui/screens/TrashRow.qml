pragma ComponentBehavior: Bound
import QtQuick
import QtQuick.Templates as T
import Lumvale
import Lumvale.Style

/// Empties the Trash, and says what came of it.
Column {
    id: root

    required property ScanViewModel model

    spacing: 8

    Item {
        width: parent.width
        height: Math.max(success.height, button.height)

        Label {
            id: success
            objectName: "trashSuccess"
            anchors.left: parent.left
            anchors.right: button.left
            anchors.rightMargin: 16
            anchors.verticalCenter: parent.verticalCenter
            visible: root.model.trashEmptiedCount >= 1
            text: "✓ " + root.model.trashEmptiedCount + " " + Texts.tr("trash_emptied_confirmation") + " · " + root.model.trashEmptiedSize
            font: Type.message
            color: GCColor.glowTeal
        }

        GradientButton {
            id: button
            objectName: "emptyTrashButton"
            anchors.right: parent.right
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
        objectName: "trashWarning"
        width: parent.width
        visible: root.model.trashCouldNotAccess || root.model.trashFailedCount >= 1
        text: root.model.trashCouldNotAccess
              ? "⚠️ " + Texts.tr("alert_empty_trash_access_hint")
              : "⚠️ " + root.model.trashFailedCount + " " + Texts.tr("alert_empty_trash_failed_hint")
        font: Type.caption
        color: GCColor.danger
        lineHeight: 1.2
    }

    // A few lines stand open, many scroll: what was found must stay in reach.
    ListView {
        objectName: "trashFailures"

        width: parent.width
        height: Math.min(contentHeight, 76)
        visible: !root.model.trashCouldNotAccess && root.model.trashFailedCount >= 1
        clip: true
        spacing: 3
        boundsBehavior: Flickable.StopAtBounds
        activeFocusOnTab: interactive
        interactive: contentHeight > height
        keyNavigationEnabled: true
        model: root.model.trashFailedNames
        T.ScrollBar.vertical: ScrollMark {
            topPadding: 0
            bottomPadding: 0
        }

        delegate: Label {
            required property int index
            required property string modelData

            width: ListView.view.width - 14
            text: modelData + " : " + Texts.tr(root.model.trashFailedReasonKeys[index])
            font: Type.fine
            color: GCColor.danger
        }
    }
}
