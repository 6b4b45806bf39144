#pragma once

#include "contract/Connection.h"
#include "contract/RuntimeError.h"
#include "contract/Snapshot.h"
#include "platform/headless/HostJournal.h"

#include <cstdint>
#include <functional>
#include <memory>
#include <optional>
#include <string>
#include <string_view>
#include <vector>

namespace platform::headless {

/// Rows for an answer: their fields and values.
struct ScriptedRows {
    contract::FieldList fields;
    std::vector<std::vector<contract::Value>> rows;
};

/// Fields named so, of kinds that suit the first value that is there in each column (variant where there is none).
ScriptedRows rows(const std::vector<std::string>& names, std::vector<std::vector<contract::Value>> values = {});

/// A connection that answers statements by rules and remembers what it was told.
///
/// The rule given last that fits answers. A statement that no rule fits has no rows, and changes one row. A failure
/// that was asked for comes before any rule.
class ScriptedConnection : public contract::Connection {
public:
    explicit ScriptedConnection(std::shared_ptr<HostJournal> journal = std::make_shared<HostJournal>())
        : journal_(std::move(journal)) {}
    ~ScriptedConnection() override;

    // What it answers

    /// Statements whose text begins so.
    void answer(std::string_view beginning, ScriptedRows rows);
    /// The same, made anew for each statement from its text.
    void answer(std::string_view beginning, std::function<ScriptedRows(const std::string& text)> make);
    /// Statements of exactly that text.
    void answerExactly(std::string_view text, ScriptedRows rows);
    /// What executing statements that begin so does; gives the number of rows changed.
    void change(std::string_view beginning, std::function<std::int64_t(const std::string& text)> effect);
    /// Told of every transaction word that succeeded.
    std::function<void(std::string_view word)> transaction;
    /// Statements that begin so fail until forget() is called.
    void fail(std::string_view beginning, contract::DatabaseErrorRecord record);
    /// The n-th operation from now on, counted from 1, fails: statements, BeginTrans, CommitTrans, RollbackTrans.
    void failNth(int nth, contract::DatabaseErrorRecord record);
    /// The n-th operation from now on, and every one after it, finds no connection any more.
    void loseConnectionAt(int nth);
    /// Whether a failing operation ends the transaction, as servers do on some errors; off at first.
    void endTransactionOnError(bool ends) { endsOnError_ = ends; }
    /// Takes rules, failures and the loss away.
    void forget();

    // What it was told

    /// Statement texts and "BeginTrans", "CommitTrans", "RollbackTrans", in order.
    const std::vector<std::string>& statements() const { return statements_; }
    /// Those since the last time.
    std::vector<std::string> take();
    /// Those that begin so.
    std::vector<std::string> statements(std::string_view beginning) const;
    std::size_t operations() const { return statements_.size(); }

    std::string ConnectionString() const override { return connectionString_; }
    void SetConnectionString(std::string_view text) override;
    void Open() override;
    void Close() noexcept override;
    bool IsOpen() const override { return open_; }
    std::int64_t Execute(const contract::Statement& statement) override;
    void Read(const contract::Statement& statement, contract::Snapshot& rows) override;
    void BeginTrans() override;
    void CommitTrans() override;
    void RollbackTrans() override;
    bool InTransaction() const override { return inTransaction_; }
    const contract::ErrorList& Errors() const override { return errors_; }

private:
    struct Rule {
        std::string text;
        bool exact = false;
        std::function<ScriptedRows(const std::string&)> make;
        std::function<std::int64_t(const std::string&)> effect;
        std::optional<contract::DatabaseErrorRecord> error;
    };

    /// Notes an operation and fails where that was asked for.
    void operation(const std::string& text);
    void endTransaction(std::string_view word);
    [[noreturn]] void report(const contract::DatabaseErrorRecord& record, const std::string& text);
    const Rule* rule(const std::string& text) const;

    std::shared_ptr<HostJournal> journal_;
    std::string connectionString_;
    bool open_ = false;
    bool inTransaction_ = false;
    bool endsOnError_ = false;
    std::vector<Rule> rules_;
    std::vector<std::pair<int, contract::DatabaseErrorRecord>> failures_; // operations left before each
    std::optional<int> lossIn_;
    bool lost_ = false;
    std::vector<std::string> statements_;
    std::size_t taken_ = 0;
    contract::ErrorList errors_;
};

} // namespace platform::headless
