#pragma once

#include "component/maintenance/Scritture.h"
#include "contract/Connection.h"
#include "contract/Host.h"

#include <functional>

namespace qz {

/// The host's workflow of links' states, asked for when a link needs it; throws what that throws.
using FlussoStati = std::function<contract::WorkflowState&()>;

/// Carries a link's workflow state over to a new one: the state of another link by its GUID, or the default one for an
/// empty GUID.
void riportaStato(contract::WorkflowState& flusso, std::string_view statoDi, std::string_view guidNuovo);

/// Changes sent one by one, each as soon as it is stated.
class ScrittureSingole : public Scritture {
public:
    ScrittureSingole(contract::Connection& database, Autore autore, FlussoStati flusso)
        : database_(database), autore_(std::move(autore)), flusso_(std::move(flusso)) {}

    void cambiaDistinta(NodoId nodo, DistintaId da, DistintaId a) override;
    void sposta(NodoId nodo, NodoId sotto, DistintaId da, DistintaId a) override;
    void chiudi(NodoId nodo, DistintaId distinta, contract::Date fine) override;
    std::string inserisci(const NodoDaCopiare& nodo, const NuovoLegame& legame, std::string_view statoDi) override;

private:
    contract::Connection& database_;
    Autore autore_;
    FlussoStati flusso_;
};

} // namespace qz
