import QtQuick

Rectangle {
    radius: Metrics.cardRadius
    color: GCColor.panel
    border.color: GCColor.panelStroke
}
