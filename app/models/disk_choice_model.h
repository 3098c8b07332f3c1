#pragma once

#include "platform/files/mac_disks.h"

#include <QAbstractListModel>
#include <QUrl>

#include <optional>
#include <string>
#include <vector>

/// The list model of the homes that can be opened at start: those on the mounted disks of Macs and on the
/// sample disk, or on a folder that the user has chosen instead.
class DiskChoiceModel : public QAbstractListModel {
    Q_OBJECT
    Q_PROPERTY(QString problem READ problem NOTIFY problemChanged)

public:
    enum Role {
        NameRole = Qt::UserRole + 1, ///< of the home
        PlaceRole,                   ///< the mount point, or that it is the sample
    };

    /// `sample` is the host's folder of the sample disk, if there is one.
    DiskChoiceModel(std::vector<platform::MacDisk> disks, const std::optional<std::string>& sample,
                    QObject* parent = nullptr);

    int rowCount(const QModelIndex& parent = {}) const override;
    QVariant data(const QModelIndex& index, int role) const override;
    QHash<int, QByteArray> roleNames() const override;

    /// The reason why the last choice could not be opened; empty if there is none.
    QString problem() const { return m_problem; }

    /// Opens the home of a row and emits chosen().
    Q_INVOKABLE void choose(int row);

    /// Opens the disk at a folder of this machine if it has one home, and emits chosen(). Lists the homes if
    /// there are several.
    Q_INVOKABLE void chooseFolder(const QUrl& folder);

Q_SIGNALS:
    void chosen(const platform::Disk& disk);
    void problemChanged();

private:
    struct Row {
        std::string hostRoot;
        std::string home;
        bool isSample = false;
    };

    void append(const platform::MacDisk& disk, bool isSample = false);
    void setProblem(const QString& problem);

    std::vector<Row> m_rows;
    QString m_problem;
};
