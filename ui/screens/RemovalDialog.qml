import QtQuick
import Lumvale
import Lumvale.Style

/// Asks for confirmation of a removal, then shows its progress and closes when it has ended. Canceling while it runs
/// stops it.
ConfirmDialog {
    id: root

    required property BackgroundTask task

    cancelText: Texts.tr("btn_cancel")
    busy: task.running
    progress: task.share
    progressText: task.text
    onStopRequested: task.stop()
}
