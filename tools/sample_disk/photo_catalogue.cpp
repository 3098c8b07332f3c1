#include "tools/sample_disk/photo_catalogue.h"

#include <memory>
#include <stdexcept>

#include <sqlite3.h>

namespace SampleDisk {

namespace {

constexpr const char* schema = R"(
    PRAGMA application_id = 0x4C756D76;
    CREATE TABLE ZASSET (Z_PK INTEGER PRIMARY KEY, ZFAVORITE INTEGER, ZHEIGHT INTEGER, ZHIDDEN INTEGER,
        ZKIND INTEGER, ZTRASHEDSTATE INTEGER, ZVISIBILITYSTATE INTEGER, ZWIDTH INTEGER,
        ZDATECREATED TIMESTAMP, ZTRASHEDDATE TIMESTAMP, ZDIRECTORY VARCHAR, ZFILENAME VARCHAR, ZUUID VARCHAR);
    CREATE TABLE ZADDITIONALASSETATTRIBUTES (Z_PK INTEGER PRIMARY KEY, ZASSET INTEGER,
        ZORIGINALFILESIZE INTEGER, ZORIGINALFILENAME VARCHAR);
    CREATE INDEX ZADDITIONALASSETATTRIBUTES_ZASSET_INDEX ON ZADDITIONALASSETATTRIBUTES (ZASSET);
)";

using Database = std::unique_ptr<sqlite3, decltype(&sqlite3_close)>;

void check(int code) {
    if (code != SQLITE_OK && code != SQLITE_DONE)
        throw std::runtime_error(sqlite3_errstr(code));
}

/// An INSERT, whose values are given one after the other.
class Insertion {
public:
    Insertion(const Database& database, const char* text) {
        check(sqlite3_prepare_v2(database.get(), text, -1, &m_statement, nullptr));
    }
    ~Insertion() { sqlite3_finalize(m_statement); }
    Insertion(const Insertion&) = delete;
    Insertion& operator=(const Insertion&) = delete;

    template <class... Values>
    void insert(const Values&... values) {
        int column = 0;
        (bind(++column, values), ...);
        check(sqlite3_step(m_statement));
        check(sqlite3_reset(m_statement));
    }

private:
    void bind(int column, std::int64_t value) { check(sqlite3_bind_int64(m_statement, column, value)); }
    void bind(int column, double value) { check(sqlite3_bind_double(m_statement, column, value)); }
    void bind(int column, const std::string& value) {
        check(sqlite3_bind_text(m_statement, column, value.data(), static_cast<int>(value.size()),
                                SQLITE_TRANSIENT));
    }
    template <class Value>
    void bind(int column, const std::optional<Value>& value) {
        if (value)
            bind(column, *value);
        else
            check(sqlite3_bind_null(m_statement, column));
    }

    sqlite3_stmt* m_statement = nullptr;
};

std::optional<double> since2001(std::optional<double> date) {
    constexpr double beginning = 978'307'200;
    return date ? std::optional(*date - beginning) : std::nullopt;
}

} // namespace

std::string photoCatalogue(const std::vector<PhotoAsset>& assets) {
    // Made in memory: nothing is ever left beside it, and its bytes depend on nothing but its content.
    sqlite3* opened = nullptr;
    const int code = sqlite3_open(":memory:", &opened);
    const Database database(opened, &sqlite3_close);
    check(code);
    check(sqlite3_exec(opened, schema, nullptr, nullptr, nullptr));
    {
        Insertion rows(database,
                       "INSERT INTO ZASSET (Z_PK, ZFAVORITE, ZHEIGHT, ZHIDDEN, ZKIND, ZTRASHEDSTATE,"
                       " ZVISIBILITYSTATE, ZWIDTH, ZDATECREATED, ZTRASHEDDATE, ZDIRECTORY, ZFILENAME,"
                       " ZUUID) VALUES (?, ?, ?, ?, ?, ?, ?, ?, ?, ?, ?, ?, ?)");
        Insertion attributes(database, "INSERT INTO ZADDITIONALASSETATTRIBUTES VALUES (?, ?, ?, ?)");
        std::int64_t key = 0;
        // The keys of the two tables run apart, as they do in a library that has been used for long.
        auto attributesKey = static_cast<std::int64_t>(assets.size());
        for (const PhotoAsset& asset : assets) {
            rows.insert(++key, std::int64_t{asset.isFavourite}, std::int64_t{asset.pixels.height},
                        std::int64_t{asset.isHidden}, std::int64_t{asset.isFilm},
                        std::int64_t{asset.trashed.has_value()}, std::int64_t{asset.isShared ? 2 : 0},
                        std::int64_t{asset.pixels.width}, since2001(asset.created), since2001(asset.trashed),
                        asset.directory, asset.file, asset.uuid);
            attributes.insert(attributesKey--, key, asset.bytes, asset.name);
        }
    }
    sqlite3_int64 size = 0;
    const std::unique_ptr<unsigned char, decltype(&sqlite3_free)> bytes(
        sqlite3_serialize(opened, "main", &size, 0), &sqlite3_free);
    if (!bytes)
        throw std::bad_alloc();
    return {reinterpret_cast<const char*>(bytes.get()), static_cast<std::size_t>(size)};
}

} // namespace SampleDisk
