#include "tools/tour/restricted_folder.h"

#include <utility>

namespace fs = std::filesystem;

RestrictedFolder::RestrictedFolder(fs::path folder, fs::perms permissions)
    : m_folder(std::move(folder)), m_previous(fs::status(m_folder).permissions()) {
    fs::permissions(m_folder, permissions);
    m_user.emplace();
}

RestrictedFolder::~RestrictedFolder() {
    m_user.reset();
    fs::permissions(m_folder, m_previous);
}
