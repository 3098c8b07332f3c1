pragma ComponentBehavior: Bound
import QtQuick
import QtQuick.Dialogs
import Lumvale
import Lumvale.Style

/// Asks which disk and home to open.
Window {
    id: root

    required property DiskChoiceModel choices

    title: "Lumvale"
    width: 560
    height: 520
    minimumWidth: 520
    minimumHeight: 360
    color: GCColor.bgBottom
    visible: true
    // Colors of the folder chooser, if Qt draws it.
    palette {
        window: GCColor.dialog
        windowText: GCColor.textPrimary
        base: GCColor.bgTop
        text: GCColor.textPrimary
        button: GCColor.dialog
        buttonText: GCColor.textPrimary
        light: GCColor.opaquePanel
        midlight: GCColor.dialog
        mid: GCColor.textSecondary
        dark: GCColor.textSecondary
        highlight: GCColor.deepTeal
        highlightedText: GCColor.ink
        placeholderText: GCColor.textSecondary
    }

    Backdrop {
        anchors.fill: parent
    }

    Column {
        id: header
        anchors.left: parent.left
        anchors.right: parent.right
        anchors.top: parent.top
        anchors.margins: Metrics.screenPadding
        spacing: 6

        Label {
            width: parent.width
            text: Texts.tr("disk_title")
            font: Type.screenTitle
            Accessible.role: Accessible.Heading
        }

        Label {
            width: parent.width
            text: Texts.tr("disk_message")
            color: GCColor.textSecondary
            lineHeight: 1.25
        }

        Label {
            objectName: "diskProblem"
            width: parent.width
            topPadding: 6
            visible: text.length > 0
            text: root.choices.problem
            font: Type.message
            color: GCColor.amber
            lineHeight: 1.2
            Accessible.role: Accessible.AlertMessage
        }
    }

    Panel {
        anchors.left: parent.left
        anchors.right: parent.right
        anchors.top: header.bottom
        anchors.bottom: folderButton.top
        anchors.margins: Metrics.screenPadding
        anchors.topMargin: 18
        anchors.bottomMargin: 18

        EmptyPrompt {
            anchors.centerIn: parent
            visible: list.count === 0
            text: Texts.tr("disk_none")
        }

        TypeAheadList {
            id: list
            objectName: "diskList"
            anchors.fill: parent
            focus: true
            visible: count > 0
            model: root.choices
            Accessible.name: Texts.tr("disk_title")
            Keys.onReturnPressed: root.choices.choose(currentIndex)
            Keys.onEnterPressed: root.choices.choose(currentIndex)

            delegate: DiskRow {
                required property int index

                width: ListView.view.width - 2 * Metrics.listPadding
                onClicked: root.choices.choose(index)
            }
        }
    }

    QuietButton {
        id: folderButton
        objectName: "folderButton"
        anchors.right: parent.right
        anchors.bottom: parent.bottom
        anchors.margins: Metrics.screenPadding
        focus: list.count === 0
        text: Texts.tr("btn_choose_folder")
        onClicked: folderDialog.open()
    }

    FolderDialog {
        id: folderDialog
        title: Texts.tr("btn_choose_folder")
        acceptLabel: Texts.tr("btn_open")
        rejectLabel: Texts.tr("btn_cancel")
        currentFolder: "file:///"
        onAccepted: root.choices.chooseFolder(selectedFolder)
    }
}
