pragma ComponentBehavior: Bound
import QtQuick
import Lumvale
import Lumvale.Style

/// List of the items that start at login. Space and Return press the button of the current row.
TypeAheadList {
    id: root

    signal disableRequested(row: int)

    function request(row: int): void {
        // During a new search the list keeps the focus although it is hidden.
        if (row < 0 || !visible)
            return;
        currentIndex = row;
        disableRequested(row);
    }

    objectName: "startupList"
    Accessible.name: Texts.tr("startup_title")
    Keys.onReturnPressed: request(currentIndex)
    Keys.onEnterPressed: request(currentIndex)

    delegate: StartupRow {
        required property int index

        width: ListView.view.width - 2 * Metrics.listPadding
        onClicked: root.request(index)
    }
}
