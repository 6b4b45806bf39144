#pragma once

#include <memory>

#include <sqlite3.h>

namespace platform::sqlite {

struct CloseDatabase {
    void operator()(sqlite3* database) const { sqlite3_close_v2(database); }
};
struct FinalizeStatement {
    void operator()(sqlite3_stmt* statement) const { sqlite3_finalize(statement); }
};

using DatabaseHandle = std::unique_ptr<sqlite3, CloseDatabase>;
using StatementHandle = std::unique_ptr<sqlite3_stmt, FinalizeStatement>;

/// Resets a statement when its use ends, whatever ends it, so that it holds no lock and can be used again.
class Reset {
public:
    explicit Reset(sqlite3_stmt* statement) : statement_(statement) {}
    Reset(const Reset&) = delete;
    Reset& operator=(const Reset&) = delete;
    ~Reset() { sqlite3_reset(statement_); }

private:
    sqlite3_stmt* statement_;
};

} // namespace platform::sqlite
