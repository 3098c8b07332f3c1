#pragma once

#include "app/models/scan_items_model.h"
#include "core/uninstall/installed_app.h"

#include <optional>

/// The list model of the files of an application, which shows the part of each name that matched.
class LeftoversModel : public ScanItemsModel {
    Q_OBJECT

public:
    enum Role {
        NamePartsRole = Qt::UserRole + 100, ///< the name as display::parts(); empty if nothing in it matched
    };

    using ScanItemsModel::ScanItemsModel;

    QVariant data(const QModelIndex& index, int role) const override;
    QHash<int, QByteArray> roleNames() const override;

    /// Sets the application of the items that are set next.
    void setApp(std::optional<core::InstalledApp> app) { m_app = std::move(app); }

private:
    std::optional<core::InstalledApp> m_app;
};
