pragma ComponentBehavior: Bound
import QtQuick
import QtQuick.Templates as T
import Lumvale
import Lumvale.Style

/// What the scan proposes, by category. One stop for Tab; arrows walk the rows, Space and Return tick them.
Panel {
    id: root

    required property ScanItemsModel items

    readonly property real rowWidth: width - 2 * Metrics.listPadding
    readonly property int currentRow: list.activeFocus ? list.currentIndex : -1

    function toggle(row: int): void {
        list.currentIndex = row;
        if (row >= 0)
            items.toggle(row);
    }

    ListView {
        id: list
        objectName: "resultsList"

        anchors.fill: parent
        leftMargin: Metrics.listPadding
        rightMargin: Metrics.listPadding
        topMargin: Metrics.listPadding - 8
        bottomMargin: Metrics.listPadding
        clip: true
        reuseItems: true
        activeFocusOnTab: true
        boundsBehavior: Flickable.StopAtBounds
        highlightFollowsCurrentItem: true
        highlightMoveDuration: 0
        model: root.items
        section.property: "category"
        T.ScrollBar.vertical: ScrollMark {}

        Accessible.role: Accessible.List
        Keys.onSpacePressed: root.toggle(currentIndex)
        Keys.onReturnPressed: root.toggle(currentIndex)
        Keys.onEnterPressed: root.toggle(currentIndex)

        section.delegate: SectionLabel {
            required property string section

            width: root.rowWidth
            text: Texts.tr(section)
        }

        delegate: ItemRow {
            required property int index

            width: root.rowWidth
            isCurrent: index === root.currentRow
            onClicked: root.toggle(index)
        }
    }
}
