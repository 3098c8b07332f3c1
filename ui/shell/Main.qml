import QtQuick
import Lumvale
import Lumvale.Style

Window {
    id: root

    /// Announcement of a newer version; shown if its title isn't empty.
    property updateAlert announcement

    title: "Lumvale"
    width: 1040
    height: 800
    color: GCColor.bgBottom

    RootView {
        id: view
        anchors.fill: parent
        focus: true
    }

    Loader {
        active: root.announcement.title.length > 0
        sourceComponent: UpdateDialog {
            announcement: root.announcement // qmllint disable unqualified
            visible: true
            onFocusLost: reason => view.forceActiveFocus(reason) // qmllint disable unqualified
        }
    }
}
