#pragma once

#include "component/shared/StatoForm.h"

#include <string_view>

namespace qz {

/// Loads a distinta into a side's tree: division, nodes, depth, caption of the level button. Errors are reported under
/// the side's loader name; what was set before one stays.
///
/// The same distinta loaded again keeps the focus on the node it was on, if that is still there.
///
/// What may be given up is the reading alone (contract::Cancelled comes through): the tree is filled to its end.
enum class Lettura { intera, annullabile };
void CaricaDistinta(StatoForm& stato, Lato& lato, std::string_view idTipo, Lettura lettura = Lettura::intera);

/// The same for a user who may give it up: the side is then as before, and contract::Cancelled comes through.
void CaricaDistintaAnnullabile(StatoForm& stato, Lato& lato, std::string_view idTipo);

/// Caption of a level button: "Comprimi liv." or "Espandi liv." followed by the open level plus one.
void scriviDidascaliaLivello(Lato& lato, bool comprimi);

/// Loads both sides again, as the database stands: origin first. A side that was never loaded stays empty.
void RicaricaAlberi(StatoForm& stato);

} // namespace qz
