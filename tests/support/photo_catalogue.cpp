#include "tests/support/photo_catalogue.h"

#include <cstdlib>
#include <filesystem>
#include <iostream>

#include <sqlite3.h>

namespace fs = std::filesystem;

CatalogueWriter::CatalogueWriter(const TemporaryDisk& disk, Maker maker, Log log, Form form)
    : m_hostFile(disk.host(file)), m_assets(form == Form::macOS10 ? "ZGENERICASSET" : "ZASSET") {
    fs::create_directories(fs::path(m_hostFile).parent_path());
    if (sqlite3_open(m_hostFile.c_str(), &m_database) != SQLITE_OK)
        std::abort();
    run("PRAGMA synchronous = OFF");
    if (log == Log::pending)
        run("PRAGMA journal_mode = WAL; PRAGMA wal_autocheckpoint = 0");
    if (maker == Maker::lumvale)
        run("PRAGMA application_id = 0x4C756D76");
    run("CREATE TABLE " + m_assets
        + " (Z_PK INTEGER PRIMARY KEY, Z_ENT INTEGER, Z_OPT INTEGER, ZFAVORITE INTEGER, ZHEIGHT INTEGER,"
          " ZHIDDEN INTEGER, ZKIND INTEGER, ZTRASHEDSTATE INTEGER, ZVISIBILITYSTATE INTEGER, ZWIDTH INTEGER,"
          " ZDATECREATED TIMESTAMP, ZTRASHEDDATE TIMESTAMP, ZDIRECTORY VARCHAR, ZFILENAME VARCHAR,"
          " ZUUID VARCHAR);"
          " CREATE INDEX Z_UUID ON "
        + m_assets
        + " (ZUUID);"
          " CREATE TABLE ZADDITIONALASSETATTRIBUTES (Z_PK INTEGER PRIMARY KEY, Z_ENT INTEGER, Z_OPT INTEGER,"
          " ZORIGINALFILESIZE INTEGER, ZASSET INTEGER, ZORIGINALFILENAME VARCHAR);"
          " CREATE INDEX Z_ASSET ON ZADDITIONALASSETATTRIBUTES (ZASSET)");
}

CatalogueWriter::~CatalogueWriter() {
    if (m_database != nullptr)
        sqlite3_close(m_database);
}

void CatalogueWriter::add(const CataloguedAsset& asset) {
    const std::string key = std::to_string(++m_key);
    run("INSERT INTO " + m_assets
        + " (Z_PK, ZFAVORITE, ZHEIGHT, ZHIDDEN, ZKIND, ZTRASHEDSTATE, ZVISIBILITYSTATE, ZWIDTH, ZDATECREATED,"
          " ZDIRECTORY, ZFILENAME, ZUUID) VALUES ("
        + key + "," + asset.favorite + "," + asset.height + "," + asset.hidden + "," + asset.kind + ","
        + asset.trashed + "," + asset.visibility + "," + asset.width + "," + asset.created + ","
        + asset.directory + "," + (asset.file.empty() ? "'" + asset.uuid + ".jpeg'" : asset.file) + ",'"
        + asset.uuid
        + "'); INSERT INTO ZADDITIONALASSETATTRIBUTES (ZASSET, ZORIGINALFILESIZE,"
          " ZORIGINALFILENAME) VALUES ("
        + key + "," + asset.size + "," + asset.name + ")");
}

void CatalogueWriter::run(const std::string& sql) {
    if (sqlite3_exec(m_database, sql.c_str(), nullptr, nullptr, nullptr) != SQLITE_OK) {
        std::cerr << sql << ": " << sqlite3_errmsg(m_database) << '\n';
        std::abort();
    }
}

std::string CatalogueWriter::value(const std::string& sql) {
    std::string result;
    sqlite3_exec(
        m_database, sql.c_str(),
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
    sqlite3_close(m_database);
    m_database = nullptr;
    for (const char* ending : {"", "-wal"})
        if (fs::exists(m_hostFile + ending + ".kept"))
            fs::rename(m_hostFile + ending + ".kept", m_hostFile + ending);
}
