#include "app/models/onboarding_model.h"

#include "core/removal/permissions.h"

#include <QSettings>

#include <utility>

using namespace Qt::StringLiterals;

namespace {

const QString didOnboardKey = u"didOnboard"_s;

} // namespace

OnboardingModel::OnboardingModel(platform::Disk disk, QObject* parent)
    : QObject(parent), m_disk(std::move(disk)), m_didOnboard(QSettings().value(didOnboardKey).toBool()) {}

void OnboardingModel::finish() {
    if (m_didOnboard)
        return;
    m_didOnboard = true;
    QSettings().setValue(didOnboardKey, true);
    Q_EMIT didOnboardChanged();
}

void OnboardingModel::checkAccess() {
    const bool hasFullDiskAccess = core::LumvalePermissions::hasFullDiskAccess(m_disk);
    if (m_hasFullDiskAccess == hasFullDiskAccess)
        return;
    m_hasFullDiskAccess = hasFullDiskAccess;
    Q_EMIT hasFullDiskAccessChanged();
}
