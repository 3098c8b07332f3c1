import QtQuick
import Lumvale
import Lumvale.Style

/// Button that starts a scan; disabled and relabeled while the scan runs.
GradientButton {
    id: root

    required property bool isScanning
    /// Focus reason of the control that started the scan; restored when the button is enabled again.
    property int startReason: Qt.OtherFocusReason

    function activate(): void {
        if (visible && enabled)
            clicked();
    }

    objectName: "scanButton"
    shortcut: Texts.refreshKeys
    text: Texts.tr(isScanning ? "btn_scanning" : "btn_scan")
    glow: GCColor.alpha(GCColor.glowTeal, 0.35)
    enabled: !isScanning
    onClicked: startReason = focusReason
    onEnabledChanged: {
        if (enabled && focus)
            focusReason = startReason;
    }
}
