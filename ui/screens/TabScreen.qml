import QtQuick

/// Base of the tabs' screens. Shortcuts emit its signals.
FocusScope {
    /// Scans or lists anew, unless that is running.
    signal refreshRequested
    /// Presses the delete button, if there is one and it is enabled.
    signal deletionRequested
}
