import QtQuick
import QtQuick.Templates as T
import Lumvale
import Lumvale.Style

/// One photo or video, large, with its name, size, date, dimensions and position in its group. It can be ticked unless
/// it is the kept one. A context menu tells where its original is.
FocusScope {
    id: root

    required property int index
    required property var assetID
    required property string name
    required property string itemSize
    required property string date
    required property string dimensions
    required property bool isKept
    required property bool isFavorite
    required property bool isVideo
    required property bool checked

    required property int count
    required property bool hasVisualFocus
    required property real headerMargin

    readonly property string title: name.length > 0 ? name : itemSize
    readonly property string facts: itemSize
                                    + (date.length > 0 ? " · " + date : "")
                                    + (dimensions.length > 0 ? " · " + dimensions : "")
                                    + (isVideo ? " · " + Texts.tr("photo_is_video") : "")
                                    + (isFavorite ? " · ♥" : "")
                                    + " · " + (index + 1) + " " + Texts.tr("word_of") + " " + count

    signal toggled
    signal stepped(by: int)

    objectName: "photoPage"
    // Hidden pages load no picture.
    visible: ListView.isCurrentItem
    Accessible.role: Accessible.Graphic
    Accessible.name: title + ", " + Texts.tr("duplicates_kept_label")
    Accessible.description: facts
    Accessible.focusable: true
    Accessible.ignored: !isKept
    Keys.onPressed: event => event.accepted = menu.openByKey(event)

    Column {
        id: header
        anchors.left: parent.left
        anchors.right: parent.right
        anchors.rightMargin: root.headerMargin
        spacing: 5

        PlainText {
            objectName: "previewTitle"
            width: parent.width
            text: root.title
            font: Type.sheetTitle
            elide: Text.ElideMiddle
            maximumLineCount: 1
            Accessible.role: Accessible.Heading
            Accessible.name: text
        }

        Label {
            objectName: "previewFacts"
            width: parent.width
            text: root.facts
            font: Type.note
            color: GCColor.textSecondary
        }
    }

    QuietButton {
        objectName: "previousButton"
        anchors.left: parent.left
        anchors.verticalCenter: stage.verticalCenter
        horizontalPadding: 8
        verticalPadding: 12
        symbol: "chevron.left"
        focusPolicy: Qt.NoFocus
        visible: root.count > 1
        enabled: root.index > 0
        Accessible.name: Texts.tr("photo_previous")
        onClicked: root.stepped(-1)
    }

    QuietButton {
        objectName: "nextButton"
        anchors.right: parent.right
        anchors.verticalCenter: stage.verticalCenter
        horizontalPadding: 8
        verticalPadding: 12
        symbol: "chevron.right"
        focusPolicy: Qt.NoFocus
        visible: root.count > 1
        enabled: root.index < root.count - 1
        Accessible.name: Texts.tr("photo_next")
        onClicked: root.stepped(1)
    }

    Rectangle {
        id: stage
        anchors.left: parent.left
        anchors.right: parent.right
        anchors.top: header.bottom
        anchors.bottom: parent.bottom
        anchors.leftMargin: 44
        anchors.rightMargin: 44
        anchors.topMargin: 18
        radius: Metrics.tileRadius
        color: GCColor.white(0.05)
        border.color: root.checked ? GCColor.danger : GCColor.alpha(GCColor.glowTeal, 0.55)
        border.width: root.isKept || root.checked ? 2 : 0

        EntryMenuLoader {
            id: menu
            path: picture.originalPath
            onFocusReturned: reason => root.forceActiveFocus(reason)
        }

        RightButtonArea {
            onPressed: mouse => menu.openAt(Qt.point(mouse.x, mouse.y), Qt.MouseFocusReason)
        }

        PhotoThumbnail {
            id: picture
            objectName: "preview"
            anchors.fill: parent
            anchors.margins: 2
            isLarge: true
            assetID: root.assetID ?? "" // undefined in delegates that are being removed
        }

        Column {
            anchors.centerIn: parent
            visible: !picture.isLoaded
            spacing: 18

            Symbol {
                objectName: "previewPlaceholder"
                anchors.horizontalCenter: parent.horizontalCenter
                size: 44
                name: picture.iCloudOnly ? "icloud" : "photo.on.rectangle.angled"
                color: GCColor.white(picture.iCloudOnly ? 0.4 : 0.16)
            }

            Label {
                objectName: "previewMissing"
                width: evenWidth(Metrics.promptWidth)
                visible: picture.isMissing
                text: Texts.tr(picture.iCloudOnly ? "photo_not_on_disk"
                               : root.isVideo ? "video_not_shown" : "photo_not_shown")
                color: GCColor.textSecondary
                horizontalAlignment: Text.AlignHCenter
                lineHeight: 1.35
                Accessible.role: Accessible.AlertMessage
            }
        }

        Badge {
            anchors.left: parent.left
            anchors.top: parent.top
            anchors.margins: 10
            visible: root.isKept
            text: Texts.tr("duplicates_kept_label")
            color: GCColor.glowTeal
        }

        T.AbstractButton {
            id: box
            objectName: "previewCheckBox"
            anchors.right: parent.right
            anchors.top: parent.top
            anchors.margins: 2
            width: 36
            height: 36
            visible: !root.isKept
            focus: !root.isKept
            hoverEnabled: true
            // Makes screen readers announce a check box; the state shown still comes from the model.
            checkable: true
            checked: root.checked
            Accessible.focusable: true
            Accessible.checkable: true
            Accessible.checked: root.checked
            Accessible.name: root.title
            Accessible.description: root.facts
            Accessible.onPressAction: root.toggled()
            Accessible.onToggleAction: root.toggled()
            onClicked: root.toggled()

            CheckMark {
                id: mark
                anchors.centerIn: parent
                isChecked: root.checked
                color: GCColor.scrim
                outline: box.hovered ? GCColor.textPrimary : GCColor.faded
                from: GCColor.danger
                to: GCColor.dangerLight

                FocusRing {
                    visible: box.activeFocus && (box.visualFocus || root.hasVisualFocus)
                    parentRadius: 5
                }
            }
        }
    }
}
