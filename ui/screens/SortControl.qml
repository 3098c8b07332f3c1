pragma ComponentBehavior: Bound
import QtQuick
import QtQuick.Templates as T
import Lumvale
import Lumvale.Style

/// Radio buttons for the order of a list. They are a single tab stop; Left and Right choose.
Row {
    id: root

    required property bool isBySize

    signal chosen(bySize: bool)

    function chooseByKey(index: int): void {
        chosen(index === 1);
        buttons.itemAt(index).forceActiveFocus(Qt.TabFocusReason);
    }

    spacing: 2
    Accessible.role: Accessible.Grouping
    Accessible.name: Texts.tr("sort_order")

    Repeater {
        id: buttons
        model: ["sort_by_name", "sort_by_size"]

        T.RadioButton {
            id: button

            required property int index
            required property string modelData

            readonly property bool isCurrent: root.isBySize === (index === 1)

            objectName: modelData
            // The state comes from `isBySize` alone.
            checkable: false
            text: Texts.tr(modelData)
            font: Type.caption
            horizontalPadding: 9
            verticalPadding: 4
            implicitWidth: Math.ceil(implicitContentWidth + leftPadding + rightPadding)
            implicitHeight: implicitContentHeight + topPadding + bottomPadding
            focusPolicy: Qt.TabFocus
            activeFocusOnTab: isCurrent
            Accessible.name: text
            Accessible.checkable: true
            Accessible.checked: isCurrent
            Accessible.onPressAction: clicked()
            onClicked: root.chosen(index === 1)
            Keys.onReturnPressed: clicked()
            Keys.onEnterPressed: clicked()
            Keys.onLeftPressed: root.chooseByKey(0)
            Keys.onRightPressed: root.chooseByKey(1)

            contentItem: PlainText {
                text: button.text
                font: button.font
                color: button.isCurrent || button.hovered ? GCColor.textPrimary : GCColor.textSecondary
            }

            background: Rectangle {
                radius: Metrics.tabRadius
                color: button.isCurrent ? GCColor.selectedTab : "transparent"

                FocusRing {
                    visible: button.visualFocus
                    outset: 0
                    parentRadius: Metrics.tabRadius
                }
            }
        }
    }
}
