pragma ComponentBehavior: Bound
import QtQuick
import Lumvale
import Lumvale.Style

/// The entries twice, as a map and as rows below it; what is selected is so in both. The map stays in sight while
/// the rows scroll.
Item {
    id: root

    required property StorageEntriesModel entries

    /// The row of the selected entry; -1 for none, as at each opening, which computes the entries anew.
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
            rows.currentIndex = entry; // and with it into sight
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

    KeyboardList {
        id: rows
        objectName: "storageRows"
        anchors.left: parent.left
        anchors.right: parent.right
        anchors.top: hint.bottom
        anchors.bottom: parent.bottom
        // What they say stands in line with the map; their background reaches beyond, and the scroll bar farther.
        anchors.leftMargin: -leftMargin
        anchors.rightMargin: -rightMargin
        anchors.topMargin: 8
        leftMargin: Metrics.rowPadding
        rightMargin: 2 * Metrics.rowPadding
        topMargin: 0
        bottomMargin: 0
        highlightMoveDuration: Motion.quick
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
