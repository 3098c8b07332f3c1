import QtQuick
import Lumvale
import Lumvale.Style

/// Row of an entry of the disk. Its path is shown as a tip, and a context menu shows the entry in the file manager or
/// copies the path.
KeyboardRow {
    id: root

    /// Exact path on the disk, as bytes.
    property var path

    readonly property string pathText: path === undefined ? "" : FileActions.text(path)

    onMenuRequested: (position, reason) => {
        if (pathText.length === 0)
            return;
        menu.active = true;
        (menu.item as EntryMenu).openAt(position, reason);
    }

    Tip {
        text: menu.isOpen ? "" : root.pathText
        isFocused: root.isCurrent
        isPressed: root.pressed
    }

    // Loaded at its first use.
    Loader {
        id: menu

        readonly property bool isOpen: status === Loader.Ready && (item as EntryMenu).visible

        active: false
        // Loader cannot use a bound component in Qt 6.4, so qmllint cannot resolve these ids.
        sourceComponent: EntryMenu {
            parent: root // qmllint disable unqualified
            path: root.path // qmllint disable unqualified
            onFocusReturned: reason => root.list.takeFocus(reason) // qmllint disable unqualified
        }
    }
}
