import QtQuick

/// A sentence about an action's result, shown for a few seconds at the bottom of its parent and announced to screen
/// readers.
Rectangle {
    id: root

    function show(sentence: string): void {
        label.text = ""; // announced again even if it is the same
        label.text = sentence;
        end.restart();
    }

    anchors.horizontalCenter: parent.horizontalCenter
    anchors.bottom: parent.bottom
    anchors.bottomMargin: Metrics.screenPadding
    width: label.width + 2 * 16
    height: label.height + 2 * 10
    radius: Metrics.smallButtonRadius
    color: GCColor.dialog
    border.color: GCColor.panelStroke
    visible: label.text.length > 0

    Label {
        id: label
        objectName: "notice"
        anchors.centerIn: parent
        width: Math.min(implicitWidth, root.parent.width - 4 * Metrics.screenPadding)
        visible: text.length > 0
        font: Type.message
        Accessible.role: Accessible.AlertMessage
    }

    Timer {
        id: end
        interval: 5000
        onTriggered: label.text = ""
    }
}
