pragma ComponentBehavior: Bound
import QtQuick
import QtQuick.Templates as T
import Lumvale
import Lumvale.Style

/// Button that shows the current language and opens the menu to change it.
BaseButton {
    id: root

    /// Focus reason of the button when the menu opened; restored when it closes.
    property int openReason: Qt.OtherFocusReason

    function open(): void {
        openReason = focusReason;
        menu.open();
    }

    objectName: "languageMenu"
    text: Localizer.languageName
    font: Type.message
    horizontalPadding: 12
    verticalPadding: 8
    spacing: 6
    focusPolicy: Qt.TabFocus
    Accessible.name: Texts.tr("language_label") + ", " + text
    onClicked: menu.visible ? menu.close() : open()
    Keys.onDownPressed: open()

    contentItem: Row {
        spacing: root.spacing

        Symbol {
            anchors.verticalCenter: parent.verticalCenter
            size: 11.5
            name: "globe"
            color: GCColor.textSecondary
        }

        PlainText {
            text: root.text
            font: root.font
        }
    }

    background: Rectangle {
        radius: Metrics.smallButtonRadius
        color: root.hovered || menu.visible ? GCColor.quietButtonHover : GCColor.quietButton

        FocusRing {
            visible: root.visualFocus
            parentRadius: Metrics.smallButtonRadius
        }
    }

    PopupMenu {
        id: menu

        readonly property int gap: 6

        accessibleName: Texts.tr("language_label")
        // Centered on the button; `margins` keeps it inside the window.
        x: Math.round((root.width - width) / 2)
        implicitWidth: 190
        closePolicy: T.Popup.CloseOnEscape | T.Popup.CloseOnPressOutsideParent
        onAboutToShow: {
            const end = root.mapToItem(null, 0, root.height).y + gap + implicitHeight + margins;
            y = end > root.Window.height ? -gap - implicitHeight : root.height + gap;
        }
        onOpened: currentIndex = Localizer.language
        onClosed: {
            root.forceActiveFocus(root.openReason);
            // In a sheet Qt has already returned the focus, with another reason.
            root.focusReason = root.openReason;
        }

        Repeater {
            model: Localizer.languageNames

            MenuChoice {
                required property int index
                required property string modelData

                width: menu.availableWidth
                text: modelData
                isChosen: index === Localizer.language
                onTriggered: Localizer.language = index
            }
        }
    }
}
