// RAII owners of an SQLite connection and of a prepared statement.
#ifndef OVGAME_SQLITE_HANDLES_H
#define OVGAME_SQLITE_HANDLES_H

#include <sqlite3.h>

#include <cstdint>
#include <string_view>

namespace ovg {

class Database {
public:
    Database() = default;
    explicit Database(sqlite3* db) : db_(db) {}
    Database(const Database&) = delete;
    Database& operator=(const Database&) = delete;
    ~Database() { sqlite3_close_v2(db_); }
    sqlite3* get() const { return db_; }
    // Takes ownership of `db`, closing the connection held before.
    void Reset(sqlite3* db)
    {
        sqlite3_close_v2(db_);
        db_ = db;
    }
    // Runs SQL without results; false on any error.
    bool Exec(const char* sql) const { return sqlite3_exec(db_, sql, nullptr, nullptr, nullptr) == SQLITE_OK; }

private:
    sqlite3* db_ = nullptr;
};

class Statement {
public:
    Statement() = default;
    Statement(const Statement&) = delete;
    Statement& operator=(const Statement&) = delete;
    ~Statement() { sqlite3_finalize(stmt_); }

    bool Prepare(sqlite3* db, const char* sql)
    {
        sqlite3_finalize(stmt_);
        stmt_ = nullptr;
        return sqlite3_prepare_v3(db, sql, -1, SQLITE_PREPARE_PERSISTENT, &stmt_, nullptr) == SQLITE_OK;
    }
    Statement& Bind(int index, int64_t value)
    {
        sqlite3_bind_int64(stmt_, index, value);
        return *this;
    }
    Statement& BindBlob(int index, const void* data, size_t size)
    {
        sqlite3_bind_blob64(stmt_, index, data, size, SQLITE_STATIC);
        return *this;
    }
    // One step: SQLITE_ROW, SQLITE_DONE or an error code.
    int Step() { return sqlite3_step(stmt_); }
    // Steps a statement without results to its end and resets it.
    bool Run()
    {
        const int rc = sqlite3_step(stmt_);
        Reset();
        return rc == SQLITE_DONE;
    }
    void Reset()
    {
        sqlite3_reset(stmt_);
        sqlite3_clear_bindings(stmt_);
    }
    int64_t Int(int column) const { return sqlite3_column_int64(stmt_, column); }
    std::string_view Blob(int column) const
    {
        const void* data = sqlite3_column_blob(stmt_, column);
        const int size = sqlite3_column_bytes(stmt_, column);
        return data == nullptr ? std::string_view() : std::string_view(static_cast<const char*>(data), size_t(size));
    }

private:
    sqlite3_stmt* stmt_ = nullptr;
};

}  // namespace ovg

#endif
