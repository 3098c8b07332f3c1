import QtQuick
import Lumvale
import Lumvale.Style

/// Thumbnail of a photo or video, or a placeholder, with overlays for its state.
Rectangle {
    id: root

    required property var assetID
    required property bool isKept
    required property bool isFavorite
    required property bool isVideo
    required property bool isChecked
    required property bool isHovered

    readonly property alias isInCloud: thumbnail.iCloudOnly
    readonly property alias originalPath: thumbnail.originalPath

    radius: Metrics.tileRadius
    color: GCColor.white(0.05)

    Symbol {
        objectName: "placeholder"
        anchors.centerIn: parent
        visible: !thumbnail.isLoaded
        size: 28
        name: thumbnail.iCloudOnly ? "icloud" : "photo.on.rectangle.angled"
        color: GCColor.white(thumbnail.iCloudOnly ? 0.4 : 0.16)
    }

    PhotoThumbnail {
        id: thumbnail
        objectName: "thumbnail"
        anchors.fill: parent
        assetID: root.assetID ?? "" // undefined in delegates that are being removed
        opacity: root.isChecked ? 0.35 : 1
    }

    // Darkens the thumbnail behind the symbols for contrast.
    Rectangle {
        anchors.fill: parent
        visible: root.isFavorite || root.isVideo
        radius: root.radius
        gradient: Gradient {
            GradientStop {
                position: 0.6
                color: "transparent"
            }
            GradientStop {
                position: 1
                color: GCColor.scrim
            }
        }
    }

    Row {
        anchors.left: parent.left
        anchors.bottom: parent.bottom
        anchors.margins: 8
        spacing: 6

        Symbol {
            visible: root.isFavorite
            size: 13
            name: "heart.fill"
            color: GCColor.textPrimary
        }

        Symbol {
            visible: root.isVideo
            size: 13
            name: "play.fill"
            color: GCColor.textPrimary
        }
    }

    Badge {
        anchors.left: parent.left
        anchors.top: parent.top
        anchors.margins: 7
        visible: root.isKept
        text: Texts.tr("duplicates_kept_label")
        color: GCColor.glowTeal
    }

    CheckMark {
        anchors.right: parent.right
        anchors.top: parent.top
        anchors.margins: 7
        visible: !root.isKept
        isChecked: root.isChecked
        color: GCColor.scrim
        outline: root.isHovered ? GCColor.textPrimary : GCColor.faded
        from: GCColor.danger
        to: GCColor.dangerLight
    }

    Rectangle {
        anchors.fill: parent
        visible: root.isKept || root.isChecked
        radius: root.radius
        color: "transparent"
        border.color: root.isKept ? GCColor.alpha(GCColor.glowTeal, 0.55) : GCColor.danger
        border.width: 2
    }
}
