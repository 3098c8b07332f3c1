import QtQuick
import Lumvale
import Lumvale.Style

/// List of the scan results by category. Space and Return toggle the current row.
Panel {
    id: root

    required property ScanItemsModel items
    property int padding: Metrics.listPadding

    function takeFocus(reason: int): void {
        list.takeFocus(reason);
    }

    function toggle(row: int): void {
        if (row < 0)
            return;
        list.currentIndex = row;
        items.toggle(row);
    }

    EmptyPrompt {
        anchors.centerIn: parent
        visible: list.count === 0
        text: Texts.tr("storage_breakdown_empty")
    }

    TypeAheadList {
        id: list
        objectName: "resultsList"
        anchors.fill: parent
        topMargin: root.padding
        bottomMargin: root.padding
        model: root.items
        section.property: "category"
        Accessible.name: Texts.tr("tab_cleanup")
        Keys.onSpacePressed: root.toggle(currentIndex)
        Keys.onReturnPressed: root.toggle(currentIndex)
        Keys.onEnterPressed: root.toggle(currentIndex)

        section.delegate: SectionLabel {
            required property string section

            width: ListView.view.width - 2 * Metrics.listPadding
            text: Texts.tr(section)
        }

        delegate: ItemRow {
            required property int index

            width: ListView.view.width - 2 * Metrics.listPadding
            // Qt 6.4 cannot use a bound component as section delegate, so qmllint cannot resolve this id.
            onClicked: root.toggle(index) // qmllint disable unqualified
        }
    }
}
