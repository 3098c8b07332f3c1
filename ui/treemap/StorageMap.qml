pragma ComponentBehavior: Bound
import QtQuick
import Lumvale
import Lumvale.Style

/// The entries as tiles, each as large as its share. One stop for Tab; arrows, Home and End walk the tiles from the
/// largest down, which reaches every one of them, and Space and Return choose.
Item {
    id: root

    required property StorageEntriesModel entries
    required property int selected

    /// The tile that had the keyboard last, where it comes back to.
    property int current: 0

    signal chosen(entry: int)

    function moveFocus(index: int): void {
        const tile = tiles.itemAt(Math.max(0, Math.min(index, tiles.count - 1)));
        if (tile)
            tile.forceActiveFocus(Qt.TabFocusReason);
    }

    objectName: "storageMap"
    Accessible.role: Accessible.Grouping
    Accessible.name: Texts.tr("storage_breakdown_title")
    Keys.onLeftPressed: moveFocus(current - 1)
    Keys.onUpPressed: moveFocus(current - 1)
    Keys.onRightPressed: moveFocus(current + 1)
    Keys.onDownPressed: moveFocus(current + 1)
    Keys.onPressed: event => {
        event.accepted = event.key === Qt.Key_Home || event.key === Qt.Key_End;
        if (event.accepted)
            moveFocus(event.key === Qt.Key_Home ? 0 : tiles.count - 1);
    }

    Repeater {
        id: tiles

        model: TreemapTiles {
            entries: root.entries
            area: Qt.size(root.width, root.height)
            onModelReset: root.current = 0
        }

        StorageTile {
            required property int index
            required property int entry

            color: GCColor.tile(entry)
            isSelected: entry === root.selected
            activeFocusOnTab: index === root.current
            onActiveFocusChanged: if (activeFocus)
                root.current = index
            onClicked: root.chosen(entry)
        }
    }
}
