import QtQuick
import Lumvale
import Lumvale.Style

/// Row of a group of duplicates: date, count and size of the items, and the items side by side.
FocusScope {
    id: root

    required property int index
    required property int itemCount
    required property string itemSize
    required property string wasted
    required property string date

    required property KeyboardList list
    required property DuplicateGroupsModel groups
    /// Index of the current item while this is the current group.
    required property int column

    readonly property bool isCurrent: ListView.isCurrentItem
    readonly property bool hasVisualFocus: isCurrent && list.hasVisualFocus
    readonly property string facts: itemCount + " × " + itemSize
    readonly property string gain: wasted + " " + Texts.tr("duplicates_wasted_suffix")

    signal toggled(item: int)
    signal previewRequested(item: int)

    function follow(): void {
        if (isCurrent)
            photos.currentIndex = column;
        if (hasVisualFocus)
            photos.reveal();
    }

    objectName: "row"
    implicitHeight: photos.y + photos.height
    Accessible.role: Accessible.Grouping
    Accessible.name: (date.length > 0 ? date + ", " : "") + facts + ", " + gain
    onColumnChanged: follow()
    onIsCurrentChanged: follow()
    onHasVisualFocusChanged: follow()
    ListView.onPooled: visible = false
    ListView.onReused: {
        visible = true;
        opacity = 1;
        photos.positionViewAtBeginning();
        follow();
    }

    Row {
        id: heading
        anchors.left: parent.left
        anchors.right: gainLabel.left
        anchors.rightMargin: 20
        spacing: 10

        Label {
            id: day
            visible: text.length > 0
            text: root.date
            font: Type.rowName
            wrapMode: Text.NoWrap
            Accessible.ignored: true
        }

        Label {
            y: Math.round(day.baselineOffset - baselineOffset)
            text: root.facts
            font: Type.message
            color: GCColor.textSecondary
            wrapMode: Text.NoWrap
            Accessible.ignored: true
        }
    }

    Label {
        id: gainLabel
        anchors.right: parent.right
        y: Math.round(day.baselineOffset - baselineOffset)
        text: root.gain
        font: Type.message
        color: GCColor.textSecondary
        wrapMode: Text.NoWrap
        Accessible.ignored: true
    }

    PhotoRow {
        id: photos
        anchors.left: parent.left
        anchors.right: parent.right
        anchors.leftMargin: -margin
        anchors.rightMargin: -margin
        y: 20
        focus: true
        list: root.list
        hasVisualFocus: root.hasVisualFocus
        groups: root.groups
        group: root.index
        facts: root.itemSize + (root.date.length > 0 ? ", " + root.date : "")
        onToggled: item => root.toggled(item)
        onPreviewRequested: item => root.previewRequested(item)
    }
}
