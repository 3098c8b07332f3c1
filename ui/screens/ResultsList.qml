import QtQuick
import Lumvale
import Lumvale.Style

/// List of the scan results by category. Space and Return toggle the current row, Left and Right fold and unfold its
/// category.
Panel {
    id: root

    required property ScanItemsModel items
    property int padding: Metrics.listPadding

    readonly property ItemRow currentRow: list.currentItem as ItemRow
    readonly property string currentSection: currentRow ? currentRow.ListView.section : ""

    /// Height of the heading that stays at the top.
    property real headingHeight: 0

    function takeFocus(reason: int): void {
        list.takeFocus(reason);
    }

    function toggle(row: int): void {
        if (row < 0)
            return;
        list.currentIndex = row;
        items.toggle(row);
    }

    function setFolded(section: string, isFolded: bool): void {
        if (!items.sections[section] || items.sections[section].isFolded === isFolded)
            return;
        list.currentIndex = items.firstRow(section);
        list.changeAtOnce(() => items.setFolded(section, isFolded));
        list.positionViewAtIndex(list.currentIndex, ListView.Contain);
    }

    /// Scrolls the current row out from under the heading that stays at the top.
    function uncoverCurrentRow(): void {
        const isFirst = currentRow && currentRow.ListView.previousSection !== currentSection;
        if (currentRow && !isFirst && currentRow.y < list.contentY + headingHeight)
            list.contentY = currentRow.y - headingHeight;
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
        section.labelPositioning: ViewSection.InlineLabels | ViewSection.CurrentLabelAtStart
        Accessible.name: Texts.tr("tab_cleanup")
        // Later, since the list scrolls to the current row after this signal.
        onCurrentIndexChanged: Qt.callLater(root.uncoverCurrentRow) // qmllint disable
        Keys.onSpacePressed: root.toggle(currentIndex)
        Keys.onReturnPressed: root.toggle(currentIndex)
        Keys.onEnterPressed: root.toggle(currentIndex)
        Keys.onLeftPressed: root.setFolded(root.currentSection, true)
        Keys.onRightPressed: root.setFolded(root.currentSection, false)

        // Qt 6.4 cannot use a bound component as section delegate, so qmllint cannot resolve the ids.
        section.delegate: CategoryHeading {
            required property string section

            // Undefined while a heading without rows still exists.
            readonly property var facts: root.items.sections[section] // qmllint disable unqualified

            width: ListView.view.width - 2 * Metrics.listPadding
            list: ListView.view as KeyboardList
            text: Texts.tr(section)
            summary: facts ? facts.summary : ""
            tick: facts ? facts.tick : -1
            isFolded: facts ? facts.isFolded : false
            isCurrent: isFolded && section === root.currentSection && list.hasVisualFocus // qmllint disable unqualified
            onHeightChanged: root.headingHeight = height // qmllint disable unqualified
            onFoldRequested: root.setFolded(section, !isFolded) // qmllint disable unqualified
            onToggled: root.items.toggleSection(section) // qmllint disable unqualified
        }

        delegate: ItemRow {
            required property int index
            required isFolded

            readonly property var facts: isFolded ? root.items.sections[ListView.section] : undefined // qmllint disable unqualified

            width: ListView.view.width - 2 * Metrics.listPadding
            checkable: facts ? facts.tick >= 0 : true
            Accessible.checkable: checkable
            Accessible.checked: facts ? facts.tick === Qt.Checked : checked
            Accessible.checkStateMixed: facts ? facts.tick === Qt.PartiallyChecked : false
            Accessible.name: facts ? Texts.tr(ListView.section) + ", " + facts.summary : name + ", " + size
            Accessible.description: facts ? Texts.tr("section_folded") : description
            onClicked: root.toggle(index) // qmllint disable unqualified
        }
    }
}
