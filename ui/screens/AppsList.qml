pragma ComponentBehavior: Bound
import QtQuick
import Lumvale
import Lumvale.Style

/// List of the installed applications, below a banner about the last uninstallation.
FocusScope {
    id: root

    required property UninstallViewModel model

    /// The list's visual focus; see KeyboardList.
    readonly property bool hasVisualFocus: list.hasVisualFocus

    signal picked(row: int)

    function takeFocus(reason: int): void {
        list.takeFocus(reason);
    }

    function pick(row: int): void {
        if (row < 0)
            return;
        list.currentIndex = row;
        picked(row);
    }

    /// Changes the order. The current row stays that of the same application.
    function sort(bySize: bool): void {
        list.currentIndex = model.apps.sortBySize(bySize, list.currentIndex);
        if (!list.hasVisualFocus)
            list.contentY = list.originY - list.topMargin; // positionViewAtBeginning() ignores the margin
    }

    Rectangle {
        id: banner
        anchors.left: parent.left
        anchors.right: parent.right
        height: visible ? outcome.height + 2 * 12 : 0
        // By the texts: items in a hidden one are not visible.
        visible: uninstalled.text.length > 0 || stayed.text.length > 0
        radius: Metrics.smallButtonRadius
        color: stayed.text.length > 0 ? GCColor.alpha(GCColor.danger, 0.07) : GCColor.success
        border.color: stayed.text.length > 0 ? GCColor.alpha(GCColor.danger, 0.2) : GCColor.successStroke

        Column {
            id: outcome
            anchors.left: parent.left
            anchors.right: parent.right
            anchors.verticalCenter: parent.verticalCenter
            anchors.leftMargin: Metrics.listPadding
            anchors.rightMargin: Metrics.listPadding
            spacing: 3

            OutcomeLine {
                id: uninstalled
                labelName: "uninstalledLabel"
                width: parent.width
                text: root.model.hasUninstalled ? "✓ « " + root.model.lastUninstalled + " » " + Texts.tr("uninstalled_suffix")
                                                : root.model.movedText || root.model.putBack.doneText
                isOffered: root.model.putBack.isOffered
                onRequested: root.model.putBack.start()
            }

            Label {
                id: stayed
                objectName: "stayedLabel"
                width: parent.width
                visible: text.length > 0
                text: root.model.stayedText || root.model.putBack.failedText
                color: GCColor.danger
                Accessible.role: Accessible.AlertMessage
            }

            Label {
                objectName: "uninstalledFreeSpace"
                width: parent.width
                text: root.model.freeSpaceText
                font: Type.message
                color: GCColor.textSecondary
            }
        }
    }

    Panel {
        anchors.left: parent.left
        anchors.right: parent.right
        anchors.top: banner.bottom
        anchors.topMargin: banner.visible ? 14 : 0
        anchors.bottom: parent.bottom

        EmptyPrompt {
            anchors.centerIn: parent
            visible: !root.model.hasApps
            symbol: "square.grid.2x2.fill"
            text: Texts.tr("storage_breakdown_empty")
        }

        SortControl {
            id: order
            anchors.right: parent.right
            anchors.top: parent.top
            anchors.margins: Metrics.listPadding
            anchors.bottomMargin: 0
            visible: root.model.hasApps
            isBySize: root.model.apps.isSortedBySize
            onChosen: bySize => root.sort(bySize)
        }

        TypeAheadList {
            id: list
            objectName: "appsList"
            anchors.left: parent.left
            anchors.right: parent.right
            anchors.top: order.bottom
            anchors.bottom: parent.bottom
            topMargin: 8
            focus: true
            visible: root.model.hasApps
            model: root.model.apps
            Accessible.name: Texts.tr("uninstall_title")
            Keys.onReturnPressed: root.pick(currentIndex)
            Keys.onEnterPressed: root.pick(currentIndex)

            delegate: AppRow {
                required property int index

                width: ListView.view.width - 2 * Metrics.listPadding
                onClicked: root.pick(index)
            }
        }
    }
}
