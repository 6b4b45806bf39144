#pragma once

#include "component/maintenance/Controlli.h"
#include "component/maintenance/Letture.h"
#include "component/maintenance/Piano.h"
#include "component/maintenance/Scritture.h"
#include "contract/Progress.h"

#include <cstdint>
#include <optional>
#include <string>
#include <string_view>

namespace qz {

/// To whom a walk tells how far it is.
struct Avanzamento {
    contract::Progress* progresso = nullptr; ///< null: nobody
    std::optional<std::uint64_t> nodi;       ///< to be walked, the moved one included; nothing where nobody knows
};

/// The move as it is asked for: the facts come from the readings, the changes go to the writings, and the plan says, as
/// it grows, what was done with each node and what the user is told. What a plan refuses must not be kept: some of its
/// changes may have been stated by then. Errors of the readings and writings come through, and
/// contract::Cancelled.
void sposta(Letture& letture, Scritture& scritture, const Richiesta& richiesta, Piano& piano,
            Avanzamento avanzamento = {});

/// The walk of one move.
class Cammino {
public:
    Cammino(Letture& letture, Scritture& scritture, const Richiesta& richiesta, Piano& piano,
            Avanzamento avanzamento = {});

    /// Walks the subtree level by level and moves or copies each node that passes its check; the plan is refused
    /// afterwards when the move must not be kept.
    void CiclaLivelli();

private:
    std::int64_t ContaNodiDistinta();
    void AggiornaDistintaNodo(const NodoLetto& nodo);
    void CopiaNodo(const NodoLetto& nodo, const PadreDecodificato& padre, std::int64_t ditta, TipoCF tipo);

    bool controllaNodoSpostato();
    void copiaNodoSpostato();
    /// False when the walk must end at once.
    bool lavoraFigli(NodoId padre, CodaLimitata<NodoId>& coda);
    void lavoraFiglio(const NodoLetto& figlio, const PadreDecodificato& padre);
    void fissaFineNuoviLegami();
    bool controllaPeriodoNuoviLegami();
    void annota(const NodoLetto& nodo, Esito esito, std::string_view motivo = {});

    Letture& letture_;
    Scritture& scritture_;
    const Richiesta& richiesta_;
    Piano& piano_;
    Avanzamento avanzamento_;
    AmbitoSpostamento ambito_;
    /// Reasons of the nodes whose new link was refused after the old one was closed. They outlive the walk's clearing
    /// of the move message, since nothing of such a move may be kept.
    std::string motiviLegami_;
    bool ultimoDaLegami_ = false;
};

} // namespace qz
