#pragma once

#include "component/maintenance/IstruzioniRegistro.h"
#include "component/maintenance/Scritture.h"
#include "contract/Connection.h"
#include "contract/MoveRegistry.h"

#include <cstdint>
#include <optional>
#include <span>
#include <string>
#include <string_view>
#include <unordered_map>
#include <vector>

namespace qz {

/// What one operation changes, gathered while its transaction runs and written just before the commit: a single move,
/// or several of them, or whatever else changes rows of QZ02_DISTINTA.
///
/// A row that several moves of the operation change is one row of the registry: with what it held before the first of
/// them, and what it holds after the last.
///
/// The moves' writings tell it of rows before they are rewritten: Scritture::testimone().
class RegistroSpostamenti : public Testimone {
public:
    /// The connection must outlive the object. ora: "HH:MM:SS".
    RegistroSpostamenti(contract::Connection& database, std::int64_t ditta, Autore autore, std::string ora);

    void primaDiScrivere(std::span<const NodoId> nodi) override;

    /// What a move changed that was written and is to be kept. Plans come in the order in which they were written.
    void aggiungi(const Piano& piano, const Richiesta& richiesta);

    /// A row with the values that changed, or nothing for a row that was inserted or deleted. Equal values are left
    /// out; a row of which none is left is not kept.
    void aggiungi(NodoId nodo, std::optional<CodiceAccount> account, contract::RowOutcome esito,
                  const std::optional<contract::RowValues>& prima, const std::optional<contract::RowValues>& dopo);

    /// The same for a row of which it was told before it was rewritten, with all three audit columns besides: they now
    /// name the author.
    void aggiungiConVariazioni(NodoId nodo, std::optional<CodiceAccount> account, contract::RowOutcome esito,
                               contract::RowValues prima, contract::RowValues dopo);

    /// Writes the operation, with what it takes back if it does, and its rows. Its id. Throws RuntimeError where the
    /// database does, and 5 where a new link is not found again; nothing of the transaction may be kept then.
    std::int64_t scrivi(contract::OperationKind tipo, std::string_view descrizione,
                        std::optional<std::int64_t> annulla = std::nullopt);

private:
    struct Riga {
        NodoId nodo{0};
        std::optional<CodiceAccount> account;
        contract::RowOutcome esito = contract::RowOutcome::moves;
        std::string motivo;
        std::optional<contract::RowValues> prima;
        std::optional<contract::RowValues> dopo;
        /// Of a link that is looked for before it is written; its node is not known yet.
        std::string guid;
        std::int64_t ditta = 0;
        TipoCF tipo{0};
    };

    void aggiungiResto(const RigaPiano& riga);
    void aggiungiSpostato(const RigaPiano& riga, bool inCima);
    void aggiungiCopiato(const RigaPiano& riga, const Richiesta& richiesta);
    contract::RowValues variazioni(NodoId nodo) const;
    void cercaNuovi();
    bool cambiata(const Riga& riga) const;
    std::unordered_map<NodoId, std::int64_t> ostacoliPresenti(const std::vector<const Riga*>& righe) const;

    contract::Connection& database_;
    std::int64_t ditta_;
    Autore autore_;
    std::string ora_;
    std::unordered_map<NodoId, contract::RowValues> variazioni_; ///< audit columns as they were read first
    std::vector<Riga> righe_;
    std::unordered_map<NodoId, std::size_t> cambiate_; ///< position of a node's row among those that changed
};

} // namespace qz
