#pragma once

#include "component/shared/StatoForm.h"

#include <string>

namespace qz {

/// Adds to the move message what is no longer as the screen shows it of the two focused nodes. What stands on the
/// screen can be old: read under the transaction, the two rows keep two users from building together what each alone
/// would have been refused, and one from undoing unawares what another one has just done. Throws RuntimeError 3021
/// where the origin stands on no record; database errors come through.
void rileggiNodi(const StatoForm& stato, std::string& messaggio);

} // namespace qz
