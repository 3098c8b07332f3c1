import QtQuick
import Lumvale
import Lumvale.Style

/// Sheet that shows one photo or video of a group as large as the window allows. Left and Right show the others of the
/// group; Space or the check mark toggles the one that is shown.
Sheet {
    id: root

    required property DuplicateGroupsModel groups

    property int group: 0
    property int firstItem: 0

    readonly property PhotoPages pages: loader.item as PhotoPages
    readonly property string accessibleDescription: pages?.page?.facts ?? ""

    /// Emitted when another item of the group is shown.
    signal stepped(item: int)

    /// Opens the sheet. `reason` is the focus reason to pass on when it is closed.
    function show(group: int, item: int, reason: int): void {
        root.group = group;
        firstItem = item;
        open();
        // The screen decides, since another item may be the current one when the sheet is closed.
        returnTo = null;
        returnReason = reason;
    }

    accessibleName: pages?.page?.title ?? ""
    implicitWidth: parent ? parent.width - 2 * Metrics.screenPadding : 0
    implicitHeight: parent ? parent.height - 2 * Metrics.screenPadding : 0

    FocusScope {
        id: content
        anchors.fill: parent
        focus: true
        Keys.onLeftPressed: root.pages.step(-1)
        Keys.onRightPressed: root.pages.step(1)

        // Exists while the sheet is open only: the pages load large pictures.
        Loader {
            id: loader
            anchors.fill: parent
            active: root.visible
            focus: true
            sourceComponent: PhotoPages {
                focus: true
                groups: root.groups // qmllint disable unqualified
                group: root.group // qmllint disable unqualified
                firstItem: root.firstItem // qmllint disable unqualified
                hasVisualFocus: root.returnReason !== Qt.MouseFocusReason // qmllint disable unqualified
                headerMargin: close.width + 20 // qmllint disable unqualified
                onStepped: root.stepped(currentIndex) // qmllint disable unqualified
            }
        }

        QuietButton {
            id: close
            objectName: "closeButton"
            anchors.right: parent.right
            horizontalPadding: 8
            verticalPadding: 8
            symbol: "xmark"
            symbolSize: 11
            Accessible.name: Texts.tr("menu_close")
            onClicked: root.close()
        }
    }
}
