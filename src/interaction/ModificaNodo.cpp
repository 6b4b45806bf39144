#include "interaction/ModificaNodo.h"

#include "data/CaricaDistinta.h"
#include "data/DettaglioAnagrafica.h"
#include "data/Parametri.h"
#include "maintenance/IstruzioniSpostamento.h"

namespace qz {

namespace {

constexpr std::string_view colonnaInizio = "trQZ02_DATAINIZIOVAL";
constexpr std::string_view colonnaFine = "trQZ02_DATAFINEVAL";
constexpr std::string_view colonnaStato = "Stato";
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
    if (!data)
        throw contract::RuntimeError(contract::RuntimeError::typeMismatch,
                                     "Tipo non corrispondente: \"" + valore.text() + "\" non è una data.");
    return *data;
}

} // namespace

void ModificaNodo::TRW_ELEMDISTINTAORIG_OnChangeNode() {
    cambioOrigine(stato_.origine.descrizione.nomeCambioNodo, false);
}

void ModificaNodo::TRW_ELEMDISTINTAORIG_OnChangeNodeEx() {
    cambioOrigine(stato_.origine.descrizione.nomeCambioNodoEx, true);
}

void ModificaNodo::TRW_ELEMDISTINTADEST_OnChangeNode() {
    cambioDestinazione(stato_.destinazione.descrizione.nomeCambioNodo, true);
}

void ModificaNodo::TRW_ELEMDISTINTADEST_OnChangeNodeEx() {
    cambioDestinazione(stato_.destinazione.descrizione.nomeCambioNodoEx, false);
}

void ModificaNodo::cambioOrigine(std::string_view nome, bool conParametri) {
    auto& lato = stato_.origine;
    stato_.procedura(nome, [&](auto& passo) {
        if (lato.senzaRecord()) {
            passo([&] { SvuotaFlex(stato_, *lato.dettaglio); });
            return;
        }
        if (conParametri)
            passo([&] { CaricaParametri(stato_); });
        passo([&] { CaricaDatiAnagrafici(stato_, codiceCorrente(lato), *lato.dettaglio, lato.Divisione); });
    });
}

void ModificaNodo::cambioDestinazione(std::string_view nome, bool conDate) {
    auto& lato = stato_.destinazione;
    stato_.procedura(nome, [&](auto& passo) {
        // Coming to rest after a move that was suspended is no change either.
        const bool sospeso = stato_.sospendiCambioNodo || (!conDate && spostatoInSospeso_);
        spostatoInSospeso_ = sospeso;
        if (sospeso)
            return;
        if (lato.senzaRecord()) {
            passo([&] { SvuotaFlex(stato_, *lato.dettaglio); });
            passo([&] { stato_.campoId->setText(""); });
            return;
        }
        passo([&] { CaricaParametri(stato_); });
        passo([&] { CaricaDatiAnagrafici(stato_, codiceCorrente(lato), *lato.dettaglio, lato.Divisione); });
        passo([&] { stato_.campoId->setText((*lato.dati)["QZ02_ID"].text()); });
        if (!conDate)
            return;
        passo([&] { ricordaDate(); });
        passo([&] { bloccaColonna(); });
    });
}

/// A null date leaves the one remembered before, even if it was another node's.
void ModificaNodo::ricordaDate() {
    const auto& dati = *stato_.destinazione.dati;
    lette_ = {dati["QZ02_DATAINIZIOVAL"], dati["QZ02_DATAFINEVAL"]};
    if (const auto inizio = lette_.inizio.date())
        stato_.DataInizioNodoDest = inizio;
    if (const auto fine = lette_.fine.date())
        stato_.DataFineNodoDest = fine;
}

void ModificaNodo::bloccaColonna() {
    const auto id = (*stato_.destinazione.dati)["QZ02_ID"].integer();
    if (!id)
        return;
    const bool definitivo = controlli_.PremioDefinitivo(*id, false, "");
    stato_.destinazione.albero->setColumnLocked(posizioneBloccata, definitivo);
}

void ModificaNodo::TRW_ELEMDISTINTADEST_OnEdited(contract::Node nodo) {
    superate_ = false;
    inSospeso_ = true;
    stato_.procedura("TRW_ELEMDISTINTADEST_OnEdited", [&](auto& passo) { convalida(passo, nodo); });
    // Left by an error in the middle: what was not checked must not stay in the cells.
    if (inSospeso_)
        ripristina(nodo, true, true);
    // Only now, so that running the failed write again can not overwrite what another user wrote.
    if (superate_)
        ricordaDate();
}

void ModificaNodo::ripristina(contract::Node nodo, bool inizio, bool fine) {
    auto& albero = *stato_.destinazione.albero;
    inSospeso_ = false;
    if (inizio)
        albero.setValue(nodo, colonnaInizio, oppureNulla(stato_.DataInizioNodoDest));
    if (fine)
        albero.setValue(nodo, colonnaFine, oppureNulla(stato_.DataFineNodoDest));
}

