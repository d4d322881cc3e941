#include "surface/QZGraphDatabase.h"

#include <QScopeGuard>

#include <SQLiteCpp/Column.h>
#include <SQLiteCpp/Database.h>
#include <SQLiteCpp/Statement.h>
#include <algorithm>
#include <exception>
#include <sqlite3.h>

namespace {

constexpr int busyTimeout = 2000;       // ms
constexpr int maxInsertSteps = 100'000; // of SQLite's machine; a row takes about fifty

char lower(char letter)
{
    return letter >= 'A' && letter <= 'Z' ? static_cast<char>(letter - 'A' + 'a') : letter;
}

bool isSameName(std::string_view a, std::string_view b)
{
    return a.size() == b.size() &&
           std::equal(a.begin(), a.end(), b.begin(), [](char x, char y) { return lower(x) == lower(y); });
}

void bind(SQLite::Statement& statement, const QZGraphDatabase::Values& values)
{
    int index = 0;
    for (const std::string& value : values)
        statement.bind(++index, value);
}

} // namespace

QZGraphResultSet::QZGraphResultSet(std::shared_ptr<SQLite::Database> connection,
                                   std::unique_ptr<SQLite::Statement> statement)
    : connection_(std::move(connection)), statement_(statement.release())
{
    for (int i = 0; i < statement_->getColumnCount(); ++i)
        names_.emplace_back(statement_->getColumnName(i));
}

void QZGraphResultSet::Finalizer::operator()(SQLite::Statement* statement) const
{
    delete statement;
}

bool QZGraphResultSet::next()
{
    if (!statement_)
        return false;
    statement_->tryExecuteStep();
    if (statement_->hasRow())
        return true;
    if (!statement_->isDone())
        failure_ = QString::fromUtf8(connection_->getErrorMsg());
    close();
    return false;
}

void QZGraphResultSet::close()
{
    statement_.reset();
    connection_.reset();
}

int QZGraphResultSet::columnNamed(std::string_view name) const
{
    if (nextName_ < names_.size() && names_[nextName_] == name)
        return static_cast<int>(nextName_++);
    for (std::size_t i = 0; i < names_.size(); ++i) {
        const std::size_t column = (nextName_ + i) % names_.size();
        if (isSameName(names_[column], name)) {
            nextName_ = column + 1;
            return static_cast<int>(column);
        }
    }
    return -1;
}

std::int32_t QZGraphResultSet::intForColumnIndex(int column) const
{
    const bool isThere = statement_ && statement_->hasRow() && column >= 0 && column < statement_->getColumnCount();
    return isThere ? statement_->getColumn(column).getInt() : 0;
}

std::int32_t QZGraphResultSet::intForColumn(std::string_view name) const
{
    return intForColumnIndex(columnNamed(name));
}

std::uint64_t QZGraphResultSet::unsignedLongLongIntForColumn(std::string_view name) const
{
    const int column = columnNamed(name);
    if (column < 0 || !statement_ || !statement_->hasRow())
        return 0;
    return static_cast<std::uint64_t>(statement_->getColumn(column).getInt64());
}

double QZGraphResultSet::doubleForColumn(std::string_view name) const
{
    const int column = columnNamed(name);
    return column < 0 || !statement_ || !statement_->hasRow() ? 0.0 : statement_->getColumn(column).getDouble();
}

std::string_view QZGraphResultSet::utf8ForColumn(std::string_view name) const
{
    const int column = columnNamed(name);
    if (column < 0 || !statement_ || !statement_->hasRow())
        return {};
    const SQLite::Column value = statement_->getColumn(column);
    const char* text = value.getText(nullptr);
    return text == nullptr ? std::string_view() : std::string_view(text, static_cast<std::size_t>(value.getBytes()));
}

QString QZGraphResultSet::stringForColumn(std::string_view name) const
{
    const std::string_view text = utf8ForColumn(name);
    return QString::fromUtf8(text.data(), static_cast<qsizetype>(text.size()));
}

std::shared_ptr<QZGraphDatabase> QZGraphDatabase::databaseWithPath(const QString& path)
{
    return std::shared_ptr<QZGraphDatabase>(new QZGraphDatabase(path));
}

bool QZGraphDatabase::failed(const char* message, int errorCode)
{
    lastError_ = QString::fromUtf8(message);
    lastErrorCode_ = errorCode;
    return false;
}

bool QZGraphDatabase::wasStopped() const
{
    return lastErrorCode_ == SQLITE_INTERRUPT;
}

bool QZGraphDatabase::openWithFlags(int flags)
{
    if (connection_)
        return true;
    try {
        connection_ = std::make_shared<SQLite::Database>(path_.toStdString(), flags, busyTimeout);
        ++openings_;
        return true;
    } catch (const std::exception& error) {
        return failed(error.what());
    }
}

void QZGraphDatabase::close()
{
    connection_.reset();
}

std::optional<QZGraphResultSet> QZGraphDatabase::executeQuery(const std::string& statement, const Values& values)
{
    if (!connection_) {
        failed("database is not open");
        return std::nullopt;
    }
    try {
        auto prepared = std::make_unique<SQLite::Statement>(*connection_, statement);
        bind(*prepared, values);
        return QZGraphResultSet(connection_, std::move(prepared));
    } catch (const std::exception& error) {
        failed(error.what());
        return std::nullopt;
    }
}

bool QZGraphDatabase::executeUpdate(const std::string& statement, const Values& values)
{
    if (!connection_)
        return failed("database is not open");
    try {
        SQLite::Statement prepared(*connection_, statement);
        bind(prepared, values);
        while (prepared.executeStep()) {
        }
        return true;
    } catch (const SQLite::Exception& error) {
        return failed(error.what(), error.getErrorCode());
    } catch (const std::exception& error) {
        return failed(error.what());
    }
}

bool QZGraphDatabase::executeInsert(const std::string& statement, const Values& values)
{
    if (!isInTransaction())
        return failed("no transaction is active");
    sqlite3* const handle = connection_->getHandle();
    sqlite3_progress_handler(
        handle, maxInsertSteps, [](void*) { return 1; }, nullptr);
    const auto unbound = qScopeGuard([handle] { sqlite3_progress_handler(handle, 0, nullptr, nullptr); });
    return executeUpdate(statement, values);
}

QZGraphDatabase::Version QZGraphDatabase::version()
{
    auto others = executeQuery("PRAGMA data_version");
    return {openings_, commits_, others && others->next() ? others->intForColumnIndex(0) : 0};
}

bool QZGraphDatabase::beginTransaction()
{
    return executeUpdate("BEGIN EXCLUSIVE TRANSACTION");
}

bool QZGraphDatabase::commit()
{
    ++commits_;
    return executeUpdate("COMMIT TRANSACTION");
}

bool QZGraphDatabase::isInTransaction() const
{
    return connection_ && sqlite3_get_autocommit(connection_->getHandle()) == 0;
}
