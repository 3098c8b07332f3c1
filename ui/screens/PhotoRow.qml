pragma ComponentBehavior: Bound
import QtQuick
import QtQuick.Templates as T
import QtQml.Models
import Lumvale
import Lumvale.Style

/// Horizontal list of the photos of one group. A group may have hundreds of photos, so delegates and their thumbnails
/// exist for the visible ones only.
ListView {
    id: root

    required property KeyboardList list
    required property bool hasVisualFocus
    required property DuplicateGroupsModel groups
    required property int group
    /// Size and date, which the photos have in common.
    required property string facts

    /// Space around the photos for the focus ring.
    readonly property int margin: 6
    readonly property int scrollBarHeight: 12
    readonly property int fadeWidth: 36

    signal toggled(item: int)
    signal previewRequested(item: int)

    /// Scrolls to `position`, clamped to the content.
    function scrollTo(position: real): void {
        contentX = Math.max(originX - margin, Math.min(position, originX + contentWidth + margin - width));
    }

    /// Scrolls until the current photo is clear of the faded edges.
    function reveal(): void {
        if (currentItem)
            scrollTo(Math.max(currentItem.x + currentItem.width + fadeWidth - width,
                              Math.min(contentX, currentItem.x - fadeWidth)));
    }

    objectName: "photoRow"
    implicitHeight: Metrics.photoSide + 20 + 2 * margin + scrollBarHeight
    leftMargin: margin
    rightMargin: margin
    orientation: ListView.Horizontal
    spacing: Metrics.photoSpacing
    clip: true
    pixelAligned: true
    reuseItems: true
    cacheBuffer: 0
    boundsBehavior: Flickable.StopAtBounds
    interactive: contentWidth + leftMargin + rightMargin > width
    keyNavigationEnabled: false
    highlightFollowsCurrentItem: false
    T.ScrollBar.horizontal: SlimScrollBar {
        leftPadding: root.margin
        rightPadding: root.margin
    }

    model: DelegateModel {
        model: root.groups
        rootIndex: root.groups.itemsOf(root.group)

        delegate: PhotoTile {
            list: root.list
            isCurrent: root.hasVisualFocus && ListView.isCurrentItem
            y: root.margin
            facts: root.facts
            onClicked: root.toggled(index)
            onPreviewRequested: root.previewRequested(index)
        }
    }

    // Shift and a vertical wheel scroll the row; without Shift the wheel scrolls the list of groups.
    WheelHandler {
        acceptedModifiers: Qt.ShiftModifier
        target: null
        // The same distance per step as with a horizontal wheel.
        onWheel: event => root.scrollTo(root.contentX - 0.6 * event.angleDelta.y)
    }

    // Fades the edges where the content overflows.
    Repeater {
        parent: root
        model: [!root.atXBeginning, !root.atXEnd]

        Rectangle {
            id: fade

            required property int index
            required property bool modelData

            x: index === 0 ? 0 : root.width - width
            width: root.fadeWidth
            height: root.height - root.scrollBarHeight
            visible: root.interactive && modelData
            gradient: Gradient {
                orientation: Gradient.Horizontal
                GradientStop {
                    position: fade.index
                    color: GCColor.opaquePanel
                }
                GradientStop {
                    position: 1 - fade.index
                    color: GCColor.alpha(GCColor.opaquePanel, 0)
                }
            }
        }
    }
}
