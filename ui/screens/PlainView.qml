import QtQuick
import Lumvale.Style

/// A tool that has a name, and nothing to do yet.
FocusScope {
    property alias title: header.title
    property alias subtitle: header.subtitle

    ScreenHeader {
        id: header
        anchors.left: parent.left
        anchors.right: parent.right
        anchors.top: parent.top
        anchors.margins: Metrics.screenPadding
        title: ""
    }
}
