#include "host/services/ErrorReport.h"

#include "contract/Host.h"
#include "host/database/CommandWaits.h"

namespace host {

int reportError(HostContext& context, std::string_view caption, const contract::RuntimeError& error,
                const contract::ErrorList& records) {
    const int answer = context.dialogs.showError(caption, caption, error, records, contract::message::errorDisplay);
    context.logError({"distinte", caption, caption, error, records, answer});
    if (answer == contract::message::answerRetry)
        CommandWaits::commandBegins();
    return answer;
}

// It is called by the event loop, through which no error may pass.
void keepStates(const std::weak_ptr<HostContext>& context, const std::function<void()>& commit) {
    for (;;) {
        try {
            commit();
            return;
        } catch (const contract::RuntimeError& error) {
            const auto held = context.lock();
            if (!held || !held->states)
                return;
            const contract::ErrorList records = held->states->errors();
            const int answer = reportError(*held, "Salvataggio degli stati", error, records);
            if (answer == contract::message::answerRetry)
                continue;
            held->states->giveUp();
            return;
        }
    }
}

} // namespace host
