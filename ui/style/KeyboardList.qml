import QtQuick
import QtQuick.Templates as T
import Lumvale.Style

/// A scrolling list with keyboard navigation. It is a single tab stop; Up, Down, Home, End, Page Up and Page Down
/// change the current row. Rows show the focus only if `hasVisualFocus`. Rows that the model removes fade, then the others
/// close up.
ListView {
    id: root

    /// The list has the focus and was reached or used by keyboard, as `visualFocus` of Qt Quick Controls.
    property bool hasVisualFocus: false
    /// Index of the first row; -1 if the header can be the current row as well.
    property int firstRow: 0
    /// True while takeFocus() runs with a mouse reason, for onActiveFocusChanged.
    property bool isTakingMouseFocus: false
    /// True while changeAtOnce() runs.
    property bool isChangedAtOnce: false

    readonly property bool isAnimated: !ReducedMotion.isRequested && !isChangedAtOnce
    readonly property alias isClosingUp: closingUp.running

    /// The row is no longer in the model and begins to fade. Nothing has moved yet.
    signal rowLeft(row: Item)

    function takeFocus(reason: int): void {
        isTakingMouseFocus = reason === Qt.MouseFocusReason;
        forceActiveFocus(reason);
        isTakingMouseFocus = false;
        hasVisualFocus = reason !== Qt.MouseFocusReason;
    }

    /// Runs a change of the model without animating it.
    function changeAtOnce(change: var): void {
        isChangedAtOnce = true;
        change();
        forceLayout();
        isChangedAtOnce = false;
    }

    /// Returns the row that a key leads to from the current one, or a value less than `firstRow` if it is no navigation
    /// key. Key_Down is left to ListView.
    function rowByKey(key: int): int {
        // One row less than fits, so that consecutive pages overlap.
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

    /// Handles a key as text. Returns false if the key keeps its usual meaning. Rows call it first, since some accept
    /// Space themselves.
    function takeText(event: var): bool {
        return false;
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
    remove: Transition {
        enabled: root.isAnimated

        SequentialAnimation {
            NumberAnimation {
                property: "opacity"
                to: 0
                duration: Motion.removalDuration
            }

            // The row is reused.
            PropertyAction {
                property: "opacity"
                value: 1
            }
        }
    }
    removeDisplaced: Transition {
        enabled: root.isAnimated

        SequentialAnimation {
            PauseAnimation {
                duration: Motion.removalDuration
            }

            NumberAnimation {
                property: "y"
                duration: Motion.removalDuration
                easing.type: Easing.OutQuad
            }
        }
    }
    onRowLeft: closingUp.restart()
    T.ScrollBar.vertical: SlimScrollBar {}
    Accessible.role: Accessible.List
    onActiveFocusChanged: {
        // ListView has no focusReason, but the control in it that has the active focus does.
        const holder = Window.activeFocusItem as T.Control;
        hasVisualFocus = activeFocus && !isTakingMouseFocus && !(holder && holder.focusReason === Qt.MouseFocusReason);
        if (activeFocus && currentIndex < firstRow)
            currentIndex = firstRow;
    }
    // Clamped when rows are removed.
    onCountChanged: currentIndex = Math.min(currentIndex, count - 1)
    Keys.onPressed: event => {
        hasVisualFocus = true;
        const row = rowByKey(event.key);
        event.accepted = row >= firstRow || takeText(event);
        if (row >= firstRow)
            currentIndex = row;
    }

    // As long as both transitions, whose own property can stay true in Qt 6.4.
    PauseAnimation {
        id: closingUp
        duration: 2 * Motion.removalDuration
    }
}
