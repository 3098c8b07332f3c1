import QtQuick
import QtQuick.Templates as T
import Lumvale
import Lumvale.Style

/// Content of the window: the tab bar, the language menu and the screen of the current tab; on the first run also the
/// onboarding sheet.
FocusScope {
    id: root

    enum AppTab {
        Cleanup,
        Uninstall,
        Startup,
        Duplicates,
        History
    }

    property int tab: RootView.AppTab.Cleanup

    readonly property OnboardingModel onboarding: ScreenModels.onboarding(root)

    readonly property list<Component> screens: [
        Component {
            CleanupView {}
        },
        Component {
            UninstallView {}
        },
        Component {
            StartupView {}
        },
        Component {
            DuplicatePhotosView {}
        },
        Component {
            HistoryView {}
        }
    ]

    function showTab(index: int): void {
        tab = index;
        focusScreen(Qt.ShortcutFocusReason);
    }

    function focusScreen(reason: int): void {
        screen.forceActiveFocus(reason);
        // Sets the reason if Qt has already given the focus to the screen, with another one.
        const control = Window.activeFocusItem as T.Control;
        if (control)
            control.focusReason = reason;
    }

    /// Performs the shortcut of a key event. Returns false if it has none.
    function perform(event: KeyEvent): bool {
        const current = screen.item as TabScreen;
        const hasControl = event.modifiers === Qt.ControlModifier;
        const digit = event.key - Qt.Key_1;
        if (event.key === Qt.Key_F5 || hasControl && event.key === Qt.Key_R)
            current.refreshRequested();
        else if (event.matches(StandardKey.Delete))
            current.deletionRequested();
        else if (hasControl && digit >= 0 && digit < screens.length)
            showTab(digit);
        else if (event.matches(StandardKey.NextChild))
            showTab((tab + 1) % screens.length);
        else if (event.matches(StandardKey.PreviousChild))
            showTab((tab + screens.length - 1) % screens.length);
        else
            return false;
        return true;
    }

    // Receives the keys that no control uses. Those pressed in a popup don't get here: nothing acts behind it.
    Keys.onPressed: event => event.accepted = !event.isAutoRepeat && perform(event)

    Backdrop {
        anchors.fill: parent
    }

    // Wider windows get wider margins, so that the eye can follow a row from its name to its size.
    Item {
        anchors.horizontalCenter: parent.horizontalCenter
        anchors.top: parent.top
        anchors.bottom: parent.bottom
        width: Math.min(parent.width, Metrics.contentWidth + 2 * Metrics.screenPadding)

        Item {
            id: header
            anchors.left: parent.left
            anchors.right: parent.right
            anchors.top: parent.top
            anchors.leftMargin: Metrics.screenPadding
            anchors.rightMargin: Metrics.screenPadding
            anchors.topMargin: 18
            height: Math.max(tabs.height, language.height)

            TabSwitcher {
                id: tabs
                anchors.left: parent.left
                anchors.verticalCenter: parent.verticalCenter
                titleKeys: ["tab_cleanup", "tab_uninstall", "tab_startup", "tab_duplicates", "tab_history"]
                tab: root.tab
                onChosen: tab => root.tab = tab
            }

            LanguageMenu {
                id: language
                anchors.right: parent.right
                anchors.verticalCenter: parent.verticalCenter
            }
        }

        Label {
            id: readOnlyNote
            objectName: "readOnlyNote"
            anchors.left: parent.left
            anchors.right: parent.right
            anchors.top: header.bottom
            anchors.leftMargin: Metrics.screenPadding
            anchors.rightMargin: Metrics.screenPadding
            anchors.topMargin: visible ? 12 : 0
            height: visible ? Math.ceil(implicitHeight) : 0
            visible: ScreenModels.isDiskReadOnly
            text: Texts.tr("disk_read_only")
            font: Type.message
            color: GCColor.amber
            Accessible.role: Accessible.AlertMessage
        }

        // Only the current screen exists: changing the tab destroys the screen and its model.
        Loader {
            id: screen
            anchors.left: parent.left
            anchors.right: parent.right
            anchors.top: readOnlyNote.bottom
            anchors.bottom: parent.bottom
            focus: true
            sourceComponent: root.screens[root.tab]
            onLoaded: (item as Item).focus = true
        }
    }

    Notice {
        id: notice
    }

    Connections {
        target: FileActions
        function onReported(sentence: string) {
            notice.show(sentence);
        }
    }

    // Loaded on the first run only.
    Loader {
        active: !root.onboarding.didOnboard
        sourceComponent: OnboardingView {
            model: root.onboarding // qmllint disable unqualified
            totalPages: 4
            visible: true
            onFocusLost: reason => root.focusScreen(reason) // qmllint disable unqualified
        }
    }
}
