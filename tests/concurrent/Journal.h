#pragma once

#include "property/WrappedConnection.h"

#include <atomic>
#include <cstddef>
#include <cstdint>
#include <optional>
#include <string>
#include <string_view>

namespace concurrent {

/// What a user asked for in one transaction, and whether the transaction was committed. Plain numbers, since it lies in
/// memory that several processes share.
struct Entry {
    enum class Kind : std::uint8_t { none, structure, validity, edit };
    Kind kind = Kind::none;
    bool committed = false;
    bool failed = false; ///< a statement or the commit ended in an error
    int user = 0;
    std::int64_t origin = 0;      ///< moves: distinta on the left
    std::int64_t destination = 0; ///< moves: distinta on the right
    std::int64_t node = 0;        ///< moves: focused on the left; edits: the node
    std::int64_t target = 0;      ///< moves: focused on the right
    /// Days from 01/01/1970. Validity: closing date and end of the new links.
    std::int32_t closing = 0;
    std::int32_t fixedEnd = 0;
    /// What a screen showed of the node, and of the one under which it is moved.
    struct Shown {
        bool known = false;      ///< otherwise what it showed is taken to have been right
        std::int64_t parent = 0; ///< 0: none
        std::int32_t start = 0, end = 0;
    };
    Shown nodeShown, targetShown;
    /// Edits: the dates on the screen, and the new ones.
    std::int32_t oldStart = 0, oldEnd = 0, newStart = 0, newEnd = 0;
    /// By a SnapshotConnection: the commits that it has seen are the first ones, at least and at most so many; and
    /// which commit it was itself, counted from 1, 0 when it was none.
    std::uint32_t seenAtLeast = 0, seenAtMost = 0, commit = 0;
};

/// The transactions of all processes in the order in which they began, in memory that child processes share with their
/// parent.
class Journal {
public:
    static constexpr std::size_t capacity = 200'000;

    Journal();
    Journal(const Journal&) = delete;
    Journal& operator=(const Journal&) = delete;
    ~Journal();

    Entry& next();
    std::size_t size() const;
    const Entry& at(std::size_t index) const { return shared_->entries[index]; }

    /// Counters of what users met.
    struct Counters {
        std::atomic<std::int64_t> actions, refusals, errors, unreadable, stale, open;
        std::atomic<std::int64_t> failedAlone; ///< transactions that an error ended while there was no other one
        std::atomic<std::int64_t> otherWords;  ///< that an error ended which does not say that it is a conflict
    };
    Counters& counters() { return shared_->counters; }

    /// Keeps what a user was told, a question apart: cut to what a place holds, and dropped where there is no more.
    void tell(int user, bool error, std::string_view text);
    /// What users were told about the time of a transaction, one text a line.
    std::string toldAround(std::size_t transaction) const;
    /// What users were told in error displays, each text once with its count, one a line.
    std::string errorsTold() const;

private:
    struct Told {
        std::atomic<bool> written;
        bool error;
        int user;
        std::size_t transactions; ///< that had begun by then
        char text[400];
    };
    static constexpr std::size_t mostTold = 20'000;
    std::size_t toldCount() const;

    struct Shared {
        std::atomic<std::size_t> size;
        Counters counters;
        Entry entries[capacity];
        std::atomic<std::size_t> toldCount;
        Told told[mostTold];
    };
    Shared* shared_;
};

/// A connection that writes each transaction into the journal.
class RecordingConnection : public property::WrappedConnection {
public:
    RecordingConnection(std::unique_ptr<contract::Connection> inner, Journal& journal)
        : WrappedConnection(std::move(inner)), journal_(journal) {}

    /// What the next transaction is for.
    void announce(const Entry& entry) { announced_ = entry; }

protected:
    Journal& journal() { return journal_; }
    /// A new entry, of what was announced.
    Entry& begun() {
        auto& entry = journal_.next();
        entry = announced_;
        return entry;
    }

private:
    Journal& journal_;
    Entry announced_;
};

/// Over the embedded database a transaction holds it alone from its beginning, so there the order of the beginnings is
/// the order of the commits.
class OrderedConnection : public RecordingConnection {
public:
    using RecordingConnection::RecordingConnection;

    void BeginTrans() override {
        inner().BeginTrans();
        current_ = &begun();
    }
    void CommitTrans() override {
        inner().CommitTrans();
        current_->committed = true;
    }

private:
    Entry* current_ = nullptr;
};

} // namespace concurrent
