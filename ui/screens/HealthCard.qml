import QtQuick
import Lumvale
import Lumvale.Style

/// How the disk is, at one look.
Panel {
    id: root

    required property int score
    required property string freeDisk
    required property string totalDisk

    readonly property color healthColor: score >= 65 ? GCColor.glowTeal : score >= 40 ? GCColor.amber : GCColor.danger
    readonly property real lineWidth: 10

    function labelKey(score: int): string {
        if (score > 100 || score < 40)
            return "health_clean";
        return score >= 85 ? "health_excellent" : score >= 65 ? "health_good" : "health_watch";
    }

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
            text: Texts.tr(root.labelKey(root.score))
            font: Type.heading
            Accessible.name: text + ", " + root.score
        }

        Label {
            width: parent.width
            text: Texts.tr("word_free_space") + " : " + root.freeDisk + " " + Texts.tr("word_of") + " " + root.totalDisk
            font: Type.message
            color: GCColor.textSecondary
        }
    }
}
