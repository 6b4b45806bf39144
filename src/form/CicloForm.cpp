#include "form/FRMQZ_COPIADISTINTA.h"

#include "data/Parametri.h"
#include "data/TipiDistinta.h"

namespace qz {

namespace {

constexpr contract::Twips posizionePredefinita = 100;
constexpr contract::Twips larghezzaForm = 14685;
constexpr contract::Twips altezzaForm = 9058;

contract::Twips coordinata(const contract::Value& valore) {
    const auto numero = FormBase::ValoreODefault(valore, std::int32_t{0}).integer().value_or(0);
    return numero == 0 ? posizionePredefinita : static_cast<contract::Twips>(numero);
}

/// Names of the theme's colours for the twelve colour properties of a tree, in the tree's order.
constexpr std::string_view coloriAlbero[contract::treeColorCount] = {
    "GridHeaderColor",        "GridFontColor",          "GridBorderColor", "GridFooterColor",
    "GridHeaderFontColor",    "GridHideSelectionColor", "GridFontColor",   "GridHighLightColor",
    "GridHighLightFontColor", "GridFontColor",          "GridHeaderColor", "GridHeaderFontColor"};

void coloraAlbero(const contract::Theme& tema, contract::TreeList& albero) {
    for (std::size_t i = 0; i < contract::treeColorCount; ++i)
        albero.setColor(static_cast<contract::TreeColor>(i), tema.color(coloriAlbero[i]));
    // One by one: the order in which a call's arguments are read is the compiler's.
    const auto sfondoTestata = tema.color("GridHeaderColor");
    const auto testoTestata = tema.color("GridHeaderFontColor");
    albero.setHeaderColors(sfondoTestata, testoTestata);
    const auto sfondoColonna = tema.color("GridHeaderColor");
    const auto testoColonna = tema.color("GridFontColor");
    albero.setColumnColors(sfondoColonna, testoColonna);
    albero.setFontName("Tahoma");
}

void coloraGriglia(const contract::Theme& tema, contract::DetailGrid& griglia) {
    griglia.setHighLightColor(tema.color("GridHighLightFontColor"));
    griglia.setTextColor(tema.color("GridFontColor"));
    griglia.setFontName("Tahoma");
    griglia.setFixedColor(tema.color("GridHeaderColor"));
}

} // namespace

contract::Rect FRMQZ_COPIADISTINTA::posizione() const {
    return {coordinata(stato_.ospite->Left()), coordinata(stato_.ospite->Top()), larghezzaForm, altezzaForm};
}

void FRMQZ_COPIADISTINTA::Form_Load() {
    stato_.procedura("Form_Load", [&](auto& passo) {
        passo([&] { stato_.creaClasseLog(stato_.globale(), stato_.ospite); });
        passo([&] { stato_.form->setBounds(posizione()); });
        colori_ = {0xFEFAE2, 0x80FFFF, 0xC0FFFF, 0x800000};
        passo([&] { impostaControlli(stato_, controlli_); });
        passo([&] { Ridisponi(); });
    });
}

void FRMQZ_COPIADISTINTA::MDIActiveX1_FormLoad() {
    stato_.procedura("MDIActiveX1_FormLoad", [&](auto& passo) {
        passo([&] { controlli_.MDIActiveX1->place(posizione()); });
        passo([&] { controlli_.MDIActiveX1->setWindowState(stato_.ospite->WindowState()); });
    });
}

void FRMQZ_COPIADISTINTA::aggiornaAttivazione() {
    try {
        if (stato_.ospite == nullptr)
            return;
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
        passo([&] { apriConnessione(); });
        passo([&] { stato_.dittaDiLavoro = stato_.globale().companyService()->Company(); });
        passo([&] { controlli_.KVT_RESIZEFORM->setUp(); });
        passo([&] { ImpostaVirtualFrame(); });
        passo([&] {
            if (!recordOrig_ || recordOrig_->Empty())
                stato_.globale().applyProgramMode(*stato_.form, stato_.ospite->ProgramMode());
        });
        passo([&] { InizializzaScriptELayout(); });
        passo([&] { InizializzaDistinte(stato_); });
        primaAttivazioneFatta_ = true;
        contatore_ = 0;
        for (auto* lato : {&stato_.origine, &stato_.destinazione})
            passo([&] {
                lato->menuCerca->addItem("RagSoc", "Rag. Sociale");
                lato->menuCerca->addItem("Codice", "Codice");
            });
        passo([&] {
            stato_.campoStato->setObject(stato_.globale().newWorkflowState());
            stato_.destinazione.albero->refreshColumn("Stato");
        });
        passo([&] { CaricaParametri(stato_); });
        passo([&] { ColoriSTD(); });
    });
}

