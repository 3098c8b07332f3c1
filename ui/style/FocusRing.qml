import QtQuick

/// Shows where the keyboard is, just outside its parent.
Rectangle {
    property real outset: 3
    property real parentRadius: Metrics.buttonRadius

    anchors.fill: parent
    anchors.margins: -outset
    radius: parentRadius + outset
    color: "transparent"
    border.color: GCColor.focus
    border.width: 2
}
