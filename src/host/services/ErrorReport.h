#pragma once

#include "contract/Connection.h"
#include "contract/RuntimeError.h"
#include "host/services/HostContext.h"

#include <functional>
#include <memory>
#include <string_view>

namespace host {

/// Shows an error of the host's own, with a caption in the user's language, and writes it to the log. What the user
/// answers: contract::message::answerAbort, answerRetry or answerIgnore.
int reportError(HostContext& context, std::string_view caption, const contract::RuntimeError& error,
                const contract::ErrorList& records);

/// Runs what commits the workflow states of a command that is done. Where it fails the user may have it tried again;
/// otherwise those states are given up. Does nothing once the context has gone.
void keepStates(const std::weak_ptr<HostContext>& context, const std::function<void()>& commit);

} // namespace host
