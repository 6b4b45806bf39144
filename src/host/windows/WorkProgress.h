#pragma once

#include "contract/Progress.h"
#include "platform/shared/LongWork.h"

namespace host {

/// A work of the host's own that its user may give up, as long as the object lives: to be handed to whatever takes a
/// contract::Progress. What it tells stands in the status line, and at the foot of the window in front, with a button
/// "Annulla" beside it once it takes longer than a second; reached(), and every statement of the database meanwhile,
/// then throw contract::Cancelled.
///
/// Once something of it was committed nothing throws any more.
class WorkProgress : public contract::Progress {
public:
    /// unit: what the steps count, in the plural ("nodi"); empty for nothing said.
    explicit WorkProgress(std::string_view unit = {}) { WorkProgress::counts(unit); }

    void reached(std::string_view what, std::uint64_t done, std::optional<std::uint64_t> total) override {
        work().reached(what, done, total);
    }
    void counts(std::string_view unit) override { work().counts(unit); }

private:
    static platform::shared::LongWork& work() { return platform::shared::LongWork::instance(); }

    platform::shared::LongWork::Cancellable cancellable_;
};

} // namespace host
