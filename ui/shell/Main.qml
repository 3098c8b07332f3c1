import QtQuick
import Lumvale
import Lumvale.Style

Window {
    title: "Lumvale"
    width: 1040
    height: 800
    minimumWidth: 820
    minimumHeight: 700
    color: GCColor.bgBottom
    visible: true

    RootView {
        anchors.fill: parent
        focus: true
    }
}