void FRMQZ_COPIADISTINTA::apriConnessione() {
    const auto stringa = stato_.globale().connectionService()->ConnectionString();
    fornitore_ = stato_.globale().newConnectionProvider();
    auto connessione = fornitore_->newConnection();
    connessione->SetConnectionString(stringa);
    // Kept before it opens, so that an error finds the database's own errors there.
    stato_.connessione = connessione;
    connessione->Open();
    stato_.ospite->Connection(connessione);
}

void FRMQZ_COPIADISTINTA::InizializzaScriptELayout() {
    stato_.procedura("InizializzaScriptELayout", [&](auto& passo) { passo([&] { ExecuteFormEvent("tsOpen"); }); });
}

void FRMQZ_COPIADISTINTA::ImpostaVirtualFrame() {
    stato_.procedura("ImpostaVirtualFrame", [&](auto& passo) {
        // Returns no rows; it only gives the layout of the columns.
        const contract::Statement istruzione("SELECT * FROM QZ02_DISTINTA WHERE 1=0 ");
        passo([&] {
            virtualFrame_ = stato_.globale().newVirtualFrame();
            recordOrig_ = virtualFrame_->newRecordset();
        });
        if (!virtualFrame_ || !recordOrig_)
            return; // the failure was reported; nothing below can do without them
        passo([&] {
            recordOrig_->SetActiveConnection(stato_.connessione);
            recordOrig_->SetSource(istruzione);
            recordOrig_->Open();
            recordOrig_->SetMarshalOptions(contract::MarshalOptions::modifiedOnly);
        });
        passo([&] {
            gestoreOrig_ = virtualFrame_->newFieldList();
            gestoreDest_ = virtualFrame_->newFieldList();
        });
        passo([&] {
            recordDest_ = virtualFrame_->newRecordset();
            // Both sides share one record set.
            recordDest_ = recordOrig_;
        });
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
        passo([&] {
            if (const auto script = navigatore->script())
                script->runFormEvent(evento);
        });
    });
}

void FRMQZ_COPIADISTINTA::Form_QueryUnload(bool& annulla) {
    stato_.procedura("Form_QueryUnload", [&](auto& passo) {
        aggiornaAttivazione();
        passo([&] { annulla = gestoreDest_ && !gestoreDest_->closeQuery(true); });
        if (annulla)
            return;
        passo([&] { ExecuteFormEvent("tsClose"); });
        passo([&] {
            const auto navigatore = stato_.ospite ? stato_.ospite->ActiveNavigator() : nullptr;
            const auto script = navigatore ? navigatore->script() : nullptr;
            annulla = script && script->close();
        });
    });
}

void FRMQZ_COPIADISTINTA::Form_UnLoad() {
    // The log class goes last; until then it reports what fails here.
    stato_.procedura("Form_UnLoad", [&](auto& passo) {
        passo([&] { stato_.campoStato->setObject(nullptr); });
        passo([&] {
            if (const auto navigatore = stato_.ospite ? stato_.ospite->ActiveNavigator() : nullptr)
                navigatore->releaseObjectModels();
        });
        for (auto* gestore : {&gestoreOrig_, &gestoreDest_}) {
            passo([&] {
                if (*gestore)
                    (*gestore)->close();
            });
            gestore->reset();
        }
        classe_ = nullptr;
        passo([&] {
            for (auto* lato : {&stato_.origine, &stato_.destinazione}) {
                // What the focus does while the trees go concerns nobody any more.
                lato->albero->OnChangeNode = nullptr;
                lato->albero->OnChangeNodeEx = nullptr;
                lato->albero->unbind();
                lato->frame->close();
            }
        });
        stato_.origine.dati = std::make_shared<contract::Recordset>();
        stato_.destinazione.dati = std::make_shared<contract::Recordset>();
        recordOrig_.reset();
        recordDest_.reset();
        virtualFrame_.reset();
        passo([&] {
            if (stato_.connessione)
                stato_.connessione->Close();
        });
    });
    stato_.connessione.reset();
    fornitore_.reset();
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
        passo([&] { coloraAlbero(*tema, *stato_.origine.albero); });
        passo([&] { coloraAlbero(*tema, *stato_.destinazione.albero); });
        passo([&] { coloraGriglia(*tema, *stato_.origine.dettaglio); });
        passo([&] { coloraGriglia(*tema, *stato_.destinazione.dettaglio); });
    });
}

} // namespace qz
