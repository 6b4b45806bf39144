#include "component/maintenance/Spostamento.h"

#include "component/shared/MODQZ_DISTINTA.h"
#include "contract/RuntimeError.h"

namespace qz {

namespace {

constexpr std::string_view fineAperta = "31/12/2099";

std::string_view senzaFineRiga(std::string_view testo) {
    return testo.ends_with('\n') ? testo.substr(0, testo.size() - 1) : testo;
}

} // namespace

bool Piano::rifiutato() const {
    return !senzaBlanks(messaggio).empty();
}

void sposta(Letture& letture, Scritture& scritture, const Richiesta& richiesta, Piano& piano, Avanzamento avanzamento) {
    Cammino(letture, scritture, richiesta, piano, avanzamento).CiclaLivelli();
    if (!piano.rifiutato() && !richiesta.validita)
        scritture.sposta(richiesta.nodo.id, richiesta.sotto, richiesta.da, richiesta.a);
    if (!piano.rifiutato())
        scritture.concludi();
}

Cammino::Cammino(Letture& letture, Scritture& scritture, const Richiesta& richiesta, Piano& piano,
                 Avanzamento avanzamento)
    : letture_(letture), scritture_(scritture), richiesta_(richiesta), piano_(piano),
      avanzamento_(avanzamento), ambito_{richiesta.ditta, richiesta.da, richiesta.a, richiesta.tipoDa,
                                         richiesta.tipoA} {
}

void Cammino::CiclaLivelli() {
    piano_.messaggio.clear();
    if (!controllaNodoSpostato()) {
        annota(richiesta_.nodo, Esito::rifiutato, piano_.messaggio);
        return;
    }
    if (richiesta_.validita) {
        fissaFineNuoviLegami();
        if (!controllaPeriodoNuoviLegami()) {
            annota(richiesta_.nodo, Esito::rifiutato, piano_.messaggio);
            return;
        }
        copiaNodoSpostato();
        if (piano_.rifiutato())
            return;
    } else {
        annota(richiesta_.nodo, Esito::siSposta);
        piano_.righe.back().dopo.padre = richiesta_.sotto;
    }

    CodaLimitata<NodoId> coda(ContaNodiDistinta());
    NodoId padre = richiesta_.nodo.id;
    std::int64_t fineLivello = 0;
    while (coda.testa <= coda.coda()) {
        if (coda.testa > coda.capacita()) {
            piano_.messaggio = "Anagrafica ricorsiva. Spostamento annullato";
            break;
        }
        if (coda.testa > fineLivello) {
            const std::span<const NodoId> livello(coda.elementi());
            letture_.preparaFigli(livello.subspan(static_cast<std::size_t>(fineLivello)));
            fineLivello = coda.coda();
        } else if (coda.testa == 0) {
            letture_.preparaFigli({&padre, 1});
        }
        if (!lavoraFigli(padre, coda))
            break;
        ++coda.testa;
        if (const auto* prossimo = coda.inTesta())
            padre = *prossimo;
    }

    if (!motiviLegami_.empty())
        piano_.messaggio = ultimoDaLegami_ ? motiviLegami_ : motiviLegami_ + piano_.messaggio;
}

bool Cammino::controllaNodoSpostato() {
    auto motivo = ControllaRicorsione(letture_, ambito_, richiesta_.nodo.account, richiesta_.accountSotto);
    if (!motivo && richiesta_.da == richiesta_.a)
        motivo = ControllaDiscendenza(letture_, ambito_, richiesta_.nodo, richiesta_.sotto);
    piano_.messaggio += motivo.value_or(std::string());
    return !piano_.rifiutato();
}

bool Cammino::lavoraFigli(NodoId padre, CodaLimitata<NodoId>& coda) {
    const auto& validita = richiesta_.validita;
    const auto decodificato =
        DecodificaPadre(letture_, padre, validita ? std::optional(validita->inizio) : std::nullopt);
    if (!decodificato || decodificato->id == NodoId(0))
        return true;
    for (const auto& figlio : letture_.figli(padre, richiesta_.da)) {
        if (coda.piena())
            return false;
        coda.accoda(figlio.id);
        lavoraFiglio(figlio, *decodificato);
    }
    return true;
}

void Cammino::lavoraFiglio(const NodoLetto& figlio, const PadreDecodificato& padre) {
    piano_.messaggio.clear();
    ultimoDaLegami_ = false;
    if (const auto motivo = ControllaRicorsione(letture_, ambito_, figlio.account, padre.account)) {
        piano_.messaggio = *motivo;
        annota(figlio, Esito::resta, *motivo);
        return;
    }
    if (!richiesta_.validita) {
        AggiornaDistintaNodo(figlio);
        return;
    }
    // There is no statement that would copy a node without account.
    if (!figlio.account) {
        annota(figlio, Esito::resta);
        return;
    }
    if (!figlio.ditta || !figlio.tipo)
        throw contract::RuntimeError(contract::RuntimeError::typeMismatch,
                                     "Tipo non corrispondente: al nodo " + std::to_string(figlio.id.numero()) +
                                         " mancano l'azienda o il tipo di anagrafica.");
    CopiaNodo(figlio, padre, *figlio.ditta, *figlio.tipo);
    if (piano_.rifiutato()) {
        motiviLegami_ += piano_.messaggio;
        ultimoDaLegami_ = true;
    }
}

/// Once for the whole subtree. The closing date of the old links stays the one that the user typed.
void Cammino::fissaFineNuoviLegami() {
    const auto& parametri = richiesta_.parametri;
    if (parametri.dateFisse)
        piano_.fineNuoviLegami = parametri.fineFissa ? parametri.fineFissa->text() : "";
    else
        piano_.fineNuoviLegami =
            richiesta_.nodo.legame.fine ? richiesta_.nodo.legame.fine->text() : std::string(fineAperta);
}

/// All the new links have one period, so that this is asked once, before any link is closed.
bool Cammino::controllaPeriodoNuoviLegami() {
    const auto fine = dataDelTesto(*piano_.fineNuoviLegami);
    const auto inizio = richiesta_.validita->inizio;
    if (fine < inizio)
        piano_.messaggio += "Il nuovo legame finirebbe il " + fine.text() + ", prima del suo inizio il " +
                            inizio.text() + ". Spostamento annullato.\n";
    return !piano_.rifiutato();
}

void Cammino::copiaNodoSpostato() {
    CopiaNodo(richiesta_.nodo, {richiesta_.sotto, richiesta_.accountSotto}, richiesta_.ditta, richiesta_.tipoDa);
}

void Cammino::CopiaNodo(const NodoLetto& nodo, const PadreDecodificato& padre, std::int64_t ditta, TipoCF tipo) {
    const auto& validita = *richiesta_.validita;
    const std::string_view fine = *piano_.fineNuoviLegami;
    scritture_.chiudi(nodo.id, richiesta_.da, validita.fine);
    const auto account = nodo.account.value_or(CodiceAccount(0));
    if (const auto motivo = ControllaLegami(letture_, {richiesta_.ditta, padre.id, ditta, tipo, account,
                                                       richiesta_.tipoDa, validita.inizio, std::string(fine)})) {
        piano_.messaggio += *motivo;
        annota(nodo, Esito::rifiutato, *motivo);
        return;
    }
    auto guid = scritture_.inserisci({padre.id, ditta, tipo, account, nodo.facoltativi},
                                     {richiesta_.a, richiesta_.parametri.stato, validita.inizio, fine}, validita.guid);
    annota(nodo, Esito::siCopia);
    auto& riga = piano_.righe.back();
    // A link that ends by then is left alone, and none ends before it starts.
    if (riga.prima.fine && *riga.prima.fine > validita.fine)
        riga.dopo.fine = riga.prima.inizio && *riga.prima.inizio > validita.fine ? *riga.prima.inizio : validita.fine;
    riga.copia = LegameNuovo{padre.account,
                             {richiesta_.a, padre.id, validita.inizio, contract::Date::parse(fine)},
                             ditta,
                             tipo,
                             std::move(guid)};
}

std::int64_t Cammino::ContaNodiDistinta() {
    return letture_.righe(richiesta_.da) + 1;
}

void Cammino::AggiornaDistintaNodo(const NodoLetto& nodo) {
    scritture_.cambiaDistinta(nodo.id, richiesta_.da, richiesta_.a);
    annota(nodo, Esito::siSposta);
}

void Cammino::annota(const NodoLetto& nodo, Esito esito, std::string_view motivo) {
    auto dopo = nodo.legame;
    if (esito == Esito::siSposta)
        dopo.distinta = richiesta_.a;
    piano_.righe.push_back({nodo.id, nodo.account, esito, std::string(senzaFineRiga(motivo)), nodo.legame, dopo, {}});
    if (avanzamento_.progresso != nullptr)
        avanzamento_.progresso->reached("Spostamento", piano_.righe.size(), avanzamento_.nodi);
}

} // namespace qz
