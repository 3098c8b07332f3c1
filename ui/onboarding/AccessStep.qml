pragma ComponentBehavior: Bound
import QtQuick
import Lumvale
import Lumvale.Style

/// Instructions for granting Full Disk Access, or the confirmation that it is granted.
Column {
    id: root

    required property bool isGranted

    /// The user checked the permission, and it was not granted.
    property bool wasCheckedInVain: false

    /// Emitted when the user asks to check the permission again.
    signal checkRequested

    /// Emitted when the pressed button has been hidden; the sheet has to move the focus.
    signal focusLost(reason: int)

    spacing: 10

    Row {
        anchors.horizontalCenter: parent.horizontalCenter
        visible: root.isGranted
        spacing: 8

        Symbol {
            anchors.verticalCenter: parent.verticalCenter
            size: 17
            name: "checkmark.circle.fill"
            color: GCColor.glowTeal
        }

        Label {
            objectName: "onboard_fda_granted"
            width: Math.min(implicitWidth, root.width - 25)
            text: Texts.tr("onboard_fda_granted")
            font: Type.note
            Accessible.role: Accessible.AlertMessage
        }
    }

    Repeater {
        model: root.isGranted ? [] : ["onboard_fda_step1", "onboard_fda_step2", "onboard_fda_step3"]

        Item {
            id: step

            required property int index
            required property string modelData

            width: root.width
            height: Math.max(circle.height, label.height)

            Rectangle {
                id: circle
                width: 18
                height: 18
                radius: 9
                color: GCColor.alpha(GCColor.glowTeal, 0.16)

                Label {
                    anchors.centerIn: parent
                    text: step.index + 1
                    font: Type.stepNumber
                    color: GCColor.glowTeal
                    Accessible.ignored: true
                }
            }

            Label {
                id: label
                objectName: step.modelData
                anchors.left: circle.right
                anchors.leftMargin: 10
                anchors.right: parent.right
                y: Math.max(0, Math.round((circle.height - height) / 2))
                text: Texts.tr(step.modelData)
                font: Type.note
                Accessible.name: (step.index + 1) + ". " + text
            }
        }
    }

    Label {
        objectName: "accessStillMissing"
        anchors.horizontalCenter: parent.horizontalCenter
        visible: root.wasCheckedInVain && !root.isGranted
        text: Texts.tr("access_still_missing")
        font: Type.note
        color: GCColor.amber
        Accessible.role: Accessible.AlertMessage
    }

    // Wraps the buttons where a translation is too long for one line.
    Flow {
        anchors.horizontalCenter: parent.horizontalCenter
        width: Math.min(parent.width, settings.implicitWidth + spacing + check.implicitWidth)
        visible: !root.isGranted
        topPadding: 6
        spacing: 10

        QuietButton {
            id: settings
            objectName: "openSettings"
            text: Texts.tr("btn_open_settings")
            // No effect on systems without a handler for this URL scheme.
            onClicked: Qt.openUrlExternally("x-apple.systempreferences:com.apple.preference.security?Privacy_AllFiles")
        }

        QuietButton {
            id: check
            objectName: "checkAgain"
            text: Texts.tr("btn_check_again")
            onClicked: {
                const reason = focusReason;
                root.checkRequested();
                root.wasCheckedInVain = !root.isGranted;
                if (root.isGranted)
                    root.focusLost(reason);
            }
        }
    }
}
