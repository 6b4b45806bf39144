#pragma once

#include "component/maintenance/Piano.h"
#include "contract/Connection.h"
#include "contract/MovePreview.h"

#include <cstdint>
#include <span>
#include <string_view>

namespace qz {

/// Why nodes are not moved between two distinte of different kinds.
inline constexpr std::string_view tipologieDiverse =
    "Non è consentito effettuare la manutenzione tra distinte di tipologia diversa(cliente/fornitore).";
/// Why a link is not closed at a day.
inline constexpr std::string_view finePrimaDellInizio =
    "Attenzione la data di fine legame inserita è minore della data inizio legame del nodo di origine.";

/// A text without the line feed at its end.
std::string_view senzaFineRiga(std::string_view testo);

/// Puts a plan into the words of the contract: reads the names of accounts and the codes of distinte that it names.
/// The rows are added to what stands there already, as those of a list's line where one is given. Database errors come
/// through.
void aggiungiAnteprima(contract::MovePlan& anteprima, const Piano& piano, const Richiesta& richiesta,
                       contract::Connection& database, std::optional<std::int64_t> riga = std::nullopt);

/// Adds the reason of a refusal, of a list's line where one is given, to those that stand there already.
void aggiungiRifiuto(contract::MovePlan& anteprima, std::string_view motivo,
                     std::optional<std::int64_t> riga = std::nullopt);

/// The plan of a move that is refused before it looks at any link.
Piano pianoRifiutato(const NodoLetto& nodo, std::string_view motivo);

/// The plan of a move as the database stands: nothing is written, and no transaction begun. Database errors come
/// through.
Piano supponi(contract::Connection& database, const Richiesta& richiesta);

} // namespace qz
