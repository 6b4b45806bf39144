#pragma once

#include "component/maintenance/Controlli.h"
#include "component/shared/StatoForm.h"
#include "contract/Statement.h"

#include <cstdint>
#include <functional>
#include <string_view>

namespace qz {

/// A pair of validity dates as a record holds them; null where it has none.
struct DateLegame {
    contract::Value inizio;
    contract::Value fine;
};

/// Writes a node's dates and the audit columns of the change, only where the row still holds the dates that were read;
/// null equals null.
contract::Statement istruzioneDateLegame(NodoId nodo, const DateLegame& lette, contract::Date inizio,
                                         contract::Date fine, const Autore& autore);

/// Dates of a node as the database holds them.
contract::Statement istruzioneLeggiDate(NodoId nodo);

/// What happens when the focused node changes, and when a date of the destination tree is edited in place.
class ModificaNodo {
public:
    explicit ModificaNodo(StatoForm& stato) : stato_(stato) {}

    void TRW_ELEMDISTINTAORIG_OnChangeNode();
    void TRW_ELEMDISTINTAORIG_OnChangeNodeEx();
    void TRW_ELEMDISTINTADEST_OnChangeNode();
    void TRW_ELEMDISTINTADEST_OnChangeNodeEx();

    /// The user left a cell of the destination tree: validates both dates, and writes or restores them.
    void TRW_ELEMDISTINTADEST_OnEdited(contract::Node nodo);
    /// The focused column of the destination tree changed: over "Stato" the state editor opens.
    void TRW_ELEMDISTINTADEST_OnChangedColumn(contract::Node nodo);

    /// Places the state editor over a node's cell and opens it.
    std::function<void(FormBase::Passo&, contract::Node)> apriEditorStato;

private:
    void cambioOrigine(std::string_view nome, bool comeEx);
    void cambioDestinazione(std::string_view nome, bool comeEx);
    void mostraDettaglio(FormBase::Passo& passo, Lato& lato);
    void ricordaDate(FormBase::Passo& passo);
    void bloccaColonna(FormBase::Passo& passo);
    void convalida(FormBase::Passo& passo, contract::Node nodo);
    /// The link as the record has it; false when a value was not read and passed over.
    bool leggiLegame(FormBase::Passo& passo, LegameDaControllare& legame);
    void rifiuta(FormBase::Passo& passo, contract::Node nodo, std::string_view motivo, int stile, bool inizio,
                 bool fine);
    /// Whether the link may be saved; otherwise the form's move message says why.
    bool controlla(const LegameDaControllare& legame);
    /// Rows written. accettata: whether the check let the pair pass.
    std::int64_t controllaEScrivi(const LegameDaControllare& legame, const DateLegame& nuove, bool& accettata);
    void dopoLaScrittura(FormBase::Passo& passo, contract::Node nodo, const LegameDaControllare& legame,
                         const DateLegame& nuove, std::int64_t scritte);
    void ricaricaOrigine(FormBase::Passo& passo);
    void ripristina(FormBase::Passo& passo, contract::Node nodo, bool inizio, bool fine);
    void mostraDateDelDatabase(FormBase::Passo& passo, contract::Node nodo, NodoId id);

    StatoForm& stato_;
    DateLegame lette_;
    bool spostatoInSospeso_ = false; ///< the destination's focus was last moved while its changes were suspended
    bool superate_ = false;          ///< the database held other dates than those read
    bool inSospeso_ = false;         ///< the cells hold a pair that was neither accepted nor put back yet
};

} // namespace qz
