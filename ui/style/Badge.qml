import QtQuick

/// A short text on a colored pill. Its baseline is that of the text.
Rectangle {
    id: root

    required property string text

    implicitWidth: Math.ceil(label.implicitWidth) + 2 * 7
    implicitHeight: Math.ceil(label.implicitHeight) + 2 * 1
    baselineOffset: label.y + label.baselineOffset
    radius: height / 2
    color: GCColor.amber

    Label {
        id: label
        objectName: "badge"
        anchors.centerIn: parent
        text: root.text
        font: Type.badge
        color: GCColor.ink
        wrapMode: Text.NoWrap
        Accessible.ignored: true
    }
}
