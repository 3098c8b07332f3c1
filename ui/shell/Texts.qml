pragma Singleton
import QtQml
import Lumvale

/// Translated texts of the interface.
QtObject {
    /// Returns the text of `key` in the current language. Bindings that call it are re-evaluated when that changes.
    function tr(key: string): string {
        return Localizer.tr(Localizer.language, key);
    }
}
