#pragma once

#include "host/start/HostSession.h"

#include <QString>
#include <QWidget>

namespace host {

/// Writes one of the program's lists into a file, whose ending picks the format. what: "origin" or "destination", a
/// tree of the form; "preview", "registry", "audit" or "compare", the list of the window of that name, which opens over
/// the program's and is closed again. Throws ScriptRefusal where there is no such list, or where the file could not be
/// written, and what the window throws.
void exportList(HostSession& session, QWidget* window, const QString& what, const QString& file);

} // namespace host
