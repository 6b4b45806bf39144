#pragma once

#include "platform/sqlite/Connection.h"

#include <sqlite3.h>

#include <cstddef>
#include <cstdint>
#include <memory>
#include <string>
#include <variant>
#include <vector>

namespace bench {

/// Thrown in place of a commit.
struct StoppedBeforeCommit {};

/// A connection that keeps the statements that pass through it, in order, while it is told to, and never commits: who
/// asks for it gets StoppedBeforeCommit and rolls back.
class RecordingConnection : public contract::Connection {
public:
    explicit RecordingConnection(std::shared_ptr<platform::sqlite::Connection> inner) : inner_(std::move(inner)) {}

    std::string ConnectionString() const override { return inner_->ConnectionString(); }
    void SetConnectionString(std::string_view text) override { inner_->SetConnectionString(text); }
    void Open() override { inner_->Open(); }
    void Close() noexcept override { inner_->Close(); }
    bool IsOpen() const override { return inner_->IsOpen(); }
    std::int64_t Execute(const contract::Statement& statement) override {
        keep(statement);
        return inner_->Execute(statement);
    }
    void Read(const contract::Statement& statement, contract::Snapshot& rows) override {
        keep(statement);
        inner_->Read(statement, rows);
    }
    void BeginTrans() override { inner_->BeginTrans(); }
    [[noreturn]] void CommitTrans() override { throw StoppedBeforeCommit(); }
    void RollbackTrans() override { inner_->RollbackTrans(); }
    bool InTransaction() const override { return inner_->InTransaction(); }
    const contract::ErrorList& Errors() const override { return inner_->Errors(); }

    bool recording = false;
    std::vector<contract::Statement> statements;

private:
    void keep(const contract::Statement& statement) {
        if (recording)
            statements.push_back(statement);
    }

    std::shared_ptr<platform::sqlite::Connection> inner_;
};

/// Statements run again over SQLite's C API and nothing else: each shape translated and prepared once, the arguments
/// ready to be bound, every column of every row read.
class Replay {
public:
    Replay(platform::sqlite::Connection& connection, const std::vector<contract::Statement>& statements);
    Replay(const Replay&) = delete;
    Replay& operator=(const Replay&) = delete;
    ~Replay();

    /// Runs all of them. False when the engine refused one.
    bool run();
    std::size_t size() const { return calls_.size(); }

private:
    using Argument = std::variant<std::int64_t, double, std::string>;
    struct Shape {
        contract::Statement statement;
        sqlite3_stmt* handle = nullptr;
        std::vector<std::pair<std::size_t, int>> parameters; ///< piece and kind of binding
    };
    struct Call {
        std::size_t shape = 0;
        std::vector<Argument> arguments;
    };

    std::size_t shapeOf(platform::sqlite::Connection& connection, const contract::Statement& statement);

    std::vector<Shape> shapes_;
    std::vector<Call> calls_;
};

} // namespace bench
