import QtQuick
import Lumvale
import Lumvale.Style

/// The application itself as the first row of its files' list, and what to say of the rest.
FocusScope {
    id: root

    required property UninstallViewModel model
    required property KeyboardList list

    signal toggled

    readonly property Item rest: model.hasLeftovers ? heading : none

    width: list.width - 2 * Metrics.listPadding
    height: rest.y + rest.height

    ItemRow {
        id: itself
        width: parent.width
        focus: true
        list: root.list
        isCurrent: list.hasVisualFocus && list.currentIndex < 0
        name: root.model.selectedAppName
        explanation: "app_itself"
        size: root.model.selectedAppSize
        date: ""
        checked: root.model.isSelectedAppChecked
        onClicked: root.toggled()
    }

    SectionLabel {
        id: heading
        objectName: "filesHeading"
        anchors.top: itself.bottom
        anchors.topMargin: 8
        width: parent.width
        visible: root.model.hasLeftovers
        text: Texts.tr("leftovers_found")
    }

    Label {
        id: none
        objectName: "noFiles"
        anchors.top: itself.bottom
        anchors.topMargin: 12
        width: parent.width
        visible: !root.model.hasLeftovers
        text: Texts.tr("no_leftovers_found")
        color: GCColor.textSecondary
        lineHeight: 1.25
    }
}
