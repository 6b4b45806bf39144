#include "component/maintenance/ScrittureSingole.h"

#include "component/maintenance/IstruzioniSpostamento.h"

namespace qz {

void riportaStato(contract::WorkflowState& flusso, std::string_view statoDi, std::string_view guidNuovo) {
    if (!statoDi.empty()) {
        flusso.DuplicaStato(statoDi, guidNuovo);
        return;
    }
    flusso.GetDefaultFlussoStato();
    flusso.ConfermaStato();
}

void ScrittureSingole::cambiaDistinta(NodoId nodo, DistintaId da, DistintaId a) {
    database_.Execute(istruzioneAggiornaDistinta(nodo, da, a));
}

void ScrittureSingole::sposta(NodoId nodo, NodoId sotto, DistintaId da, DistintaId a) {
    annunciaScrittura({&nodo, 1});
    database_.Execute(istruzioneSpostaNodo(nodo, sotto, da, a, autore_));
}

void ScrittureSingole::chiudi(NodoId nodo, DistintaId distinta, contract::Date fine) {
    annunciaScrittura({&nodo, 1});
    database_.Execute(istruzioneChiudiLegame(nodo, distinta, fine, autore_));
}

std::string ScrittureSingole::inserisci(const NodoDaCopiare& nodo, const NuovoLegame& legame,
                                        std::string_view statoDi) {
    auto& flusso = flusso_();
    std::string guid = flusso.GetNewGUID();
    database_.Execute(istruzioneInserisciLegame(nodo, legame, guid, autore_));
    riportaStato(flusso, statoDi, guid);
    return guid;
}

} // namespace qz
