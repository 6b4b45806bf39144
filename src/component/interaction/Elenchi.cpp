#include "component/interaction/Elenchi.h"

#include "component/data/CaricaDistinta.h"
#include "component/data/IstruzioniDistinta.h"
#include "component/interaction/Anteprima.h"
#include "component/interaction/DescrizioneSpostamento.h"
#include "component/maintenance/Anteprima.h"
#include "component/maintenance/Blocchi.h"
#include "component/maintenance/Elenco.h"
#include "component/maintenance/RegistroSpostamenti.h"
#include "component/maintenance/Spostamento.h"

#include <memory>

namespace qz {

namespace {

std::optional<DistintaId> distintaDi(const Lato& lato) {
    return lato.IdDistinta.empty() ? std::nullopt : std::optional(DistintaId(idSenzaApici(lato.IdDistinta)));
}

AmbitoElenco ambito(const StatoForm& stato, const Insieme& insieme) {
    const auto& parametri = stato.parametri;
    AmbitoElenco comune{stato.ditta(),
                        {stato.utente(), stato.gruppo(), stato.oggi()},
                        {parametri.StatoLegame, parametri.TipoCaricaDATA != 0, parametri.DataFissaFINE},
                        {},
                        {}};
    if (insieme.senzaNome == contract::Unnamed::onScreen) {
        comune.origine = distintaDi(stato.origine);
        comune.destinazione = distintaDi(stato.destinazione);
    }
    return comune;
}

NodoScelto nodoScelto(const Lato& lato, contract::Node nodo) {
    const auto& righe = lato.dati->rows();
    const auto riga = lato.albero->row(nodo);
    const auto campo = [&](std::string_view nome) { return righe.column(lato.dati->FieldIndex(nome)).value(riga); };
    const auto padre = campo("QZ02_IDPARENT_QZ02").integer();
    const auto account = campo("QZ02_CLIFOR_CG44").integer();
    return {NodoId(lato.albero->key(nodo)),
            account ? std::optional(CodiceAccount(*account)) : std::nullopt,
            {distintaDi(lato), padre ? std::optional(NodoId(*padre)) : std::nullopt, campo("QZ02_DATAINIZIOVAL").date(),
             campo("QZ02_DATAFINEVAL").date()}};
}

/// The checked nodes above which none is checked, in display order.
std::vector<contract::Node> selezionati(const contract::TreeList& albero) {
    std::vector<contract::Node> nodi;
    std::optional<int> sotto;
    for (auto nodo = albero.firstNode(); nodo; nodo = albero.next(nodo)) {
        const int livello = albero.level(nodo);
        if (sotto && livello > *sotto)
            continue;
        sotto.reset();
        if (albero.value(nodo, "Seleziona").text() != "True")
            continue;
        nodi.push_back(nodo);
        sotto = livello;
    }
    return nodi;
}

/// What is asked for, line by line; a reason where nothing can be asked for.
std::vector<VoceElenco> voci(const StatoForm& stato, const Insieme& insieme, std::string& motivo) {
    std::vector<VoceElenco> tutte;
    if (!insieme.selezionati) {
        for (const auto& riga : insieme.righe)
            tutte.push_back({riga, {}, {}});
        if (tutte.empty())
            motivo = "L'elenco è vuoto.";
        return tutte;
    }
    const auto nodi = stato.origine.vuoto() ? std::vector<contract::Node>() : selezionati(*stato.origine.albero);
    if (nodi.empty())
        motivo = "Nessun nodo è selezionato nella distinta di origine.";
    else if (stato.destinazione.senzaRecord() || !stato.destinazione.albero->focused())
        motivo = senzaCapostipiti;
    if (!motivo.empty())
        return tutte;
    const auto sotto = nodoScelto(stato.destinazione, stato.destinazione.albero->focused());
    for (const auto nodo : nodi) {
        VoceElenco voce{{}, nodoScelto(stato.origine, nodo), sotto};
        voce.scritta.line = static_cast<std::int64_t>(tutte.size()) + 1;
        voce.scritta.manner = insieme.modo;
        tutte.push_back(std::move(voce));
    }
    return tutte;
}

contract::MovePlan rifiuto(std::string_view motivo) {
    contract::MovePlan detto;
    detto.refused = motivo;
    return detto;
}

std::string quanti(std::size_t numero, std::string_view uno, std::string_view molti) {
    return std::to_string(numero) + " " + std::string(numero == 1 ? uno : molti);
}

/// What the status line says of a list that was kept.
std::string descrizioneEsito(std::span<const SpostamentoElenco> spostamenti) {
    std::size_t andati = 0;
    std::size_t restano = 0;
    for (const auto& spostamento : spostamenti)
        for (const auto& riga : spostamento.piano.righe) {
            andati += riga.esito == Esito::siSposta || riga.esito == Esito::siCopia ? 1 : 0;
            restano += riga.esito == Esito::resta ? 1 : 0;
        }
    auto testo = (andati == 1 ? "Spostato " : "Spostati ") + quanti(andati, "nodo", "nodi") + " con " +
                 quanti(spostamenti.size(), "riga", "righe") + " dell'elenco";
    if (restano > 0)
        testo += "; " + quanti(restano, "nodo resta dov'era", "nodi restano dov'erano");
    return testo;
}

/// What the registry of moves says of a list; nothing where it is not kept.
std::unique_ptr<RegistroSpostamenti> registroElenco(StatoForm& stato, const Autore& autore) {
    if (!stato.tieneRegistro)
        return nullptr;
    return std::make_unique<RegistroSpostamenti>(stato.database(), stato.ditta(), autore, stato.ora());
}

void muovi(StatoForm& stato, const Richiesta& richiesta, Piano& piano, RegistroSpostamenti* registro) {
    Blocchi blocchi(stato.database(), richiesta, [&stato]() -> contract::WorkflowState& { return stato.flusso(); });
    blocchi.testimone(registro);
    sposta(blocchi, blocchi, richiesta, piano, {stato.avanzamento(), std::nullopt});
    if (registro != nullptr && !piano.rifiutato())
        registro->aggiungi(piano, richiesta);
}

} // namespace

contract::MovePlan anteprima(const StatoForm& stato, const Insieme& insieme) {
    std::string motivo;
    const auto tutte = voci(stato, insieme, motivo);
    if (!motivo.empty())
        return rifiuto(motivo);
    return anteprimaElenco(supponiElenco(stato.database(), ambito(stato, insieme), tutte), stato.database());
}

contract::MovePlan esegui(StatoForm& stato, const Insieme& insieme) {
    std::string motivo;
    const auto tutte = voci(stato, insieme, motivo);
    if (!motivo.empty())
        return rifiuto(motivo);
    const auto comune = ambito(stato, insieme);
    auto spostamenti = supponiElenco(stato.database(), comune, tutte);
    // What is refused already needs no transaction.
    if (rifiutato(spostamenti))
        return anteprimaElenco(spostamenti, stato.database());

    contract::Transaction transazione(stato.database());
    const auto registro = registroElenco(stato, comune.autore);
    spostamenti = eseguiElenco(stato.database(), comune, tutte, [&](const Richiesta& richiesta, Piano& piano) {
        muovi(stato, richiesta, piano, registro.get());
    });
    auto fatto = anteprimaElenco(spostamenti, stato.database());
    if (rifiutato(spostamenti)) {
        transazione.rollback();
        return fatto;
    }
    const auto esito = descrizioneEsito(spostamenti);
    if (registro)
        registro->scrivi(contract::OperationKind::list, esito);
    transazione.commit();

    const FormBase::Comando unico(stato);
    stato.procedura("EseguiElenco", [&](auto& passo) {
        passo([&] { RicaricaAlberi(stato); });
        passo([&] { annunciaEsito(stato, esito); });
    });
    return fatto;
}

} // namespace qz
