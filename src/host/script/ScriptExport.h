#pragma once

#include "host/start/HostSession.h"

#include <QString>

#include <functional>

namespace host {

/// Writes one of the program's lists into a file, whose ending picks the format. what: "origin" or "destination", a
/// tree of the form; "preview", "registry", "audit" or "compare", the list of the window that choose, called with the
/// name of its entry in the menu bar, opens. Throws ScriptRefusal where there is no such list, or where the file could
/// not be written.
void exportList(HostSession& session, const QString& what, const QString& file,
                const std::function<void(const QString& entry)>& choose);

} // namespace host
