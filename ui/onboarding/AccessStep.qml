pragma ComponentBehavior: Bound
import QtQuick
import Lumvale
import Lumvale.Style

/// How to let the program see all of the disk, or that it does.
Column {
    id: root

    required property bool isGranted

    /// The user says that the permission has been given.
    signal checkRequested

    /// What was pressed is gone: it is for the sheet to say where the keyboard goes.
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

    // Beside each other, where a language leaves room for that.
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
            // Where nobody answers to it nothing happens.
            onClicked: Qt.openUrlExternally("x-apple.systempreferences:com.apple.preference.security?Privacy_AllFiles")
        }

        QuietButton {
            id: check
            objectName: "checkAgain"
            text: Texts.tr("btn_check_again")
            onClicked: {
                const reason = focusReason;
                root.checkRequested();
                if (root.isGranted)
                    root.focusLost(reason);
            }
        }
    }
}
