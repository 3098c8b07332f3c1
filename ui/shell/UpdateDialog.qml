import QtQuick
import Lumvale
import Lumvale.Style

/// Announces a newer version and offers to open its download page. The download button has the initial focus, since
/// an accidental Return is harmless here.
Dialog {
    id: root

    required property updateAlert announcement

    title: announcement.title
    message: announcement.message
    onAboutToShow: download.focus = true
    onOpened: download.focusReason = returnReason

    GradientButton {
        id: download
        objectName: "download"
        radius: Metrics.smallButtonRadius
        horizontalPadding: 16
        verticalPadding: 10
        font: Type.smallButton
        text: root.announcement.download
        KeyNavigation.left: later
        onClicked: {
            root.close();
            Qt.openUrlExternally(root.announcement.page);
        }
    }

    QuietButton {
        id: later
        objectName: "later"
        text: root.announcement.later
        KeyNavigation.right: download
        onClicked: root.close()
    }
}
