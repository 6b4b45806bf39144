#pragma once

#include "concurrent/Journal.h"
#include "property/MoveModel.h"

#include <cstddef>
#include <cstdint>
#include <memory>
#include <optional>
#include <vector>

namespace concurrent {

/// What the rows were after each commit, in the order of the commits, in memory that child processes share with their
/// parent.
class History {
public:
    static constexpr std::size_t mostStates = 20'000;
    static constexpr std::size_t mostRows = 2'000'000; ///< of all states together

    History();
    History(const History&) = delete;
    History& operator=(const History&) = delete;
    ~History();

    /// A transaction from its beginning to its end.
    class Run {
    public:
        explicit Run(History& history);
        Run(const Run&) = delete;
        Run& operator=(const Run&) = delete;
        ~Run();
        /// No other transaction was open at its beginning, and none has begun since.
        bool alone() const;

    private:
        History& history_;
        std::uint64_t before_; ///< what had begun and what was open
    };

    /// Lets one process commit at a time, and nobody else's commit come between its own and the reading of the rows.
    class Commit {
    public:
        explicit Commit(History& history);
        Commit(const Commit&) = delete;
        Commit& operator=(const Commit&) = delete;
        /// Without done() nothing was committed.
        ~Commit();
        /// The rows after it, as they lie. Which commit it was, counted from 1.
        std::uint32_t done(const std::vector<model::Row>& rows);

    private:
        History& history_;
    };

    /// The rows before the first commit.
    void start(const std::vector<model::Row>& rows);
    /// Commits that are over: everybody sees them.
    std::uint32_t finished() const;
    /// Commits that are over or under way: nobody sees more.
    std::uint32_t started() const;

    /// The rows after that many commits, as they lay and without marks.
    std::vector<model::Row> state(std::size_t commits) const;

private:
    struct Shared;
    void put(std::size_t state, const std::vector<model::Row>& rows);
    Shared* shared_;
};

/// Over a server whose serialisable transactions read from a snapshot: which commits a transaction can have seen, and
/// what its own commit made of the rows, which a second connection reads. The server hears nothing besides on the
/// first.
class SnapshotConnection : public RecordingConnection {
public:
    /// reader: open.
    SnapshotConnection(std::unique_ptr<contract::Connection> inner, std::unique_ptr<contract::Connection> reader,
                       Journal& journal, History& history)
        : RecordingConnection(std::move(inner), journal), reader_(std::move(reader)), history_(history) {}

    std::int64_t Execute(const contract::Statement& statement) override;
    void Read(const contract::Statement& statement, contract::Snapshot& rows) override;
    void BeginTrans() override;
    void CommitTrans() override;
    void RollbackTrans() override;

private:
    class Step;
    void failed();

    std::unique_ptr<contract::Connection> reader_;
    History& history_;
    Entry* current_ = nullptr; ///< of the transaction that is open
    bool reads_ = false;       ///< it has its snapshot
    std::optional<History::Run> run_;
};

} // namespace concurrent
