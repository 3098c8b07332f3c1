pragma Singleton
import QtQuick

/// The type scale: every size of text in the program, in points of the interface.
QtObject {
    id: root

    readonly property font title: text(26, Font.Bold)
    readonly property font score: text(17, Font.Bold)
    readonly property font heading: text(15, Font.DemiBold)
    readonly property font loading: text(14.5, Font.DemiBold)
    readonly property font button: text(13.5, Font.DemiBold)
    readonly property font row: text(13.5, Font.Normal)
    readonly property font body: text(13, Font.Normal)
    readonly property font smallButton: text(12.5, Font.DemiBold)
    readonly property font section: text(12.5, Font.DemiBold)
    readonly property font message: text(12, Font.Normal)
    readonly property font caption: text(11.5, Font.Normal)
    readonly property font fine: text(10.5, Font.Normal)

    // Whole pixels would lose the half points, and how many pixels a typographic point has depends on the
    // screen: the two rulers say how many typographic points one point of the interface is.
    readonly property FontMetrics pixels: FontMetrics {
        font.pixelSize: 960
    }
    readonly property FontMetrics points: FontMetrics {
        font.pointSize: 960
    }

    function text(size: real, weight: int): font {
        const made = Qt.font({
            family: root.pixels.font.family,
            weight: weight
        });
        // Given to Qt.font(), they would be cut to whole points. A touch more than asked for, since some systems
        // round to whole pixels: so that halves go up everywhere, and neighbours in the scale stay apart.
        made.pointSize = (size + 0.02) * root.pixels.height / root.points.height;
        return made;
    }
}
