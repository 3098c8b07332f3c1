import QtQuick
import Lumvale
import Lumvale.Style

/// Health score of the disk as a gauge, with its label and the free space.
Panel {
    id: root

    required property int score
    required property string labelKey
    required property string freeSpaceText

    readonly property color healthColor: {
        switch (labelKey) {
        case "health_clean":
            return GCColor.danger;
        case "health_watch":
            return GCColor.amber;
        default:
            return GCColor.glowTeal;
        }
    }
    readonly property real lineWidth: 10

    implicitHeight: gauge.height + 2 * Metrics.cardPadding

    Item {
        id: gauge
        x: Metrics.cardPadding
        anchors.verticalCenter: parent.verticalCenter
        width: 92
        height: 92

        Rectangle {
            anchors.fill: parent
            anchors.margins: root.lineWidth
            radius: width / 2
            color: GCColor.bgBottom
        }

        Ring {
            anchors.fill: parent
            anchors.margins: root.lineWidth / 2
            lineWidth: root.lineWidth
            share: root.score / 100
            from: root.healthColor
            glow: GCColor.alpha(root.healthColor, 0.28)
        }

        Label {
            anchors.centerIn: parent
            text: root.score
            font: Type.score
            Accessible.ignored: true
        }
    }

    Column {
        anchors.left: gauge.right
        anchors.leftMargin: 20
        anchors.right: parent.right
        anchors.rightMargin: Metrics.cardPadding
        anchors.verticalCenter: parent.verticalCenter
        spacing: 6

        Label {
            width: parent.width
            objectName: "healthLabel"
            text: Texts.tr(root.labelKey)
            font: Type.heading
            Accessible.name: text + ", " + root.score
        }

        Label {
            width: parent.width
            text: root.freeSpaceText
            font: Type.message
            color: GCColor.textSecondary
        }
    }
}
