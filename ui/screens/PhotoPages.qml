pragma ComponentBehavior: Bound
import QtQuick
import QtQml.Models
import Lumvale

/// The items of one group, one page each, of which the current one is visible.
ListView {
    id: root

    required property DuplicateGroupsModel groups
    required property int group
    required property int firstItem
    /// Space to the right of the texts.
    required property real headerMargin

    property bool hasVisualFocus: false
    readonly property PhotoPage page: currentItem as PhotoPage

    signal stepped

    function step(by: int): void {
        hasVisualFocus = true;
        go(by);
    }

    function go(by: int): void {
        currentIndex = Math.max(0, Math.min(currentIndex + by, count - 1));
        stepped();
    }

    objectName: "photoPages"
    orientation: ListView.Horizontal
    interactive: false
    keyNavigationEnabled: false
    cacheBuffer: 0
    clip: true
    // Positioned below: a list that follows its current item sometimes stays at an earlier one.
    highlightFollowsCurrentItem: false
    onWidthChanged: positionViewAtIndex(currentIndex, ListView.Beginning)
    onCurrentIndexChanged: positionViewAtIndex(currentIndex, ListView.Beginning)
    // Not a binding of currentIndex, which the model resets when it gets its root index.
    Component.onCompleted: {
        currentIndex = firstItem;
    }

    model: DelegateModel {
        model: root.groups
        rootIndex: root.groups.itemsOf(root.group)

        delegate: PhotoPage {
            width: root.width
            height: root.height
            headerMargin: root.headerMargin
            hasVisualFocus: root.hasVisualFocus
            count: root.count
            onToggled: root.groups.toggle(root.group, index)
            onStepped: by => root.go(by)
        }
    }
}
