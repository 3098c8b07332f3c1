#include "app/models/leftovers_model.h"

#include "app/text/display.h"
#include "core/uninstall/related_files.h"

QVariant LeftoversModel::data(const QModelIndex& index, int role) const {
    if (role != NamePartsRole
        || !checkIndex(index, CheckIndexOption::IndexIsValid | CheckIndexOption::ParentIsInvalid))
        return ScanItemsModel::data(index, role);
    const std::string& name = itemAt(index.row()).name;
    const auto match = m_app ? core::LumvaleUninstaller::matchInName(*m_app, name) : std::nullopt;
    return match ? display::parts(name, match->offset, match->length) : QStringList();
}

QHash<int, QByteArray> LeftoversModel::roleNames() const {
    QHash<int, QByteArray> names = ScanItemsModel::roleNames();
    names.insert(NamePartsRole, "nameParts");
    return names;
}
