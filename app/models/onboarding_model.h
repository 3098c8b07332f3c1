#pragma once

#include "platform/files/disk.h"

#include <QObject>

/// The introduction of the first run: whether the user is through with it, and what it has to ask for.
/// Interface thread only.
class OnboardingModel : public QObject {
    Q_OBJECT
    Q_PROPERTY(bool didOnboard READ didOnboard NOTIFY didOnboardChanged)
    Q_PROPERTY(bool hasFullDiskAccess READ hasFullDiskAccess NOTIFY hasFullDiskAccessChanged)

public:
    /// Reads the settings; writes nothing, and leaves the disk alone.
    explicit OnboardingModel(platform::Disk disk, QObject* parent = nullptr);

    bool didOnboard() const { return m_didOnboard; }
    bool hasFullDiskAccess() const { return m_hasFullDiskAccess; } ///< at the last check; before, no

    Q_INVOKABLE void finish(); ///< for good: stored among the program's settings
    Q_INVOKABLE void checkAccess();

Q_SIGNALS:
    void didOnboardChanged();
    void hasFullDiskAccessChanged();

private:
    platform::Disk m_disk;
    bool m_didOnboard;
    bool m_hasFullDiskAccess = false;
};
