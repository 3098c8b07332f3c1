import QtQuick

/// A small turning arc. The render thread turns it by itself, so it goes on while the program is blocked.
Ring {
    id: root

    lineWidth: 2
    share: 0.7
    from: GCColor.ink
    blur: 0.5

    RotationAnimator on rotation {
        from: 0
        to: 360
        duration: 900
        loops: Animation.Infinite
        running: root.visible
    }
}
