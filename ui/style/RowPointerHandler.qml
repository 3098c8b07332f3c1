import QtQuick

/// Gives a list the keyboard where one of its rows is pressed. A click may also come from a key or a screen reader;
/// this is the pointer's alone.
PointHandler {
    required property KeyboardList list

    onActiveChanged: {
        if (active)
            list.takeFocus(Qt.MouseFocusReason);
    }
}
