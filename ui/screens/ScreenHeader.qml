import QtQuick
import Lumvale.Style

/// Title and subtitle of a screen.
Column {
    id: root

    required property string title
    property string subtitle

    spacing: 5

    Label {
        objectName: "screenTitle"
        width: parent.width
        text: root.title
        font: Type.screenTitle
        Accessible.role: Accessible.Heading
    }

    Label {
        objectName: "screenSubtitle"
        width: parent.width
        visible: text.length > 0
        text: root.subtitle
        color: GCColor.textSecondary
        lineHeight: 1.2
    }
}
