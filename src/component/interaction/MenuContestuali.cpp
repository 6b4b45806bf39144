#include "component/interaction/MenuContestuali.h"

#include <algorithm>
#include <optional>
#include <utility>

namespace qz {

namespace {

constexpr std::string_view colonnaStato = "Stato";
constexpr std::string_view elencoStati = "^{F1}";
constexpr contract::Twips larghezzaMinima = 900; // at 8 points

/// Row heights of the trees for the zoom font sizes, in twips.
contract::Twips altezzaRiga(int zoom) {
    switch (zoom) {
    case 8:
        return 285;
    case 10:
        return 360;
    case 12:
        return 435;
    case 14:
        return 510;
    default:
        return zoom * 36;
    }
}

/// Clears the suppression of node changes however the command ends.
class SospensioneCambioNodo {
public:
    explicit SospensioneCambioNodo(bool& flag) : flag_(flag) { flag_ = true; }
    SospensioneCambioNodo(const SospensioneCambioNodo&) = delete;
    SospensioneCambioNodo& operator=(const SospensioneCambioNodo&) = delete;
    ~SospensioneCambioNodo() { flag_ = false; }

private:
    bool& flag_;
};

} // namespace

void MenuContestuali::mnuSchedaCF_Click(Lato& lato) {
    stato_.procedura(lato.descrizione.destinazione ? "mnuSchedaCFDest_Click" : "mnuSchedaCFOrig_Click",
                     [&](auto& passo) {
                         stato_.TipoAnagMenu = lato.TipoCF;
                         passo([&] { CollegamentoSchedaAnag(); });
                     });
}

void MenuContestuali::mnuAnagCF_Click(Lato& lato) {
    stato_.procedura(lato.descrizione.destinazione ? "mnuAnagCFDest_Click" : "mnuAnagCFOrig_Click", [&](auto& passo) {
        stato_.TipoAnagMenu = lato.TipoCF;
        passo([&] { CollegaAnag(); });
    });
}

void MenuContestuali::CollegamentoSchedaAnag() {
    stato_.procedura("CollegamentoSchedaAnag", [&](auto& passo) {
        const auto tipo = FormBase::ValoreODefault(stato_.TipoAnagMenu, contract::Value()).integer();
        if (tipo == 0)
            passo([&] { RichiamaScheda("RichiamaSchedaClienti", "SchedaClienti"); });
        else if (tipo == 1)
            passo([&] { RichiamaScheda("RichiamaSchedaFornitori", "SchedaFornitori"); });
    });
}

void MenuContestuali::RichiamaScheda(std::string_view procedura, std::string_view programma) {
    stato_.procedura(procedura, [&](auto& passo) {
        std::shared_ptr<contract::ParameterObject> parametri;
        passo([&] { parametri = stato_.globale().newParameterObject(); });
        if (!parametri)
            return;
        parametri->flag = true;
        parametri->accountKind = static_cast<std::int16_t>(stato_.TipoAnagMenu.integer().value_or(0));
        parametri->accountCode = stato_.CodiceAnagMenu;
        passo([&] { parametri->company = stato_.ditta(); });
        passo([&] { stato_.globale().openProgram(programma, *parametri); });
    });
}

void MenuContestuali::CollegaAnag() {
    stato_.procedura("CollegaAnag", [&](auto& passo) {
        std::shared_ptr<contract::AccountLink> collegamento;
        passo([&] { collegamento = stato_.globale().newAccountLink(); });
        if (!collegamento)
            return;
        passo([&] { collegamento->setInterface(stato_.ospite); });
        passo([&] { collegamento->setAccountCode(stato_.CodiceAnagMenu); });
        const auto tipo = FormBase::ValoreODefault(stato_.TipoAnagMenu, contract::Value()).integer();
        if (tipo == 0)
            passo([&] { collegamento->linkCustomer(); });
        else if (tipo == 1)
            passo([&] { collegamento->linkSupplier(); });
    });
}

void MenuContestuali::mnuStatoLegame_Click() {
    stato_.procedura("mnuStatoLegame_Click", [&](auto& passo) { apriEditorStato(passo, stato_.NodoStatoDest); });
}

contract::Rect MenuContestuali::postoEditor(const contract::Rect& cella) const {
    const auto posto = stato_.destinazione.albero->bounds();
    // Of a narrow cell it leaves the left edge, so that its button stays within reach.
    const auto larghezza = std::max(cella.width, stato_.ridimensionamento->scaled(larghezzaMinima));
    const auto sinistra = std::max(cella.left + cella.width - larghezza, contract::Twips{0});
    return {posto.left + sinistra, posto.top + cella.top, larghezza, altezzaRiga(stato_.ridimensionamento->zoom())};
}

/// The node's own, wherever the record set's cursor stands.
std::string MenuContestuali::guidDelNodo(contract::Node nodo) const {
    const auto& dati = *stato_.destinazione.dati;
    return dati.rows().column(dati.FieldIndex("qz02_guid")).value(stato_.destinazione.albero->row(nodo)).text();
}

void MenuContestuali::apriEditorStato(FormBase::Passo& passo, contract::Node nodo) {
    if (!nodo || stato_.destinazione.senzaRecord())
        return;
    auto& albero = *stato_.destinazione.albero;
    if (albero.focused() != nodo)
        passo([&] { albero.setFocused(nodo); });
    passo([&] { albero.makeVisible(nodo, colonnaStato); });
    auto& editor = *stato_.campoStato;
    nodoEditor_ = appenaAperto_ = nodo;
    passo([&] { cellaEditor_ = albero.cell(nodo, colonnaStato).value_or(contract::Rect{0, 0, 1500, 0}); });
    passo([&] { editor.setBounds(postoEditor(cellaEditor_)); });
    bool impostato = false;
    passo([&] {
        editor.setValue(guidDelNodo(nodo));
        impostato = true;
    });
    if (!impostato)
        return; // passed over: a state chosen there would go to another link
    passo([&] { editor.setVisible(true); });
    passo([&] { editor.setFocus(); });
    passo([&] { editor.sendKeys(elencoStati); });
}

void MenuContestuali::spostaEditorStato(FormBase::Passo& passo, contract::Node nodo) {
    const bool appenaAperto = std::exchange(appenaAperto_, {}) == nodo;
    if (appenaAperto || (stato_.campoStato->visible() && nodoEditor_ == nodo))
        return;
    stato_.NodoStatoDest = nodo;
    stato_.posizioneNodoStato = nodo.position;
    apriEditorStato(passo, nodo);
    appenaAperto_ = {};
}

void MenuContestuali::TRW_ELEMDISTINTADEST_OnViewMoved() {
    if (!stato_.campoStato->visible())
        return;
    // Whatever moved the rows is a command of its own, and this a part of it.
    stato_.proceduraCheSegue("TRW_ELEMDISTINTADEST_OnViewMoved", [&](auto& passo) {
        std::optional<contract::Rect> cella;
        passo([&] { cella = stato_.destinazione.albero->cell(nodoEditor_, colonnaStato); });
        if (!cella || cella->height < cellaEditor_.height || cella->width < cellaEditor_.width)
            nascondiEditorStato(passo);
        else
            passo([&] { stato_.campoStato->setBounds(postoEditor(*cella)); });
    });
}

void MenuContestuali::nascondiEditorStato(FormBase::Passo& passo) {
    nodoEditor_ = appenaAperto_ = {};
    if (stato_.campoStato->visible())
        passo([&] { stato_.campoStato->setVisible(false); });
}

void MenuContestuali::mnuRilasciaFigli_Click() {
    if (!stato_.NodoStatoDest)
        return;
    const FormBase::Comando unico(stato_);
    const SospensioneCambioNodo sospensione(stato_.sospendiCambioNodo);
    bool finita = false;
    rilasciaFigli(finita);
    if (finita)
        return;
    // Left by an error on the way: the states that were copied are shown, and the dates and the lock that are
    // remembered belong to the node clicked.
    auto& albero = *stato_.destinazione.albero;
    const contract::Node cliccato{stato_.posizioneNodoStato};
    stato_.procedura("mnuRilasciaFigli_Click", [&](auto& passo) {
        if (albero.focused() != cliccato)
            passo([&] { albero.setFocused(cliccato); });
        passo([&] { albero.refreshColumn(colonnaStato); });
    });
}

void MenuContestuali::rilasciaFigli(bool& finita) {
    stato_.procedura("mnuRilasciaFigli_Click", [&](auto& passo) {
        auto& albero = *stato_.destinazione.albero;
        std::string origine;
        std::shared_ptr<contract::WorkflowState> flusso;
        passo([&] { albero.setFocused(stato_.NodoStatoDest); });
        passo([&] { flusso = stato_.campoStato->object(); });
        if (!flusso)
            return;
        if (!stato_.destinazione.senzaRecord()) {
            passo([&] { origine = guidDelNodo(stato_.NodoStatoDest); });
            // A state that could not be read is not taken for a missing one.
            bool senzaStato = false;
            passo([&] { senzaStato = flusso->GetDescrizioneStatoFromGUID(origine).empty(); });
            if (senzaStato) {
                passo([&] { flusso->GetDefaultFlussoStato(); });
                passo([&] { flusso->ConfermaStato(); });
            }
        }
        stato_.NodoStatoDest = albero.next(stato_.NodoStatoDest);
        while (stato_.NodoStatoDest) {
            // The bound is the level last clicked in the origin tree, not the destination's.
            if (stato_.origine.livelloCliccato >= albero.level(stato_.NodoStatoDest))
                break;
            passo([&] { albero.setFocused(stato_.NodoStatoDest); });
            passo([&] { flusso->DuplicaStato(origine, guidDelNodo(stato_.NodoStatoDest)); });
            stato_.NodoStatoDest = albero.next(stato_.NodoStatoDest);
        }
        passo([&] { albero.setFocused(contract::Node{stato_.posizioneNodoStato}); });
        passo([&] { albero.refreshColumn(colonnaStato); });
        passo([&] { albero.update(); });
        finita = true;
    });
}

void MenuContestuali::TXT_QZ02_STATO_AfterItem() {
    stato_.procedura("TXT_QZ02_STATO_AfterItem", [&](auto& passo) {
        bool scelto = false;
        passo([&] { scelto = stato_.campoStato->stateChosen(); });
        if (!scelto)
            return;
        // Of the field's own link: the workflow has served others since the editor was opened.
        if (const auto flusso = stato_.campoStato->object())
            passo([&] { flusso->ConfermaStatoDi(stato_.campoStato->value()); });
        passo([&] { stato_.destinazione.albero->refreshColumn(colonnaStato); });
    });
}

} // namespace qz
