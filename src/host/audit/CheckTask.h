#pragma once

#include "contract/Audit.h"
#include "host/start/QuietWork.h"

#include <iosfwd>

namespace host {

/// Audits the company and writes the findings of that severity or above, one a line; text ends with their count. The
/// exit status: 0 without any, 1 with some. Throws StartFailure: status 3 where the database refuses, 1 where the
/// findings could not be written.
int checkDistinte(QuietWork& work, contract::AuditSeverity mildest, CommandLine::Format format, std::ostream& out);

} // namespace host
