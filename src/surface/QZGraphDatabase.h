#pragma once

#include <QString>

#include <cstdint>
#include <memory>
#include <optional>
#include <string>
#include <string_view>
#include <vector>

namespace SQLite {
class Database;
class Statement;
} // namespace SQLite

/// The rows of one query, read forwards. Columns are found by name, whatever its case. Reading never fails: a number
/// read from text is the number that the text starts with, else 0; an absent value or column is 0 or null.
///
/// Keeps its connection alive, so it may be read on after the database was closed.
class QZGraphResultSet {
public:
    QZGraphResultSet(QZGraphResultSet&&) noexcept = default;
    QZGraphResultSet(const QZGraphResultSet&) = delete;
    // Taking another's place would let go of the connection before the statement on it.
    QZGraphResultSet& operator=(const QZGraphResultSet&) = delete;
    ~QZGraphResultSet() = default;

    /// Goes to the next row; false behind the last one and when the file could not be read on.
    bool next();
    /// Why next() stopped early; null when it did not.
    [[nodiscard]] QString failure() const { return failure_; }
    void close();

    /// Columns count from 0.
    [[nodiscard]] std::int32_t intForColumnIndex(int column) const;

    [[nodiscard]] std::int32_t intForColumn(std::string_view name) const;
    [[nodiscard]] std::uint64_t unsignedLongLongIntForColumn(std::string_view name) const;
    [[nodiscard]] double doubleForColumn(std::string_view name) const;
    [[nodiscard]] bool boolForColumn(std::string_view name) const { return intForColumn(name) != 0; }
    [[nodiscard]] QString stringForColumn(std::string_view name) const;
    /// The same as UTF-8, valid until the next row.
    [[nodiscard]] std::string_view utf8ForColumn(std::string_view name) const;

private:
    friend class QZGraphDatabase;
    QZGraphResultSet(std::shared_ptr<SQLite::Database> connection, std::unique_ptr<SQLite::Statement> statement);

    [[nodiscard]] int columnNamed(std::string_view name) const;

    struct Finalizer {
        void operator()(SQLite::Statement* statement) const;
    };

    std::shared_ptr<SQLite::Database> connection_;
    std::unique_ptr<SQLite::Statement, Finalizer> statement_; // goes before its connection does
    std::vector<std::string> names_;
    mutable std::size_t nextName_ = 0; // columns are mostly read in their order
    QString failure_;
};

/// A handle on one SQLite file. Nothing here throws: what fails answers false or nothing, and lastErrorMessage() says
/// why. A call runs one statement, the first in its text; what follows it is ignored. While another connection has the
/// file locked, a call waits up to two seconds.
class QZGraphDatabase {
public:
    /// A handle that is not open yet.
    static std::shared_ptr<QZGraphDatabase> databaseWithPath(const QString& path);

    /// `flags` are SQLite's: 6 opens for reading and writing and creates a missing file. True when it is open already.
    /// The file is not looked into before the first statement, which is the one that waits when it is locked.
    bool openWithFlags(int flags);
    /// Whether it is open.
    [[nodiscard]] bool goodConnection() const { return connection_ != nullptr; }
    /// An unfinished transaction is lost.
    void close();
    [[nodiscard]] QString databasePath() const { return path_; }

    /// The texts that the "?" of a statement stand for, in order.
    using Values = std::vector<std::string>;

    /// Statements and values are UTF-8. Nothing when the statement is no good: it is not run yet, the first row is
    /// fetched by next().
    std::optional<QZGraphResultSet> executeQuery(const std::string& statement, const Values& values = {});
    bool executeUpdate(const std::string& statement, const Values& values = {});
    /// Runs an INSERT that a user's texts stand in. Fails without a transaction, where it would be written at once. One
    /// that works longer than any row needs is stopped, see wasStopped().
    bool executeInsert(const std::string& statement, const Values& values = {});
    /// What went wrong last.
    [[nodiscard]] QString lastErrorMessage() const { return lastError_; }
    /// Whether what went wrong last was a statement that worked for too long. SQLite takes its transaction back.
    [[nodiscard]] bool wasStopped() const;
    /// For a caller that does not let a statement run: answers false and keeps `message` as what went wrong last.
    bool failed(const char* message, int errorCode = 0);

    /// Another one after a commit, here or by another connection, and after the file was opened anew.
    struct Version {
        int openings = 0;
        int commits = 0;
        int others = 0; ///< SQLite's count of what other connections did

        bool operator==(const Version&) const = default;
    };
    [[nodiscard]] Version version();

    /// Locks the file for everyone else, so that the commit cannot meet a lock.
    bool beginTransaction();
    bool commit();
    /// A transaction ends with commit(), with close(), and when SQLite gives it up: at a full disk, for instance.
    [[nodiscard]] bool isInTransaction() const;

private:
    explicit QZGraphDatabase(QString path) : path_(std::move(path)) {}

    QString path_;
    std::shared_ptr<SQLite::Database> connection_;
    int openings_ = 0;
    int commits_ = 0;
    QString lastError_;
    int lastErrorCode_ = 0; // SQLite's, for executeUpdate(); else 0
};
