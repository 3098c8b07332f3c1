#include "tools/tour/set_aside.h"

#include <utility>

namespace fs = std::filesystem;

SetAside::SetAside(fs::path path) : m_path(std::move(path)), m_aside(m_path.native() + " aside") {
    fs::rename(m_path, m_aside);
}

SetAside::~SetAside() {
    fs::rename(m_aside, m_path);
}
