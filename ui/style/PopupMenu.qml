import QtQuick
import QtQuick.Templates as T

/// Base of the menus. It is as wide as its widest item.
T.Menu {
    id: root

    /// Name for screen readers.
    required property string accessibleName

    function widestEntry(): real {
        let width = 0;
        for (let i = 0; i < count; ++i)
            width = Math.max(width, itemAt(i).implicitWidth);
        return width;
    }

    margins: Metrics.screenPadding
    padding: 6
    implicitWidth: widestEntry() + 2 * padding
    implicitHeight: contentItem.implicitHeight + 2 * padding

    contentItem: ListView {
        implicitHeight: contentHeight
        model: root.contentModel
        currentIndex: root.currentIndex
        interactive: false
    }

    background: Rectangle {
        radius: Metrics.smallButtonRadius
        color: GCColor.dialog
        border.color: GCColor.panelStroke
    }
}
