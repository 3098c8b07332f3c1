import QtQuick
import Lumvale
import Lumvale.Style

Item {
    id: root

    required property bool isScanning

    signal scanRequested

    function scan(): void {
        scanButton.activate();
    }

    implicitHeight: Math.max(titles.height, scanButton.height)

    Column {
        id: titles
        anchors.left: parent.left
        anchors.right: scanButton.left
        anchors.rightMargin: 24
        anchors.verticalCenter: parent.verticalCenter
        spacing: 4

        Row {
            spacing: 12

            Rectangle {
                anchors.verticalCenter: parent.verticalCenter
                width: 10
                height: 10
                radius: 5
                color: GCColor.glowTeal
                opacity: 0.8

                RectangularGlow {
                    z: -1
                    glow: GCColor.glowTeal
                    radius: 5
                    blur: 8
                }
            }

            PulsingTitle {
                objectName: "title"
                title: "Lumvale"
                Accessible.role: Accessible.Heading
            }
        }

        Label {
            width: parent.width
            text: Texts.tr("cleanup_subtitle")
            color: GCColor.textSecondary
        }
    }

    ScanButton {
        id: scanButton
        anchors.right: parent.right
        anchors.verticalCenter: parent.verticalCenter
        isScanning: root.isScanning
        focus: true
        onClicked: root.scanRequested()
    }
}
