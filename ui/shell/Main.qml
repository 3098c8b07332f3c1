import QtQuick
import Lumvale
import Lumvale.Style

Window {
    id: root

    title: "Lumvale"
    width: 1000
    height: 760
    minimumWidth: 820
    minimumHeight: 700
    color: GCColor.bgBottom
    visible: true

    Backdrop {
        anchors.fill: parent
    }

    CleanupView {
        anchors.fill: parent
        focus: true
    }
}
