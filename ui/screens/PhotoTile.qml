import QtQuick
import QtQuick.Templates as T
import Lumvale
import Lumvale.Style

/// One photo or video of a group, with its name. The tile is a check box, except for the photo that is kept, which is
/// not interactive.
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

    signal clicked

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

    Tip {
        parent: (root.isKept ? root : button) as Item
        text: root.name
        isFocused: root.isCurrent
        isPressed: button.pressed
    }

    T.AbstractButton {
        id: button
        objectName: "photoCheckBox"
        anchors.fill: parent
        visible: !root.isKept
        focus: !root.isKept
        focusPolicy: Qt.NoFocus
        hoverEnabled: true
        // Makes screen readers announce a check box; the state shown still comes from the model.
        checkable: true
        checked: root.checked
        Accessible.ignored: root.isKept
        Accessible.focusable: !root.isKept
        Accessible.checkable: true
        Accessible.checked: root.checked
        Accessible.name: root.title
        Accessible.description: root.description
        Accessible.onPressAction: root.clicked()
        Accessible.onToggleAction: root.clicked()
        onClicked: root.clicked()
        // The button accepts Space, so the list doesn't receive that key.
        Keys.onPressed: event => {
            root.list.hasVisualFocus = true;
            event.accepted = root.list.takeText(event);
        }

        RowPointerHandler {
            list: root.list
        }

        RightButtonArea {}
    }
}
