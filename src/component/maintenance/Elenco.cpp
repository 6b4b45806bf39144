#include "component/maintenance/Elenco.h"

#include "component/maintenance/Anteprima.h"
#include "component/maintenance/Blocchi.h"
#include "component/maintenance/Spostamento.h"
#include "component/maintenance/VociElenco.h"

#include <algorithm>
#include <memory>

namespace qz {

namespace {

/// The accounts that lines of a list name, for every kind of account that the company's distinte hold.
std::vector<Soggetto> soggettiDi(std::span<const VoceElenco> voci, std::int64_t ditta,
                                 const std::vector<TipoDistinta>& distinte) {
    std::vector<TipoCF> tipi;
    for (const auto& distinta : distinte)
        if (std::find(tipi.begin(), tipi.end(), distinta.tipo) == tipi.end())
            tipi.push_back(distinta.tipo);
    std::vector<Soggetto> soggetti;
    for (const auto& voce : voci)
        for (const auto tipo : tipi)
            for (const auto account : {voce.scritta.account, voce.scritta.parentAccount})
                if (account > 0)
                    soggetti.push_back({ditta, tipo, CodiceAccount(account)});
    return soggetti;
}

/// Supposes moves one after the other; one that is refused leaves nothing behind.
class Supposizione {
public:
    Supposizione(contract::Connection& database, const AmbitoElenco& ambito, std::vector<Soggetto> soggetti)
        : database_(database), soggetti_(std::move(soggetti)), nessuna_{NodoLetto{NodoId(0), {}, {}, {}, {}, {}},
                                                                        NodoId(0),
                                                                        {},
                                                                        DistintaId(0),
                                                                        DistintaId(0),
                                                                        ambito.ditta,
                                                                        TipoCF(0),
                                                                        TipoCF(0),
                                                                        {},
                                                                        ambito.autore,
                                                                        ambito.parametri} {
        daCapo();
    }

    Blocchi& blocchi() { return *blocchi_; }

    Piano supponi(const Richiesta& richiesta) {
        Piano piano;
        const bool pulito = muovi(richiesta, piano);
        if (!piano.rifiutato())
            fatte_.push_back(richiesta);
        else if (!pulito)
            daCapo();
        return piano;
    }

private:
    void daCapo() {
        blocchi_ = std::make_unique<Blocchi>(database_, nessuna_);
        blocchi_->prepara(soggetti_);
        for (const auto& richiesta : fatte_) {
            Piano piano;
            muovi(richiesta, piano);
        }
    }
    /// Whether nothing was changed.
    bool muovi(const Richiesta& richiesta, Piano& piano) {
        blocchi_->prossima(richiesta);
        sposta(*blocchi_, *blocchi_, richiesta, piano);
        const bool pulito = !blocchi_->inSospeso();
        blocchi_->prossima(nessuna_);
        return pulito;
    }

    contract::Connection& database_;
    std::vector<Soggetto> soggetti_;
    Richiesta nessuna_;
    std::vector<Richiesta> fatte_;
    std::unique_ptr<Blocchi> blocchi_;
};

} // namespace

bool rifiutato(std::span<const SpostamentoElenco> spostamenti) {
    return std::any_of(spostamenti.begin(), spostamenti.end(),
                       [](const SpostamentoElenco& spostamento) { return spostamento.piano.rifiutato(); });
}

std::vector<SpostamentoElenco> supponiElenco(contract::Connection& database, const AmbitoElenco& ambito,
                                             std::span<const VoceElenco> voci) {
    const LettoreVoci lettore(ambito, distinteDi(database, ambito.ditta));
    Supposizione supposizione(database, ambito, soggettiDi(voci, ambito.ditta, lettore.distinte()));
    std::vector<SpostamentoElenco> spostamenti;
    spostamenti.reserve(voci.size());
    for (const auto& voce : voci) {
        IndiceSupposto indice(supposizione.blocchi());
        auto& spostamento = spostamenti.emplace_back(lettore.leggi(voce, indice));
        if (spostamento.richiesta)
            spostamento.piano = supposizione.supponi(*spostamento.richiesta);
    }
    return spostamenti;
}

std::vector<SpostamentoElenco> eseguiElenco(contract::Connection& database, const AmbitoElenco& ambito,
                                            std::span<const VoceElenco> voci, const Esecutore& esegui) {
    const LettoreVoci lettore(ambito, distinteDi(database, ambito.ditta));
    IndiceSulDatabase indice(database);
    std::vector<SpostamentoElenco> spostamenti;
    spostamenti.reserve(voci.size());
    for (const auto& voce : voci) {
        auto& spostamento = spostamenti.emplace_back(lettore.leggi(voce, indice));
        if (spostamento.richiesta)
            esegui(*spostamento.richiesta, spostamento.piano);
        if (spostamento.piano.rifiutato())
            break;
    }
    return spostamenti;
}

contract::MovePlan anteprimaElenco(std::span<const SpostamentoElenco> spostamenti, contract::Connection& database) {
    contract::MovePlan detto;
    for (const auto& spostamento : spostamenti) {
        if (spostamento.richiesta) {
            aggiungiAnteprima(detto, spostamento.piano, *spostamento.richiesta, database, spostamento.riga);
            continue;
        }
        auto& riga = detto.rows.emplace_back();
        riga.line = spostamento.riga;
        if (spostamento.account)
            riga.account = spostamento.account->numero();
        riga.outcome = contract::MoveOutcome::refused;
        riga.reason = senzaFineRiga(spostamento.piano.messaggio);
        aggiungiRifiuto(detto, riga.reason, spostamento.riga);
    }
    return detto;
}

} // namespace qz
