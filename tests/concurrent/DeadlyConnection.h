#pragma once

#include "property/WrappedConnection.h"

#include <csignal>

namespace concurrent {

/// A connection that kills its own process before or after one of its operations.
class DeadlyConnection : public property::WrappedConnection {
public:
    using WrappedConnection::WrappedConnection;

    /// Counted from 1 from now on.
    void dieAt(int operation, bool after) {
        at_ = operation;
        after_ = after;
        done_ = 0;
    }

    std::int64_t Execute(const contract::Statement& statement) override {
        const Moment moment(*this);
        return inner().Execute(statement);
    }
    void Read(const contract::Statement& statement, contract::Snapshot& rows) override {
        const Moment moment(*this);
        inner().Read(statement, rows);
    }
    void BeginTrans() override {
        const Moment moment(*this);
        inner().BeginTrans();
    }
    void CommitTrans() override {
        const Moment moment(*this);
        inner().CommitTrans();
    }

private:
    class Moment {
    public:
        explicit Moment(DeadlyConnection& connection) : connection_(connection) {
            if (++connection_.done_ == connection_.at_ && !connection_.after_)
                ::raise(SIGKILL);
        }
        Moment(const Moment&) = delete;
        Moment& operator=(const Moment&) = delete;
        ~Moment() {
            if (connection_.done_ == connection_.at_ && connection_.after_)
                ::raise(SIGKILL);
        }

    private:
        DeadlyConnection& connection_;
    };

    int at_ = 0;
    bool after_ = false;
    int done_ = 0;
};

} // namespace concurrent
