pragma ComponentBehavior: Bound
import QtQuick
import Lumvale
import Lumvale.Style

/// List of the groups of duplicates. Up and Down move between groups, Left and Right within a group; Space
/// toggles the current item, Return asks for its preview.
TypeAheadList {
    id: root

    required property DuplicateGroupsModel groups

    /// Preferred index of the current item; kept when moving between groups and clamped to the items of each.
    property int column: 0

    readonly property int currentItemCount: currentIndex < 0 ? 0 : groups.rowCount(groups.itemsOf(currentIndex))
    readonly property int currentColumn: Math.max(0, Math.min(column, currentItemCount - 1))

    signal previewRequested(group: int, item: int, reason: int)

    /// Makes the item the current one. Returns false if there is none or the list is hidden: it keeps the focus during
    /// a new search.
    function select(group: int, item: int): bool {
        if (!visible || group < 0 || item < 0)
            return false;
        if (group !== currentIndex || item !== currentColumn) {
            currentIndex = group;
            column = item;
        }
        return true;
    }

    function toggle(group: int, item: int): void {
        if (select(group, item))
            groups.toggle(group, item);
    }

    function preview(group: int, item: int): void {
        if (select(group, item))
            previewRequested(group, item, hasVisualFocus ? Qt.TabFocusReason : Qt.MouseFocusReason);
    }

    function toggleCurrent(): void {
        hasVisualFocus = true;
        reveal();
        toggle(currentIndex, currentColumn);
    }

    function show(found: var): void {
        const isChild = found.parent.valid;
        currentIndex = isChild ? found.parent.row : found.row;
        column = isChild ? found.row : 0;
    }

    function previewCurrent(): void {
        hasVisualFocus = true;
        reveal();
        preview(currentIndex, currentColumn);
    }

    function step(by: int): void {
        hasVisualFocus = true;
        column = Math.max(0, Math.min(currentColumn + by, currentItemCount - 1));
    }

    function reveal(): void {
        if (hasVisualFocus && currentIndex >= 0)
            positionViewAtIndex(currentIndex, ListView.Contain);
    }

    objectName: "groupsList"
    model: groups
    spacing: 10
    topMargin: 6
    // A reset of the model makes the index of a kept row's group invalid, so that it would show other photos.
    reuseItems: visible
    // Creates only visible delegates, since each of them requests thumbnails.
    cacheBuffer: 0
    // Scrolls to the current item on keyboard navigation only: clicked items must stay under the pointer.
    highlightFollowsCurrentItem: false
    onCurrentIndexChanged: reveal()
    onHasVisualFocusChanged: reveal()
    Accessible.name: Texts.tr("duplicates_title")
    Keys.onLeftPressed: step(-1)
    Keys.onRightPressed: step(1)
    Keys.onSpacePressed: event => {
        if (!takeText(event))
            toggleCurrent();
    }
    Keys.onReturnPressed: previewCurrent()
    Keys.onEnterPressed: previewCurrent()

    delegate: DuplicateGroupRow {
        width: ListView.view.width - 2 * Metrics.listPadding
        list: root
        groups: root.groups
        column: root.currentColumn
        onToggled: item => root.toggle(index, item)
        onPreviewRequested: item => root.preview(index, item)
    }
}
