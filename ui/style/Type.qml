pragma Singleton
import QtQuick
import Lumvale.Style

/// The type scale: all fonts of the interface. Sizes are in device-independent pixels.
QtObject {
    id: root

    readonly property font title: text(26, Font.Bold, Typeface.title)
    readonly property font screenTitle: text(21, Font.Bold)
    readonly property font score: text(17, Font.Bold, Typeface.title)
    readonly property font sheetTitle: text(17, Font.Bold)
    readonly property font heading: text(15, Font.DemiBold)
    readonly property font loading: text(14.5, Font.DemiBold)
    readonly property font button: text(13.5, Font.DemiBold)
    readonly property font rowName: text(13.5, Font.Medium)
    readonly property font row: text(13.5, Font.Normal)
    readonly property font body: text(13, Font.Normal)
    readonly property font smallButton: text(12.5, Font.DemiBold)
    readonly property font note: text(12.5, Font.Normal)
    readonly property font section: text(12.5, Font.DemiBold)
    readonly property font message: text(12, Font.Normal)
    readonly property font caption: text(11.5, Font.Normal)
    readonly property font stepNumber: text(11, Font.DemiBold)
    readonly property font badge: text(10.5, Font.DemiBold)
    readonly property font fine: text(10.5, Font.Normal)
    readonly property font finest: text(9.5, Font.Normal)

    // Set explicitly, since controls would use another family than texts.
    readonly property FontMetrics ofApplication: FontMetrics {}

    // QFont takes whole pixels only, and Qt rounds fractions differently from place to place. Rounding here gives each
    // step of the scale the same size everywhere.
    function text(size: real, weight: int, family = ofApplication.font.family): font {
        return Qt.font({
            family: family,
            pixelSize: Math.round(size),
            weight: weight
        });
    }
}
