import QtQuick
import Lumvale
import Lumvale.Style

/// A KeyboardList with type-ahead: typing makes the next row current whose name begins with the typed text. Escape
/// clears the text.
KeyboardList {
    id: root

    /// Makes a found row current. `found` is the model's index of the row, or of a child of it.
    function show(found: var): void {
        currentIndex = found.row;
    }

    function takeText(event: var): bool {
        const isTyping = typed.text.length > 0;
        if (event.key === Qt.Key_Escape) {
            typed.clear();
            return isTyping;
        }
        const isText = event.text >= " " && event.key !== Qt.Key_Delete
                     && !(event.modifiers & (Qt.ControlModifier | Qt.AltModifier | Qt.MetaModifier));
        if (!isText || event.key === Qt.Key_Space && !isTyping)
            return false;
        const found = typed.type(model, event.text, currentIndex);
        if (found.valid)
            show(found);
        return true;
    }

    onActiveFocusChanged: {
        if (!activeFocus)
            typed.clear();
    }

    TypeAhead {
        id: typed
        pause: Motion.typingPause
    }

    StatusText {
        parent: root
        text: hint.text
    }

    Rectangle {
        parent: root
        anchors.right: parent.right
        anchors.bottom: parent.bottom
        anchors.margins: 8
        z: 1
        width: hint.width + 2 * hint.x
        height: hint.height + 2 * hint.y
        visible: typed.text.length > 0
        radius: Metrics.rowRadius
        color: GCColor.dialog
        border.color: GCColor.panelStroke

        Label {
            id: hint
            objectName: "typedText"
            x: 12
            y: 6
            width: Math.min(implicitWidth, root.width - 2 * (x + 8))
            text: typed.text.length > 0 ? Texts.tr(typed.hasMatch ? "typed_found" : "typed_not_found").arg(typed.text) : ""
            font: Type.message
            color: typed.hasMatch ? GCColor.textSecondary : GCColor.amber
            Accessible.ignored: true
        }
    }
}
