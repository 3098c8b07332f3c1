import QtQuick
import Lumvale
import Lumvale.Style

/// List header with the row of the application itself, and below it the heading of the related files or a note that
/// there are none.
FocusScope {
    id: root

    required property UninstallViewModel model
    required property KeyboardList list

    signal toggled

    readonly property Item lastItem: model.hasLeftovers ? heading : note

    width: list.width - 2 * Metrics.listPadding
    height: lastItem.y + lastItem.height

    ItemRow {
        id: appRow
        width: parent.width
        focus: true
        list: root.list
        isCurrent: list.hasVisualFocus && list.currentIndex < 0
        name: root.model.selectedAppName
        path: root.model.selectedAppPath
        explanation: "app_itself"
        size: root.model.selectedAppSize
        date: ""
        checked: root.model.isSelectedAppChecked
        onClicked: root.toggled()
    }

    SectionLabel {
        id: heading
        objectName: "filesHeading"
        anchors.top: appRow.bottom
        anchors.topMargin: 8
        width: parent.width
        visible: root.model.hasLeftovers
        text: Texts.tr("leftovers_found")
    }

    Label {
        id: note
        objectName: "noFiles"
        anchors.top: appRow.bottom
        anchors.topMargin: 12
        width: parent.width
        visible: !root.model.hasLeftovers
        text: Texts.tr("no_leftovers_found")
        color: GCColor.textSecondary
        lineHeight: 1.25
    }
}
