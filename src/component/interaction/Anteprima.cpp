#include "component/interaction/Anteprima.h"

#include "component/data/IstruzioniDistinta.h"
#include "component/interaction/EseguiSpostamento.h"
#include "component/interaction/RiletturaNodi.h"
#include "component/maintenance/Anteprima.h"
#include "component/shared/MODQZ_DISTINTA.h"

namespace qz {

namespace {

/// What the command would say before it walks; empty where it would go on.
std::string rifiutoDelComando(const StatoForm& stato, const contract::MoveManner& modo) {
    const auto& orig = stato.origine;
    const auto& dest = stato.destinazione;
    if (modo.validity) {
        if (!modo.end)
            return "Data fine legame non impostata!";
        const auto inizio = (*orig.dati)["QZ02_DATAINIZIOVAL"].date();
        if (inizio && *modo.end < *inizio)
            return std::string(finePrimaDellInizio);
    }
    // With validity the command stops there without a word.
    if (orig.TipoCF != dest.TipoCF)
        return std::string(tipologieDiverse);
    if (!dest.albero->firstNode() || dest.senzaRecord())
        return std::string(senzaCapostipiti);
    std::string messaggio;
    rileggiNodi(stato, messaggio);
    return messaggio;
}

/// A request as far as the origin alone tells it, for a plan that looks at nothing else.
Richiesta richiestaSenzaDestinazione(const StatoForm& stato) {
    const auto& orig = *stato.origine.dati;
    const DistintaId da(idSenzaApici(stato.origine.IdDistinta));
    const TipoCF tipo(stato.origine.TipoCF);
    const NodoLetto nodo{obbligatorio<NodoId>(orig, "QZ02_ID"),
                         stato.ditta(),
                         tipo,
                         facoltativo<CodiceAccount>(orig, "QZ02_CLIFOR_CG44"),
                         {da, facoltativo<NodoId>(orig, "QZ02_IDPARENT_QZ02"), orig["QZ02_DATAINIZIOVAL"].date(),
                          orig["QZ02_DATAFINEVAL"].date()},
                         {}};
    return {nodo, nodo.id, nodo.account, da, da, stato.ditta(), tipo, tipo, {}, {}, {}};
}

} // namespace

contract::MovePlan anteprima(const StatoForm& stato, const contract::MoveManner& modo) {
    contract::MovePlan detto;
    if (stato.origine.senzaRecord()) {
        detto.refused = "Scegliere un nodo nella distinta di origine.";
        return detto;
    }
    const auto rifiuto = rifiutoDelComando(stato, modo);
    if (!rifiuto.empty()) {
        const auto richiesta = richiestaSenzaDestinazione(stato);
        aggiungiAnteprima(detto, pianoRifiutato(richiesta.nodo, rifiuto), richiesta, stato.database());
        return detto;
    }
    const auto richiesta =
        richiestaDiSpostamento(stato, modo.validity, modo.validity ? modo.end->text() : stato.DataFineLegame);
    aggiungiAnteprima(detto, supponi(stato.database(), richiesta), richiesta, stato.database());
    return detto;
}

contract::Date fineProposta(const StatoForm& stato) {
    const auto testo = FormBase::ValoreODefault(contract::Value(stato.DataFineLegame), stato.oggi().text());
    return dataDelTesto(testo.text());
}

bool mostraNodo(StatoForm& stato, std::int64_t nodo) {
    for (auto* lato : {&stato.origine, &stato.destinazione}) {
        const auto trovato = lato->vuoto() ? contract::Node{} : lato->albero->byKey(nodo);
        if (!trovato)
            continue;
        lato->albero->setFocused(trovato);
        lato->albero->makeVisible(trovato);
        lato->albero->setFocus();
        return true;
    }
    return false;
}

} // namespace qz
