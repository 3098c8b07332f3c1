import QtQuick
import QtQuick.Templates as T
import Lumvale
import Lumvale.Style

/// What the scan proposes, by category. One stop for Tab; arrows, Home, End and the page keys walk the rows,
/// Space and Return tick them.
Panel {
    id: root

    required property ScanItemsModel items

    /// Whether the rows are walked by keys: only then is the current one shown.
    property bool isWalked: false

    function takeFocus(reason: int): void {
        list.forceActiveFocus(reason);
        isWalked = reason !== Qt.MouseFocusReason;
    }

    function toggle(row: int): void {
        if (row < 0)
            return;
        list.currentIndex = row;
        items.toggle(row);
    }

    /// Where a key leads from the current row; -1 when it isn't for walking.
    function rowByKey(key: int): int {
        // One row less than fits, so that of two pages a row is seen on both.
        const page = Math.max(1, Math.floor(list.height * list.count / list.contentHeight) - 1);
        switch (key) {
        case Qt.Key_Home:
            return 0;
        case Qt.Key_End:
            return list.count - 1;
        case Qt.Key_PageUp:
            return Math.max(0, list.currentIndex - page);
        case Qt.Key_PageDown:
            return Math.min(list.count - 1, list.currentIndex + page);
        }
        return -1;
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
        Accessible.name: Texts.tr("tab_cleanup")
        onActiveFocusChanged: {
            // The current row has the keyboard, and knows whether a click brought it there.
            const row = currentItem as T.Control;
            root.isWalked = activeFocus && !(row && row.focusReason === Qt.MouseFocusReason);
            if (activeFocus && currentIndex < 0)
                currentIndex = 0;
        }
        Keys.onPressed: event => {
            root.isWalked = true;
            const row = root.rowByKey(event.key);
            event.accepted = row >= 0;
            if (event.accepted)
                currentIndex = row;
        }
        Keys.onSpacePressed: root.toggle(currentIndex)
        Keys.onReturnPressed: root.toggle(currentIndex)
        Keys.onEnterPressed: root.toggle(currentIndex)

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
            onClicked: root.toggle(index) // qmllint disable unqualified
            onTouched: root.takeFocus(Qt.MouseFocusReason) // qmllint disable unqualified
            // The current row has the keyboard and takes Space itself: the list would never hear of it.
            Keys.onPressed: event => {
                root.isWalked = true; // qmllint disable unqualified
                event.accepted = false;
            }
        }
    }
}
