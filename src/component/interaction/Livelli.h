#pragma once

#include "component/shared/StatoForm.h"

namespace qz {

/// The level button of a side was pressed: opens or closes one level, as its caption says.
void CMD_ESPANDICOLLASSA_ButtonClick(StatoForm& stato, Lato& lato);

/// Opens the nodes of the current open level.
void EspandiLivello(Lato& lato);
/// Closes the nodes one level above the current open level.
void ComprimiLivello(Lato& lato);
/// Rewrites the button's caption for the current open level, in the mode that its caption has.
void AggiornaDidascaliaLivello(Lato& lato);

/// Reads the button's mode anew and applies one step in it, then rewrites the caption. No command calls it: after a
/// reload it would close a level that the caption says is open.
void AggiornaLivello(Lato& lato);

} // namespace qz
