import QtQuick

/// Base of the screens of the tabs: what shortcuts ask of them.
FocusScope {
    /// Scans or lists anew, unless that is running.
    signal refreshRequested
    /// Presses the delete button, if there is one and it is enabled.
    signal deletionRequested
}
