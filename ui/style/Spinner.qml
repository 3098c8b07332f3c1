import QtQuick

/// A small rotating arc.
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
