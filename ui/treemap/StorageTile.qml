import QtQuick
import QtQuick.Templates as T
import Lumvale.Style

/// One tile of the treemap. The clickable area is the whole rectangle; the visible face is inset to leave gaps. A name
/// whose words fit is wrapped, any other is elided on one line. The size is shown only if it fits.
T.AbstractButton {
    id: root

    required property rect rect
    required property string name
    required property string size

    property color color
    property bool isSelected: false

    readonly property int margin: width > 80 ? 7 : 4
    readonly property real maxTextHeight: face.height - 2 * 5
    readonly property bool hasRoom: width > 46 && height > 30
    readonly property bool showsName: hasRoom && nameText.contentHeight <= maxTextHeight
    readonly property bool showsSize: showsName && height > 46 && sizeText.contentWidth <= nameText.width && nameText.contentHeight + sizeText.contentHeight <= maxTextHeight

    objectName: "tile"
    x: rect.x
    y: rect.y
    z: visualFocus ? 2 : isSelected ? 1 : 0
    width: rect.width
    height: rect.height
    hoverEnabled: true
    focusPolicy: Qt.ClickFocus

    Accessible.role: Accessible.Button
    Accessible.name: name + ", " + size
    Accessible.selectable: true
    Accessible.selected: isSelected
    Accessible.onPressAction: clicked()
    Keys.onReturnPressed: clicked()
    Keys.onEnterPressed: clicked()

    // Aligned to whole pixels and inset by one pixel on each side, unless the tile is too small for that.
    Rectangle {
        id: face

        readonly property int alignedWidth: Math.round(root.rect.right) - Math.round(root.rect.left)
        readonly property int alignedHeight: Math.round(root.rect.bottom) - Math.round(root.rect.top)
        readonly property int insetX: alignedWidth > 3 ? 1 : 0
        readonly property int insetY: alignedHeight > 3 ? 1 : 0

        x: Math.round(root.x) - root.x + insetX
        y: Math.round(root.y) - root.y + insetY
        width: alignedWidth - 2 * insetX
        height: alignedHeight - 2 * insetY
        radius: Metrics.tileRadius
        color: root.color

        // Darkens the tile behind the text for contrast.
        Rectangle {
            anchors.fill: parent
            radius: parent.radius
            visible: root.showsName
            gradient: Gradient {
                GradientStop {
                    position: 0
                    color: GCColor.alpha(GCColor.ink, 0.62)
                }
                GradientStop {
                    position: Math.min(1, (sizeText.y + sizeText.contentHeight) / face.height)
                    color: GCColor.alpha(GCColor.ink, 0.54)
                }
                GradientStop {
                    position: 1
                    color: GCColor.alpha(GCColor.ink, 0)
                }
            }
        }

        // Measures the name as wrapped between words.
        PlainText {
            id: wrappedName
            readonly property bool fits: contentWidth <= width && contentHeight <= root.maxTextHeight
            width: nameText.width
            visible: false
            text: nameText.text
            wrapMode: Text.WordWrap
            font: Type.finest
        }

        PlainText {
            id: nameText
            objectName: "tileName"
            x: root.margin
            y: 5
            width: face.width - 2 * x
            visible: root.showsName
            text: root.hasRoom ? root.name : ""
            wrapMode: wrappedName.fits ? Text.WordWrap : Text.NoWrap
            elide: wrappedName.fits ? Text.ElideNone : Text.ElideRight
            font: Type.fine
            // Shrinks the font a little before the name is wrapped or elided.
            fontSizeMode: Text.HorizontalFit
            minimumPixelSize: Type.finest.pixelSize
            color: GCColor.white(0.75)
        }

        PlainText {
            id: sizeText
            objectName: "tileSize"
            x: root.margin
            y: nameText.y + nameText.contentHeight
            visible: root.showsSize
            text: root.hasRoom ? root.size : ""
            font: Type.finest
            color: GCColor.white(0.6)
        }

        Rectangle {
            anchors.fill: parent
            radius: parent.radius
            visible: root.hovered
            color: GCColor.hoverOverlay
        }

        Rectangle {
            anchors.fill: parent
            radius: parent.radius
            visible: root.isSelected
            color: "transparent"
            border.color: GCColor.white(1)
            border.width: 2
        }

        FocusRing {
            outset: 2
            parentRadius: parent.radius
            visible: root.visualFocus
        }
    }
}
