import QtQuick
import QtQuick.Templates as T
import Lumvale
import Lumvale.Style

/// One photo or video of a group, with its name. The tile is a check box, except for the photo that is kept. A double
/// click or the button in the corner asks for a preview. The tip and the context menu tell where its original is.
FocusScope {
    id: root

    required property int index
    required property var assetID
    required property string name
    required property bool isKept
    required property bool isFavorite
    required property bool isVideo
    required property bool checked

    required property KeyboardList list
    required property bool isCurrent
    /// Size and date, which the photos of the group have in common.
    required property string facts

    readonly property string title: name.length > 0 ? name : facts
    readonly property string description: facts
                                           + (isVideo ? ", " + Texts.tr("photo_is_video") : "")
                                           + (picture.isInCloud ? ", " + Texts.tr("photo_in_cloud") : "")
                                           + (isFavorite ? ", ♥" : "")
                                           + (menu.pathText.length > 0 ? ", " + menu.pathText : "")

    signal clicked
    signal previewRequested

    objectName: "photoTile"
    width: Metrics.photoSide
    height: label.y + label.height
    Accessible.role: Accessible.Graphic
    Accessible.name: title + ", " + Texts.tr("duplicates_kept_label")
    Accessible.description: description
    Accessible.focusable: true
    Accessible.ignored: !isKept
    ListView.onPooled: visible = false
    ListView.onReused: visible = true
    Keys.onPressed: event => event.accepted = menu.openByKey(event)

    PhotoPicture {
        id: picture
        width: parent.width
        height: width
        assetID: root.assetID
        isKept: root.isKept
        isFavorite: root.isFavorite
        isVideo: root.isVideo
        isChecked: root.checked
        isHovered: button.hovered

        FocusRing {
            visible: root.isCurrent
            parentRadius: Metrics.tileRadius
        }
    }

    PlainText {
        id: label
        anchors.top: picture.bottom
        anchors.topMargin: 5
        width: parent.width
        text: root.name
        font: Type.fine
        color: GCColor.textSecondary
        horizontalAlignment: Text.AlignHCenter
        elide: Text.ElideMiddle
        maximumLineCount: 1
        Accessible.ignored: true
    }

    EntryMenuLoader {
        id: menu
        path: picture.originalPath
        onFocusReturned: reason => root.list.takeFocus(reason)
    }

    T.AbstractButton {
        id: button
        objectName: root.isKept ? "keptPhoto" : "photoCheckBox"
        anchors.fill: parent
        focus: !root.isKept
        focusPolicy: Qt.NoFocus
        hoverEnabled: true
        // Makes screen readers announce a check box; the state shown still comes from the model.
        checkable: !root.isKept
        checked: root.checked
        Accessible.ignored: root.isKept
        Accessible.focusable: !root.isKept
        Accessible.checkable: !root.isKept
        Accessible.checked: root.checked
        Accessible.name: root.title
        Accessible.description: root.description
        Accessible.onPressAction: root.clicked()
        Accessible.onToggleAction: root.clicked()
        onClicked: root.clicked()
        onDoubleClicked: {
            root.clicked(); // takes back the toggle of the first click
            root.previewRequested();
        }
        // The button accepts Space, so the list doesn't receive that key.
        Keys.onPressed: event => {
            root.list.hasVisualFocus = true;
            event.accepted = root.list.takeText(event);
        }

        Tip {
            text: menu.isOpen ? "" : root.title + (menu.pathText.length > 0 ? "\n" + menu.pathText : "")
            isFocused: root.isCurrent
            isPressed: button.pressed
        }

        RowPointerHandler {
            list: root.list
        }

        RightButtonArea {
            onPressed: mouse => menu.openAt(Qt.point(mouse.x, mouse.y), Qt.MouseFocusReason)
        }

        T.AbstractButton {
            id: loupe

            // The button itself stays visible for screen readers.
            readonly property bool isDrawn: button.hovered || root.isCurrent

            objectName: "previewButton"
            x: picture.width - width - 4
            y: picture.height - height - 4
            width: 26
            height: 26
            focusPolicy: Qt.NoFocus
            hoverEnabled: true
            Accessible.role: Accessible.Button
            Accessible.name: Texts.tr("photo_preview") + ", " + root.title
            Accessible.onPressAction: root.previewRequested()
            onClicked: root.previewRequested()
            contentItem: Symbol {
                visible: loupe.isDrawn
                size: 13
                name: "magnifyingglass"
                color: loupe.hovered ? GCColor.textPrimary : GCColor.faded
            }
            background: Rectangle {
                visible: loupe.isDrawn
                radius: width / 2
                color: GCColor.scrim
            }
        }
    }
}
