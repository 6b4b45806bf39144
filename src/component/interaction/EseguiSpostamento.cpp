#include "component/interaction/EseguiSpostamento.h"

#include "component/data/CaricaDistinta.h"
#include "component/data/IstruzioniDistinta.h"
#include "component/interaction/DescrizioneSpostamento.h"
#include "component/interaction/RiletturaNodi.h"
#include "component/maintenance/Blocchi.h"
#include "component/maintenance/LettureSingole.h"
#include "component/maintenance/RegistroSpostamenti.h"
#include "component/maintenance/ScrittureSingole.h"
#include "component/maintenance/Spostamento.h"
#include "component/shared/MODQZ_DISTINTA.h"

namespace qz {

namespace {

constexpr std::string_view intestazioneFalliti = "Non è stato possibile spostare le seguenti anagrafiche:\n";

std::int32_t primaRiga(const Lato& lato) {
    return lato.albero->firstNode() ? lato.albero->topRow() : 0;
}

void ripristinaRiga(Lato& lato, std::int32_t riga) {
    if (riga != 0)
        lato.albero->setTopRow(riga);
}

/// Hands what a plan says to the form, however the move ends.
class EsitoSulForm {
public:
    EsitoSulForm(StatoForm& stato, const Piano& piano) : stato_(stato), piano_(piano) {}
    EsitoSulForm(const EsitoSulForm&) = delete;
    EsitoSulForm& operator=(const EsitoSulForm&) = delete;
    ~EsitoSulForm() {
        stato_.MessaggioSpostamento = piano_.messaggio;
        if (piano_.fineNuoviLegami)
            stato_.DataFineLegame = *piano_.fineNuoviLegami;
    }

private:
    StatoForm& stato_;
    const Piano& piano_;
};

Validita validitaDelTesto(std::string_view fineLegame, contract::Date oggi) {
    const auto testo = FormBase::ValoreODefault(contract::Value(std::string(fineLegame)), oggi.text());
    const auto fine = dataDelTesto(testo.text());
    return {fine, fine.plusDays(1), {}};
}

NodoSpostato nodoSpostato(const Richiesta& richiesta) {
    return {richiesta.nodo.id, richiesta.nodo.account, richiesta.sotto,
            richiesta.validita ? std::optional(richiesta.validita->inizio) : std::nullopt};
}

/// What the registry of moves says of a move; nothing where it is not kept.
std::unique_ptr<RegistroSpostamenti> nuovoRegistro(StatoForm& stato) {
    if (!stato.tieneRegistro)
        return nullptr;
    return std::make_unique<RegistroSpostamenti>(stato.database(), stato.ditta(),
                                                 Autore{stato.utente(), stato.gruppo(), stato.oggi()}, stato.ora());
}

/// Whether so many nodes hang below the moved one that they are worth blocks.
bool aBlocchi(const StatoForm& stato) {
    if (stato.nodiPerBlocchi <= 0)
        return stato.nodiPerBlocchi == 0;
    const auto& albero = *stato.origine.albero;
    return albero.descendants(albero.focused()) > static_cast<std::size_t>(stato.nodiPerBlocchi);
}

Avanzamento avanzamento(const StatoForm& stato) {
    const auto& albero = *stato.origine.albero;
    auto* const progresso = stato.avanzamento();
    if (progresso != nullptr)
        progresso->counts("nodi");
    return {progresso, albero.descendants(albero.focused()) + 1};
}

} // namespace

Richiesta richiestaDiSpostamento(const StatoForm& stato, bool validita) {
    return richiestaDiSpostamento(stato, validita, stato.DataFineLegame);
}

Richiesta richiestaDiSpostamento(const StatoForm& stato, bool validita, std::string_view fineLegame) {
    const auto& orig = *stato.origine.dati;
    const auto& dest = *stato.destinazione.dati;
    const NodoLetto nodo{obbligatorio<NodoId>(orig, "QZ02_ID"),
                         stato.ditta(),
                         TipoCF(stato.origine.TipoCF),
                         facoltativo<CodiceAccount>(orig, "QZ02_CLIFOR_CG44"),
                         {DistintaId(idSenzaApici(stato.origine.IdDistinta)),
                          facoltativo<NodoId>(orig, "QZ02_IDPARENT_QZ02"), orig["QZ02_DATAINIZIOVAL"].date(),
                          orig["QZ02_DATAFINEVAL"].date()},
                         facoltativiDelLegame(orig)};
    Richiesta richiesta{
        nodo,
        obbligatorio<NodoId>(dest, "QZ02_ID"),
        facoltativo<CodiceAccount>(dest, "QZ02_CLIFOR_CG44"),
        DistintaId(idSenzaApici(stato.origine.IdDistinta)),
        DistintaId(idSenzaApici(stato.destinazione.IdDistinta)),
        stato.ditta(),
        TipoCF(stato.origine.TipoCF),
        TipoCF(stato.destinazione.TipoCF),
        {},
        {stato.utente(), stato.gruppo(), stato.oggi()},
        {stato.parametri.StatoLegame, stato.parametri.TipoCaricaDATA != 0, stato.parametri.DataFissaFINE}};
    if (validita) {
        richiesta.validita = validitaDelTesto(fineLegame, richiesta.autore.oggi);
        richiesta.validita->guid = FormBase::ValoreODefault(orig["QZ02_GUID"], contract::Value()).text();
    }
    return richiesta;
}

void EseguiSpostamento(StatoForm& stato, bool validita) {
    auto& orig = stato.origine;
    auto& dest = stato.destinazione;
    if (orig.senzaRecord() || orig.TipoCF != dest.TipoCF)
        return;

    contract::Transaction transazione(stato.database());
    stato.MessaggioSpostamento.clear();
    rileggiNodi(stato, stato.MessaggioSpostamento);

    const auto rigaOrig = primaRiga(orig);
    const auto rigaDest = primaRiga(dest);
    if (!dest.albero->firstNode())
        stato.MessaggioSpostamento = "La distinta di destinazione selezionata non contiene nodi capostipite!";
    // A text that is no date ends every move, also one that would not look at it.
    validitaDelTesto(stato.DataFineLegame, stato.oggi());

    // While the end-of-link text is the one that the user gave.
    const auto dettaglio = dettaglioSpostamento(stato, validita);
    std::string fatto(nessunaModifica);
    const auto registro = nuovoRegistro(stato);
    std::optional<NodoSpostato> spostato;
    if (stato.MessaggioSpostamento.empty()) {
        const auto richiesta = richiestaDiSpostamento(stato, validita);
        Piano piano;
        const EsitoSulForm esito(stato, piano);
        const FlussoStati flusso = [&stato]() -> contract::WorkflowState& { return stato.flusso(); };
        if (aBlocchi(stato)) {
            Blocchi blocchi(stato.database(), richiesta, flusso);
            blocchi.testimone(registro.get());
            sposta(blocchi, blocchi, richiesta, piano, avanzamento(stato));
        } else {
            LettureSingole letture(stato.database());
            ScrittureSingole scritture(stato.database(), richiesta.autore, flusso);
            scritture.testimone(registro.get());
            sposta(letture, scritture, richiesta, piano, avanzamento(stato));
        }
        if (!piano.rifiutato()) {
            fatto = descrizioneEsito(piano, richiesta, nomeNodo(dest));
            spostato = nodoSpostato(richiesta);
            if (registro) {
                registro->aggiungi(piano, richiesta);
                registro->scrivi(validita ? contract::OperationKind::validity : contract::OperationKind::structure,
                                 nomeNodo(orig) + ": " + fatto);
            }
        }
    }

    if (!senzaBlanks(stato.MessaggioSpostamento).empty()) {
        // The heading belongs to an empty message, which does not come here.
        std::string testo = stato.MessaggioSpostamento;
        if (testo.empty())
            testo = intestazioneFalliti;
        stato.messaggio(testo, contract::message::critical, dettaglio);
        transazione.rollback();
    } else {
        transazione.commit();
        stato.nodoSpostato = spostato;
    }

    // The move is over: an error from here on must not run it again.
    stato.procedura("EseguiSpostamento", [&](auto& passo) {
        passo([&] { RicaricaAlberi(stato); });
        passo([&] { ripristinaRiga(orig, rigaOrig); });
        passo([&] { ripristinaRiga(dest, rigaDest); });
        passo([&] { annunciaEsito(stato, fatto); });
    });
}

} // namespace qz