template <class Passo> void ModificaNodo::convalida(Passo& passo, contract::Node nodo) {
    namespace message = contract::message;
    auto& lato = stato_.destinazione;
    LegameDaControllare legame;
    contract::Value inizio;
    contract::Value fine;
    passo([&] {
        const auto& dati = *lato.dati;
        legame.account = FormBase::ValoreODefault(dati["QZ02_CLIFOR_CG44"], std::int32_t{0});
        legame.nodo = dati["QZ02_ID"].integer();
        legame.idPadre = FormBase::ValoreODefault(dati["QZ02_IDPARENT_QZ02"], std::int32_t{0});
        legame.ditta = stato_.ditta();
        legame.tipoCF = lato.TipoCF;
        inizio = FormBase::ValoreODefault(lato.albero->value(nodo, colonnaInizio), "");
        fine = FormBase::ValoreODefault(lato.albero->value(nodo, colonnaFine), "");
    });
    if (!legame.nodo)
        return;
    if (inizio.text().empty()) {
        passo([&] { stato_.messaggio("Attenzione la data validità inizio è obbligatoria", message::ok); });
        passo([&] { ripristina(nodo, true, false); });
        return;
    }
    if (fine.text().empty()) {
        passo([&] { stato_.messaggio("Attenzione la data validità fine è obbligatoria", message::ok); });
        passo([&] { ripristina(nodo, false, true); });
        return;
    }
    bool ordinate = false;
    bool accettata = false;
    passo([&] {
        legame.inizio = giorno(inizio);
        legame.fine = giorno(fine).text();
        // An end equal to the start is accepted, although the message speaks of an earlier start.
        ordinate = giorno(fine) >= legame.inizio;
        if (!ordinate)
            stato_.messaggio("Attenzione data validità inizio deve essere inferiore di data validità fine",
                             message::ok);
    });
    if (!ordinate) {
        passo([&] { ripristina(nodo, true, true); });
        return;
    }
    const DateLegame nuove{legame.inizio, giorno(contract::Value(legame.fine))};
    // A pair that is what was read is checked, but there is nothing to write.
    const bool invariata = lette_.inizio.date() == nuove.inizio.date() && lette_.fine.date() == nuove.fine.date();
    bool controllata = false;
    std::int64_t scritte = 0;
    passo([&] {
        stato_.MessaggioSpostamento.clear();
        if (invariata)
            accettata = controlli_.ControllaLegami(legame);
        else
            scritte = controllaEScrivi(legame, nuove, accettata);
        controllata = true;
    });
    if (accettata && invariata) {
        inSospeso_ = false;
        return;
    }
    if (accettata) {
        passo([&] { dopoLaScrittura(nodo, legame, nuove, scritte); });
        return;
    }
    if (controllata)
        passo([&] {
            stato_.messaggio("Anagrafica non modificata:\n" + stato_.MessaggioSpostamento, message::information);
        });
    passo([&] { ripristina(nodo, true, true); });
}

/// In one transaction, so that no link of another user can come in between the check and the write.
std::int64_t ModificaNodo::controllaEScrivi(const LegameDaControllare& legame, const DateLegame& nuove,
                                            bool& accettata) {
    contract::Transaction transazione(stato_.database());
    accettata = controlli_.ControllaLegami(legame);
    std::int64_t scritte = 0;
    if (accettata) {
        accettata = false; // until it is kept
        const Autore autore{stato_.utente(), stato_.gruppo(), stato_.oggi()};
        scritte = stato_.database().Execute(
            istruzioneDateLegame(*legame.nodo, lette_, legame.inizio, *nuove.fine.date(), autore));
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
void ModificaNodo::dopoLaScrittura(contract::Node nodo, const LegameDaControllare& legame, const DateLegame& nuove,
                                   std::int64_t scritte) {
    if (scritte == 0) {
        mostraDateDelDatabase(nodo, *legame.nodo);
        throw contract::RuntimeError(contract::RuntimeError::invalidCall,
                                     "Le date del nodo " + legame.account.text() +
                                         " sono state modificate da un altro utente dopo la lettura: la modifica non "
                                         "è stata salvata e le celle mostrano le date attuali.");
    }
    inSospeso_ = false;
    lette_ = nuove;
    stato_.DataInizioNodoDest = nuove.inizio.date();
    stato_.DataFineNodoDest = nuove.fine.date();
    if (stato_.origine.IdDistinta != stato_.destinazione.IdDistinta || stato_.origine.vuoto())
        return;
    // A later move must not copy an old date from the other side.
    const auto riga = stato_.origine.albero->topRow();
    CaricaDistinta(stato_, stato_.origine, stato_.origine.IdDistinta);
    stato_.origine.albero->setTopRow(riga);
}

void ModificaNodo::mostraDateDelDatabase(contract::Node nodo, std::int64_t idNodo) {
    contract::Recordset riga;
    riga.Open(istruzioneLeggiDate(idNodo), stato_.database());
    if (riga.Empty()) {
        ripristina(nodo, true, true);
        return;
    }
    auto& albero = *stato_.destinazione.albero;
    albero.setValue(nodo, colonnaInizio, riga["QZ02_DATAINIZIOVAL"]);
    albero.setValue(nodo, colonnaFine, riga["QZ02_DATAFINEVAL"]);
    inSospeso_ = false;
    superate_ = true;
}

void ModificaNodo::TRW_ELEMDISTINTADEST_OnChangedColumn(contract::Node nodo) {
    stato_.procedura("TRW_ELEMDISTINTADEST_OnChangedColumn", [&](auto& passo) {
        if (nodo && stato_.destinazione.albero->focusedColumn() == colonnaStato) {
            stato_.NodoStatoDest = nodo;
            stato_.posizioneNodoStato = nodo.position;
            passo([&] { apriEditorStato(nodo); });
        } else {
            passo([&] { stato_.campoStato->setVisible(false); });
        }
    });
}

} // namespace qz
