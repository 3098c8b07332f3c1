#pragma once

#include <string>

#include <sys/mount.h>

/// Mounts a volume of 64 KiB in memory on a folder of the host until destroyed, or the folder `original` as
/// another mount point of its volume. Only root can mount; other users skip the test.
class MountedVolume {
public:
    explicit MountedVolume(std::string hostFolder, const std::string& original = "")
        : m_folder(std::move(hostFolder)),
          m_isMounted(mount(original.c_str(), m_folder.c_str(), "tmpfs", original.empty() ? 0 : MS_BIND,
                            "size=64k,mode=0777")
                      == 0) {}
    ~MountedVolume() {
        if (m_isMounted)
            umount2(m_folder.c_str(), MNT_DETACH);
    }
    MountedVolume(const MountedVolume&) = delete;
    MountedVolume& operator=(const MountedVolume&) = delete;

    explicit operator bool() const { return m_isMounted; }

    [[nodiscard]] bool makeReadOnly() const {
        return mount(nullptr, m_folder.c_str(), nullptr, MS_REMOUNT | MS_RDONLY, nullptr) == 0;
    }

private:
    std::string m_folder;
    bool m_isMounted;
};

#define SKIP_UNLESS_MOUNTED(volume)                                                                          \
    if (!(volume))                                                                                           \
    GTEST_SKIP() << "this user may not mount a volume"
