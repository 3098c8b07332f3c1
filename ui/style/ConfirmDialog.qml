import QtQuick
import QtQuick.Templates as T
import Lumvale.Style

/// Asks before something is destroyed, then stays in front until it is done. Escape cancels; the keyboard starts
/// on the harmless button, so that a hasty Return destroys nothing.
Sheet {
    id: root

    required property string title
    required property string message
    required property string cancelText
    required property string confirmText

    readonly property bool busy: action.running

    /// The blocking call belongs in its handler: by then the dialog is seen to be busy.
    signal confirmed

    closePolicy: busy ? T.Popup.NoAutoClose : T.Popup.CloseOnEscape
    implicitWidth: Metrics.dialogWidth
    implicitHeight: content.implicitHeight + 2 * padding
    // Also where it was left on the other button: keys may come before it has faded in. A ring is for those who came
    // by keys.
    onAboutToShow: cancel.focus = true
    onOpened: cancel.focusReason = returnReason

    BlockingAction {
        id: action
        onReady: root.confirmed()
        onFinished: root.close()
    }

    Column {
        id: content
        width: parent.width
        spacing: 10
        Accessible.role: Accessible.AlertMessage
        Accessible.name: root.title
        Accessible.description: root.message

        Label {
            width: parent.width
            text: root.title
            font: Type.heading
        }

        Label {
            width: parent.width
            text: root.message
            color: GCColor.textSecondary
            lineHeight: 1.25
        }

        // Right-aligned, and one above the other where a language needs more room than there is.
        Flow {
            width: parent.width
            topPadding: 12
            spacing: 10
            layoutDirection: Qt.RightToLeft

            GradientButton {
                id: confirm
                objectName: "confirm"
                from: GCColor.dangerLight
                to: GCColor.danger
                radius: Metrics.smallButtonRadius
                horizontalPadding: 16
                verticalPadding: 10
                font: Type.smallButton
                text: root.confirmText
                busy: root.busy
                enabled: !root.busy
                KeyNavigation.left: cancel
                onClicked: action.start(content)
            }

            QuietButton {
                id: cancel
                objectName: "cancel"
                text: root.cancelText
                enabled: !root.busy
                KeyNavigation.right: confirm
                onClicked: root.close()
            }
        }
    }
}
