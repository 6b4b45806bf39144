#pragma once

#include "contract/Statement.h"
#include "host/database/RecentItems.h"

#include <QByteArray>
#include <QFile>
#include <QString>
#include <QStringList>

#include <cstdint>
#include <functional>
#include <string_view>

namespace host {

/// Receives every statement text that goes to the database, and BeginTrans, CommitTrans and RollbackTrans as those
/// words.
class TraceLog {
public:
    TraceLog() = default;
    TraceLog(const TraceLog&) = delete;
    TraceLog& operator=(const TraceLog&) = delete;

    /// Appends from now on to a file, one JSON string a line. Throws RuntimeError when it can not be written. Where a
    /// line can not be written later, the file ends there: what follows would hide the gap.
    void openFile(const QString& path);
    /// Keeps the texts for take(); off at first.
    void setRecording(bool recording) { recording_ = recording; }

    void add(const contract::Statement& statement);
    void add(std::string_view word);
    /// Tells afterFinished() that the statement's work is done.
    void finished();

    /// The texts since the last call, but no more than the last RecentItems::most.
    QStringList take();
    /// Texts before those that take() handed over last which were kept no longer.
    std::uint64_t missing() const { return missing_; }

    /// Statements so far.
    std::uint64_t count() const { return count_; }

    /// Called after every statement; for the display of long work.
    std::function<void()> afterFinished;
    /// Called once when the file could not be written to its end, with the reason in the user's language.
    std::function<void(const QString& reason)> cut;

private:
    bool wanted() const { return recording_ || file_.isOpen(); }
    void keep(std::string_view text);
    void endFile(int reason);

    QFile file_;
    bool recording_ = false;
    RecentItems<QByteArray> texts_;
    std::uint64_t missing_ = 0;
    std::uint64_t count_ = 0;
};

} // namespace host
