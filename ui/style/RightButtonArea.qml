import QtQuick

/// Takes the right mouse button from all items of its parent: those with a pointer handler would treat it as the left
/// one.
MouseArea {
    z: 1
    anchors.fill: parent
    acceptedButtons: Qt.RightButton
}
