// Owning wrappers of an SQLite connection and its prepared statements.
#ifndef ORVAN_OVKEY_SQLITE_HANDLE_H
#define ORVAN_OVKEY_SQLITE_HANDLE_H

#include <sqlite3.h>

#include <cstdint>
#include <memory>
#include <span>
#include <string>
#include <string_view>

namespace ovkey {

struct ConnectionCloser {
    void operator()(sqlite3* db) const { sqlite3_close_v2(db); }
};
using Connection = std::unique_ptr<sqlite3, ConnectionCloser>;

// A prepared statement, reset on every Prepare()/Reset() so that one can be
// kept per query and reused.
class Statement {
public:
    Statement() = default;
    Statement(sqlite3* db, std::string_view sql);

    bool Ok() const { return stmt_ != nullptr; }
    // Resets the statement and clears its bindings; returns *this for chaining.
    Statement& Reset();

    Statement& Bind(int index, int64_t value);
    Statement& Bind(int index, std::string_view text);
    Statement& BindBlob(int index, std::span<const uint8_t> bytes);

    // One step: true while a row is there. A failure ends like the last row.
    bool Step();
    // Runs the statement to its end; true when it finished without error.
    bool Run();

    int64_t Int(int column) const;
    std::string_view Text(int column) const;
    std::span<const uint8_t> Blob(int column) const;

private:
    struct Finalizer {
        void operator()(sqlite3_stmt* stmt) const { sqlite3_finalize(stmt); }
    };
    std::unique_ptr<sqlite3_stmt, Finalizer> stmt_;
    bool failed_ = false;
};

// Runs SQL text of one or more statements without results; true on success.
bool Execute(sqlite3* db, const char* sql);

}  // namespace ovkey

#endif
