// Statements that their user gives up.

#include "platform/odbc/Connection.h"
#include "platform/shared/LongWork.h"

namespace platform::odbc {

using shared::LongWork;

void Connection::leave(std::string_view operation) {
    if (!givenUp_)
        fail(SQL_HANDLE_STMT, statement_.get(), operation);
    Reset(statement_.get()).now();
    throw contract::Cancelled();
}

void Connection::watched(const std::function<void()>& call) {
    auto& work = LongWork::instance();
    if (!work.watched()) {
        call();
        return;
    }
    givenUp_ = false;
    try {
        watch_.run(call, [&] {
            // Again and again: one that comes before the driver has begun is not heard.
            if (work.stops(true)) {
                givenUp_ = true;
                SQLCancel(statement_.get());
            }
        });
    } catch (const contract::Cancelled&) {
        const LongWork::Aside aside;
        // SQLite ends the transaction of a change that is interrupted; a server does not.
        if (begun_ && engine_ == Engine::sqlite && !serverHasTransaction())
            ended_ = true;
        throw;
    }
    // Outside of a transaction what was done is done.
    if (givenUp_ && begun_)
        throw contract::Cancelled();
}

void Connection::setCancellable(bool cancellable) noexcept {
    if (cancellable)
        LongWork::instance().begin();
    else
        LongWork::instance().end();
}

} // namespace platform::odbc
