pragma ComponentBehavior: Bound
import QtQuick
import QtQuick.Templates as T
import Lumvale
import Lumvale.Style

/// The tab bar. It is a single tab stop. Left, Right, Home and End move the focus without changing the tab, since that
/// would destroy the current screen; Space and Return select the focused tab.
Panel {
    id: root

    required property list<string> titleKeys
    required property int tab

    signal chosen(tab: int)

    function moveFocus(index: int): void {
        const tab = tabs.itemAt(Math.max(0, Math.min(index, tabs.count - 1)));
        if (tab)
            tab.forceActiveFocus(Qt.TabFocusReason);
    }

    implicitWidth: row.width + 2 * Metrics.tabSpacing
    implicitHeight: row.height + 2 * Metrics.tabSpacing
    radius: Metrics.tabBarRadius
    Accessible.role: Accessible.PageTabList
    Accessible.name: Texts.tr("tab_list")

    Row {
        id: row
        x: Metrics.tabSpacing
        y: Metrics.tabSpacing
        spacing: Metrics.tabSpacing

        Repeater {
            id: tabs
            model: root.titleKeys

            T.TabButton {
                id: button

                required property int index
                required property string modelData

                readonly property bool isCurrent: index === root.tab

                objectName: modelData
                checked: isCurrent
                text: Texts.tr(modelData)
                font: Type.smallButton
                horizontalPadding: 14
                verticalPadding: 7
                implicitWidth: Math.ceil(implicitContentWidth + leftPadding + rightPadding)
                implicitHeight: implicitContentHeight + topPadding + bottomPadding
                focusPolicy: Qt.TabFocus
                activeFocusOnTab: isCurrent
                Accessible.name: text
                Accessible.description: Texts.tabKeys(index)
                Accessible.selected: isCurrent
                Accessible.onPressAction: clicked()
                onClicked: root.chosen(index)
                Keys.onReturnPressed: clicked()
                Keys.onEnterPressed: clicked()
                Keys.onLeftPressed: root.moveFocus(index - 1)
                Keys.onRightPressed: root.moveFocus(index + 1)
                Keys.onPressed: event => {
                    event.accepted = event.key === Qt.Key_Home || event.key === Qt.Key_End;
                    if (event.accepted)
                        root.moveFocus(event.key === Qt.Key_Home ? 0 : tabs.count - 1);
                }

                Tip {
                    text: Texts.tabKeys(button.index)
                    isFocused: button.visualFocus
                    isPressed: button.pressed
                }

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
}
