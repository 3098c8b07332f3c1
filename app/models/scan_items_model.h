#pragma once

#include "app/models/scan_item_list.h"

#include <QAbstractListModel>
#include <QVariantMap>

#include <cstdint>
#include <memory>
#include <set>
#include <string>
#include <vector>

/// A list model of scan items with check boxes, by category. The checked state belongs to the id, so rows
/// with the same id are checked together. Ids without a row may be checked, too.
///
/// A folded category has one row, which stands for all its items. Sections are named by the translation key
/// of their category.
class ScanItemsModel : public QAbstractListModel {
    Q_OBJECT
    Q_PROPERTY(QVariantMap sections READ sections NOTIFY sectionsChanged)

public:
    enum Role {
        CategoryRole = Qt::UserRole + 1, ///< name of the section
        NameRole,
        PathRole,        ///< exact path on the disk, QByteArray; invalid for a folded section
        ExplanationRole, ///< translation key
        SizeRole,        ///< formatted
        DateRole,        ///< formatted; empty without a date
        CheckedRole,
        FoldedRole,
    };

    explicit ScanItemsModel(QObject* parent = nullptr);

    int rowCount(const QModelIndex& parent = {}) const override;
    QVariant data(const QModelIndex& index, int role) const override;
    QHash<int, QByteArray> roleNames() const override;

    void setItems(std::vector<core::ScanItem> items); ///< the checked ids stay checked
    /// Takes a list that was built in the background; checks the items that are safe by default and nothing
    /// else.
    void setList(std::shared_ptr<const ScanItemList> list);
    std::shared_ptr<const ScanItemList> list() const { return m_list; }
    /// Returns all items, those of folded categories as well.
    const std::vector<core::ScanItem>& items() const { return m_list->items(); }

    std::set<std::string> checked() const; ///< the checked ids; linear in the number of items
    void setChecked(const std::set<std::string>& ids);
    /// Toggles an item, and for the row of a folded category its section. Ignores rows that do not exist.
    Q_INVOKABLE void toggle(int row);

    std::size_t checkedCount() const { return m_checkedCount; } ///< number of checked ids
    std::int64_t checkedBytes() const {
        return m_checkedBytes;
    } ///< total size of the checked items, saturated

    /// Returns by section: `summary`, the number and size of its items; `tick`, the Qt::CheckState of the
    /// items that toggleSection() toggles, -1 without any; `isFolded`.
    const QVariantMap& sections() const { return m_sectionFacts; }
    /// Checks the items of temporary files, logs or the Trash that are safe by default, or unchecks them if
    /// all of them are checked. Leaves other sections and other items alone.
    Q_INVOKABLE void toggleSection(const QString& section);
    Q_INVOKABLE void setFolded(const QString& section, bool isFolded);
    Q_INVOKABLE int firstRow(const QString& section) const; ///< -1 if there is no such section

Q_SIGNALS:
    void checkedChanged();
    void sectionsChanged();

protected:
    const core::ScanItem& itemAt(int row) const; ///< the first one for the row of a folded category

private:
    struct Section : ScanItemList::Section {
        QString name;
        int row = 0; ///< its first
        bool isFolded = false;
        std::size_t checkedSafeCount = 0; ///< number of checked items that are safe by default

        int rowCount() const { return isFolded ? 1 : static_cast<int>(end - begin); }
        bool hasTick() const;
    };

    const Section& sectionAt(int row) const;
    std::size_t indexAt(int row) const;
    Section* find(const QString& name);
    void replaceList(std::shared_ptr<const ScanItemList> list);
    void placeSections();
    void check(std::size_t item, bool isChecked);
    void assignChecked(const std::set<std::string>& ids);
    void countChecked();
    void announceChecked();
    void describeSections();

    std::shared_ptr<const ScanItemList> m_list = std::make_shared<const ScanItemList>();
    std::vector<bool> m_isChecked;         ///< by item
    std::set<std::string> m_otherChecked;  ///< checked ids without an item
    std::vector<Section> m_sections;       ///< in the order of the rows
    std::set<core::ScanCategory> m_folded; ///< remains when the items change
    std::size_t m_checkedCount = 0;
    std::int64_t m_checkedBytes = 0;
    QVariantMap m_sectionFacts;
};
