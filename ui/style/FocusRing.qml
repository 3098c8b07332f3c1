import QtQuick

/// Ring around its parent that shows the keyboard focus.
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
