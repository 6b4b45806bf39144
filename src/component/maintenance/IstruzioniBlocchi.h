#pragma once

#include "component/maintenance/Letture.h"
#include "component/maintenance/Scritture.h"
#include "contract/Statement.h"

#include <cstddef>
#include <span>
#include <string>

namespace qz {

// Statements over many rows. Their lists are filled up with their last element to a few fixed lengths, so that an
// adapter prepares few shapes. No list is empty.

/// The most elements of one list.
inline constexpr std::size_t elementiPerIstruzione = 1000;
/// The most rows of one insertion. SQL Server takes 1000 of them
/// (https://learn.microsoft.com/sql/t-sql/queries/table-value-constructor-transact-sql).
inline constexpr std::size_t righePerInserimento = 100;

/// How many of the elements that are left go into the next list: at most elementiPerIstruzione.
std::size_t prossimoBlocco(std::size_t rimasti);
/// The fixed length to which a list of so many elements is filled up.
std::size_t lunghezzaElenco(std::size_t elementi);

/// Writes a list of numbers, filled up with the last one. Not empty.
template <class Id> void elenca(contract::Statement& s, std::span<const Id> elementi) {
    const auto lunghezza = lunghezzaElenco(elementi.size());
    for (std::size_t i = 0; i < lunghezza; ++i) {
        if (i > 0)
            s << ", ";
        s.number(elementi[i < elementi.size() ? i : elementi.size() - 1].numero());
    }
}

/// Hands a list over in runs that fit one statement.
template <class Elemento, class Azione> void perBlocchi(std::span<const Elemento> elementi, Azione&& azione) {
    while (!elementi.empty()) {
        const auto quanti = prossimoBlocco(elementi.size());
        azione(elementi.first(quanti));
        elementi = elementi.subspan(quanti);
    }
}

/// How many of the rows that are left go into the next insertion: one of a few lengths, at most righePerInserimento.
std::size_t prossimoInserimento(std::size_t rimaste);

/// Nodes by their ids, with whether their account is registered.
contract::Statement istruzioneNodiNoti(std::span<const NodoId> nodi);

/// Children of many nodes within a distinta, with whether their accounts are registered.
contract::Statement istruzioneFigliDi(std::span<const NodoId> padri, DistintaId distinta);

/// Every link of accounts of one company and kind, with the registered account of its parent and the parent's distinta.
contract::Statement istruzioneLegamiDi(std::int64_t ditta, TipoCF tipo, std::span<const CodiceAccount> account);

/// Names of accounts.
contract::Statement istruzioneNomi(std::int64_t ditta, TipoCF tipo, std::span<const CodiceAccount> account);

/// Code of a distinta.
contract::Statement istruzioneCodiceDistinta(DistintaId distinta);

/// Descendants get the destination distinta.
contract::Statement istruzioneAggiornaDistinte(std::span<const NodoId> nodi, DistintaId da, DistintaId a);

/// Closes links of a distinta at a date, each on its own start day when it starts later; links that end by then stay.
contract::Statement istruzioneChiudiLegami(std::span<const NodoId> nodi, DistintaId distinta, contract::Date fine,
                                           const Autore& autore);

/// A new link of an insertion of many.
struct RigaNuova {
    NodoDaCopiare nodo;
    std::string guid;
};

/// Opens links in their order. All of them have the same optional values missing. One to righePerInserimento rows.
contract::Statement istruzioneInserisciLegami(std::span<const RigaNuova> righe, const NuovoLegame& legame,
                                              const Autore& autore);

/// Ids and GUIDs of the links that accounts have in a distinta from a start day on.
contract::Statement istruzioneIdNuovi(std::int64_t ditta, TipoCF tipo, std::span<const CodiceAccount> account,
                                      DistintaId distinta, contract::Date inizio);

} // namespace qz
