import QtQuick
import QtQuick.Templates as T
import Lumvale
import Lumvale.Style

/// Introduction shown on the first run, forward only. Closing it in any way marks it as finished for good.
Sheet {
    id: root

    required property OnboardingModel model
    required property int totalPages

    property int page: 0

    readonly property var pages: [
        {
            symbol: "sparkles",
            key: "welcome"
        },
        {
            symbol: "square.grid.2x2.fill",
            key: "features"
        },
        {
            symbol: "lock.open.fill",
            key: "fda"
        },
        {
            symbol: "checkmark.seal.fill",
            key: "ready"
        }
    ]
    readonly property var shown: pages[Math.min(page, pages.length - 1)]
    readonly property string accessibleDescription: message.text
    readonly property T.Control focused: parent ? parent.Window.activeFocusItem as T.Control : null
    /// Focus reason of the focused control; -1 if the sheet doesn't have the focus, as while it is closing.
    readonly property int focusReason: activeFocus && focused ? focused.focusReason : -1
    readonly property bool isLast: page >= totalPages - 1

    // Anchored at the bottom, so that the Next button stays under the pointer on all pages.
    y: parent ? Math.max(0, Math.round(parent.height / 2) + Metrics.onboardingBottom - height) : 0
    padding: Metrics.onboardingPadding
    accessibleName: title.text
    implicitWidth: Metrics.onboardingWidth
    implicitHeight: content.implicitHeight + 2 * padding
    onAboutToShow: model.checkAccess()
    // The screen gets the focus, and shows it as the sheet did.
    onFocusReasonChanged: {
        if (focusReason >= 0)
            returnReason = focusReason;
    }
    onAboutToHide: returnTo = null
    onClosed: model.finish()

    background: Backdrop {
        radius: Metrics.dialogRadius
        topColor: GCColor.bgBottom
        tealCenter: Qt.point(0.2, 0.05)
        violetCenter: Qt.point(0.9, 0.95)
        tealEnd: 360
        violetEnd: 360

        Rectangle {
            anchors.fill: parent
            radius: parent.radius
            color: "transparent"
            border.color: GCColor.panelStroke
        }
    }

    Column {
        id: content
        objectName: "onboardingContent"
        width: parent.width
        spacing: Metrics.onboardingSpacing

        OnboardingBadge {
            anchors.horizontalCenter: parent.horizontalCenter
            symbol: root.shown.symbol
        }

        Column {
            width: parent.width
            spacing: 8

            Label {
                id: title
                objectName: "onboardingTitle"
                width: parent.width
                text: Texts.tr("onboard_title_" + root.shown.key)
                font: Type.screenTitle
                horizontalAlignment: Text.AlignHCenter
                Accessible.role: Accessible.Heading
            }

            Label {
                id: message
                objectName: "onboardingMessage"
                anchors.horizontalCenter: parent.horizontalCenter
                width: evenWidth(Metrics.messageWidth)
                text: Texts.tr("onboard_message_" + root.shown.key)
                font: Type.row
                color: GCColor.textSecondary
                horizontalAlignment: Text.AlignHCenter
                lineHeight: 1.25
            }
        }

        LanguageMenu {
            objectName: "languagePicker"
            anchors.horizontalCenter: parent.horizontalCenter
            visible: root.page === 0
        }

        FeatureList {
            width: parent.width
            visible: root.page === 1
        }

        AccessStep {
            width: parent.width
            visible: root.page === 2
            isGranted: root.model.hasFullDiskAccess
            onCheckRequested: root.model.checkAccess()
            onFocusLost: reason => next.forceActiveFocus(reason)
        }

        PageDots {
            anchors.horizontalCenter: parent.horizontalCenter
            page: root.page
            count: root.totalPages
        }

        GradientButton {
            id: next
            objectName: "next"
            width: parent.width
            focus: true
            verticalPadding: 12
            text: Texts.tr(root.isLast ? "btn_start" : "btn_next")
            glow: GCColor.alpha(GCColor.glowTeal, 0.35)
            // Keeps the focus across pages, so its description makes screen readers announce the new page.
            Accessible.description: root.page > 0 ? title.text + ". " + message.text : ""
            onClicked: {
                if (root.isLast)
                    root.close();
                else
                    ++root.page;
            }
        }
    }
}
