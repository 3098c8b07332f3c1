import QtQuick
import Lumvale
import Lumvale.Style

/// Context menu of an entry of the disk.
PopupMenu {
    id: root

    /// Exact path on the disk, as bytes.
    required property var path

    property int reason: Qt.PopupFocusReason

    /// Emitted on closing. `reason` is the focus reason that opened the menu.
    signal focusReturned(reason: int)

    /// Opens the menu at a position of its parent. If it was opened by keyboard, its first entry is highlighted.
    function openAt(position: point, reason: int): void {
        root.reason = reason;
        popup(position.x, position.y, reason === Qt.MouseFocusReason ? null : itemAt(0));
    }

    // Modal, so that the click that closes it doesn't act on what is behind it.
    modal: true
    dim: false
    accessibleName: FileActions.text(path)
    onClosed: focusReturned(reason)

    MenuEntry {
        text: Texts.tr(FileActions.showKey)
        onTriggered: FileActions.show(root.path)
    }

    MenuEntry {
        text: Texts.tr("copy_path")
        onTriggered: FileActions.copy(root.path)
    }
}
