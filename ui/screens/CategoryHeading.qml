import QtQuick
import QtQuick.Templates as T
import Lumvale
import Lumvale.Style

/// Heading of a category of scan results, with the number and size of its items. A press folds or unfolds the category.
/// A check box, if any, toggles the items that the scan had checked.
SectionLabel {
    id: root

    required property KeyboardList list
    required property string summary
    /// Qt.CheckState of the check box; -1 without one.
    required property int tick
    required property bool isFolded
    /// Shows the keyboard focus.
    required property bool isCurrent

    readonly property string foldText: Texts.tr(isFolded ? "section_folded" : "section_unfolded")
    readonly property bool isOverRows: y <= list.contentY

    /// 0 after the row below it has left the list, and until the heading appears.
    property real presence: 1
    /// The position at which the heading was drawn before rows left the list; NaN while no rows leave.
    property real placeBefore: NaN

    readonly property real place: y + shift.y
    readonly property alias isLeaving: fading.running

    signal foldRequested
    signal toggled

    /// Returns where this heading, or one of the same category that is leaving, was drawn before rows left the list; NaN
    /// if it was not drawn.
    function earlierPlace(): real {
        for (let i = 0; isNaN(placeBefore) && i < parent.children.length; ++i) {
            const heading = parent.children[i] as CategoryHeading;
            if (heading && heading !== root && heading.isLeaving && heading.text === text)
                return heading.place;
        }
        return placeBefore;
    }

    /// While the rows close up, moves the heading from its earlier place, or lets it appear if it was not drawn.
    function closeUp(): void {
        appearing.stop();
        moving.stop();
        shift.y = 0;
        if (!fading.running)
            presence = 1;
        if (!visible || !list || !list.isClosingUp || isOverRows)
            return;
        const earlier = earlierPlace();
        if (isNaN(earlier)) {
            presence = 0;
            appearing.start();
        } else {
            shift.y = earlier - y;
            moving.start();
        }
    }

    function forgetPlace(): void {
        placeBefore = NaN;
    }

    objectName: "heading"
    // ListView places the heading that stays at the top above the first one while the list is at its beginning.
    opacity: y < list.originY ? 0 : presence
    indent: Metrics.checkSide + 14
    trailing: chevron.width + 8 + summaryLabel.width + 16
    Accessible.description: summary + ", " + foldText
    Accessible.onPressAction: foldRequested()
    transform: Translate {
        id: shift
    }
    onYChanged: closeUp()
    onTextChanged: closeUp()
    onVisibleChanged: { // Qt hides a heading before it reuses it
        fading.stop();
        closeUp();
    }
    Component.onCompleted: closeUp()

    // Qt's transitions leave headings out: a heading jumps to its new place, or another one appears there, and that of a
    // row that fades stays as long as the row.
    Connections {
        target: root.list
        function onRowLeft(row: Item): void {
            if (!root.visible || root.isOverRows)
                return;
            if (isNaN(root.placeBefore)) {
                root.placeBefore = root.place;
                Qt.callLater(root.forgetPlace); // qmllint disable
            }
            if (Texts.tr(row.ListView.section) === root.text && row.ListView.previousSection !== row.ListView.section)
                fading.restart();
        }
    }

    NumberAnimation {
        id: fading
        target: root
        property: "presence"
        to: 0
        duration: Motion.removalDuration
    }

    SequentialAnimation {
        id: moving

        PauseAnimation {
            duration: Motion.removalDuration
        }

        NumberAnimation {
            target: shift
            property: "y"
            to: 0
            duration: Motion.removalDuration
            easing.type: Easing.OutQuad
        }
    }

    SequentialAnimation {
        id: appearing

        PauseAnimation {
            duration: Motion.removalDuration
        }

        NumberAnimation {
            target: root
            property: "presence"
            to: 1
            duration: Motion.removalDuration
        }
    }

    RowPointerHandler {
        list: root.list
    }

    TapHandler {
        onTapped: root.foldRequested()
    }

    HoverHandler {
        id: hover
    }

    Rectangle {
        z: -1
        anchors.fill: parent
        anchors.leftMargin: -Metrics.rowPadding
        anchors.rightMargin: -Metrics.rowPadding
        radius: Metrics.rowRadius
        color: root.isOverRows ? GCColor.opaquePanel : "transparent"
        border.color: root.isCurrent ? GCColor.focus : GCColor.panelStroke
        border.width: root.isCurrent ? 2 : root.isOverRows ? 1 : 0
    }

    T.AbstractButton {
        objectName: "categoryBox"
        anchors.verticalCenter: parent.verticalCenter
        anchors.verticalCenterOffset: -1
        width: Metrics.checkSide
        height: Metrics.checkSide
        visible: root.tick >= 0
        focusPolicy: Qt.NoFocus
        checkable: true
        Accessible.checkable: true
        Accessible.checked: root.tick === Qt.Checked
        Accessible.checkStateMixed: root.tick === Qt.PartiallyChecked
        Accessible.name: root.text
        Accessible.description: Texts.tr("section_tick")
        Accessible.ignored: !visible
        Accessible.onPressAction: clicked()
        Accessible.onToggleAction: clicked()
        onClicked: root.toggled()

        contentItem: CheckMark {
            isChecked: root.tick === Qt.Checked
            isMixed: root.tick === Qt.PartiallyChecked
        }
    }

    Symbol {
        id: chevron
        x: root.textRight + 8
        anchors.verticalCenter: parent.verticalCenter
        anchors.verticalCenterOffset: -1
        width: 10
        height: 10
        size: 9
        name: "chevron.right"
        rotation: root.isFolded ? 0 : 90
        color: GCColor.textSecondary
        opacity: hover.hovered || root.isFolded || root.isCurrent ? 1 : 0.6
    }

    TabularText {
        id: summaryLabel
        anchors.right: parent.right
        anchors.verticalCenter: parent.verticalCenter
        anchors.verticalCenterOffset: -1
        text: root.summary
        font: Type.message
        color: GCColor.textSecondary
    }
}
