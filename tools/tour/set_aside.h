#pragma once

#include <filesystem>

/// Renames a file or folder for the lifetime of the object, so that nothing finds it. Renames it back
/// afterwards, over a file that has taken its place.
class SetAside {
public:
    explicit SetAside(std::filesystem::path path);
    ~SetAside();
    SetAside(const SetAside&) = delete;
    SetAside& operator=(const SetAside&) = delete;

private:
    std::filesystem::path m_path;
    std::filesystem::path m_aside;
};
