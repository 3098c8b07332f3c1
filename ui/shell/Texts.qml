pragma Singleton
import QtQuick
import Lumvale

/// Translated texts of the interface, and the names of shortcuts as the desktop writes them: "Ctrl+R", or "⌘R" on a Mac.
QtObject {
    id: root

    readonly property string refreshKeys: shortcut(refresh.nativeText)
    readonly property string deletionKeys: shortcut(deletion.nativeText)

    // Not enabled: RootView handles the keys.
    readonly property Shortcut refresh: Shortcut {
        enabled: false
        sequence: "Ctrl+R"
    }
    readonly property Shortcut deletion: Shortcut {
        enabled: false
        sequence: "Del"
    }

    /// Returns the text of `key` in the current language. Bindings that call it are re-evaluated when that changes.
    function tr(key: string): string {
        return Localizer.tr(Localizer.language, key);
    }

    function tabKeys(index: int): string {
        return refreshKeys.slice(0, -1) + (index + 1);
    }

    function shortcut(nativeText: string): string {
        return nativeText.replace("Ctrl", tr("key_control")).replace("Del", tr("key_delete"));
    }
}
