import QtQuick
import QtQuick.Templates as T
import Lumvale.Style

/// A row of a KeyboardList that acts as one button.
T.AbstractButton {
    id: root

    property KeyboardList list: ListView.view as KeyboardList
    property bool isSelected: false
    property bool isCurrent: list !== null && list.hasVisualFocus && ListView.isCurrentItem

    objectName: "row"
    hoverEnabled: true
    focusPolicy: Qt.NoFocus
    Accessible.onPressAction: clicked()
    // Hides pooled delegates: they are not drawn, but screen readers would still find them.
    ListView.onPooled: visible = false
    ListView.onReused: visible = true
    // The current row has the active focus and accepts Space, so the list doesn't receive that key.
    Keys.onPressed: event => {
        list.hasVisualFocus = true;
        event.accepted = list.takeText(event);
    }

    RowPointerHandler {
        list: root.list
    }

    background: Rectangle {
        anchors.fill: parent
        anchors.leftMargin: -Metrics.rowPadding
        anchors.rightMargin: -Metrics.rowPadding
        radius: Metrics.rowRadius
        color: root.isSelected ? GCColor.selection : root.hovered ? GCColor.hover : "transparent"
        border.color: root.isCurrent ? GCColor.focus : GCColor.panelStroke
        border.width: root.isCurrent ? 2 : root.hovered ? 1 : 0
    }
}
