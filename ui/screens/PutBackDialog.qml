import QtQuick
import Lumvale

/// Shows the progress while entries are put back, and can stop it. Has no confirmation, since nothing can be lost.
RemovalDialog {
    objectName: "putBackDialog"
    isDestructive: false
    title: confirmText
    message: ""
    confirmText: Texts.tr("btn_put_back")
}
