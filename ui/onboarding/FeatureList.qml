pragma ComponentBehavior: Bound
import QtQuick
import Lumvale
import Lumvale.Style

/// The features of the program, one line each.
Column {
    id: root

    readonly property var features: [
        {
            symbol: "sparkles",
            key: "onboard_feature_cleanup"
        },
        {
            symbol: "app.badge.checkmark",
            key: "onboard_feature_uninstall"
        },
        {
            symbol: "bolt.fill",
            key: "onboard_feature_startup"
        },
        {
            symbol: "photo.on.rectangle.angled",
            key: "onboard_feature_duplicates"
        }
    ]

    spacing: 10

    Repeater {
        model: root.features

        Item {
            id: feature

            required property var modelData

            width: root.width
            height: Math.max(tile.height, label.height)

            Rectangle {
                id: tile
                anchors.verticalCenter: parent.verticalCenter
                width: 30
                height: 30
                radius: 8
                color: GCColor.alpha(GCColor.glowTeal, 0.12)

                Symbol {
                    anchors.centerIn: parent
                    size: 16
                    name: feature.modelData.symbol
                    color: GCColor.glowTeal
                }
            }

            Label {
                id: label
                objectName: feature.modelData.key
                anchors.left: tile.right
                anchors.leftMargin: 12
                anchors.right: parent.right
                anchors.verticalCenter: parent.verticalCenter
                text: Texts.tr(feature.modelData.key)
            }
        }
    }
}
