#pragma once

#include "form/shared/StatoForm.h"
#include "maintenance/Controlli.h"
#include "maintenance/IstruzioniSpostamento.h"

#include <cstdint>
#include <optional>
#include <string>

namespace qz {

/// Moves the origin's focused node with its subtree under the destination's focused node, in one transaction.
class Spostamento {
public:
    explicit Spostamento(StatoForm& stato) : stato_(stato), controlli_(stato) {}

    /// The move, structural or with validity. Ends with both trees loaded again and scrolled back, whether it committed
    /// or showed the move message and rolled back. Database errors come through with nothing of the move kept and no
    /// transaction open; the trees are not loaded again then.
    void EseguiSpostamento(bool validita);

    /// Walks the origin's subtree level by level and moves or copies each node that passes its check; the move message
    /// is not empty afterwards when the move must not be kept.
    void CiclaLivelli(bool validita);

    /// Rows of the origin distinta, plus one.
    std::int64_t ContaNodiDistinta();

    /// Gives a descendant the destination distinta.
    void AggiornaDistintaNodo(std::int64_t idNodo);

    /// Closes a node's link and inserts the new one, unless the check of the new link refuses; then the move message
    /// holds the reason, and the old link is already closed.
    void CopiaNodo(const NodoDaCopiare& nodo);

private:
    void rileggiNodi();
    void fissaFineNuoviLegami();
    void controllaPeriodoNuoviLegami();
    void copiaNodoSpostato();
    /// False when the walk must end at once.
    bool lavoraFigli(std::int64_t idPadre, bool validita, CodaLimitata<std::int64_t>& coda);
    void lavoraFiglio(const contract::Recordset& figlio, const PadreDecodificato& padre, bool validita);
    void riportaStato(const std::string& guid);
    bool fallito() const;

    StatoForm& stato_;
    Controlli controlli_;
    Autore autore_;
    contract::Date dataFine_;   ///< last day of the closed links
    contract::Date dataInizio_; ///< first day of the new links
    contract::Value guidOrigine_;
    /// Reasons of the nodes whose new link was refused after the old one was closed. They outlive the walk's clearing
    /// of the move message, since nothing of such a move may be kept.
    std::string motiviLegami_;
    bool ultimoDaLegami_ = false;
};

} // namespace qz
