#pragma once

#include "component/maintenance/Letture.h"
#include "contract/Statement.h"

namespace qz {

/// The company's distinte by their ids.
contract::Statement istruzioneDistinteDi(std::int64_t ditta);

/// The links of an account in a distinta by their ids, with the GUIDs of their workflow states.
contract::Statement istruzioneNodiDiAccount(const Soggetto& soggetto, DistintaId distinta);

/// The row of that id, if it belongs to the company, with the GUID of its workflow state.
contract::Statement istruzioneNodoConStato(std::int64_t ditta, NodoId nodo);

} // namespace qz
