pragma ComponentBehavior: Bound
import QtQuick
import Lumvale
import Lumvale.Style

/// Treemap of the storage entries: the area of each tile is proportional to the entry's size. It is a single tab stop.
/// Arrow keys, Home and End move the focus through the tiles in order of size; Space and Return select a tile.
Item {
    id: root

    required property StorageEntriesModel entries
    required property int selected

    /// Index of the tile that had the focus last and is the tab stop.
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
