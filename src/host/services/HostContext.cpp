#include "host/services/HostContext.h"

namespace host {

void HostContext::logError(const ErrorLog::Entry& entry) {
    if (!errorLog.record(entry))
        notices.add({notice::logCut, errorLog.complaint(), true});
}

} // namespace host
