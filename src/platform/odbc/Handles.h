#pragma once

#include <cstdint>
#include <utility>

#include <sql.h>
#include <sqlext.h>
#include <sqlucode.h>

namespace platform::odbc {

/// A number as the value of an attribute.
inline SQLPOINTER attribute(std::uintptr_t value) {
    return reinterpret_cast<SQLPOINTER>(value); // NOLINT(performance-no-int-to-ptr)
}

/// One handle of the driver manager, freed with the object.
template <SQLSMALLINT Type> class Handle {
public:
    Handle() = default;
    /// Null when the driver manager makes none.
    explicit Handle(SQLHANDLE parent) {
        if (!SQL_SUCCEEDED(SQLAllocHandle(Type, parent, &handle_)))
            handle_ = nullptr;
    }
    Handle(const Handle&) = delete;
    Handle& operator=(const Handle&) = delete;
    Handle(Handle&& other) noexcept : handle_(std::exchange(other.handle_, nullptr)) {}
    Handle& operator=(Handle&& other) noexcept {
        std::swap(handle_, other.handle_);
        return *this;
    }
    ~Handle() { reset(); }

    void reset() {
        if (handle_ != nullptr)
            SQLFreeHandle(Type, std::exchange(handle_, nullptr));
    }
    SQLHANDLE get() const { return handle_; }
    explicit operator bool() const { return handle_ != nullptr; }

private:
    SQLHANDLE handle_ = nullptr;
};

using Environment = Handle<SQL_HANDLE_ENV>;
using DatabaseHandle = Handle<SQL_HANDLE_DBC>;
using StatementHandle = Handle<SQL_HANDLE_STMT>;

/// Closes a statement's result and forgets its bound columns and parameters when its use ends, whatever ends it: no
/// result stays open while the next statement runs.
class Reset {
public:
    explicit Reset(SQLHSTMT statement) : statement_(statement) {}
    Reset(const Reset&) = delete;
    Reset& operator=(const Reset&) = delete;
    ~Reset() { now(); }
    void now() {
        if (statement_ == nullptr)
            return;
        SQLFreeStmt(statement_, SQL_CLOSE);
        SQLFreeStmt(statement_, SQL_UNBIND);
        SQLFreeStmt(statement_, SQL_RESET_PARAMS);
    }
    /// The statement has gone by itself.
    void forget() { statement_ = nullptr; }

private:
    SQLHSTMT statement_;
};

} // namespace platform::odbc
