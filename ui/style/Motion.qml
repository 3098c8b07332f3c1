pragma Singleton
import QtQuick

/// Animation parameters. Animated components derive their state from the time alone.
QtObject {
    readonly property real breathing: 1.3 // radians per second; see phase()
    readonly property real calmBreathing: 1.1
    readonly property real spinning: 160 // degrees per second
    readonly property int quick: 120 // milliseconds; for direct responses to input

    /// Seconds since the Unix epoch.
    function now(): real {
        return Date.now() / 1000;
    }

    /// Sine wave between 0 and 1; `speed` is in radians per second.
    function phase(speed: real, seconds: real): real {
        return (Math.sin(speed * seconds) + 1) / 2;
    }
}
