#include "component/interaction/ModificaNodo.h"

#include "component/data/CaricaDistinta.h"
#include "component/data/DettaglioAnagrafica.h"
#include "component/data/Parametri.h"
#include "component/maintenance/LettureSingole.h"
#include "component/maintenance/RegistroModifica.h"
#include "component/shared/MODQZ_DISTINTA.h"

#include <optional>
#include <string>

namespace qz {

namespace {

constexpr std::string_view colonnaInizio = "trQZ02_DATAINIZIOVAL";
constexpr std::string_view colonnaFine = "trQZ02_DATAFINEVAL";
constexpr std::string_view colonnaStato = "Stato";
constexpr std::string_view nomeModifica = "TRW_ELEMDISTINTADEST_OnEdited";
/// Position, hidden columns included, of the column that a definitive bonus locks: the start of validity.
constexpr std::size_t posizioneBloccata = 3;

contract::Value codiceCorrente(const Lato& lato) {
    return FormBase::ValoreODefault((*lato.dati)["QZ02_CLIFOR_CG44"], std::int32_t{0});
}

contract::Value oppureNulla(std::optional<contract::Date> data) {
    return data ? contract::Value(*data) : contract::Value::null();
}

contract::Date giorno(const contract::Value& valore) {
    const auto data = valore.date();
    return data ? *data : dataDelTesto(valore.text());
}

} // namespace

void ModificaNodo::TRW_ELEMDISTINTAORIG_OnChangeNode() {
    cambioOrigine(stato_.origine.descrizione.nomeCambioNodo, false);
}

void ModificaNodo::TRW_ELEMDISTINTAORIG_OnChangeNodeEx() {
    cambioOrigine(stato_.origine.descrizione.nomeCambioNodoEx, true);
}

void ModificaNodo::TRW_ELEMDISTINTADEST_OnChangeNode() {
    cambioDestinazione(stato_.destinazione.descrizione.nomeCambioNodo, false);
}

void ModificaNodo::TRW_ELEMDISTINTADEST_OnChangeNodeEx() {
    cambioDestinazione(stato_.destinazione.descrizione.nomeCambioNodoEx, true);
}

void ModificaNodo::cambioOrigine(std::string_view nome, bool comeEx) {
    auto& lato = stato_.origine;
    const auto corpo = [&](auto& passo) {
        if (lato.senzaRecord()) {
            passo([&] { SvuotaFlex(stato_, *lato.dettaglio); });
            return;
        }
        if (comeEx)
            passo([&] { CaricaParametri(stato_); });
        mostraDettaglio(passo, lato);
    };
    if (comeEx)
        stato_.proceduraCheSegue(nome, corpo);
    else
        stato_.procedura(nome, corpo);
}

void ModificaNodo::cambioDestinazione(std::string_view nome, bool comeEx) {
    auto& lato = stato_.destinazione;
    const auto corpo = [&](auto& passo) {
        // Coming to rest after a move that was suspended is no change either.
        const bool sospeso = stato_.sospendiCambioNodo || (comeEx && spostatoInSospeso_);
        spostatoInSospeso_ = sospeso;
        if (sospeso)
            return;
        if (lato.senzaRecord()) {
            passo([&] { SvuotaFlex(stato_, *lato.dettaglio); });
            passo([&] { stato_.campoId->setText(""); });
            return;
        }
        passo([&] { CaricaParametri(stato_); });
        mostraDettaglio(passo, lato);
        passo([&] { stato_.campoId->setText((*lato.dati)["QZ02_ID"].text()); });
        if (comeEx)
            return;
        ricordaDate(passo);
        bloccaColonna(passo);
    };
    if (comeEx)
        stato_.proceduraCheSegue(nome, corpo);
    else
        stato_.procedura(nome, corpo);
}

void ModificaNodo::mostraDettaglio(FormBase::Passo& passo, Lato& lato) {
    contract::Value codice = std::int32_t{0};
    passo([&] { codice = codiceCorrente(lato); });
    passo([&] { CaricaDatiAnagrafici(stato_, codice, *lato.dettaglio, lato.Divisione); });
}

/// A null date leaves the one remembered before, even if it was another node's.
void ModificaNodo::ricordaDate(FormBase::Passo& passo) {
    const auto& dati = *stato_.destinazione.dati;
    lette_ = {};
    passo([&] { lette_.inizio = dati["QZ02_DATAINIZIOVAL"]; });
    if (const auto inizio = lette_.inizio.date())
        stato_.DataInizioNodoDest = inizio;
    passo([&] { lette_.fine = dati["QZ02_DATAFINEVAL"]; });
    if (const auto fine = lette_.fine.date())
        stato_.DataFineNodoDest = fine;
}

void ModificaNodo::bloccaColonna(FormBase::Passo& passo) {
    std::optional<std::int64_t> id;
    passo([&] { id = (*stato_.destinazione.dati)["QZ02_ID"].integer(); });
    if (!id)
        return;
    // Locked where nobody knows whether there is a bonus: nothing else guards the start of validity.
    bool definitivo = true;
    passo([&] {
        LettureSingole letture(stato_.database());
        const auto motivo = PremioDefinitivo(letture, stato_.ditta(), NodoId(*id), false, "");
        if (motivo)
            stato_.MessaggioSpostamento = *motivo;
        definitivo = motivo.has_value();
    });
    passo([&] { stato_.destinazione.albero->setColumnLocked(posizioneBloccata, definitivo); });
}

void ModificaNodo::TRW_ELEMDISTINTADEST_OnEdited(contract::Node nodo) {
    stato_.unComando([&] {
        superate_ = false;
        inSospeso_ = true;
        const auto rimetti = [&] {
            stato_.procedura(nomeModifica, [&](auto& passo) { ripristina(passo, nodo, true, true); });
        };
        try {
            stato_.procedura(nomeModifica, [&](auto& passo) { convalida(passo, nodo); });
        } catch (const contract::Cancelled&) {
            rimetti();
            throw;
        }
        // Left by an error in the middle: what was not checked must not stay in the cells.
        if (inSospeso_)
            rimetti();
        // Only now, so that running the failed write again can not overwrite what another user wrote.
        if (superate_)
            stato_.procedura(nomeModifica, [&](auto& passo) { ricordaDate(passo); });
    });
}

void ModificaNodo::ripristina(FormBase::Passo& passo, contract::Node nodo, bool inizio, bool fine) {
    auto& albero = *stato_.destinazione.albero;
    if (inizio)
        passo([&] { albero.setValue(nodo, colonnaInizio, oppureNulla(stato_.DataInizioNodoDest)); });
    if (fine)
        passo([&] { albero.setValue(nodo, colonnaFine, oppureNulla(stato_.DataFineNodoDest)); });
    inSospeso_ = false;
}

void ModificaNodo::rifiuta(FormBase::Passo& passo, contract::Node nodo, std::string_view motivo, int stile, bool inizio,
                           bool fine) {
    passo([&] { stato_.messaggio(motivo, stile); });
    ripristina(passo, nodo, inizio, fine);
}

bool ModificaNodo::leggiLegame(FormBase::Passo& passo, LegameDaControllare& legame) {
    const auto& lato = stato_.destinazione;
    const auto& dati = *lato.dati;
    int letti = 0;
    passo([&] {
        legame.account = facoltativo<CodiceAccount>(dati, "QZ02_CLIFOR_CG44").value_or(CodiceAccount(0));
        ++letti;
    });
    passo([&] { legame.nodo = facoltativo<NodoId>(dati, "QZ02_ID"); });
    passo([&] {
        legame.padre = facoltativo<NodoId>(dati, "QZ02_IDPARENT_QZ02");
        ++letti;
    });
    passo([&] {
        legame.ditta = stato_.ditta();
        legame.dittaDelPadre = legame.ditta;
        ++letti;
    });
    legame.tipo = TipoCF(lato.TipoCF);
    legame.tipoOrigine = TipoCF(stato_.origine.TipoCF);
    return letti == 3 && legame.nodo;
}

void ModificaNodo::convalida(FormBase::Passo& passo, contract::Node nodo) {
    namespace message = contract::message;
    const auto& albero = *stato_.destinazione.albero;
    LegameDaControllare legame;
    if (!leggiLegame(passo, legame))
        return; // nothing that could be checked
    contract::Value inizio = "";
    passo([&] { inizio = FormBase::ValoreODefault(albero.value(nodo, colonnaInizio), ""); });
    if (inizio.text().empty()) {
        rifiuta(passo, nodo, "Attenzione la data validità inizio è obbligatoria", message::ok, true, false);
        return;
    }
    contract::Value fine = "";
    passo([&] { fine = FormBase::ValoreODefault(albero.value(nodo, colonnaFine), ""); });
    if (fine.text().empty()) {
        rifiuta(passo, nodo, "Attenzione la data validità fine è obbligatoria", message::ok, false, true);
        return;
    }
    std::optional<contract::Date> nuovoInizio;
    std::optional<contract::Date> nuovaFine;
    passo([&] { nuovoInizio = giorno(inizio); });
    passo([&] { nuovaFine = giorno(fine); });
    if (!nuovoInizio || !nuovaFine)
        return;
    // An end equal to the start is accepted, although the message speaks of an earlier start.
    if (*nuovaFine < *nuovoInizio) {
        rifiuta(passo, nodo, "Attenzione data validità inizio deve essere inferiore di data validità fine", message::ok,
                true, true);
        return;
    }
    legame.inizio = *nuovoInizio;
    legame.fine = nuovaFine->text();
    const DateLegame nuove{*nuovoInizio, *nuovaFine};
    // A pair that is what was read is checked, but there is nothing to write.
    const bool invariata = lette_.inizio.date() == nuovoInizio && lette_.fine.date() == nuovaFine;
    bool accettata = false;
    bool controllata = false;
    std::int64_t scritte = 0;
    stato_.MessaggioSpostamento.clear();
    passo([&] {
        stato_.MessaggioSpostamento.clear(); // run again, the check says what it has to say once
        if (invariata)
            accettata = controlla(legame);
        else
            scritte = controllaEScrivi(legame, nuove, accettata);
        controllata = true;
    });
    if (accettata && invariata)
        inSospeso_ = false;
    else if (accettata)
        dopoLaScrittura(passo, nodo, legame, nuove, scritte);
    else if (controllata)
        rifiuta(passo, nodo, "Anagrafica non modificata:\n" + stato_.MessaggioSpostamento, message::information, true,
                true);
    else
        ripristina(passo, nodo, true, true);
}

bool ModificaNodo::controlla(const LegameDaControllare& legame) {
    LettureSingole letture(stato_.database());
    const auto motivo = ControllaLegami(letture, legame);
    if (motivo)
        stato_.MessaggioSpostamento = *motivo;
    return !motivo;
}

/// In one transaction, so that no link of another user can come in between the check and the write.
std::int64_t ModificaNodo::controllaEScrivi(const LegameDaControllare& legame, const DateLegame& nuove,
                                            bool& accettata) {
    contract::Transaction transazione(stato_.database());
    accettata = controlla(legame);
    std::int64_t scritte = 0;
    if (accettata) {
        accettata = false; // until it is kept
        const Autore autore{stato_.utente(), stato_.gruppo(), stato_.oggi()};
        RegistroModifica registro(stato_.database(), stato_.ditta(), autore,
                                  stato_.tieneRegistro ? std::optional(stato_.ora()) : std::nullopt);
        registro.primaDiScrivere(*legame.nodo);
        scritte = stato_.database().Execute(
            istruzioneDateLegame(*legame.nodo, lette_, legame.inizio, *nuove.fine.date(), autore));
        if (scritte != 0)
            registro.scrivi(*legame.nodo, legame.account, {lette_.inizio, lette_.fine}, {nuove.inizio, nuove.fine});
        if (scritte != 0)
            transazione.commit();
        accettata = true;
    }
    if (scritte == 0)
        transazione.rollback();
    return scritte;
}

/// The row was written only where it still held the dates that were read; otherwise the cells show what the database
/// holds.
void ModificaNodo::dopoLaScrittura(FormBase::Passo& passo, contract::Node nodo, const LegameDaControllare& legame,
                                   const DateLegame& nuove, std::int64_t scritte) {
    if (scritte == 0) {
        mostraDateDelDatabase(passo, nodo, *legame.nodo);
        passo([&] {
            throw contract::RuntimeError(contract::RuntimeError::invalidCall,
                                         "Le date del nodo " + std::to_string(legame.account.numero()) +
                                             " sono state modificate da un altro utente dopo la lettura: la modifica "
                                             "non è stata salvata e le celle mostrano le date attuali.");
        });
        return;
    }
    inSospeso_ = false;
    lette_ = nuove;
    stato_.DataInizioNodoDest = nuove.inizio.date();
    stato_.DataFineNodoDest = nuove.fine.date();
    ricaricaOrigine(passo);
}

/// A later move must not copy an old date from the other side.
void ModificaNodo::ricaricaOrigine(FormBase::Passo& passo) {
    auto& origine = stato_.origine;
    if (origine.IdDistinta != stato_.destinazione.IdDistinta || origine.vuoto())
        return;
    const auto riga = origine.albero->topRow();
    passo([&] { CaricaDistinta(stato_, origine, origine.IdDistinta); });
    passo([&] { origine.albero->setTopRow(riga); });
}

void ModificaNodo::mostraDateDelDatabase(FormBase::Passo& passo, contract::Node nodo, NodoId id) {
    contract::Recordset riga;
    passo([&] { riga.Open(istruzioneLeggiDate(id), stato_.database()); });
    if (riga.Empty()) {
        ripristina(passo, nodo, true, true);
        return;
    }
    auto& albero = *stato_.destinazione.albero;
    passo([&] { albero.setValue(nodo, colonnaInizio, riga["QZ02_DATAINIZIOVAL"]); });
    passo([&] { albero.setValue(nodo, colonnaFine, riga["QZ02_DATAFINEVAL"]); });
    inSospeso_ = false;
    superate_ = true;
}

void ModificaNodo::TRW_ELEMDISTINTADEST_OnChangedColumn(contract::Node nodo) {
    stato_.procedura("TRW_ELEMDISTINTADEST_OnChangedColumn", [&](auto& passo) {
        if (nodo && stato_.destinazione.albero->focusedColumn() == colonnaStato) {
            stato_.NodoStatoDest = nodo;
            stato_.posizioneNodoStato = nodo.position;
            apriEditorStato(passo, nodo);
        } else {
            passo([&] { stato_.campoStato->setVisible(false); });
        }
    });
}

} // namespace qz
