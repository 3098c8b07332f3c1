pragma Singleton
import QtQuick

/// Animation parameters. Animated components derive their state from the time alone.
QtObject {
    readonly property real pulseSpeed: 1.3 // radians per second; see phase()
    readonly property real slowPulseSpeed: 1.1
    readonly property real spinSpeed: 160 // degrees per second
    readonly property int quickDuration: 120 // milliseconds; for direct responses to input
    readonly property int typingPause: 1000 // milliseconds; ends the text typed in a list

    /// Seconds since the Unix epoch.
    function now(): real {
        return Date.now() / 1000;
    }

    /// Sine wave between 0 and 1; `speed` is in radians per second.
    function phase(speed: real, seconds: real): real {
        return (Math.sin(speed * seconds) + 1) / 2;
    }
}
