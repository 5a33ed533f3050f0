#include "ovkey/sqlite_handle.h"

namespace ovkey {

Statement::Statement(sqlite3* db, std::string_view sql)
{
    sqlite3_stmt* stmt = nullptr;
    if (sqlite3_prepare_v3(db, sql.data(), static_cast<int>(sql.size()), SQLITE_PREPARE_PERSISTENT,
                           &stmt, nullptr) == SQLITE_OK)
        stmt_.reset(stmt);
}

Statement& Statement::Reset()
{
    if (stmt_) {
        sqlite3_reset(stmt_.get());
        sqlite3_clear_bindings(stmt_.get());
    }
    failed_ = false;
    return *this;
}

Statement& Statement::Bind(int index, int64_t value)
{
    if (stmt_ && sqlite3_bind_int64(stmt_.get(), index, value) != SQLITE_OK)
        failed_ = true;
    return *this;
}

Statement& Statement::Bind(int index, std::string_view text)
{
    if (stmt_ && sqlite3_bind_text(stmt_.get(), index, text.data(), static_cast<int>(text.size()),
                                   SQLITE_TRANSIENT) != SQLITE_OK)
        failed_ = true;
    return *this;
}

Statement& Statement::BindBlob(int index, std::span<const uint8_t> bytes)
{
    // A zero-length blob must still bind as a blob, not as NULL.
    static constexpr uint8_t empty = 0;
    const void* data = bytes.empty() ? &empty : bytes.data();
    if (stmt_ && sqlite3_bind_blob(stmt_.get(), index, data, static_cast<int>(bytes.size()),
                                   SQLITE_TRANSIENT) != SQLITE_OK)
        failed_ = true;
    return *this;
}

bool Statement::Step()
{
    if (!stmt_ || failed_)
        return false;
    const int rc = sqlite3_step(stmt_.get());
    if (rc == SQLITE_ROW)
        return true;
    if (rc != SQLITE_DONE)
        failed_ = true;
    return false;
}

bool Statement::Run()
{
    while (Step()) {
    }
    const bool ok = stmt_ && !failed_;
    if (stmt_)
        sqlite3_reset(stmt_.get());
    return ok;
}

int64_t Statement::Int(int column) const
{
    return sqlite3_column_int64(stmt_.get(), column);
}

std::string_view Statement::Text(int column) const
{
    const auto* text = reinterpret_cast<const char*>(sqlite3_column_text(stmt_.get(), column));
    if (text == nullptr)
        return {};
    return {text, static_cast<size_t>(sqlite3_column_bytes(stmt_.get(), column))};
}

std::span<const uint8_t> Statement::Blob(int column) const
{
    const auto* bytes = static_cast<const uint8_t*>(sqlite3_column_blob(stmt_.get(), column));
    if (bytes == nullptr)
        return {};
    return {bytes, static_cast<size_t>(sqlite3_column_bytes(stmt_.get(), column))};
}

bool Execute(sqlite3* db, const char* sql)
{
    return sqlite3_exec(db, sql, nullptr, nullptr, nullptr) == SQLITE_OK;
}

}  // namespace ovkey
