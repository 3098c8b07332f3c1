pragma Singleton
import QtQuick

/// Sizes, distances and radii in pixels, shared by several components.
QtObject {
    readonly property int screenPadding: 24
    readonly property int contentWidth: 1100 // at most
    readonly property int shortScreen: 700 // height below which a screen saves space
    readonly property int listPadding: 20
    readonly property int cardPadding: 18
    readonly property int footerPadding: 14
    readonly property int cardRadius: 16
    readonly property int buttonRadius: 11
    readonly property int smallButtonRadius: 10
    readonly property int dialogWidth: 420
    readonly property int dialogRadius: 18
    readonly property int onboardingWidth: 460
    readonly property int onboardingPadding: 32
    readonly property int onboardingSpacing: 24
    readonly property int onboardingBottom: 230 // below the center of the window
    readonly property int messageWidth: 360
    readonly property int breakdownWidth: 480
    readonly property int breakdownHeight: 620
    readonly property int tileRadius: 12
    readonly property int photoSide: 96
    readonly property int photoSpacing: 12
    readonly property int rowRadius: 9
    readonly property int rowPadding: 10
    readonly property int tabBarRadius: 13
    readonly property int tabRadius: 9
    readonly property int tabSpacing: 4
    readonly property int promptWidth: 420
    readonly property int subtitleWidth: 320
    readonly property int checkSide: 19
    readonly property int iconSide: 32
    readonly property int tipWidth: 520
}
