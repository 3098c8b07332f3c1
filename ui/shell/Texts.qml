pragma Singleton
import QtQml
import Lumvale

/// The texts of the interface. What is bound to one follows the language.
QtObject {
    function tr(key: string): string {
        return Localizer.tr(Localizer.language, key);
    }
}
