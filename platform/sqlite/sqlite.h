#pragma once

#include <cstdint>
#include <memory>
#include <optional>
#include <string>
#include <string_view>

struct sqlite3;
struct sqlite3_stmt;

/// Databases that may hold anything, behind SQLite. For the layer's own use.
namespace platform {

/// An open database, for one thread at a time. What its schema could do beyond holding tables is switched
/// off: a view, an extension or a function with effects never runs.
class SqliteDatabase {
public:
    /// For reading, the database that is open here already, with its log (-1 where it has none). Nothing is
    /// opened by a name, locked or written, neither the files nor anything beside them; both must stay open.
    /// Null when there is no memory; a file that is no database shows in the first statement. A statement
    /// fails when it takes far more steps than files of their length can ask for: pages may lead back to each
    /// other.
    static SqliteDatabase openToRead(int database, int log);

    /// For changing, the database at this path of the host, no name of which may be a link. Null when it
    /// can't be opened.
    static SqliteDatabase openToChange(const std::string& hostPath);

    explicit operator bool() const { return m_connection != nullptr; }

    bool run(const char* sql) const;
    std::optional<std::int64_t> number(const char* sql) const; ///< the first value, where it is an integer
    std::int64_t changes() const;                              ///< rows that the last statement changed

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

/// One statement and, while it is stepped through, its rows.
class SqliteStatement {
public:
    enum class Step { row, done, failed };

    /// False when the database hasn't what the statement speaks of, or can't be read.
    SqliteStatement(const SqliteDatabase& database, const std::string& sql);
    explicit operator bool() const { return m_statement != nullptr; }

    void bind(int parameter, std::string_view text) const; ///< the text must stay until the next one
    void bind(int parameter, double number) const;

    Step step() const;
    void reset() const;

    /// Values of the row that was stepped to; none of another type.
    std::optional<std::int64_t> integer(int column) const;
    std::optional<double> real(int column) const;           ///< an integer too
    std::optional<std::string_view> text(int column) const; ///< until the next step
    bool isNull(int column) const;

private:
    struct Finalize {
        void operator()(sqlite3_stmt* statement) const;
    };
    std::unique_ptr<sqlite3_stmt, Finalize> m_statement;
};

} // namespace platform
