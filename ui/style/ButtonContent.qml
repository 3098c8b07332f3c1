import QtQuick
import QtQuick.Templates as T
import Lumvale.Style

/// Content item of buttons: a symbol, or a spinner while the button is busy, and the button's text, centered.
Item {
    id: root

    required property T.Button button
    required property color color
    property string symbol
    property real symbolSize: 13
    property bool busy: false

    implicitWidth: row.implicitWidth
    implicitHeight: row.implicitHeight

    Row {
        id: row
        anchors.centerIn: parent
        spacing: root.button.spacing

        Symbol {
            anchors.verticalCenter: parent.verticalCenter
            size: root.symbolSize
            name: root.symbol
            color: root.color
            visible: root.symbol.length > 0 && !root.busy
        }

        Spinner {
            anchors.verticalCenter: parent.verticalCenter
            width: 12
            height: 12
            visible: root.busy
        }

        PlainText {
            anchors.verticalCenter: parent.verticalCenter
            text: root.button.text
            font: root.button.font
            color: root.color
        }
    }
}
