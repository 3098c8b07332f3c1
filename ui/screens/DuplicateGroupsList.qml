pragma ComponentBehavior: Bound
import QtQuick
import Lumvale
import Lumvale.Style

/// The groups of duplicates. Of the keys up and down lead from group to group, left and right along the items of one;
/// Space and Return tick the item that they have led to.
KeyboardList {
    id: root

    required property DuplicateGroupsModel groups

    /// The item that the keys are at, in groups that have as many; the last one in others.
    property int column: 0

    readonly property int currentItemCount: currentIndex < 0 ? 0 : groups.rowCount(groups.itemsOf(currentIndex))
    readonly property int currentColumn: Math.max(0, Math.min(column, currentItemCount - 1))

    function toggle(group: int, item: int): void {
        // What was found before has the keyboard still while it is searched anew, unseen.
        if (!visible || group < 0 || item < 0)
            return;
        if (group !== currentIndex || item !== currentColumn) {
            currentIndex = group;
            column = item;
        }
        groups.toggle(group, item);
    }

    function toggleCurrent(): void {
        hasVisualFocus = true;
        reveal();
        toggle(currentIndex, currentColumn);
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
    // Only what is in sight exists, and asks for its picture.
    cacheBuffer: 0
    // Only keys scroll: what is clicked stays under the pointer, so that another click there is for the same one.
    highlightFollowsCurrentItem: false
    onCurrentIndexChanged: reveal()
    onHasVisualFocusChanged: reveal()
    Accessible.name: Texts.tr("duplicates_title")
    Keys.onLeftPressed: step(-1)
    Keys.onRightPressed: step(1)
    Keys.onSpacePressed: toggleCurrent()
    Keys.onReturnPressed: toggleCurrent()
    Keys.onEnterPressed: toggleCurrent()

    delegate: DuplicateGroupRow {
        width: ListView.view.width - 2 * Metrics.listPadding
        list: root
        groups: root.groups
        column: root.currentColumn
        onToggled: item => root.toggle(index, item)
    }
}
