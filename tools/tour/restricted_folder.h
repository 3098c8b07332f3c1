#pragma once

#include "tests/support/temporary_disk.h"

#include <filesystem>
#include <optional>

/// Sets the permissions of a folder for the lifetime of the object and restores them afterwards. If the
/// process runs as root it acts as an ordinary user during that time, since permissions don't apply to root.
class RestrictedFolder {
public:
    RestrictedFolder(std::filesystem::path folder, std::filesystem::perms permissions);
    ~RestrictedFolder();
    RestrictedFolder(const RestrictedFolder&) = delete;
    RestrictedFolder& operator=(const RestrictedFolder&) = delete;

private:
    std::filesystem::path m_folder;
    std::filesystem::perms m_previous;
    std::optional<OrdinaryUser> m_user;
};
