pragma ComponentBehavior: Bound
import QtQuick
import QtQuick.Templates as T
import QtQml.Models
import Lumvale
import Lumvale.Style

/// The photos of one group side by side. There may be hundreds of them, so they are a list of their own; only what is
/// in sight exists, and asks for its picture.
ListView {
    id: root

    required property KeyboardList list
    /// Whether the keys are at its current photo.
    required property bool hasVisualFocus
    required property DuplicateGroupsModel groups
    required property int group
    /// What the photos have in common.
    required property string facts

    /// Around the photos, for the ring of the keyboard.
    readonly property int margin: 6
    readonly property int markHeight: 12
    readonly property int fading: 36

    signal toggled(item: int)

    /// As far as the row goes.
    function scrollTo(wanted: real): void {
        contentX = Math.max(originX - margin, Math.min(wanted, originX + contentWidth + margin - width));
    }

    /// Scrolls until the current photo is clear of where the row fades.
    function reveal(): void {
        if (currentItem)
            scrollTo(Math.max(currentItem.x + currentItem.width + fading - width,
                              Math.min(contentX, currentItem.x - fading)));
    }

    objectName: "photoRow"
    implicitHeight: Metrics.photoSide + 20 + 2 * margin + markHeight
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
        }
    }

    // For wheels that turn one way only; without Shift they scroll the list of the groups.
    WheelHandler {
        acceptedModifiers: Qt.ShiftModifier
        target: null
        // As far as a wheel that turns sideways.
        onWheel: event => root.scrollTo(root.contentX - 0.6 * event.angleDelta.y)
    }

    // What is cut off there goes on.
    Repeater {
        parent: root
        model: [!root.atXBeginning, !root.atXEnd]

        Rectangle {
            id: fade

            required property int index
            required property bool modelData

            x: index === 0 ? 0 : root.width - width
            width: root.fading
            height: root.height - root.markHeight
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
