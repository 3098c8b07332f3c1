pragma Singleton
import QtQuick

/// Animation parameters. Cannot depend on ReducedMotion: a singleton that imports its own module is a cycle.
QtObject {
    readonly property real pulseSpeed: 1.3 // radians per second; see Clock.phase()
    readonly property real slowPulseSpeed: 1.1
    readonly property real spinSpeed: 160 // degrees per second
    readonly property int quickDuration: 120 // milliseconds; for direct responses to input
    // Milliseconds for each of two steps: rows that leave a list fade, then the others close up.
    readonly property int removalDuration: 75
    readonly property int typingPause: 1000 // milliseconds; ends the text typed in a list
}
