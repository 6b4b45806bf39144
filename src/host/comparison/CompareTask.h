#pragma once

#include "host/start/QuietWork.h"

#include <iosfwd>

namespace host {

/// Compares the two distinte of the command line and writes the differences, one a line. The exit status: 0 without
/// any, 1 with some. Throws StartFailure: status 2 for a distinta that the company does not have, 3 where the database
/// refuses, 1 where the differences could not be written.
int compareDistinte(QuietWork& work, const CommandLine& line, std::ostream& out);

} // namespace host
