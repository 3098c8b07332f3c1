pragma ComponentBehavior: Bound
import QtQuick
import Lumvale
import Lumvale.Style

/// What starts with the session; Space and Return press the button of the row that the keys have walked to.
WalkableList {
    id: root

    signal disableRequested(row: int)

    function request(row: int): void {
        if (row < 0)
            return;
        currentIndex = row;
        disableRequested(row);
    }

    function requestByKey(): void {
        isWalked = true;
        request(currentIndex);
    }

    objectName: "startupList"
    // What is no longer there is none of a screen reader's business either, but a row kept for reuse would be found.
    reuseItems: false
    Accessible.name: Texts.tr("startup_title")
    Keys.onSpacePressed: requestByKey()
    Keys.onReturnPressed: requestByKey()
    Keys.onEnterPressed: requestByKey()

    delegate: StartupRow {
        required property int index

        width: ListView.view.width - 2 * Metrics.listPadding
        isCurrent: root.isWalked && ListView.isCurrentItem
        onTouched: root.takeFocus(Qt.MouseFocusReason)
        onDisableRequested: root.request(index)
    }
}
