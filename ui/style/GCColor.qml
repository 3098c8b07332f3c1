pragma Singleton
import QtQuick

/// The color palette of the interface.
QtObject {
    readonly property color bgTop: Qt.rgba(0.04, 0.06, 0.1, 1)
    readonly property color bgBottom: Qt.rgba(0.02, 0.03, 0.06, 1)
    readonly property color glowTeal: Qt.rgba(0.18, 0.95, 0.78, 1)
    readonly property color glowViolet: Qt.rgba(0.49, 0.43, 1, 1)
    readonly property color panel: white(0.035)
    readonly property color panelStroke: white(0.07)
    /// Opaque approximation of a panel on the backdrop, for content that fades out on a panel.
    readonly property color opaquePanel: mix(mix(bgTop, bgBottom, 0.6), Qt.rgba(1, 1, 1, 1), 0.035)
    readonly property color textPrimary: Qt.rgba(0.95, 0.96, 0.98, 1)
    readonly property color textSecondary: Qt.rgba(0.54, 0.58, 0.67, 1)
    readonly property color divider: white(0.06)
    readonly property color danger: Qt.rgba(1, 0.37, 0.48, 1)
    readonly property color dangerLight: Qt.rgba(1, 0.56, 0.48, 1)

    readonly property color amber: Qt.rgba(1, 0.79, 0.34, 1)
    readonly property color deepTeal: Qt.rgba(0.13, 0.76, 0.69, 1)
    /// Text on bright fills and gradients.
    readonly property color ink: Qt.rgba(0.02, 0.08, 0.06, 1)
    /// Text on disabled gradient buttons: dimmed but readable.
    readonly property color faded: alpha(textPrimary, 0.75)
    readonly property color track: white(0.08)
    readonly property color barTrack: white(0.07)
    readonly property color selection: white(0.07)
    readonly property color checkOutline: white(0.3)
    readonly property color success: alpha(glowTeal, 0.07)
    readonly property color successStroke: alpha(glowTeal, 0.2)
    /// Faint: a stronger background would reduce the contrast of the secondary text on it.
    readonly property color hover: white(0.015)
    readonly property color hoverOverlay: white(0.12)
    readonly property color pressedOverlay: Qt.rgba(0, 0, 0, 0.12)
    readonly property color selectedTab: white(0.08)
    readonly property color quietButton: white(0.08)
    readonly property color quietButtonHover: white(0.13)
    readonly property color focus: alpha(glowTeal, 0.9)
    /// Background of dialogs and menus, opaque.
    readonly property color dialog: Qt.rgba(0.075, 0.095, 0.14, 1)
    readonly property color scrim: Qt.rgba(0.01, 0.015, 0.03, 0.66)

    /// Colors of treemap tiles and their rows; see tile().
    readonly property list<color> tiles: [
        glowTeal,
        glowViolet,
        amber,
        Qt.rgba(1, 0.56, 0.48, 1),
        Qt.rgba(0.42, 0.74, 1, 1),
        Qt.rgba(0.73, 0.55, 1, 1),
        Qt.rgba(0.55, 0.86, 0.56, 1),
        Qt.rgba(1, 0.62, 0.8, 1)
    ]

    /// The color of the entry at `position`; repeats after the last color.
    function tile(position: int): color {
        // Delegates that are being removed have index -1.
        return tiles[Math.max(0, position) % tiles.length];
    }

    function white(opacity: real): color {
        return Qt.rgba(1, 1, 1, opacity);
    }

    function alpha(base: color, opacity: real): color {
        return Qt.rgba(base.r, base.g, base.b, opacity);
    }

    /// Linear interpolation between `a` (t = 0) and `b` (t = 1), opaque.
    function mix(a: color, b: color, t: real): color {
        return Qt.rgba(a.r + t * (b.r - a.r), a.g + t * (b.g - a.g), a.b + t * (b.b - a.b), 1);
    }
}
