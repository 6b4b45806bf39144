#include "component/maintenance/Annullamento.h"

#include "component/maintenance/IstruzioniAnnullamento.h"
#include "component/maintenance/IstruzioniBlocchi.h"
#include "component/maintenance/IstruzioniRegistro.h"
#include "component/maintenance/LetturaRegistro.h"
#include "component/maintenance/RegistroSpostamenti.h"
#include "component/maintenance/ValoriRegistro.h"
#include "contract/RuntimeError.h"

#include <algorithm>
#include <map>
#include <utility>

namespace qz {

using contract::Operation;
using contract::OperationKind;
using contract::RowOutcome;
using contract::Undoing;

namespace {

void attese(std::size_t righe, std::int64_t toccate) {
    if (std::cmp_not_equal(righe, toccate))
        throw contract::RuntimeError(
            contract::RuntimeError::invalidCall,
            "I dati della distinta sono cambiati durante l'annullamento: " + std::to_string(toccate) +
                " righe modificate invece di " + std::to_string(righe) + ". Annullamento non eseguito.");
}

/// Rows may be inserted under their own ids while it lives.
class IdScelti {
public:
    explicit IdScelti(contract::Connection& database) : database_(database) {
        database_.Execute(istruzioneIdScelti(true));
    }
    IdScelti(const IdScelti&) = delete;
    IdScelti& operator=(const IdScelti&) = delete;
    ~IdScelti() {
        if (!aperto_)
            return;
        try {
            database_.Execute(istruzioneIdScelti(false));
        } catch (const std::exception&) { // NOLINT(bugprone-empty-catch): the error that led here is on its way
        }
    }
    void chiudi() {
        database_.Execute(istruzioneIdScelti(false));
        aperto_ = false;
    }

private:
    contract::Connection& database_;
    bool aperto_ = true;
};

RowOutcome esitoDelRitorno(const RigaDaRiprendere& riga) {
    if (!riga.tornano)
        return RowOutcome::deletes;
    return riga.lasciati ? RowOutcome::restores : RowOutcome::opens;
}

std::string descrizione(const Operation& annullata) {
    const auto quale = "Annullata l'operazione " + std::to_string(annullata.id);
    return annullata.undoes ? quale + ", che aveva annullato la " + std::to_string(*annullata.undoes)
                            : quale + ": " + annullata.description;
}

} // namespace

Annullamento::Annullamento(contract::Connection& database, std::int64_t ditta, Autore autore, std::string ora)
    : database_(database), ditta_(ditta), autore_(std::move(autore)), ora_(std::move(ora)) {
}

/// The last row first. What stayed has nothing to be taken back.
std::vector<RigaDaRiprendere> Annullamento::daRiprendere(const std::vector<RigaRegistrata>& registrate) {
    std::vector<RigaDaRiprendere> righe;
    for (auto registrata = registrate.rbegin(); registrata != registrate.rend(); ++registrata) {
        const auto& riga = registrata->riga;
        if (riga.outcome == RowOutcome::stays)
            continue;
        righe.push_back({NodoId(riga.id), riga.account ? std::optional(CodiceAccount(*riga.account)) : std::nullopt,
                         riga.outcome, registrata->ostacoli, riga.after, riga.before});
    }
    return righe;
}

std::vector<contract::OperationRow> Annullamento::comeRighe(const std::vector<RigaDaRiprendere>& righe) {
    std::vector<contract::OperationRow> come;
    come.reserve(righe.size());
    for (const auto& riga : righe)
        come.push_back({static_cast<std::int64_t>(come.size()) + 1, riga.nodo.numero(),
                        riga.account ? std::optional(riga.account->numero()) : std::nullopt, esitoDelRitorno(riga),
                        std::string(), riga.lasciati, riga.tornano});
    return come;
}

contract::Obstacle Annullamento::giaAnnullata(const Operation& operazione) {
    return {std::nullopt, std::nullopt,
            operazione.undoneBy
                ? "L'operazione è già stata annullata dall'operazione " + std::to_string(*operazione.undoneBy) + "."
                : std::string("L'operazione è già stata annullata.")};
}

Undoing Annullamento::prova(std::int64_t operazione) {
    Undoing esito;
    const auto letta = leggiOperazione(database_, ditta_, operazione);
    if (letta.undoneBy) {
        esito.obstacles.push_back(giaAnnullata(letta));
        return esito;
    }
    const auto righe = daRiprendere(leggiRigheOperazione(database_, operazione));
    esito.obstacles = OstacoliAnnullamento(database_, ditta_, operazione, righe).trova();
    esito.rows = comeRighe(righe);
    return esito;
}

Undoing Annullamento::esegui(std::int64_t operazione) {
    Undoing esito;
    contract::Transaction transazione(database_);
    // First of all, so that of two users who take it back one waits for the other and is refused then.
    const bool presa = database_.Execute(istruzionePrendiOperazione(ditta_, operazione)) == 1;
    const auto letta = leggiOperazione(database_, ditta_, operazione);
    if (!presa || letta.undoneBy) {
        esito.obstacles.push_back(giaAnnullata(letta));
        transazione.rollback();
        return esito;
    }
    const auto righe = daRiprendere(leggiRigheOperazione(database_, operazione));
    esito.obstacles = OstacoliAnnullamento(database_, ditta_, operazione, righe).trova();
    esito.rows = comeRighe(righe);
    if (!esito.obstacles.empty()) {
        transazione.rollback();
        return esito;
    }
    RegistroSpostamenti registro(database_, ditta_, autore_, ora_);
    scrivi(righe);
    for (const auto& riga : righe)
        registro.aggiungi(riga.nodo, riga.account, esitoDelRitorno(riga), riga.lasciati, riga.tornano);
    esito.operation = registro.scrivi(OperationKind::undo, descrizione(letta), operazione);
    transazione.commit();
    esito.undone = true;
    return esito;
}

void Annullamento::scrivi(const std::vector<RigaDaRiprendere>& righe) {
    reinserisci(righe);
    ripristina(righe);
    elimina(righe);
}

void Annullamento::reinserisci(const std::vector<RigaDaRiprendere>& righe) {
    const auto torna = [](const RigaDaRiprendere& riga) { return riga.tornano && !riga.lasciati; };
    if (std::none_of(righe.begin(), righe.end(), torna))
        return;
    IdScelti scelti(database_);
    // Turned round once more, they come in the order in which they were opened: a parent before what hangs under it.
    for (const auto& riga : righe)
        if (torna(riga))
            attese(1, database_.Execute(istruzioneReinserisci(riga.nodo, *riga.tornano)));
    scelti.chiudi();
}

/// Rows that get the same values back go together.
void Annullamento::ripristina(const std::vector<RigaDaRiprendere>& righe) {
    struct Gruppo {
        const contract::RowValues* valori = nullptr;
        std::vector<NodoId> nodi;
    };
    std::map<std::string, std::size_t> note;
    std::vector<Gruppo> gruppi;
    for (const auto& riga : righe) {
        if (!riga.tornano || !riga.lasciati)
            continue;
        const auto [nota, nuovo] = note.emplace(testoDeiValori(riga.tornano), gruppi.size());
        if (nuovo)
            gruppi.push_back({&*riga.tornano, {}});
        gruppi[nota->second].nodi.push_back(riga.nodo);
    }
    for (const auto& gruppo : gruppi)
        perBlocchi(std::span<const NodoId>(gruppo.nodi), [&](std::span<const NodoId> blocco) {
            attese(blocco.size(), database_.Execute(istruzioneRipristina(blocco, *gruppo.valori)));
        });
}

void Annullamento::elimina(const std::vector<RigaDaRiprendere>& righe) {
    std::vector<NodoId> nodi;
    for (const auto& riga : righe)
        if (!riga.tornano)
            nodi.push_back(riga.nodo);
    perBlocchi(std::span<const NodoId>(nodi), [&](std::span<const NodoId> blocco) {
        attese(blocco.size(), database_.Execute(istruzioneElimina(blocco)));
    });
}

} // namespace qz
