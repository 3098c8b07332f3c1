import QtQuick
import Lumvale.Style

/// Time source for animations, updated in every frame while `target` is visible. The window is checked as well:
/// items keep `visible` while their window is hidden or minimized. Stands still with reduced motion. Animated components
/// derive their state from the time alone.
FrameAnimation {
    id: root

    required property Item target
    /// Runs with reduced motion as well: without the animation the program would seem to hang.
    property bool isEssential: false

    /// Seconds since the Unix epoch.
    property real time: now()

    function now(): real {
        return Date.now() / 1000;
    }

    /// Sine wave between 0 and 1; `speed` is in radians per second. 0 with reduced motion.
    function phase(speed: real): real {
        return ReducedMotion.isRequested ? 0 : (Math.sin(speed * time) + 1) / 2;
    }

    running: (isEssential || !ReducedMotion.isRequested) && target.visible
             && target.Window.visibility !== Window.Hidden && target.Window.visibility !== Window.Minimized
    onTriggered: time = now()
}
