pragma Singleton
import QtQuick

/// How things move. Animated components compute what they show from the time alone and keep no state.
QtObject {
    readonly property real breathing: 1.3 // speed of the phase
    readonly property real calmBreathing: 1.1
    readonly property real spinning: 160 // degrees in a second
    readonly property int quick: 120 // milliseconds, for what answers a hand

    /// Seconds since a fixed date.
    function now(): real {
        return Date.now() / 1000;
    }

    /// Swings smoothly between 0 and 1.
    function phase(speed: real, seconds: real): real {
        return (Math.sin(speed * seconds) + 1) / 2;
    }
}
