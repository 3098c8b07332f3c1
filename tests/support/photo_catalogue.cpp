#include "tests/support/photo_catalogue.h"

#include <filesystem>

#include <sqlite3.h>

namespace {

std::string inNewFolder(const std::string& hostFile) {
    std::filesystem::create_directories(std::filesystem::path(hostFile).parent_path());
    return hostFile;
}

} // namespace

CatalogueWriter::CatalogueWriter(const TemporaryDisk& disk, Maker maker, Log log, Form form)
    : PhotoCatalogueWriter(inNewFolder(disk.host(file)), maker, log, form) {}

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
    sqlite3_db_config(database(), SQLITE_DBCONFIG_NO_CKPT_ON_CLOSE, 1, nullptr);
    close();
}

platform::PhotoAccess photoAccess(platform::PhotoAuthorization answer) {
    const auto access = [answer](const platform::Disk&) {
        return answer;
    };
    return {access, access};
}
