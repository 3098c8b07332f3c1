pragma ComponentBehavior: Bound
import QtQuick
import Lumvale
import Lumvale.Style

/// Page indicator.
Row {
    id: root

    required property int page
    required property int count

    spacing: 8
    Accessible.role: Accessible.StaticText
    Accessible.name: Texts.tr("page_of").arg(page + 1).arg(count)

    Repeater {
        model: root.count

        Rectangle {
            required property int index

            readonly property bool isCurrent: index === root.page

            objectName: isCurrent ? "currentDot" : "dot"
            width: 7
            height: 7
            radius: 3.5
            color: isCurrent ? GCColor.glowTeal : GCColor.white(0.18)

            RectangularGlow {
                visible: parent.isCurrent
                glow: GCColor.alpha(GCColor.glowTeal, 0.7)
                radius: parent.radius
                blur: 4
            }
        }
    }
}
