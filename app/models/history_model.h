#pragma once

#include "app/history/history_store.h"

#include <QAbstractListModel>

#include <vector>

/// The rows of the history, as the store has them and whenever it changes. What is still there keeps its row,
/// so that a list stays where it was scrolled to.
class HistoryModel : public QAbstractListModel {
    Q_OBJECT

public:
    enum Role {
        NameRole = Qt::UserRole + 1,
        SizeRole, ///< formatted
        DateRole, ///< formatted
    };

    /// `history` must outlive it.
    explicit HistoryModel(const HistoryStore& history, QObject* parent = nullptr);

    int rowCount(const QModelIndex& parent = {}) const override;
    QVariant data(const QModelIndex& index, int role) const override;
    QHash<int, QByteArray> roleNames() const override;

private:
    void follow();

    const HistoryStore& m_history;
    std::vector<HistoryEntry> m_rows; ///< as last told
};
