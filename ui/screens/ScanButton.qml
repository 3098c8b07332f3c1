import QtQuick
import Lumvale
import Lumvale.Style

/// Starts a scan; while that runs it says so, and rests.
GradientButton {
    id: root

    required property bool isScanning
    /// How the keyboard had come to what started the scan, which is lost while the button is disabled.
    property int startReason: Qt.OtherFocusReason

    objectName: "scanButton"
    text: Texts.tr(isScanning ? "btn_scanning" : "btn_scan")
    glow: GCColor.alpha(GCColor.glowTeal, 0.35)
    enabled: !isScanning
    onClicked: startReason = focusReason
    onEnabledChanged: {
        if (enabled && focus)
            focusReason = startReason;
    }
}
