import QtQuick

/// Gives a list the focus, with a mouse reason, when one of its rows is pressed. The signal clicked() would not do:
/// keys and assistive technology emit it as well.
PointHandler {
    required property KeyboardList list

    onActiveChanged: {
        if (active)
            list.takeFocus(Qt.MouseFocusReason);
    }
}
