#include "maintenance/Spostamento.h"

#include "data/CaricaDistinta.h"
#include "form/shared/MODQZ_DISTINTA.h"

#include <array>

namespace qz {

namespace {

constexpr std::string_view fineAperta = "31/12/2099";
constexpr std::string_view intestazioneFalliti = "Non è stato possibile spostare le seguenti anagrafiche:\n";

contract::Value facoltativo(const contract::Recordset& record, std::string_view campo) {
    return FormBase::ValoreODefault(record[campo], contract::Value());
}

std::array<contract::Value, 5> facoltativi(const contract::Recordset& record) {
    return {facoltativo(record, "QZ02_CLIFORFATT_CG44"), facoltativo(record, "QZ02_TIPOANAGFATT"),
            facoltativo(record, "QZ02_IDSTRUTTURA_LP09"), facoltativo(record, "QZ02_IDLOCALIZZATA_LP09"),
            facoltativo(record, "QZ02_INDEREPROMO")};
}

contract::Date dataDelTesto(std::string_view testo) {
    const auto data = contract::Date::parse(testo);
    if (!data)
        throw contract::RuntimeError(contract::RuntimeError::typeMismatch,
                                     "Tipo non corrispondente: \"" + std::string(testo) + "\" non è una data.");
    return *data;
}

std::int32_t primaRiga(const Lato& lato) {
    return lato.albero->firstNode() ? lato.albero->topRow() : 0;
}

void ripristinaRiga(Lato& lato, std::int32_t riga) {
    if (riga != 0)
        lato.albero->setTopRow(riga);
}

bool nellaDistinta(const contract::Recordset& nodi, const contract::Value& id, std::string_view distinta) {
    const auto campoId = nodi.FieldIndex("QZ02_ID");
    const auto campoDistinta = nodi.FieldIndex("QZ02_ID_QZ01");
    for (std::size_t riga = 0; riga < nodi.RecordCount(); ++riga)
        if (nodi.rows().column(campoId).integer(riga) == id.integer())
            return nodi.rows().column(campoDistinta).integer(riga) == contract::Value(distinta).integer();
    return false;
}

} // namespace

bool Spostamento::fallito() const {
    return !senzaBlanks(stato_.MessaggioSpostamento).empty();
}

void Spostamento::EseguiSpostamento(bool validita) {
    auto& orig = stato_.origine;
    auto& dest = stato_.destinazione;
    if (orig.senzaRecord() || orig.TipoCF != dest.TipoCF)
        return;

    contract::Transaction transazione(stato_.database());
    stato_.MessaggioSpostamento.clear();
    rileggiNodi();

    const auto rigaOrig = primaRiga(orig);
    const auto rigaDest = primaRiga(dest);
    if (!dest.albero->firstNode())
        stato_.MessaggioSpostamento = "La distinta di destinazione selezionata non contiene nodi capostipite!";

    autore_ = {stato_.utente(), stato_.gruppo(), stato_.oggi()};
    const auto testoFine = FormBase::ValoreODefault(contract::Value(stato_.DataFineLegame), autore_.oggi.text());
    dataFine_ = dataDelTesto(testoFine.text());
    dataInizio_ = dataFine_.plusDays(1);

    if (stato_.MessaggioSpostamento.empty())
        CiclaLivelli(validita);

    if (fallito()) {
        // The heading belongs to an empty message, which does not come here.
        std::string testo = stato_.MessaggioSpostamento;
        if (testo.empty())
            testo = intestazioneFalliti;
        stato_.messaggio(testo, contract::message::critical);
        transazione.rollback();
    } else {
        if (!validita)
            stato_.database().Execute(istruzioneSpostaNodo(
                {(*orig.dati)["QZ02_ID"], (*dest.dati)["QZ02_ID"], orig.IdDistinta, dest.IdDistinta}, autore_));
        transazione.commit();
    }

    // The move is over: an error from here on must not run it again.
    stato_.procedura("EseguiSpostamento", [&](auto& passo) {
        passo([&] { RicaricaAlberi(stato_); });
        passo([&] { ripristinaRiga(orig, rigaOrig); });
        passo([&] { ripristinaRiga(dest, rigaDest); });
    });
}

/// What stands on the screen can be old. Read under the transaction, the two rows keep two users from building together
/// what each alone would have been refused.
void Spostamento::rileggiNodi() {
    const auto& orig = stato_.origine;
    const auto& dest = stato_.destinazione;
    const auto idOrig = (*orig.dati)["QZ02_ID"];
    const auto idDest = dest.senzaRecord() ? contract::Value::null() : (*dest.dati)["QZ02_ID"];

    contract::Recordset nodi;
    nodi.Open(istruzioneRilettura(idOrig, idDest), stato_.database());
    const auto uscito = [this](const Lato& lato, std::string_view nome) {
        stato_.MessaggioSpostamento += "Il nodo " + (*lato.dati)["QZ02_CLIFOR_CG44"].text() +
                                       " non appartiene più alla " + std::string(nome) +
                                       " visualizzata: è stato spostato o eliminato da un altro utente. Spostamento "
                                       "annullato.\n";
    };
    if (!nellaDistinta(nodi, idOrig, orig.IdDistinta))
        uscito(orig, "distinta di origine");
    if (!idDest.isMissing() && !nellaDistinta(nodi, idDest, dest.IdDistinta))
        uscito(dest, "distinta di destinazione");
}

void Spostamento::CiclaLivelli(bool validita) {
    const auto& orig = *stato_.origine.dati;
    stato_.MessaggioSpostamento.clear();
    motiviLegami_.clear();
    ultimoDaLegami_ = false;

    const auto& dest = *stato_.destinazione.dati;
    controlli_.ControllaRicorsione(orig["QZ02_CLIFOR_CG44"], dest["QZ02_CLIFOR_CG44"]);
    if (!fallito() && stato_.origine.IdDistinta == stato_.destinazione.IdDistinta)
        controlli_.ControllaDiscendenza(orig["QZ02_ID"].integer().value_or(0), orig["QZ02_CLIFOR_CG44"],
                                        dest["QZ02_ID"].integer().value_or(0));
    if (fallito())
        return;
    if (validita) {
        fissaFineNuoviLegami();
        copiaNodoSpostato();
        if (fallito())
            return;
    }

    CodaLimitata<std::int64_t> coda(ContaNodiDistinta());
    std::int64_t padre = orig["QZ02_ID"].integer().value_or(0);
    while (coda.testa <= coda.coda()) {
        if (coda.testa > coda.capacita()) {
            stato_.MessaggioSpostamento = "Anagrafica ricorsiva. Spostamento annullato";
            break;
        }
        if (!lavoraFigli(padre, validita, coda))
            break;
        ++coda.testa;
        if (const auto* prossimo = coda.inTesta())
            padre = *prossimo;
    }

    if (!motiviLegami_.empty())
        stato_.MessaggioSpostamento = ultimoDaLegami_ ? motiviLegami_ : motiviLegami_ + stato_.MessaggioSpostamento;
}

bool Spostamento::lavoraFigli(std::int64_t idPadre, bool validita, CodaLimitata<std::int64_t>& coda) {
    const auto decodificato = controlli_.DecodificaPadre(idPadre, validita ? std::optional(dataInizio_) : std::nullopt);
    if (decodificato.id == 0)
        return true;
    contract::Recordset figli;
    figli.Open(istruzioneFigli(idPadre, stato_.origine.IdDistinta), stato_.database());
    for (; !figli.Eof(); figli.MoveNext()) {
        if (coda.piena())
            return false;
        coda.accoda(figli["QZ02_ID"].integer().value_or(0));
        lavoraFiglio(figli, decodificato, validita);
    }
    return true;
}

void Spostamento::lavoraFiglio(const contract::Recordset& figlio, const PadreDecodificato& padre, bool validita) {
    stato_.MessaggioSpostamento.clear();
    ultimoDaLegami_ = false;
    const auto account = figlio["QZ02_CLIFOR_CG44"];
    controlli_.ControllaRicorsione(account, padre.account);
    if (fallito())
        return;
    if (!validita) {
        AggiornaDistintaNodo(figlio["QZ02_ID"].integer().value_or(0));
        return;
    }
    // There is no statement that would copy a node without account.
    if (account.isMissing())
        return;
    CopiaNodo({figlio["QZ02_ID"], padre.id, figlio["QZ02_DITTA_CG18"].integer().value_or(0),
               figlio["QZ02_TIPOCF_CG44"].integer().value_or(0), account, facoltativi(figlio)});
    if (fallito()) {
        motiviLegami_ += stato_.MessaggioSpostamento;
        ultimoDaLegami_ = true;
    }
}

/// Once for the whole subtree. The closing date of the old links stays the one that the user typed.
void Spostamento::fissaFineNuoviLegami() {
    const auto& orig = *stato_.origine.dati;
    if (stato_.parametri.TipoCaricaDATA != 0) {
        stato_.DataFineLegame = stato_.parametri.DataFissaFINE ? stato_.parametri.DataFissaFINE->text() : "";
        return;
    }
    const auto fine = orig["QZ02_DATAFINEVAL"];
    stato_.DataFineLegame = fine.isMissing() ? std::string(fineAperta) : fine.text();
}

void Spostamento::copiaNodoSpostato() {
    const auto& orig = *stato_.origine.dati;
    guidOrigine_ = FormBase::ValoreODefault(orig["QZ02_GUID"], contract::Value());
    CopiaNodo({orig["QZ02_ID"], (*stato_.destinazione.dati)["QZ02_ID"], stato_.ditta(), stato_.origine.TipoCF,
               orig["QZ02_CLIFOR_CG44"], facoltativi(orig)});
}

void Spostamento::CopiaNodo(const NodoDaCopiare& nodo) {
    stato_.database().Execute(istruzioneChiudiLegame({nodo.idNodo, stato_.origine.IdDistinta, dataFine_}, autore_));
    if (!controlli_.ControllaLegami(
            {nodo.idNuovoPadre, nodo.ditta, nodo.tipoCF, nodo.account, dataInizio_, stato_.DataFineLegame}))
        return;
    const std::string guid = stato_.flusso().GetNewGUID();
    stato_.database().Execute(istruzioneInserisciLegame(
        nodo, {stato_.destinazione.IdDistinta, stato_.parametri.StatoLegame, dataInizio_, stato_.DataFineLegame, guid},
        autore_));
    riportaStato(guid);
}

void Spostamento::riportaStato(const std::string& guid) {
    auto& flusso = stato_.flusso();
    if (!guidOrigine_.isMissing()) {
        flusso.DuplicaStato(guidOrigine_.text(), guid);
        return;
    }
    flusso.GetDefaultFlussoStato();
    flusso.ConfermaStato();
}

std::int64_t Spostamento::ContaNodiDistinta() {
    contract::Recordset conta;
    conta.Open(istruzioneContaNodi(stato_.origine.IdDistinta), stato_.database());
    return conta["Conta"].integer().value_or(0) + 1;
}

void Spostamento::AggiornaDistintaNodo(std::int64_t idNodo) {
    stato_.database().Execute(
        istruzioneAggiornaDistinta(idNodo, stato_.origine.IdDistinta, stato_.destinazione.IdDistinta));
}

} // namespace qz
