#pragma once

#include "component/maintenance/Piano.h"
#include "contract/MoveRegistry.h"
#include "contract/Statement.h"

#include <cstdint>
#include <optional>
#include <span>
#include <string>
#include <string_view>

namespace qz {

// Statements of the registry of moves. Each of them names QZ90_REGISTRO or QZ91_REGISTRORIGHE, those that read other
// tables for the registry's rows as the name by which they go: so a trace tells them from the move's own. Lists are
// filled up as those of moves in blocks; none is empty.

/// The audit columns of rows that are about to be rewritten.
contract::Statement istruzioneVariazioni(std::span<const NodoId> nodi);

/// The whole rows of nodes.
contract::Statement istruzioneRighe(std::span<const NodoId> nodi);

/// The whole rows of accounts' links.
contract::Statement istruzioneLegamiInteri(std::int64_t ditta, TipoCF tipo, std::span<const CodiceAccount> account);

/// One row for each definitive settlement that stands on the nodes.
contract::Statement istruzionePremiDefinitivi(std::int64_t ditta, std::span<const NodoId> nodi);

/// Rows whose parent is one of the nodes, of whatever distinta.
contract::Statement istruzioneAppesi(std::span<const NodoId> nodi);

/// An operation as it is written.
struct NuovaOperazione {
    std::int64_t ditta = 0;
    Autore autore;
    std::string ora; ///< "HH:MM:SS"
    contract::OperationKind tipo = contract::OperationKind::structure;
    std::string descrizione;
    std::int64_t righe = 0;
    std::optional<std::int64_t> annulla;
    std::string guid; ///< by which its id is found
};

contract::Statement istruzioneInserisciOperazione(const NuovaOperazione& operazione);
contract::Statement istruzioneIdOperazione(std::string_view guid);

/// A row as it is written.
struct RigaDaRegistrare {
    NodoId nodo{0};
    std::optional<CodiceAccount> account;
    contract::RowOutcome esito = contract::RowOutcome::moves;
    std::string motivo;
    std::int64_t ostacoli = 0; ///< facts that would stand in the way of taking it back, and stood there before it
    std::string prima;         ///< values as a text; empty for a row that was inserted
    std::string dopo;          ///< empty for a row that was deleted
};

/// Rows of an operation, numbered on from a first one. One to righePerInserimento rows.
contract::Statement istruzioneInserisciRighe(std::int64_t operazione, std::int64_t prima,
                                             std::span<const RigaDaRegistrare> righe);

/// Operations of a company, newest first.
contract::Statement istruzioneOperazioni(std::int64_t ditta, const contract::OperationFilter& filtro);
/// One operation of a company.
contract::Statement istruzioneOperazione(std::int64_t ditta, std::int64_t operazione);
/// The rows of an operation, in order.
contract::Statement istruzioneRigheOperazione(std::int64_t operazione);

/// Later operations that changed the nodes, oldest first.
contract::Statement istruzioneOperazioniSeguenti(std::int64_t operazione, std::span<const NodoId> nodi);

/// Takes an operation for undoing it: touches no row where somebody has undone it.
contract::Statement istruzionePrendiOperazione(std::int64_t ditta, std::int64_t operazione);

// The texts by which the tables hold kinds and outcomes. Reading an unknown text throws RuntimeError 13.

std::string_view testoDelTipo(contract::OperationKind tipo);
contract::OperationKind tipoDelTesto(std::string_view testo);
std::string_view testoDellEsito(contract::RowOutcome esito);
contract::RowOutcome esitoDelTesto(std::string_view testo);

} // namespace qz
