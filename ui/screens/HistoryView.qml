pragma ComponentBehavior: Bound
import QtQuick
import Lumvale
import Lumvale.Style

/// The history screen: the deletions of the last 30 days.
TabScreen {
    id: root

    readonly property HistoryModel model: ScreenModels.history(root)

    Column {
        id: header
        anchors.left: parent.left
        anchors.right: parent.right
        anchors.top: parent.top
        anchors.margins: Metrics.screenPadding
        spacing: 5

        ScreenHeader {
            width: parent.width
            title: Texts.tr("tab_history")
            subtitle: Texts.tr("history_subtitle")
        }

        Label {
            objectName: "historyNote"
            width: parent.width
            text: Texts.tr("history_auto_clear")
            font: Type.caption
            color: GCColor.textSecondary
            opacity: 0.9
        }
    }

    Panel {
        anchors.left: parent.left
        anchors.right: parent.right
        anchors.top: header.bottom
        anchors.bottom: parent.bottom
        anchors.margins: Metrics.screenPadding
        anchors.topMargin: 20

        EmptyPrompt {
            anchors.centerIn: parent
            visible: list.count === 0
            symbol: "clock"
            text: Texts.tr("history_empty")
        }

        TypeAheadList {
            id: list
            objectName: "historyList"
            anchors.fill: parent
            visible: count > 0
            model: root.model
            Accessible.name: Texts.tr("tab_history")

            delegate: HistoryRow {
                width: ListView.view.width - 2 * Metrics.listPadding
                isCurrent: list.hasVisualFocus && ListView.isCurrentItem
            }
        }
    }
}
