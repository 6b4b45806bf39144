#pragma once

#include "host/services/HostContext.h"

#include <memory>

namespace host {

class HostGlobal;

/// Lets the data-entry controls ask and tell the user through the host's dialogs and choose from its states.
void connectDataEntry(const std::shared_ptr<HostContext>& context, const std::weak_ptr<HostGlobal>& global);

} // namespace host
