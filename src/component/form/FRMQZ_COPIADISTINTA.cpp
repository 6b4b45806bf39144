#include "component/form/FRMQZ_COPIADISTINTA.h"

#include "component/data/AggiornaDistinte.h"

#include "component/data/CaricaDistinta.h"
#include "component/data/DettaglioAnagrafica.h"
#include "component/data/Parametri.h"
#include "component/data/TipiDistinta.h"
#include "component/interaction/DescrizioneSpostamento.h"
#include "component/interaction/FRMQZ_DATAFINELEGAME.h"
#include "component/interaction/FRMQZ_PARAMETRI.h"
#include "component/interaction/Livelli.h"

#include <optional>

namespace qz {

FRMQZ_COPIADISTINTA::FRMQZ_COPIADISTINTA()
    : comandi_(stato_), modifica_(stato_), selezione_(stato_), menu_(stato_), ricercaOrig_(stato_, stato_.origine),
      ricercaDest_(stato_, stato_.destinazione) {
    comandi_.chiediDataFine = [this] { chiediDataFine(); };
    modifica_.apriEditorStato = [this](FormBase::Passo& passo, contract::Node nodo) {
        menu_.apriEditorStato(passo, nodo);
    };
    selezione_.apriScheda = [this] { menu_.CollegamentoSchedaAnag(); };
    selezione_.spostaEditorStato = [this](FormBase::Passo& passo, contract::Node nodo) {
        menu_.spostaEditorStato(passo, nodo);
    };
}

FRMQZ_COPIADISTINTA::~FRMQZ_COPIADISTINTA() = default;

void FRMQZ_COPIADISTINTA::Caption(std::string_view didascalia) {
    if (!stato_.form) {
        stato_.form = stato_.globale().controls()->newDocumentForm("FRMQZ_COPIADISTINTA");
        finestra_ = stato_.form.get();
        creaControlli(stato_, controlli_);
        collegaEventi();
    }
    stato_.form->setCaption(didascalia);
}

void FRMQZ_COPIADISTINTA::Show(bool modale) {
    if (!stato_.form)
        throw contract::RuntimeError(contract::RuntimeError::objectNotSet, "Variabile oggetto non impostata.");
    stato_.form->show(modale);
}

bool FRMQZ_COPIADISTINTA::Unload() {
    return !stato_.form || stato_.form->unload();
}

void FRMQZ_COPIADISTINTA::collegaEventi() {
    auto& form = *stato_.form;
    form.Load = [this] { Form_Load(); };
    form.Activate = [this] { Form_Activate(); };
    form.QueryUnload = [this](bool& annulla) { Form_QueryUnload(annulla); };
    form.Unload = [this] { Form_UnLoad(); };
    controlli_.MDIActiveX1->FormLoad = [this] { MDIActiveX1_FormLoad(); };
    controlli_.KVT_RESIZEFORM->Setup = [this] { registraRidimensionamento(); };
    controlli_.KVT_RESIZEFORM->AfterResize = [this] { Ridisponi(); };
    controlli_.SPLITTERVerticale->Move = [this] { Ridisponi(); };

    collegaLato(stato_.origine, ricercaOrig_);
    collegaLato(stato_.destinazione, ricercaDest_);

    auto& orig = *stato_.origine.albero;
    orig.OnChangeNode = [this] { modifica_.TRW_ELEMDISTINTAORIG_OnChangeNode(); };
    orig.OnChangeNodeEx = [this] {
        modifica_.TRW_ELEMDISTINTAORIG_OnChangeNodeEx();
        descriviSpostamento();
    };
    orig.OnCheckChanged = [this](contract::Node nodo, int casella) { selezione_.PropagaFigli(nodo, casella); };

    auto& dest = *stato_.destinazione.albero;
    dest.OnChangeNode = [this] {
        // It stood over another row, or over rows that are gone.
        stato_.procedura(stato_.destinazione.descrizione.nomeCambioNodo,
                         [&](auto& passo) { menu_.nascondiEditorStato(passo); });
        modifica_.TRW_ELEMDISTINTADEST_OnChangeNode();
    };
    dest.OnViewMoved = [this] { menu_.TRW_ELEMDISTINTADEST_OnViewMoved(); };
    dest.OnChangeNodeEx = [this] {
        modifica_.TRW_ELEMDISTINTADEST_OnChangeNodeEx();
        descriviSpostamento();
    };
    dest.OnEdited = [this](contract::Node nodo) {
        nuovoComando();
        modifica_.TRW_ELEMDISTINTADEST_OnEdited(nodo);
    };
    dest.OnChangedColumn = [this](contract::Node nodo) { modifica_.TRW_ELEMDISTINTADEST_OnChangedColumn(nodo); };
    dest.OnLocked = [this](contract::Node, const std::string&) { spiegaBlocco(); };
    stato_.destinazione.frame->ChangeStatus = [this](int nuovo) { FME_CopiaDistintaDest_ChangeStatus(nuovo); };
    stato_.campoStato->AfterItem = [this] { menu_.TXT_QZ02_STATO_AfterItem(); };

    controlli_.CMD_SPOSTASTRU->ButtonClick = [this] {
        nuovoComando();
        comandi_.CMD_SPOSTASTRU_ButtonClick();
    };
    controlli_.CMD_SPOSTAVALID->ButtonClick = [this] {
        nuovoComando();
        comandi_.CMD_SPOSTAVALID_ButtonClick();
    };
    controlli_.CMD_PARAMETRI->ButtonClick = [this] {
        nuovoComando();
        CMD_PARAMETRI_ButtonClick();
    };
    controlli_.CMD_VISTOPSX->ButtonClick = [this] { CMD_VISTOP_ButtonClick("CMD_VISTOPSX_ButtonClick"); };
    controlli_.CMD_VISTOPDX->ButtonClick = [this] { CMD_VISTOP_ButtonClick("CMD_VISTOPDX_ButtonClick"); };
}

void FRMQZ_COPIADISTINTA::collegaLato(Lato& lato, Ricerca& ricerca) {
    lato.tipi->Click = [this, &lato] {
        nuovoComando();
        TipoScelto(stato_, lato);
    };
    lato.cerca->KeyPress = [&ricerca](int codice) { ricerca.tastoPremuto(codice); };
    lato.menuCerca->MenuClick = [&ricerca](const std::string& chiave) { ricerca.menuScelto(chiave); };
    lato.livelli->ButtonClick = [this, &lato] { CMD_ESPANDICOLLASSA_ButtonClick(stato_, lato); };
    lato.divisorio->Move = [this] { Ridisponi(); };
    lato.albero->OnMouseDown = [this, &lato](contract::MouseButton tasto, int, contract::Twips x, contract::Twips y) {
        selezione_.OnMouseDown(lato, tasto, x, y);
    };
    lato.albero->OnHyperLink = [this, &lato](contract::Node, const std::string&) { selezione_.OnHyperLink(lato); };
    lato.menu->Click = [this, &lato](const std::string& voce) {
        if (voce.starts_with("mnuSchedaCF"))
            menu_.mnuSchedaCF_Click(lato);
        else if (voce.starts_with("mnuAnagCF"))
            menu_.mnuAnagCF_Click(lato);
        else if (voce == "mnuStatoLegame")
            menu_.mnuStatoLegame_Click();
        else if (voce == "mnuRilasciaFigli")
            menu_.mnuRilasciaFigli_Click();
    };
}

void FRMQZ_COPIADISTINTA::CaricaDistintaOrig(std::string_view idTipo) {
    CaricaDistinta(stato_, stato_.origine, idTipo);
}

void FRMQZ_COPIADISTINTA::CaricaDistintaDest(std::string_view idTipo) {
    CaricaDistinta(stato_, stato_.destinazione, idTipo);
}

void FRMQZ_COPIADISTINTA::chiediDataFine() {
    FRMQZ_DATAFINELEGAME dialogo(stato_);
    dialogo.proposta = std::exchange(fineProposta_, std::nullopt);
    dialogo.mostra();
}

void FRMQZ_COPIADISTINTA::Sposta(bool validita, std::optional<contract::Date> fine) {
    fineProposta_ = fine;
    contract::fire((validita ? controlli_.CMD_SPOSTAVALID : controlli_.CMD_SPOSTASTRU)->ButtonClick);
    fineProposta_.reset();
}

void FRMQZ_COPIADISTINTA::aggiornaDettaglio(FormBase::Passo& passo, Lato& lato) {
    if (lato.senzaRecord())
        return;
    contract::Value codice = std::int32_t{0};
    passo([&] { codice = FormBase::ValoreODefault((*lato.dati)["QZ02_CLIFOR_CG44"], std::int32_t{0}); });
    passo([&] { CaricaDatiAnagrafici(stato_, codice, *lato.dettaglio, lato.Divisione); });
}

void FRMQZ_COPIADISTINTA::CMD_PARAMETRI_ButtonClick() {
    stato_.procedura("CMD_PARAMETRI_ButtonClick", [&](auto& passo) {
        std::optional<FRMQZ_PARAMETRI> parametri;
        passo([&] { parametri.emplace(stato_); });
        if (parametri)
            passo([&] { parametri->mostra(); });
        parametri.reset();
        passo([&] { CaricaParametri(stato_); });
        aggiornaDettaglio(passo, stato_.origine);
        aggiornaDettaglio(passo, stato_.destinazione);
    });
}

void FRMQZ_COPIADISTINTA::CMD_VISTOP_ButtonClick(std::string_view nome) {
    stato_.procedura(nome, [&](auto& passo) {
        // Not part of the step: running it again must not turn the flag back.
        stato_.selezioneNascosta = !stato_.selezioneNascosta;
        passo([&] {
            if (stato_.selezioneNascosta)
                NascondiSelezioneDistinta();
            else
                VisualizzaSelezioneDistinta();
        });
        passo([&] { Ridisponi(); });
    });
}

void FRMQZ_COPIADISTINTA::FME_CopiaDistintaDest_ChangeStatus(int stato) {
    stato_.procedura("FME_CopiaDistintaDest_ChangeStatus", [&](auto& passo) {
        if (stato != contract::DataFrame::browsing)
            return;
        if (!gestoreDest_)
            return;
        bool puoChiudere = false;
        passo([&] { puoChiudere = gestoreDest_->closeQuery(true); });
        std::shared_ptr<contract::ScriptService> servizio;
        passo([&] { servizio = stato_.globale().scriptService(); });
        if (servizio)
            passo([&] { servizio->setCanClose(puoChiudere); });
    });
}

void FRMQZ_COPIADISTINTA::EsciForm() {
    stato_.procedura("EsciForm", [&](auto& passo) {
        passo([&] {
            stato_.messaggio("Cambiando l'azienda di lavoro è necessario uscire e rientrare nel programma.",
                             contract::message::exclamation);
        });
        passo([&] { Unload(); });
    });
}

void FRMQZ_COPIADISTINTA::scriviStato(const std::string& testo) {
    annunciaEsito(stato_, testo);
}

/// The focus that a search moves comes to rest later: then it is the search that is told, once.
void FRMQZ_COPIADISTINTA::cercaAncora(Lato& lato, Ricerca& ricerca, bool indietro) {
    stato_.procedura("mnuTrova_Click", [&](auto& passo) {
        const auto prima = lato.albero->focused();
        std::string nota;
        passo([&] { nota = ricerca.CercaAncora(indietro); });
        notaRicerca_ = lato.albero->focused() == prima ? std::string() : nota;
        passo([&] { scriviStato(nota); });
    });
}

bool FRMQZ_COPIADISTINTA::comandoRicerca(std::string_view nome) {
    const bool dest = nome.ends_with("Dest");
    if (!dest && !nome.ends_with("Orig"))
        return false;
    auto& lato = stato_.lato(dest);
    auto& ricerca = dest ? ricercaDest_ : ricercaOrig_;
    nome.remove_suffix(4);
    if (nome == "mnuCerca")
        stato_.procedura("mnuCerca_Click", [&](auto& passo) { passo([&] { lato.cerca->setFocus(); }); });
    else if (nome == "mnuTrovaSuccessivo" || nome == "mnuTrovaPrecedente")
        cercaAncora(lato, ricerca, nome == "mnuTrovaPrecedente");
    else
        return false;
    return true;
}

void FRMQZ_COPIADISTINTA::aggiorna() {
    stato_.procedura("mnuAggiorna_Click", [&](auto& passo) {
        bool rilette = false;
        passo([&] { rilette = AggiornaDistinte(stato_); });
        if (rilette)
            passo([&] { scriviStato("Le distinte sono state rilette."); });
    });
}

/// Says in words what the move buttons would do.
void FRMQZ_COPIADISTINTA::descriviSpostamento() {
    stato_.proceduraCheSegue("descriviSpostamento", [&](auto& passo) {
        const auto barra = stato_.ospite ? stato_.ospite->StatusBar() : nullptr;
        if (!barra)
            return;
        if (!notaRicerca_.empty()) {
            passo([&] { barra->setText(std::exchange(notaRicerca_, {})); });
            return;
        }
        if (esitoInVista(stato_))
            return;
        stato_.esito = {};
        std::string testo;
        passo([&] { testo = descrizioneSpostamento(stato_); });
        passo([&] { barra->setText(testo); });
    });
}

/// What the last command did goes out of sight with the next one.
void FRMQZ_COPIADISTINTA::nuovoComando() {
    if (stato_.esito.testo.empty())
        return;
    stato_.esito = {};
    descriviSpostamento();
}

/// The focus that this moves comes to rest later, as after a search.
void FRMQZ_COPIADISTINTA::mostraSpostato() {
    stato_.procedura("mnuMostraSpostato_Click", [&](auto& passo) {
        passo([&] {
            const auto prima = stato_.destinazione.albero->focused();
            const auto nota = mostraNodoSpostato(stato_);
            notaRicerca_ = stato_.destinazione.albero->focused() == prima ? std::string() : nota;
            scriviStato(nota);
        });
    });
}

/// The only cells that are ever locked are those of the start of a link with a definitive bonus.
void FRMQZ_COPIADISTINTA::spiegaBlocco() {
    stato_.procedura("TRW_ELEMDISTINTADEST_OnLocked",
                     [&](auto& passo) { passo([&] { scriviStato(std::string(dataInizioBloccata) + "."); }); });
}

bool FRMQZ_COPIADISTINTA::comandoMenu(std::string_view nome) {
    if (!stato_.form)
        return false;
    if (nome == "mnuAggiorna") {
        aggiorna();
        return true;
    }
    if (nome == "mnuMostraSpostato") {
        mostraSpostato();
        return true;
    }
    if (nome != "mnuDettagli")
        return comandoRicerca(nome);
    stato_.procedura("mnuDettagli_Click", [&](auto& passo) {
        passo([&] {
            if (stato_.dettagliNascosti)
                VisualizzaDettagli();
            else
                NascondiDettagli();
        });
        passo([&] { Ridisponi(); });
    });
    return true;
}

std::vector<std::pair<std::string, contract::Value>> FRMQZ_COPIADISTINTA::valoriStato() const {
    const auto data = [](const std::optional<contract::Date>& giorno) {
        return giorno ? contract::Value(*giorno) : contract::Value::null();
    };
    const auto& orig = stato_.origine;
    const auto& dest = stato_.destinazione;
    contract::Value nodoStato = contract::Value::null();
    if (stato_.NodoStatoDest && static_cast<std::size_t>(stato_.NodoStatoDest.position) < dest.albero->nodeCount())
        nodoStato = dest.albero->key(stato_.NodoStatoDest);
    return {{"IdDistintaOrig", orig.IdDistinta},
            {"IdDistintaDest", dest.IdDistinta},
            {"DivisioneOrig", orig.Divisione},
            {"DivisioneDest", dest.Divisione},
            {"GuidDistintaDest", dest.GuidDistinta},
            {"DataFineLegame", stato_.DataFineLegame},
            {"TipoCFOrig", orig.TipoCF},
            {"TipoCFDest", dest.TipoCF},
            {"LivelloMaxOrig", orig.LivelloMax},
            {"LivelloCorrenteOrig", orig.LivelloCorrente},
            {"LivelloMaxDest", dest.LivelloMax},
            {"LivelloCorrenteDest", dest.LivelloCorrente},
            {"CodiceAnagMenu", stato_.CodiceAnagMenu},
            {"TipoAnagMenu", std::int32_t(stato_.TipoAnagMenu.integer().value_or(0))},
            {"StatoLegame", stato_.parametri.StatoLegame},
            {"TipoCaricaDATA", stato_.parametri.TipoCaricaDATA},
            {"DataInizioNodoDest", data(stato_.DataInizioNodoDest)},
            {"DataFineNodoDest", data(stato_.DataFineNodoDest)},
            {"DataFissaINIZIO", data(stato_.parametri.DataFissaINIZIO)},
            {"DataFissaFINE", data(stato_.parametri.DataFissaFINE)},
            {"flg_Anagrafica", stato_.parametri.flg_Anagrafica},
            {"flg_CondVendita", stato_.parametri.flg_CondVendita},
            {"flg_Classificazioni", stato_.parametri.flg_Classificazioni},
            {"flg_Provvigioni", stato_.parametri.flg_Provvigioni},
            {"NodoStatoDest", nodoStato},
            {"MessaggioSpostamento", stato_.MessaggioSpostamento}};
}

} // namespace qz
