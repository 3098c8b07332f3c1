import QtQuick
import QtQuick.Templates as T
import Lumvale
import Lumvale.Style

/// What the scan proposes, by category. One stop for Tab; arrows walk the rows, Space and Return tick them.
Panel {
    id: root

    required property ScanItemsModel items

    /// Whether the rows are walked by keys: only then is the current one shown.
    property bool isWalked: false

    function toggleCurrent(): void {
        isWalked = true;
        if (list.currentIndex >= 0)
            items.toggle(list.currentIndex);
    }

    function clickRow(row: int): void {
        list.forceActiveFocus(Qt.MouseFocusReason);
        list.currentIndex = row;
        isWalked = false;
        items.toggle(row);
    }

    EmptyPrompt {
        anchors.centerIn: parent
        visible: list.count === 0
        text: Texts.tr("storage_breakdown_empty")
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
        onActiveFocusChanged: {
            root.isWalked = activeFocus;
            if (activeFocus && currentIndex < 0)
                currentIndex = 0;
        }
        Keys.onPressed: event => {
            root.isWalked = true;
            event.accepted = false;
        }
        Keys.onSpacePressed: root.toggleCurrent()
        Keys.onReturnPressed: root.toggleCurrent()
        Keys.onEnterPressed: root.toggleCurrent()

        section.delegate: SectionLabel {
            required property string section

            width: ListView.view.width - 2 * Metrics.listPadding
            text: Texts.tr(section)
        }

        delegate: ItemRow {
            required property int index

            width: ListView.view.width - 2 * Metrics.listPadding
            // Bound components would let qmllint follow these, but Qt 6.4 makes no section headings of them.
            isCurrent: root.isWalked && ListView.isCurrentItem // qmllint disable unqualified
            onClicked: root.clickRow(index) // qmllint disable unqualified
        }
    }
}
