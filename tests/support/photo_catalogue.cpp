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
    char** table = nullptr; // a name, then the values
    int rows = 0;
    sqlite3_get_table(database(), sql.c_str(), &table, &rows, nullptr, nullptr);
    const std::string value = rows > 0 && table[1] != nullptr ? table[1] : "null";
    sqlite3_free_table(table);
    return value;
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
