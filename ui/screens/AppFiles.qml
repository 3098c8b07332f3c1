import QtQuick
import Lumvale
import Lumvale.Style

/// What would go with an application: itself first, then the files that it keeps elsewhere. Space and Return tick the
/// row that the keys have walked to.
FocusScope {
    id: root

    required property UninstallViewModel model

    function takeFocus(reason: int): void {
        files.takeFocus(reason);
    }

    /// The application itself is the row before the first.
    function toggle(row: int): void {
        files.currentIndex = row;
        if (row < 0)
            model.toggleSelectedApp();
        else
            model.leftovers.toggle(row);
    }

    Panel {
        anchors.left: parent.left
        anchors.right: parent.right
        anchors.top: parent.top
        anchors.bottom: footer.top

        KeyboardList {
            id: files
            objectName: "filesList"
            anchors.fill: parent
            focus: true
            firstRow: -1
            currentIndex: -1
            model: root.model.leftovers
            Accessible.name: root.model.selectedAppName
            onCurrentIndexChanged: {
                if (currentIndex < 0) {
                    headerItem.focus = true;
                    positionViewAtBeginning();
                }
            }
            Keys.onReturnPressed: root.toggle(currentIndex)
            Keys.onEnterPressed: root.toggle(currentIndex)

            // Bound components would let qmllint follow these, but Qt 6.4 makes no header of them.
            header: AppFilesHeader {
                focus: true
                model: root.model // qmllint disable unqualified
                list: files // qmllint disable unqualified
                onToggled: root.toggle(-1) // qmllint disable unqualified
            }

            delegate: ItemRow {
                required property int index

                width: ListView.view.width - 2 * Metrics.listPadding
                onClicked: root.toggle(index) // qmllint disable unqualified
            }
        }
    }

    SelectionFooter {
        id: footer
        anchors.left: parent.left
        anchors.right: parent.right
        anchors.bottom: parent.bottom
        count: root.model.checkedCount
        size: root.model.selectedSize
        action: Texts.tr("btn_uninstall")
        onRequested: root.model.requestUninstall()
    }
}
