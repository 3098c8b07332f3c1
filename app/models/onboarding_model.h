#pragma once

#include "platform/files/disk.h"

#include <QObject>

/// The view model of the introduction that is shown at the first start. Interface thread only.
class OnboardingModel : public QObject {
    Q_OBJECT
    Q_PROPERTY(bool didOnboard READ didOnboard NOTIFY didOnboardChanged)
    Q_PROPERTY(bool hasFullDiskAccess READ hasFullDiskAccess NOTIFY hasFullDiskAccessChanged)

public:
    /// Reads the settings; does not access the disk.
    explicit OnboardingModel(platform::Disk disk, QObject* parent = nullptr);

    bool didOnboard() const { return m_didOnboard; }
    bool hasFullDiskAccess() const { return m_hasFullDiskAccess; } ///< at the last checkAccess()

    Q_INVOKABLE void finish(); ///< sets didOnboard and stores it in QSettings
    Q_INVOKABLE void checkAccess();

Q_SIGNALS:
    void didOnboardChanged();
    void hasFullDiskAccessChanged();

private:
    platform::Disk m_disk;
    bool m_didOnboard;
    bool m_hasFullDiskAccess = false;
};
