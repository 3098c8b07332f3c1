pragma ComponentBehavior: Bound
import QtQuick
import Lumvale
import Lumvale.Style

/// The storage entries as a treemap and as a list below it, with a common selection. The treemap doesn't scroll with
/// the list.
Item {
    id: root

    required property StorageEntriesModel entries

    /// Row of the selected entry, or -1. Reset when the entries change, which happens each time the sheet opens.
    property int selected: -1

    function toggle(entry: int): void {
        rows.currentIndex = entry;
        selected = selected === entry ? -1 : entry;
    }

    Connections {
        target: root.entries
        function onEntriesChanged() {
            root.selected = -1;
        }
    }

    StorageMap {
        id: map
        anchors.left: parent.left
        anchors.right: parent.right
        anchors.top: parent.top
        height: 210
        entries: root.entries
        selected: root.selected
        onChosen: entry => {
            root.selected = entry;
            rows.currentIndex = entry; // scrolls it into view
        }
    }

    Label {
        id: hint
        objectName: "storageHint"
        anchors.left: parent.left
        anchors.top: map.bottom
        anchors.topMargin: 10
        width: evenWidth(parent.width)
        text: Texts.tr("storage_breakdown_tap_hint")
        font: Type.caption
        color: GCColor.textSecondary
        opacity: 0.8
        lineHeight: 1.2
    }

    TypeAheadList {
        id: rows
        objectName: "storageRows"
        anchors.left: parent.left
        anchors.right: parent.right
        anchors.top: hint.bottom
        anchors.bottom: parent.bottom
        // Aligns the content of the rows with the treemap; their background and the scroll bar extend beyond it.
        anchors.leftMargin: -leftMargin
        anchors.rightMargin: -rightMargin
        anchors.topMargin: 8
        leftMargin: Metrics.rowPadding
        rightMargin: 2 * Metrics.rowPadding
        topMargin: 0
        bottomMargin: 0
        highlightMoveDuration: ReducedMotion.isRequested ? 0 : Motion.quickDuration
        model: root.entries
        Accessible.name: Texts.tr("storage_breakdown_title")
        Keys.onReturnPressed: root.toggle(currentIndex)
        Keys.onEnterPressed: root.toggle(currentIndex)

        delegate: StorageRow {
            required property int index

            width: map.width
            color: GCColor.tile(index)
            isSelected: index === root.selected
            onClicked: root.toggle(index)
        }
    }
}
