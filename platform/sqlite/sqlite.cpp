#include "platform/sqlite/sqlite.h"

#include "platform/sqlite/sqlite_files.h"

#include <utility>

#include <sqlite3.h>
#include <sys/stat.h>

namespace platform {

namespace {

constexpr int maxValueBytes = 1 << 20; // statements in schemas of real libraries have a few thousand bytes

void restrict(sqlite3* connection) {
    const std::pair<int, int> settings[] = {
        {SQLITE_DBCONFIG_DEFENSIVE, 1},
        {SQLITE_DBCONFIG_TRUSTED_SCHEMA, 0},
        {SQLITE_DBCONFIG_ENABLE_VIEW, 0},
        {SQLITE_DBCONFIG_ENABLE_LOAD_EXTENSION, 0},
    };
    for (const auto& [setting, value] : settings)
        sqlite3_db_config(connection, setting, value, nullptr);
    const std::pair<int, int> limits[] = {
        {SQLITE_LIMIT_LENGTH, maxValueBytes}, {SQLITE_LIMIT_SQL_LENGTH, maxValueBytes},
        {SQLITE_LIMIT_EXPR_DEPTH, 100},       {SQLITE_LIMIT_COMPOUND_SELECT, 2},
        {SQLITE_LIMIT_ATTACHED, 0},           {SQLITE_LIMIT_WORKER_THREADS, 0},
    };
    for (const auto& [limit, value] : limits)
        sqlite3_limit(connection, limit, value);
    // Checks the structure of pages while reading, and writes no temporary files.
    sqlite3_exec(connection, "PRAGMA cell_size_check = ON; PRAGMA temp_store = MEMORY; PRAGMA mmap_size = 0",
                 nullptr, nullptr, nullptr);
}

std::int64_t fileBytes(int descriptor) {
    struct stat status {};
    return descriptor >= 0 && fstat(descriptor, &status) == 0 ? status.st_size : 0;
}

sqlite3* opened(const char* name, int flags, const char* fileSystem) {
    sqlite3* connection = nullptr;
    if (sqlite3_open_v2(name, &connection, flags | SQLITE_OPEN_PRIVATECACHE | SQLITE_OPEN_NOMUTEX, fileSystem)
        != SQLITE_OK) {
        sqlite3_close_v2(connection);
        return nullptr;
    }
    restrict(connection);
    return connection;
}

} // namespace

SqliteDatabase SqliteDatabase::openToRead(int database, int log) {
    const char* const fileSystem = sqlite_files::fileSystem();
    SqliteDatabase opening(fileSystem == nullptr ? nullptr
                                                 : opened(sqlite_files::name(database, log).c_str(),
                                                          SQLITE_OPEN_READONLY, fileSystem));
    constexpr std::int64_t minStepLimit = 10'000'000;
    constexpr std::int64_t maxStepsPerByte = 4; // the listing of a real catalogue needs less than one
    if (opening)
        opening.limitSteps(minStepLimit + maxStepsPerByte * (fileBytes(database) + fileBytes(log)));
    // In exclusive mode SQLite keeps the index of the log in memory instead of a file.
    if (opening)
        opening.run("PRAGMA locking_mode = EXCLUSIVE");
    if (opening)
        sqlite3_db_config(opening.m_connection.get(), SQLITE_DBCONFIG_NO_CKPT_ON_CLOSE, 1, nullptr);
    return opening;
}

void SqliteDatabase::limitSteps(std::int64_t steps) {
    constexpr int stepsAtOnce = 10'000;
    m_stepsLeft = std::make_unique<std::int64_t>(steps);
    sqlite3_progress_handler(
        m_connection.get(), stepsAtOnce,
        [](void* left) { return (*static_cast<std::int64_t*>(left) -= stepsAtOnce) < 0 ? 1 : 0; },
        m_stepsLeft.get());
}

SqliteDatabase SqliteDatabase::openToChange(const std::string& hostPath) {
    constexpr int busyTimeoutMilliseconds = 2000;
    SqliteDatabase opening(opened(hostPath.c_str(), SQLITE_OPEN_READWRITE | SQLITE_OPEN_NOFOLLOW, nullptr));
    if (opening)
        sqlite3_busy_timeout(opening.m_connection.get(), busyTimeoutMilliseconds);
    return opening;
}

void SqliteDatabase::Close::operator()(sqlite3* connection) const {
    sqlite3_close_v2(connection);
}

bool SqliteDatabase::run(const char* sql) const {
    return sqlite3_exec(m_connection.get(), sql, nullptr, nullptr, nullptr) == SQLITE_OK;
}

std::optional<std::int64_t> SqliteDatabase::number(const char* sql) const {
    SqliteStatement statement(*this, sql);
    if (!statement || statement.step() != SqliteStatement::Step::row)
        return std::nullopt;
    return statement.integer(0);
}

std::int64_t SqliteDatabase::changes() const {
    return sqlite3_changes64(m_connection.get());
}

SqliteStatement::SqliteStatement(const SqliteDatabase& database, const std::string& sql) {
    sqlite3_stmt* statement = nullptr;
    sqlite3_prepare_v2(database.m_connection.get(), sql.c_str(), static_cast<int>(sql.size()) + 1, &statement,
                       nullptr);
    m_statement.reset(statement);
}

void SqliteStatement::Finalize::operator()(sqlite3_stmt* statement) const {
    sqlite3_finalize(statement);
}

void SqliteStatement::bind(int parameter, std::string_view text) {
    sqlite3_bind_text64(m_statement.get(), parameter, text.data(), text.size(), nullptr, SQLITE_UTF8);
}

void SqliteStatement::bind(int parameter, double number) {
    sqlite3_bind_double(m_statement.get(), parameter, number);
}

SqliteStatement::Step SqliteStatement::step() {
    switch (sqlite3_step(m_statement.get())) {
    case SQLITE_ROW:
        return Step::row;
    case SQLITE_DONE:
        return Step::done;
    default:
        return Step::failed;
    }
}

void SqliteStatement::reset() {
    sqlite3_reset(m_statement.get());
}

std::optional<std::int64_t> SqliteStatement::integer(int column) const {
    if (sqlite3_column_type(m_statement.get(), column) != SQLITE_INTEGER)
        return std::nullopt;
    return sqlite3_column_int64(m_statement.get(), column);
}

std::optional<double> SqliteStatement::real(int column) const {
    const int type = sqlite3_column_type(m_statement.get(), column);
    if (type != SQLITE_FLOAT && type != SQLITE_INTEGER)
        return std::nullopt;
    return sqlite3_column_double(m_statement.get(), column);
}

std::optional<std::string_view> SqliteStatement::text(int column) const {
    if (sqlite3_column_type(m_statement.get(), column) != SQLITE_TEXT)
        return std::nullopt;
    const auto* const bytes = reinterpret_cast<const char*>(sqlite3_column_text(m_statement.get(), column));
    if (bytes == nullptr) // out of memory
        return std::nullopt;
    return std::string_view(bytes, static_cast<std::size_t>(sqlite3_column_bytes(m_statement.get(), column)));
}

bool SqliteStatement::isNull(int column) const {
    return sqlite3_column_type(m_statement.get(), column) == SQLITE_NULL;
}

} // namespace platform
