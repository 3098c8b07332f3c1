import QtQuick
import QtQuick.Templates as T

/// Shows a text below a control that has been hovered, or has had the visual focus, for half a second. After a press it
/// stays away until the pointer has left the control.
Loader {
    id: root

    required property string text
    required property bool isFocused
    required property bool isPressed

    property bool wasPressed: false

    anchors.fill: parent
    // Below the control's items, so that they receive hover events as well.
    z: -1
    active: text.length > 0 && (isFocused || pointer.hovered && !wasPressed)
    onIsPressedChanged: wasPressed = true

    HoverHandler {
        id: pointer
        onHoveredChanged: root.wasPressed = false
    }

    // Loader cannot use a bound component in Qt 6.4, so qmllint cannot resolve these ids.
    sourceComponent: T.ToolTip {
        id: tip
        objectName: "tip"
        parent: root.parent // qmllint disable unqualified
        delay: 500
        visible: root.active // qmllint disable unqualified
        closePolicy: T.Popup.NoAutoClose
        margins: Metrics.tabSpacing
        y: parent.height + margins
        horizontalPadding: 10
        verticalPadding: 6
        implicitWidth: Math.min(contentItem.implicitWidth + leftPadding + rightPadding, Metrics.tipWidth)
        implicitHeight: contentItem.implicitHeight + topPadding + bottomPadding
        onAboutToShow: x = pointer.hovered ? Math.round(pointer.point.position.x) : 0 // qmllint disable unqualified

        contentItem: PlainText {
            objectName: "tipText"
            text: root.text // qmllint disable unqualified
            font: Type.caption
            wrapMode: Text.WrapAnywhere
        }

        background: Rectangle {
            radius: 6
            color: GCColor.dialog
            border.color: GCColor.panelStroke
        }
    }
}
