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

    signal foldRequested
    signal toggled

    objectName: "heading"
    // ListView places the heading that stays at the top above the first one while the list is at its beginning.
    opacity: y < list.originY ? 0 : 1
    indent: Metrics.checkSide + 14
    trailing: chevron.width + 8 + summaryLabel.width + 16
    Accessible.description: summary + ", " + foldText
    Accessible.onPressAction: foldRequested()

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
