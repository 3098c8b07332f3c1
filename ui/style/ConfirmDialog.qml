import QtQuick
import QtQuick.Templates as T
import Lumvale.Style

/// Asks for confirmation of a destructive action. Escape cancels. The cancel button has the initial focus, so that an
/// accidental Return destroys nothing. If the handler of `confirmed` sets `busy`, the dialog stays open and shows the
/// progress until `busy` is reset; canceling then requests a stop.
Dialog {
    id: root

    required property string cancelText
    required property string confirmText

    property bool isDestructive: true // gives the button its warning color
    property bool busy: false
    property bool canStop: true // canceling is possible while busy
    property real progress: -1 // share from 0 to 1; negative if unknown
    property string progressText

    signal confirmed
    signal stopRequested

    heading: busy ? confirmText : title
    hidesMessage: busy
    closePolicy: busy ? T.Popup.NoAutoClose : T.Popup.CloseOnEscape
    // Resets the focus before the enter transition, since keys are handled during it.
    onAboutToShow: cancel.focus = true
    // Shows the focus ring only if the dialog was opened by keyboard.
    onOpened: cancel.focusReason = returnReason
    onBusyChanged: {
        if (!busy)
            close();
    }

    bodyHeight: line.implicitHeight
    body: ProgressLine {
        id: line
        width: parent.width
        visible: root.busy
        value: root.progress
        text: root.progressText
    }

    GradientButton {
        id: confirm
        objectName: "confirm"
        from: root.isDestructive ? GCColor.dangerLight : GCColor.deepTeal
        to: root.isDestructive ? GCColor.danger : GCColor.glowTeal
        radius: Metrics.smallButtonRadius
        horizontalPadding: 16
        verticalPadding: 10
        font: Type.smallButton
        text: root.confirmText
        busy: root.busy
        enabled: !root.busy
        KeyNavigation.left: cancel
        onClicked: {
            // A disabled button loses the focus.
            cancel.forceActiveFocus(focusReason);
            root.confirmed();
            if (!root.busy)
                root.close();
        }
    }

    QuietButton {
        id: cancel
        objectName: "cancel"
        visible: !root.busy || root.canStop
        text: root.cancelText
        KeyNavigation.right: confirm
        Keys.onEscapePressed: event => {
            event.accepted = root.busy;
            if (root.busy)
                root.stopRequested();
        }
        onClicked: {
            if (root.busy)
                root.stopRequested();
            else
                root.close();
        }
    }
}
