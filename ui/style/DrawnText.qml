import QtQuick

/// A text that gives its `text` a second name, for types whose own `text` differs from the characters that are drawn.
Text {
    id: root
    property alias drawn: root.text
}
