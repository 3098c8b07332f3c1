import QtQuick
import QtQuick.Templates as T
import Lumvale.Style

/// A row of a KeyboardList that acts as one button.
T.AbstractButton {
    id: root

    property KeyboardList list: ListView.view as KeyboardList
    property bool isSelected: false
    /// Fades, since its entry is no longer in the model.
    property bool isLeaving: false
    property bool isCurrent: list !== null && list.hasVisualFocus && ListView.isCurrentItem

    /// A context menu is requested at a position in the row, by the right mouse button, the Menu key or Shift-F10.
    signal menuRequested(position: point, reason: int)

    objectName: "row"
    enabled: !isLeaving
    hoverEnabled: true
    focusPolicy: Qt.NoFocus
    Accessible.ignored: isLeaving
    Accessible.onPressAction: clicked()
    // Hides pooled delegates: they are not drawn, but screen readers would still find them.
    ListView.onPooled: visible = false
    ListView.onReused: {
        visible = true;
        isLeaving = false;
        opacity = 1; // a layout ends the animation of a row that leaves
    }
    ListView.onRemove: {
        isLeaving = true;
        if (list.isAnimated)
            list.rowLeft(root);
    }
    // The current row has the active focus and accepts Space, so the list doesn't receive that key.
    Keys.onPressed: event => {
        list.hasVisualFocus = true;
        const opensMenu = event.key === Qt.Key_Menu || event.key === Qt.Key_F10 && event.modifiers === Qt.ShiftModifier;
        if (opensMenu)
            menuRequested(Qt.point(0, height), Qt.TabFocusReason);
        event.accepted = opensMenu || list.takeText(event);
    }

    RowPointerHandler {
        list: root.list
    }

    RightButtonArea {
        onPressed: mouse => root.menuRequested(Qt.point(mouse.x, mouse.y), Qt.MouseFocusReason)
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
