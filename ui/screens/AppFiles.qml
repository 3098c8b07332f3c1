import QtQuick
import Lumvale
import Lumvale.Style

/// List of an application and its related files, with check boxes. The application itself is the first row. Space and
/// Return toggle the current row.
FocusScope {
    id: root

    required property UninstallViewModel model

    function takeFocus(reason: int): void {
        files.takeFocus(reason);
    }

    /// Row -1 is the application itself.
    function toggle(row: int): void {
        files.currentIndex = row;
        if (row < 0)
            model.toggleSelectedApp();
        else
            model.leftovers.toggle(row);
    }

    function requestDeletion(): void {
        footer.request();
    }

    Panel {
        anchors.left: parent.left
        anchors.right: parent.right
        anchors.top: parent.top
        anchors.bottom: footer.top

        TypeAheadList {
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

            // Qt 6.4 cannot use a bound component as header, so qmllint cannot resolve these ids.
            header: AppFilesHeader {
                focus: true
                model: root.model // qmllint disable unqualified
                list: files // qmllint disable unqualified
                onToggled: root.toggle(-1) // qmllint disable unqualified
            }

            delegate: ItemRow {
                required property int index
                required nameParts

                width: ListView.view.width - 2 * Metrics.listPadding
                heading: index === 0 ? Texts.tr("leftovers_found") : ""
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
