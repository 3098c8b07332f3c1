import QtQuick
import Lumvale.Style

/// Indicator of a check box. Input and accessibility are handled by the row that contains it.
Rectangle {
    id: root

    property bool isChecked: false
    /// Some of several entries are checked; draws a dash.
    property bool isMixed: false
    property color outline: GCColor.checkOutline
    property color from: GCColor.deepTeal
    property color to: GCColor.glowTeal

    width: Metrics.checkSide
    height: Metrics.checkSide
    radius: 5
    color: "transparent"
    border.color: outline
    border.width: isChecked || isMixed ? 0 : 1.4
    border.pixelAligned: false
    antialiasing: true

    Rectangle {
        anchors.fill: parent
        radius: root.radius
        visible: root.isChecked || root.isMixed
        gradient: Gradient {
            orientation: Gradient.Horizontal
            GradientStop {
                position: 0
                color: root.from
            }
            GradientStop {
                position: 1
                color: root.to
            }
        }

        Symbol {
            anchors.fill: parent
            visible: !root.isMixed
            size: 10
            name: "checkmark"
            color: GCColor.ink
        }

        Rectangle {
            anchors.centerIn: parent
            visible: root.isMixed
            width: 9
            height: 2.5
            radius: 1
            color: GCColor.ink
        }
    }
}
