import QtQuick

/// Progress of an operation: a bar, and a line of text below it. `value` is the processed share, from 0 to 1, or
/// negative while it is unknown.
Column {
    id: root

    required property real value
    required property string text

    // Read by Qt's accessibility of progress bars, together with `value`.
    readonly property real minimumValue: 0
    readonly property real maximumValue: 1

    spacing: 10
    Accessible.role: Accessible.ProgressBar
    Accessible.name: text

    Rectangle {
        width: parent.width
        height: 6
        radius: 3
        color: GCColor.barTrack

        Rectangle {
            objectName: "progressFill"
            width: parent.width * Math.max(0, root.value)
            height: parent.height
            radius: parent.radius
            color: GCColor.glowTeal
        }
    }

    Label {
        objectName: "progressText"
        width: parent.width
        text: root.text
        font: Type.caption
        color: GCColor.textSecondary
        Accessible.ignored: true
    }
}
