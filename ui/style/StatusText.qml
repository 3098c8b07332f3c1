import QtQuick

/// A status for screen readers, announced whenever it changes. It isn't drawn.
Item {
    id: root

    required property string text

    // Screen readers ignore items without area.
    width: 1
    height: 1
    visible: false
    Accessible.role: Accessible.AlertMessage
    Accessible.name: text
    // Qt 6.4 cannot announce a text. Screen readers announce alerts that are shown.
    onTextChanged: {
        visible = false;
        visible = text.length > 0;
    }
}
