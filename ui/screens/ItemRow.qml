import QtQuick
import Lumvale
import Lumvale.Style

/// Row of an entry that can be deleted: a check box with name, reason, size and date.
EntryRow {
    id: root

    required property string name
    required path
    required property string explanation
    required property string size
    required property string date
    required checked
    property var nameParts: [] // see MatchLabel
    /// Stands for all items of a folded category, whose heading shows the focus and the check box. It draws nothing
    /// itself and is one pixel high, since screen readers ignore items without area.
    property bool isFolded: false

    /// Heading of the rows, told with the first and the last row: on entering the section from either side.
    property string heading: ListView.section !== ListView.previousSection
                                      || ListView.section !== ListView.nextSection
                                      ? Texts.tr(ListView.section) : ""

    /// Accessible description; screen readers read it after the name.
    readonly property string description: (heading.length > 0 ? heading + ", " : "")
                                          + (date.length > 0 ? date + ", " : "") + Texts.tr(explanation)
                                          + (pathText.length > 0 ? ", " + pathText : "")

    implicitHeight: isFolded ? 1 : Math.max(texts.height, details.height) + 2 * 10

    // Makes screen readers announce a check box; the state shown still comes from the model.
    checkable: true
    Accessible.checkable: true
    Accessible.checked: checked
    Accessible.name: name + ", " + size
    Accessible.description: description
    Accessible.onToggleAction: clicked()
    background.visible: !isFolded

    CheckMark {
        id: mark
        visible: !root.isFolded
        anchors.verticalCenter: parent.verticalCenter
        isChecked: root.checked
    }

    Column {
        id: texts
        visible: !root.isFolded
        anchors.left: mark.right
        anchors.leftMargin: 14
        anchors.right: details.left
        anchors.rightMargin: 20
        anchors.verticalCenter: parent.verticalCenter
        spacing: 3

        MatchLabel {
            width: parent.width
            text: root.name
            parts: root.nameParts
            font: Type.row
            Accessible.ignored: true
        }

        Label {
            width: parent.width
            text: Texts.tr(root.explanation)
            font: Type.caption
            color: GCColor.textSecondary
            opacity: 0.9
            lineHeight: 1.2
            Accessible.ignored: true
        }
    }

    Column {
        id: details
        visible: !root.isFolded
        anchors.right: parent.right
        anchors.verticalCenter: parent.verticalCenter
        spacing: 3

        TabularText {
            anchors.right: parent.right
            text: root.size
        }

        Label {
            anchors.right: parent.right
            visible: text.length > 0
            text: root.date
            font: Type.fine
            color: GCColor.textSecondary
            wrapMode: Text.NoWrap
            Accessible.ignored: true
        }
    }
}
