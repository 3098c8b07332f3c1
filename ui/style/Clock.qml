import QtQuick

/// Time source for animations, updated in every frame while `target` is visible. The window is checked as well:
/// items keep `visible` while their window is hidden or minimized.
FrameAnimation {
    id: root

    required property Item target

    /// Seconds since the Unix epoch.
    property real time: Motion.now()

    running: target.visible && target.Window.visibility !== Window.Hidden
             && target.Window.visibility !== Window.Minimized
    onTriggered: time = Motion.now()
}
