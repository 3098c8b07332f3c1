import QtQuick
import QtQuick.Templates as T

/// A long list to go through row by row. One stop for Tab; arrows, Home, End and the page keys walk its rows, and only
/// then is the current one to be shown.
ListView {
    id: root

    /// Whether the rows are walked by keys.
    property bool hasVisualFocus: false
    /// Where the walk begins: -1 where the header is a row as well.
    property int firstRow: 0
    /// Whether the pointer is just giving it the keyboard.
    property bool isClicked: false

    function takeFocus(reason: int): void {
        isClicked = reason === Qt.MouseFocusReason;
        forceActiveFocus(reason);
        isClicked = false;
        hasVisualFocus = reason !== Qt.MouseFocusReason;
    }

    /// Where a key leads from the current row; before the first when it isn't for walking. A step down is the view's.
    function rowByKey(key: int): int {
        // One row less than fits, so that of two pages a row is seen on both.
        const page = Math.max(1, Math.floor(height * count / contentHeight) - 1);
        switch (key) {
        case Qt.Key_Home:
            return firstRow;
        case Qt.Key_End:
            return count - 1;
        case Qt.Key_PageUp:
            return Math.max(firstRow, currentIndex - page);
        case Qt.Key_PageDown:
            return Math.min(count - 1, currentIndex + page);
        case Qt.Key_Up:
            return Math.max(firstRow, currentIndex - 1);
        }
        return firstRow - 1;
    }

    leftMargin: Metrics.listPadding
    rightMargin: Metrics.listPadding
    topMargin: Metrics.listPadding
    bottomMargin: Metrics.listPadding
    clip: true
    reuseItems: true
    activeFocusOnTab: true
    boundsBehavior: Flickable.StopAtBounds
    highlightFollowsCurrentItem: true
    highlightMoveDuration: 0
    T.ScrollBar.vertical: SlimScrollBar {}
    Accessible.role: Accessible.List
    onActiveFocusChanged: {
        // What has the keyboard in the list knows whether a click brought it there.
        const holder = Window.activeFocusItem as T.Control;
        hasVisualFocus = activeFocus && !isClicked && !(holder && holder.focusReason === Qt.MouseFocusReason);
        if (activeFocus && currentIndex < firstRow)
            currentIndex = firstRow;
    }
    // Where rows have gone, the last of those that are left.
    onCountChanged: currentIndex = Math.min(currentIndex, count - 1)
    Keys.onPressed: event => {
        hasVisualFocus = true;
        const row = rowByKey(event.key);
        event.accepted = row >= firstRow;
        if (event.accepted)
            currentIndex = row;
    }
}
