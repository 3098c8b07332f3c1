import QtQuick
import Lumvale
import Lumvale.Style

/// Row of an entry of the disk. Its path is shown as a tip, and a context menu shows the entry in the file manager or
/// copies the path.
KeyboardRow {
    id: root

    /// Exact path on the disk, as bytes.
    property var path

    readonly property alias pathText: menu.pathText

    onMenuRequested: (position, reason) => menu.openAt(position, reason)

    Tip {
        text: menu.isOpen || root.isLeaving ? "" : root.pathText
        isFocused: root.isCurrent
        isPressed: root.pressed
    }

    EntryMenuLoader {
        id: menu
        path: root.path
        onFocusReturned: reason => root.list.takeFocus(reason)
    }
}
