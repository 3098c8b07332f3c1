#pragma once

#include <cstdint>
#include <memory>
#include <optional>
#include <string>
#include <string_view>

struct sqlite3;
struct sqlite3_stmt;

/// Access to untrusted SQLite databases. Internal to platform/.
namespace platform {

/// A connection to a database. Views, extensions and functions with side effects are disabled, because the
/// schema is untrusted. Not thread-safe.
class SqliteDatabase {
public:
    /// Opens a database for reading from its descriptor and that of its write-ahead log (-1 if it has none).
    /// Both must stay open. Opens no file by name, takes no lock and writes nothing, not even next to the
    /// files. Returns a null database when out of memory. A file that isn't a database makes the first
    /// statement fail; so do cyclic pages, by a limit of the steps of a statement relative to the files'
    /// size.
    static SqliteDatabase openToRead(int database, int log);

    /// Opens the database at this path of the host for reading and writing. No name of the path may be a
    /// symbolic link. Returns a null database on failure.
    static SqliteDatabase openToChange(const std::string& hostPath);

    explicit operator bool() const { return m_connection != nullptr; }

    /// Runs statements and returns true on success.
    bool run(const char* sql) const;

    /// Returns the first value of the first row, or nullopt when it isn't an integer.
    std::optional<std::int64_t> number(const char* sql) const;

    /// Returns the number of rows that the last statement changed.
    std::int64_t changes() const;

private:
    friend class SqliteStatement;
    struct Close {
        void operator()(sqlite3* connection) const;
    };
    explicit SqliteDatabase(sqlite3* connection) : m_connection(connection) {}
    void limitSteps(std::int64_t steps);

    std::unique_ptr<std::int64_t> m_stepsLeft;
    std::unique_ptr<sqlite3, Close> m_connection;
};

/// A prepared statement and its current row.
class SqliteStatement {
public:
    enum class Step { row, done, failed };

    /// Prepares the statement. It is null when the database lacks its tables or columns, or can't be read.
    SqliteStatement(const SqliteDatabase& database, const std::string& sql);
    explicit operator bool() const { return m_statement != nullptr; }

    /// Binds a value to a parameter (the first is 1). The text isn't copied, and must stay valid until it is
    /// replaced.
    void bind(int parameter, std::string_view text);
    void bind(int parameter, double number);

    Step step();
    void reset();

    /// Returns a value of the current row, or nullopt when it has a different type. real() converts integers.
    /// The text is valid until the next step.
    std::optional<std::int64_t> integer(int column) const;
    std::optional<double> real(int column) const;
    std::optional<std::string_view> text(int column) const;
    bool isNull(int column) const;

private:
    struct Finalize {
        void operator()(sqlite3_stmt* statement) const;
    };
    std::unique_ptr<sqlite3_stmt, Finalize> m_statement;
};

} // namespace platform
