#pragma once

#include "app/history/history_store.h"

#include <QAbstractListModel>

#include <vector>

/// The list model of the history, which follows the store. Inserts and removes rows instead of resetting, so
/// that a view keeps its scroll position.
class HistoryModel : public QAbstractListModel {
    Q_OBJECT

public:
    enum Role {
        NameRole = Qt::UserRole + 1,
        SizeRole, ///< formatted
        DateRole, ///< formatted
    };

    /// `history` must outlive the model.
    explicit HistoryModel(const HistoryStore& history, QObject* parent = nullptr);

    int rowCount(const QModelIndex& parent = {}) const override;
    QVariant data(const QModelIndex& index, int role) const override;
    QHash<int, QByteArray> roleNames() const override;

private:
    void updateRows();

    const HistoryStore& m_history;
    std::vector<HistoryEntry> m_rows; ///< the store's entries at the last update
};
