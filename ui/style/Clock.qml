import QtQuick

/// The present moment, for what moves. It goes on in every frame while what it is read for can be seen, and stands
/// otherwise: an item is as visible as before in a window that is hidden or minimised.
FrameAnimation {
    id: root

    required property Item seen

    /// Seconds since a fixed date.
    property real time: Motion.now()

    running: seen.visible && seen.Window.visibility !== Window.Hidden && seen.Window.visibility !== Window.Minimized
    onTriggered: time = Motion.now()
}
