import QtQuick
import Lumvale
import Lumvale.Style

/// Icon of an application, or a placeholder.
Item {
    id: root

    required property var bundle

    /// Symbol that is shown until the icon is loaded, and if there is none.
    property string placeholder: "macwindow"

    implicitWidth: Metrics.iconSide
    implicitHeight: Metrics.iconSide

    // As large as the shape in most icons, which leave a margin around it.
    Rectangle {
        anchors.fill: parent
        anchors.margins: 3
        visible: !icon.isLoaded
        radius: 6
        color: GCColor.white(0.05)

        Symbol {
            objectName: "iconPlaceholder"
            anchors.centerIn: parent
            size: 15
            name: root.placeholder
            color: GCColor.white(0.3)
        }
    }

    IconThumbnail {
        id: icon
        objectName: "appIcon"
        anchors.fill: parent
        bundle: root.bundle ?? "" // undefined in delegates that are being removed
    }
}
