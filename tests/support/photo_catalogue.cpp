#include "tests/support/photo_catalogue.h"

#include <filesystem>

#include <sqlite3.h>

namespace fs = std::filesystem;

namespace {

std::string inNewFolder(const std::string& hostFile) {
    fs::create_directories(fs::path(hostFile).parent_path());
    return hostFile;
}

} // namespace

CatalogueWriter::CatalogueWriter(const TemporaryDisk& disk, Maker maker, Log log, Form form)
    : PhotoCatalogueWriter(inNewFolder(disk.host(file)), maker, log, form), m_hostFile(disk.host(file)) {}

std::string CatalogueWriter::value(const std::string& sql) {
    std::string result;
    sqlite3_exec(
        database(), sql.c_str(),
        [](void* out, int count, char** values, char**) {
            *static_cast<std::string*>(out) = count > 0 && values[0] != nullptr ? values[0] : "null";
            return 1;
        },
        &result, nullptr);
    return result;
}

void CatalogueWriter::abandon() {
    const auto keep = [this](const char* ending) {
        if (fs::exists(m_hostFile + ending))
            fs::copy_file(m_hostFile + ending, m_hostFile + ending + ".kept");
    };
    keep("");
    keep("-wal");
    close();
    for (const char* ending : {"", "-wal"})
        if (fs::exists(m_hostFile + ending + ".kept"))
            fs::rename(m_hostFile + ending + ".kept", m_hostFile + ending);
}
