#include "tools/sample_disk/photo_catalogue.h"

#include <stdexcept>

#include <sqlite3.h>

namespace sample_disk {

std::string quoted(std::string_view text) {
    std::string literal = "'";
    for (const char letter : text)
        literal.append(letter == '\'' ? 2 : 1, letter);
    return literal + '\'';
}

PhotoCatalogueWriter::PhotoCatalogueWriter(const std::string& hostFile, Maker maker, Log log, Form form)
    : m_assets(form == Form::macOS10 ? "ZGENERICASSET" : "ZASSET") {
    if (sqlite3_open(hostFile.c_str(), &m_database) != SQLITE_OK)
        throw std::runtime_error("cannot open " + hostFile);
    run("PRAGMA synchronous = OFF");
    if (log == Log::pending)
        run("PRAGMA journal_mode = WAL; PRAGMA wal_autocheckpoint = 0");
    if (maker == Maker::lumvale)
        run("PRAGMA application_id = 0x4C756D76"); // "Lumv"
    run("CREATE TABLE " + m_assets
        + " (Z_PK INTEGER PRIMARY KEY, Z_ENT INTEGER, Z_OPT INTEGER, ZFAVORITE INTEGER, ZHEIGHT INTEGER,"
          " ZHIDDEN INTEGER, ZKIND INTEGER, ZTRASHEDSTATE INTEGER, ZVISIBILITYSTATE INTEGER, ZWIDTH INTEGER,"
          " ZDATECREATED TIMESTAMP, ZTRASHEDDATE TIMESTAMP, ZDIRECTORY VARCHAR, ZFILENAME VARCHAR,"
          " ZUUID VARCHAR); CREATE INDEX Z_UUID ON "
        + m_assets
        + " (ZUUID);"
          " CREATE TABLE ZADDITIONALASSETATTRIBUTES (Z_PK INTEGER PRIMARY KEY, Z_ENT INTEGER, Z_OPT INTEGER,"
          " ZORIGINALFILESIZE INTEGER, ZASSET INTEGER, ZORIGINALFILENAME VARCHAR);"
          " CREATE INDEX Z_ASSET ON ZADDITIONALASSETATTRIBUTES (ZASSET)");
}

PhotoCatalogueWriter::~PhotoCatalogueWriter() {
    close();
}

void PhotoCatalogueWriter::add(const CataloguedAsset& asset) {
    const std::string key = std::to_string(++m_key);
    run("INSERT INTO " + m_assets
        + " (Z_PK, ZFAVORITE, ZHEIGHT, ZHIDDEN, ZKIND, ZTRASHEDSTATE, ZVISIBILITYSTATE, ZWIDTH, ZDATECREATED,"
          " ZDIRECTORY, ZFILENAME, ZUUID) VALUES ("
        + key + "," + asset.favorite + "," + asset.height + "," + asset.hidden + "," + asset.kind + ","
        + asset.trashed + "," + asset.visibility + "," + asset.width + "," + asset.created + ","
        + asset.directory + "," + (asset.file.empty() ? quoted(asset.uuid + ".jpeg") : asset.file) + ","
        + quoted(asset.uuid)
        + "); INSERT INTO ZADDITIONALASSETATTRIBUTES (ZASSET, ZORIGINALFILESIZE, ZORIGINALFILENAME) VALUES ("
        + key + "," + asset.size + "," + asset.name + ")");
}

void PhotoCatalogueWriter::run(const std::string& sql) {
    if (sqlite3_exec(m_database, sql.c_str(), nullptr, nullptr, nullptr) != SQLITE_OK)
        throw std::runtime_error(sql + ": " + sqlite3_errmsg(m_database));
}

void PhotoCatalogueWriter::close() {
    sqlite3_close(m_database); // accepts nullptr
    m_database = nullptr;
}

} // namespace sample_disk
