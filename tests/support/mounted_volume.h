#pragma once

#include "tests/support/process.h"

#include <string>

/// Mounts a volume of 64 KiB in memory on a folder of the host until destroyed, or the folder `original` as
/// another mount point of its volume. Only root on Linux can; others skip the test.
class MountedVolume {
public:
    explicit MountedVolume(const std::string& hostFolder, const std::string& original = "")
        : m_folder("'" + hostFolder + "'"),
          m_isMounted(original.empty() ? runInShell("mount -t tmpfs -o size=64k,mode=0777 none " + m_folder)
                                       : runInShell("mount --bind '" + original + "' " + m_folder)) {}
    ~MountedVolume() {
        if (m_isMounted)
            runInShell("umount --lazy " + m_folder);
    }
    MountedVolume(const MountedVolume&) = delete;
    MountedVolume& operator=(const MountedVolume&) = delete;

    explicit operator bool() const { return m_isMounted; }

    [[nodiscard]] bool makeReadOnly() const { return runInShell("mount -o remount,ro " + m_folder); }

private:
    std::string m_folder; ///< quoted
    bool m_isMounted;
};

#define SKIP_UNLESS_MOUNTED(volume)                                                                          \
    if (!(volume))                                                                                           \
    GTEST_SKIP() << "no volume can be mounted here"
