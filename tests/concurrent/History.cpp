#include "concurrent/History.h"

#include "property/WorldDatabase.h"

#include <algorithm>
#include <atomic>
#include <cerrno>
#include <new>
#include <stdexcept>
#include <type_traits>
#include <utility>

#include <pthread.h>
#include <sys/mman.h>

namespace concurrent {

static_assert(std::is_trivially_copyable_v<model::Row>, "rows lie in shared memory");

constexpr std::uint64_t oneBegun = std::uint64_t{1} << 32U;

struct History::Shared {
    pthread_mutex_t lock;
    std::atomic<std::uint32_t> started, finished;
    std::atomic<std::uint64_t> runs; ///< transactions begun, times oneBegun, and those that are open
    std::size_t ends[mostStates];    ///< of each state's rows
    model::Row rows[mostRows];
};

History::History() {
    void* memory =
        ::mmap(nullptr, sizeof(Shared), PROT_READ | PROT_WRITE, MAP_SHARED | MAP_ANONYMOUS | MAP_NORESERVE, -1, 0);
    if (memory == MAP_FAILED)
        throw std::runtime_error("no shared memory");
    // All zeroes; the rows are made when they are put there.
    shared_ = static_cast<Shared*>(memory);
    pthread_mutexattr_t kind;
    ::pthread_mutexattr_init(&kind);
    ::pthread_mutexattr_setpshared(&kind, PTHREAD_PROCESS_SHARED);
    // Whoever is killed lets the others go on.
    ::pthread_mutexattr_setrobust(&kind, PTHREAD_MUTEX_ROBUST);
    ::pthread_mutex_init(&shared_->lock, &kind);
    ::pthread_mutexattr_destroy(&kind);
}

History::~History() {
    ::munmap(shared_, sizeof(Shared));
}

void History::put(std::size_t state, const std::vector<model::Row>& rows) {
    const std::size_t begin = state == 0 ? 0 : shared_->ends[state - 1];
    if (state >= mostStates || begin + rows.size() > mostRows)
        throw std::runtime_error("the history is full");
    const auto unmarked = property::withoutMarks(rows);
    std::uninitialized_copy(unmarked.begin(), unmarked.end(), shared_->rows + begin);
    shared_->ends[state] = begin + rows.size();
}

void History::start(const std::vector<model::Row>& rows) {
    put(0, rows);
    shared_->started = shared_->finished = 0;
}

std::uint32_t History::finished() const {
    return shared_->finished;
}

std::uint32_t History::started() const {
    return shared_->started;
}

std::vector<model::Row> History::state(std::size_t commits) const {
    const auto* rows = static_cast<const model::Row*>(shared_->rows);
    return {rows + (commits == 0 ? 0 : shared_->ends[commits - 1]), rows + shared_->ends[commits]};
}

History::Run::Run(History& history) : history_(history), before_(history.shared_->runs.fetch_add(oneBegun + 1)) {
}

History::Run::~Run() {
    --history_.shared_->runs;
}

bool History::Run::alone() const {
    return before_ % oneBegun == 0 && history_.shared_->runs / oneBegun == before_ / oneBegun + 1;
}

History::Commit::Commit(History& history) : history_(history) {
    if (::pthread_mutex_lock(&history_.shared_->lock) == EOWNERDEAD)
        ::pthread_mutex_consistent(&history_.shared_->lock);
    history_.shared_->started = history_.shared_->finished + 1;
}

History::Commit::~Commit() {
    history_.shared_->started = history_.shared_->finished.load();
    ::pthread_mutex_unlock(&history_.shared_->lock);
}

std::uint32_t History::Commit::done(const std::vector<model::Row>& rows) {
    const std::uint32_t number = history_.shared_->finished + 1;
    history_.put(number, rows);
    history_.shared_->finished = number;
    return number;
}

/// One statement: notes a failure, and after the first one how far the transaction can have looked.
class SnapshotConnection::Step {
public:
    explicit Step(SnapshotConnection& connection) : connection_(connection) {}
    Step(const Step&) = delete;
    Step& operator=(const Step&) = delete;
    ~Step() {
        if (!connection_.current_)
            return;
        if (!std::exchange(connection_.reads_, true))
            connection_.current_->seenAtMost = connection_.history_.started();
        if (!done_)
            connection_.failed();
    }
    void done() { done_ = true; }

private:
    SnapshotConnection& connection_;
    bool done_ = false;
};

void SnapshotConnection::failed() {
    using contract::ErrorCategory;
    if (std::exchange(current_->failed, true))
        return;
    if (run_->alone())
        ++journal().counters().failedAlone;
    // A server's own function may put words of its own in the place of the conflict's.
    const auto& errors = Errors();
    const bool conflict = std::any_of(errors.begin(), errors.end(), [](const auto& error) {
        return error.category == ErrorCategory::deadlock || error.category == ErrorCategory::locked;
    });
    if (!conflict)
        ++journal().counters().otherWords;
}

std::int64_t SnapshotConnection::Execute(const contract::Statement& statement) {
    Step step(*this);
    const auto changed = inner().Execute(statement);
    step.done();
    return changed;
}

void SnapshotConnection::Read(const contract::Statement& statement, contract::Snapshot& rows) {
    Step step(*this);
    inner().Read(statement, rows);
    step.done();
}

void SnapshotConnection::BeginTrans() {
    const auto seen = history_.finished();
    run_.emplace(history_);
    inner().BeginTrans();
    current_ = &begun();
    current_->seenAtLeast = current_->seenAtMost = seen;
    reads_ = false;
}

void SnapshotConnection::CommitTrans() {
    History::Commit commit(history_);
    Step step(*this);
    inner().CommitTrans();
    step.done();
    current_->committed = true;
    current_->commit = commit.done(property::rowsAsTheyLie(*reader_));
    current_ = nullptr;
    run_.reset();
}

void SnapshotConnection::RollbackTrans() {
    current_ = nullptr;
    inner().RollbackTrans();
    run_.reset();
}

} // namespace concurrent
