#include "component/maintenance/RegoleVerifica.h"

#include <array>

namespace qz {

namespace {

using enum contract::AuditSeverity;

constexpr std::array<contract::AuditRule, 15> regole{{
    {"parent-missing", error, "Padre inesistente", "Legare il nodo a un padre che esiste, o farne un capostipite."},
    {"parent-elsewhere", error, "Padre in un'altra distinta o azienda",
     "Spostare il nodo sotto un padre della sua distinta."},
    {"cycle", error, "Anello di legami",
     "Staccare dal suo padre uno dei nodi dell'anello: nessun albero lo mostra, va corretto nel database."},
    {"unreachable", error, "Nodo irraggiungibile", "Correggere il nodo più in alto del ramo."},
    {"duplicate-link", error, "Legame doppio sotto lo stesso padre",
     "Tenere uno solo dei due legami, o dividere i loro periodi."},
    {"overlap", error, "Legami sovrapposti", "Accorciare uno dei due periodi: anche il solo giorno in comune conta."},
    {"inverted-period", error, "Periodo rovesciato", "Correggere la data di inizio o la data di fine."},
    {"bad-date", error, "Data mancante o fuori dal calendario", "Scrivere la data di inizio e la data di fine."},
    {"kind", error, "Tipo di conto diverso da quello della distinta",
     "Spostare il nodo in una distinta del suo tipo, nella stessa azienda."},
    {"guid-duplicate", error, "GUID doppio", "Dare un GUID nuovo a uno dei due nodi: i loro stati si confondono."},
    {"outside-parent", warning, "Periodo fuori da quello del padre",
     "Accorciare il periodo del nodo o allungare quello del padre."},
    {"no-registry", warning, "Conto senza anagrafica", "Completare l'anagrafica del conto, o togliere il legame."},
    {"guid-missing", warning, "GUID mancante", "Dare un GUID al nodo: senza, il legame non ha uno stato."},
    {"state-unknown", warning, "Stato sconosciuto nei parametri", "Scegliere nei parametri uno stato che esiste."},
    {"gap", hint, "Intervallo tra due legami", "Se il conto doveva restare legato, unire i due periodi."},
}};

} // namespace

std::span<const contract::AuditRule> regoleVerifica() {
    return regole;
}

} // namespace qz
