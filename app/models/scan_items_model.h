#pragma once

#include "app/models/checked_items.h"

#include <QAbstractListModel>
#include <QVariantMap>

#include <set>
#include <string>
#include <vector>

/// A list model of scan items with check boxes, by category; see CheckedItems.
///
/// A folded category has one row, which stands for all its items. Sections are named by the translation key
/// of their category.
class ScanItemsModel : public QAbstractListModel {
    Q_OBJECT
    Q_PROPERTY(QVariantMap sections READ sections NOTIFY sectionsChanged)

public:
    enum Role {
        CategoryRole = Qt::UserRole + 1, ///< name of the section
        NameRole,                        ///< empty for a folded section
        PathRole,                        ///< exact path on the disk, QByteArray; invalid for a folded section
        ExplanationRole,                 ///< translation key
        SizeRole,                        ///< formatted
        DateRole,                        ///< formatted; empty without a date
        CheckedRole,
        FoldedRole,
    };

    explicit ScanItemsModel(QObject* parent = nullptr);

    int rowCount(const QModelIndex& parent = {}) const override;
    QVariant data(const QModelIndex& index, int role) const override;
    QHash<int, QByteArray> roleNames() const override;

    /// Shows another list.
    void setItems(CheckedItems items);
    void setItems(std::vector<core::ScanItem> items); ///< the checked ids stay checked
    /// Shows what remains of the list: `removed` are the items that it lacks, see ScanItemList::missingIn().
    void setRemaining(CheckedItems remaining, const std::vector<ScanItemList::Range>& removed);
    /// Shows no rows until items are set. The checked ids stay checked.
    void hideRows();

    const CheckedItems& checkedItems() const { return m_checked; }
    /// Returns all items, those of folded categories as well.
    const std::vector<core::ScanItem>& items() const { return list().items(); }

    std::set<std::string> checked() const { return m_checked.ids(); } ///< linear in the number of items
    void setChecked(const std::set<std::string>& ids);
    /// Toggles an item, and for the row of a folded category its section. Ignores rows that do not exist.
    Q_INVOKABLE void toggle(int row);

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
    /// Consecutive rows of one section: all of them, except while rows are being removed.
    struct Rows : ScanItemList::Range {
        std::size_t section; ///< index in the list
        QString name;        ///< of the section
        int first = 0;       ///< row
        bool isFolded = false;

        int rowCount() const { return isFolded ? 1 : static_cast<int>(count()); }
    };

    const ScanItemList& list() const { return *m_checked.list(); }
    const Rows& rowsAt(int row) const;
    std::size_t indexAt(int row) const;
    Rows* find(const QString& name);
    const ScanItemList::Section& sectionOf(const Rows& rows) const;
    bool hasTick(const Rows& rows) const;
    void replace(CheckedItems items);
    void remove(const ScanItemList::Range& items);
    void placeRows();
    void announceRows(const QList<int>& roles);
    void describeSections();

    CheckedItems m_checked;
    std::vector<Rows> m_rows;              ///< in their order
    std::set<core::ScanCategory> m_folded; ///< remains when the items change
    QVariantMap m_sectionFacts;
};
