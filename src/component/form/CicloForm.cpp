#include "component/form/FRMQZ_COPIADISTINTA.h"

#include "component/data/Parametri.h"
#include "component/data/TipiDistinta.h"

#include <functional>
#include <string>
#include <utility>
#include <vector>

namespace qz {

namespace {

constexpr contract::Twips posizionePredefinita = 100;
constexpr contract::Twips larghezzaForm = 14685;
constexpr contract::Twips altezzaForm = 9058;

/// Throws RuntimeError 13 for a value that is no whole number, 6 for one beyond the twips.
contract::Twips coordinata(const contract::Value& valore) {
    const auto numero = FormBase::ValoreODefault(valore, std::int32_t{0}).integer();
    if (!numero)
        throw contract::RuntimeError(contract::RuntimeError::typeMismatch,
                                     "Tipo non corrispondente: \"" + valore.text() + "\" non è una posizione.");
    if (!std::in_range<contract::Twips>(*numero))
        throw contract::RuntimeError(contract::RuntimeError::overflow, "Overflow: " + valore.text() + ".");
    return *numero == 0 ? posizionePredefinita : static_cast<contract::Twips>(*numero);
}

/// Names of the theme's colours for the twelve colour properties of a tree, in the tree's order.
constexpr std::string_view coloriAlbero[contract::treeColorCount] = {
    "GridHeaderColor",        "GridFontColor",          "GridBorderColor", "GridFooterColor",
    "GridHeaderFontColor",    "GridHideSelectionColor", "GridFontColor",   "GridHighLightColor",
    "GridHighLightFontColor", "GridFontColor",          "GridHeaderColor", "GridHeaderFontColor"};

// A colour is read and given in one step: one that can not be read is not given.

void coloraAlbero(FormBase::Passo& passo, const contract::Theme& tema, contract::TreeList& albero) {
    for (std::size_t i = 0; i < contract::treeColorCount; ++i)
        passo([&] { albero.setColor(static_cast<contract::TreeColor>(i), tema.color(coloriAlbero[i])); });
    // One by one: the order in which a call's arguments are read is the compiler's.
    passo([&] {
        const auto sfondo = tema.color("GridHeaderColor");
        const auto testo = tema.color("GridHeaderFontColor");
        albero.setHeaderColors(sfondo, testo);
    });
    passo([&] {
        const auto sfondo = tema.color("GridHeaderColor");
        const auto testo = tema.color("GridFontColor");
        albero.setColumnColors(sfondo, testo);
    });
    passo([&] { albero.setFontName("Tahoma"); });
}

void coloraGriglia(FormBase::Passo& passo, const contract::Theme& tema, contract::DetailGrid& griglia) {
    passo([&] { griglia.setHighLightColor(tema.color("GridHighLightFontColor")); });
    passo([&] { griglia.setTextColor(tema.color("GridFontColor")); });
    passo([&] { griglia.setFontName("Tahoma"); });
    passo([&] { griglia.setFixedColor(tema.color("GridHeaderColor")); });
}

} // namespace

/// A coordinate that the host gives no number for, and that is passed over, is the one that the form has.
contract::Rect FRMQZ_COPIADISTINTA::posizione(FormBase::Passo& passo) const {
    auto posto = stato_.form->bounds();
    passo([&] { posto.left = coordinata(stato_.ospite->Left()); });
    passo([&] { posto.top = coordinata(stato_.ospite->Top()); });
    posto.width = larghezzaForm;
    posto.height = altezzaForm;
    return posto;
}

void FRMQZ_COPIADISTINTA::Form_Load() {
    stato_.procedura("Form_Load", [&](auto& passo) {
        stato_.creaClasseLog(passo, stato_.ospite);
        const auto posto = posizione(passo);
        passo([&] { stato_.form->setBounds(posto); });
        colori_ = {0xFEFAE2, 0x80FFFF, 0xC0FFFF, 0x800000};
        impostaControlli(stato_, passo, controlli_);
        passo([&] { Ridisponi(); });
    });
}

void FRMQZ_COPIADISTINTA::MDIActiveX1_FormLoad() {
    stato_.procedura("MDIActiveX1_FormLoad", [&](auto& passo) {
        const auto posto = posizione(passo);
        passo([&] { controlli_.MDIActiveX1->place(posto); });
        passo([&] { controlli_.MDIActiveX1->setWindowState(stato_.ospite->WindowState()); });
    });
}

void FRMQZ_COPIADISTINTA::aggiornaAttivazione() {
    try {
        if (stato_.ospite == nullptr)
            return;
        // Taken anew at every activation, although nothing but the frame is used here.
        static_cast<void>(stato_.ospite->ClsGlobal());
        const auto frame = stato_.ospite->ActiveFrame();
        const auto navigatore = stato_.ospite->ActiveNavigator();
        if (frame && navigatore)
            navigatore->setStatus(frame->Status());
    } catch (const std::exception&) {
        return; // the navigator only mirrors the frame
    }
}

void FRMQZ_COPIADISTINTA::Form_Activate() {
    aggiornaAttivazione();
    if (!primaAttivazioneFatta_)
        primaAttivazione();
}

void FRMQZ_COPIADISTINTA::primaAttivazione() {
    stato_.procedura("Form_Activate", [&](auto& passo) {
        apriConnessione(passo);
        passo([&] { stato_.dittaDiLavoro = presente(stato_.globale().companyService()).Company(); });
        passo([&] { controlli_.KVT_RESIZEFORM->setUp(); });
        passo([&] { ImpostaVirtualFrame(); });
        bool vuoto = true;
        passo([&] { vuoto = presente(recordOrig_).Empty(); });
        if (vuoto)
            passo([&] { stato_.globale().applyProgramMode(*stato_.form, stato_.ospite->ProgramMode()); });
        passo([&] { InizializzaScriptELayout(); });
        passo([&] { InizializzaDistinte(stato_); });
        primaAttivazioneFatta_ = true;
        contatore_ = 0;
        for (auto* lato : {&stato_.origine, &stato_.destinazione}) {
            passo([&] { lato->menuCerca->addItem("RagSoc", "Rag. Sociale"); });
            passo([&] { lato->menuCerca->addItem("Codice", "Codice"); });
        }
        std::shared_ptr<contract::WorkflowState> flusso;
        passo([&] { flusso = stato_.globale().newWorkflowState(); });
        passo([&] { stato_.campoStato->setObject(flusso); });
        passo([&] { stato_.destinazione.albero->refreshColumn("Stato"); });
        passo([&] { CaricaParametri(stato_); });
        passo([&] { ColoriSTD(); });
    });
}

void FRMQZ_COPIADISTINTA::apriConnessione(FormBase::Passo& passo) {
    std::string stringa;
    passo([&] { stringa = presente(stato_.globale().connectionService()).ConnectionString(); });
    passo([&] { fornitore_ = stato_.globale().newConnectionProvider(); });
    // Kept before it opens, so that an error finds the database's own errors there.
    passo([&] { stato_.connessione = presente(fornitore_).newConnection(); });
    passo([&] { stato_.database().SetConnectionString(stringa); });
    bool aperta = false;
    passo([&] {
        stato_.database().Open();
        aperta = true;
    });
    if (aperta) // the host is handed no connection that it could not use
        passo([&] { stato_.ospite->Connection(stato_.connessione); });
}

void FRMQZ_COPIADISTINTA::InizializzaScriptELayout() {
    stato_.procedura("InizializzaScriptELayout", [&](auto& passo) { passo([&] { ExecuteFormEvent("tsOpen"); }); });
}

void FRMQZ_COPIADISTINTA::ImpostaVirtualFrame() {
    stato_.procedura("ImpostaVirtualFrame", [&](auto& passo) {
        // Returns no rows; it only gives the layout of the columns.
        const contract::Statement istruzione("SELECT * FROM QZ02_DISTINTA WHERE 1=0 ");
        passo([&] { virtualFrame_ = stato_.globale().newVirtualFrame(); });
        passo([&] { recordOrig_ = presente(virtualFrame_).newRecordset(); });
        passo([&] { presente(recordOrig_).SetActiveConnection(stato_.connessione); });
        passo([&] { presente(recordOrig_).SetSource(istruzione); });
        passo([&] { presente(recordOrig_).Open(); });
        passo([&] { presente(recordOrig_).SetMarshalOptions(contract::MarshalOptions::modifiedOnly); });
        passo([&] { gestoreOrig_ = presente(virtualFrame_).newFieldList(); });
        passo([&] { gestoreDest_ = presente(virtualFrame_).newFieldList(); });
        passo([&] { recordDest_ = presente(virtualFrame_).newRecordset(); });
        // Both sides share one record set.
        recordDest_ = recordOrig_;
        passo([&] {
            stato_.origine.frame->initialise(stato_.ospite, stato_.connessione, recordOrig_, istruzione, "QZ02_ID");
        });
        passo([&] {
            stato_.destinazione.frame->initialise(stato_.ospite, stato_.connessione, recordDest_, istruzione,
                                                  "QZ02_ID");
        });
    });
}

void FRMQZ_COPIADISTINTA::ExecuteFormEvent(std::string_view evento) {
    stato_.procedura("ExecuteFormEvent", [&](auto& passo) {
        if (evento != "tsOpen" && evento != "tsClose")
            return;
        const auto navigatore = stato_.ospite ? stato_.ospite->ActiveNavigator() : nullptr;
        if (!navigatore)
            return;
        if (evento == "tsOpen")
            passo([&] { navigatore->refreshState(); });
        std::shared_ptr<contract::ScriptObjectModel> script;
        passo([&] { script = navigatore->script(); });
        if (script)
            passo([&] { script->runFormEvent(evento); });
    });
}

void FRMQZ_COPIADISTINTA::Form_QueryUnload(bool& annulla) {
    stato_.procedura("Form_QueryUnload", [&](auto& passo) {
        aggiornaAttivazione();
        passo([&] { annulla = gestoreDest_ && !gestoreDest_->closeQuery(true); });
        if (annulla)
            return;
        passo([&] { ExecuteFormEvent("tsClose"); });
        const auto navigatore = stato_.ospite ? stato_.ospite->ActiveNavigator() : nullptr;
        std::shared_ptr<contract::ScriptObjectModel> script;
        if (navigatore)
            passo([&] { script = navigatore->script(); });
        if (script)
            passo([&] { annulla = script->close(); });
    });
}

/// What the form holds of its host, in the order in which it is let go; the log class, which reports what fails here,
/// goes last.
std::vector<std::function<void()>> FRMQZ_COPIADISTINTA::rilasci() {
    std::vector<std::function<void()>> elenco{[this] { stato_.campoStato->setObject(nullptr); },
                                              [this] {
                                                  if (const auto navigatore =
                                                          stato_.ospite ? stato_.ospite->ActiveNavigator() : nullptr)
                                                      navigatore->releaseObjectModels();
                                              }};
    for (auto* gestore : {&gestoreOrig_, &gestoreDest_}) {
        elenco.emplace_back([gestore] {
            if (*gestore)
                (*gestore)->close();
        });
        elenco.emplace_back([gestore] { gestore->reset(); });
    }
    elenco.emplace_back([this] { classe_ = nullptr; });
    for (auto* lato : {&stato_.origine, &stato_.destinazione}) {
        elenco.emplace_back([lato] {
            // What the focus does while the tree goes concerns nobody any more.
            lato->albero->OnChangeNode = nullptr;
            lato->albero->OnChangeNodeEx = nullptr;
            lato->albero->unbind();
        });
        elenco.emplace_back([lato] { lato->frame->close(); });
        elenco.emplace_back([lato] {
            lato->dati = std::make_shared<contract::Recordset>();
            lato->oggettoDati.reset();
        });
    }
    elenco.emplace_back([this] {
        recordOrig_.reset();
        recordDest_.reset();
    });
    elenco.emplace_back([this] { virtualFrame_.reset(); });
    elenco.emplace_back([this] {
        if (stato_.connessione)
            stato_.connessione->Close();
    });
    elenco.emplace_back([this] {
        stato_.connessione.reset();
        fornitore_.reset();
    });
    return elenco;
}

void FRMQZ_COPIADISTINTA::Form_UnLoad() {
    const auto elenco = rilasci();
    std::size_t fatti = 0;
    stato_.procedura("Form_UnLoad", [&](auto& passo) {
        while (fatti < elenco.size()) {
            const auto& rilascio = elenco[fatti++];
            passo([&] { rilascio(); });
        }
    });
    // Left by an answer: what was not reached is let go all the same, in its order, and asks nothing more.
    while (fatti < elenco.size()) {
        const auto& rilascio = elenco[fatti++];
        try {
            rilascio();
        } catch (const std::exception&) {
            continue;
        }
    }
    stato_.ospite = nullptr;
    finestra_ = nullptr;
    stato_.classeLog.reset();
}

void FRMQZ_COPIADISTINTA::ColoriSTD() {
    stato_.procedura("ColoriSTD", [&](auto& passo) {
        std::shared_ptr<contract::Theme> tema;
        passo([&] { tema = stato_.globale().newTheme(); });
        if (!tema)
            return;
        coloraAlbero(passo, *tema, *stato_.origine.albero);
        coloraAlbero(passo, *tema, *stato_.destinazione.albero);
        coloraGriglia(passo, *tema, *stato_.origine.dettaglio);
        coloraGriglia(passo, *tema, *stato_.destinazione.dettaglio);
    });
}

} // namespace qz
