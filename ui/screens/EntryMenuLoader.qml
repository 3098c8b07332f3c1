import QtQuick
import Lumvale

/// The context menu of its parent, which stands for an entry of the disk. Loaded at its first use.
Loader {
    id: root

    /// Exact path on the disk, as bytes. Without one there is no menu.
    required property var path

    readonly property string pathText: path === undefined ? "" : FileActions.text(path)
    readonly property bool isOpen: status === Loader.Ready && (item as EntryMenu).visible

    /// Emitted on closing. `reason` is the focus reason that opened the menu.
    signal focusReturned(reason: int)

    /// Opens the menu at a position of the parent.
    function openAt(position: point, reason: int): void {
        if (pathText.length === 0)
            return;
        active = true;
        (item as EntryMenu).openAt(position, reason);
    }

    /// Opens the menu if the key asks for it. Returns false for other keys.
    function openByKey(event: var): bool {
        const opensMenu = event.key === Qt.Key_Menu || event.key === Qt.Key_F10 && event.modifiers === Qt.ShiftModifier;
        if (opensMenu)
            openAt(Qt.point(0, parent.height), Qt.TabFocusReason);
        return opensMenu;
    }

    active: false
    // Loader cannot use a bound component in Qt 6.4, so qmllint cannot resolve these ids.
    sourceComponent: EntryMenu {
        parent: root.parent // qmllint disable unqualified
        path: root.path // qmllint disable unqualified
        onFocusReturned: reason => root.focusReturned(reason) // qmllint disable unqualified
    }
}
