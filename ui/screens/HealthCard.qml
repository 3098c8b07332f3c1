import QtQuick
import Lumvale
import Lumvale.Style

/// Health score of the disk as a gauge, with its label and the free space. The compact form is about half as high.
Panel {
    id: root

    required property int score
    required property string labelKey
    required property string freeSpaceText
    property bool isCompact: false

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
    readonly property real lineWidth: isCompact ? 5 : 10
    readonly property int padding: isCompact ? 8 : Metrics.cardPadding

    implicitHeight: Math.max(gauge.height, texts.height) + 2 * padding

    Item {
        id: gauge
        x: root.padding
        anchors.verticalCenter: parent.verticalCenter
        width: root.isCompact ? 46 : 92
        height: width

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
            font: root.isCompact ? Type.section : Type.score
            Accessible.ignored: true
        }
    }

    Column {
        id: texts
        anchors.left: gauge.right
        anchors.leftMargin: root.isCompact ? 14 : 20
        anchors.right: parent.right
        anchors.rightMargin: Metrics.cardPadding
        anchors.verticalCenter: parent.verticalCenter
        spacing: root.isCompact ? 2 : 6

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
