#include "component/interaction/FRMQZ_DATAFINELEGAME.h"

#include "component/shared/MODQZ_DISTINTA.h"

namespace qz {

namespace {

// Measures for 8 points.
constexpr contract::Twips larghezza = 6000;
constexpr contract::Twips altezza = 2040;
constexpr contract::Twips margine = 180;
constexpr contract::Twips altezzaGruppo = 1080;
constexpr contract::Twips altezzaCampo = 360;
constexpr contract::Twips altezzaSpiegazione = 300;
constexpr contract::Twips sopraSpiegazione = 60;
constexpr contract::Twips larghezzaPulsante = 1350;
constexpr contract::Twips altezzaPulsante = 420;

} // namespace

FRMQZ_DATAFINELEGAME::FRMQZ_DATAFINELEGAME(StatoForm& FormChiamante)
    : formChiamante_(FormChiamante), form_(FormChiamante.globale().controls()->newDialog("FRMQZ_DATAFINELEGAME")) {
    connessione = FormChiamante.connessione;
    rispostaPerdita = FormChiamante.rispostaPerdita;
    form_->setCaption("Data fine legame");
    CMD_ANNULLA = &form_->addButton("CMD_ANNULLA", nullptr);
    KVT_RESIZEFORM = &form_->addResizeControl("KVT_RESIZEFORM");
    GRB_DATAFINELEGAME = &form_->addGroupBox("GRB_DATAFINELEGAME", nullptr);
    TXT_DATACHIUSURALEGAME = &form_->addDateField("TXT_DATACHIUSURALEGAME", GRB_DATAFINELEGAME);
    CMD_ESEGUI = &form_->addButton("CMD_ESEGUI", nullptr);
    KVT_LABEL1 = &form_->addLabel("KVT_LABEL1", GRB_DATAFINELEGAME);
    LBL_SIGNIFICATO = &form_->addLabel("LBL_SIGNIFICATO", GRB_DATAFINELEGAME);

    CMD_ANNULLA->setCaption("&Annulla");
    CMD_ANNULLA->setToolTip("Chiude senza spostare la data (Esc)");
    CMD_ESEGUI->setCaption("&Esegui");
    CMD_ESEGUI->setToolTip("Conferma la data di fine legame (Invio)");
    CMD_ESEGUI->setPrimary(true);
    KVT_LABEL1->setCaption("Data fine legame");
    TXT_DATACHIUSURALEGAME->setToolTip("Ultimo giorno dei legami attuali (gg/mm/aaaa)");
    form_->setDefaultButtons(CMD_ESEGUI, CMD_ANNULLA);

    form_->Load = [this] { Form_Load(); };
    KVT_RESIZEFORM->AfterResize = [this] { disponi(); };
    TXT_DATACHIUSURALEGAME->Change = [this] { spiegaData(); };
    CMD_ESEGUI->ButtonClick = [this] { CMD_ESEGUI_ButtonClick(); };
    CMD_ANNULLA->ButtonClick = [this] { CMD_ANNULLA_ButtonClick(); };
}

void FRMQZ_DATAFINELEGAME::mostra() {
    form_->show(true);
}

void FRMQZ_DATAFINELEGAME::Form_Load() {
    procedura("Form_Load", [&](auto& passo) {
        creaClasseLog(passo, formChiamante_.ospite);
        passo([&] { KVT_RESIZEFORM->setZoom(formChiamante_.ridimensionamento->zoom()); });
        passo([&] { form_->setBounds({0, 0, KVT_RESIZEFORM->scaled(larghezza), KVT_RESIZEFORM->scaled(altezza)}); });
        passo([&] { KVT_RESIZEFORM->setUp(); });
        passo([&] { disponi(); });
        if (proposta)
            passo([&] { TXT_DATACHIUSURALEGAME->setText(proposta->text()); });
        passo([&] { TXT_DATACHIUSURALEGAME->setFocus(); });
    });
    spiegaData();
}

/// Says under the field what the day means.
void FRMQZ_DATAFINELEGAME::spiegaData() {
    procedura("TXT_DATACHIUSURALEGAME_Change", [&](auto& passo) {
        std::string testo = "ultimo giorno del legame attuale";
        std::optional<contract::Date> data;
        passo([&] { data = contract::Date::parse(TXT_DATACHIUSURALEGAME->text()); });
        if (data && data < contract::Date::of(9999, 12, 31)) // no day follows that one
            testo += "; il nuovo inizia il " + data->plusDays(1).text();
        passo([&] { LBL_SIGNIFICATO->setCaption(testo); });
    });
}

void FRMQZ_DATAFINELEGAME::disponi() {
    procedura("Ridisponi", [&](auto& passo) {
        const auto scala = [this](contract::Twips misura) { return KVT_RESIZEFORM->scaled(misura); };
        const auto bordo = scala(margine);
        const auto largo = form_->clientWidth() - 2 * bordo;
        const auto campo = scala(altezzaCampo);
        passo([&] { GRB_DATAFINELEGAME->setBounds({bordo, bordo, largo, scala(altezzaGruppo)}); });
        // The group has no caption: the date and what it means stand in its middle.
        const auto spiegazione = scala(sopraSpiegazione) + scala(altezzaSpiegazione);
        const auto riga = (scala(altezzaGruppo) - campo - spiegazione) / 2;
        passo([&] { KVT_LABEL1->setBounds({bordo, riga, largo / 2 - bordo, campo}); });
        passo([&] { TXT_DATACHIUSURALEGAME->setBounds({largo / 2, riga, largo / 2 - bordo, campo}); });
        const auto sotto = riga + campo + scala(sopraSpiegazione);
        passo([&] { LBL_SIGNIFICATO->setBounds({bordo, sotto, largo - 2 * bordo, scala(altezzaSpiegazione)}); });
        const auto pulsanti = form_->clientHeight() - scala(altezzaPulsante) - bordo;
        const auto largoPulsante = scala(larghezzaPulsante);
        const auto alto = scala(altezzaPulsante);
        const auto destra = form_->clientWidth() - bordo;
        passo([&] { CMD_ANNULLA->setBounds({destra - largoPulsante, pulsanti, largoPulsante, alto}); });
        passo([&] { CMD_ESEGUI->setBounds({destra - 2 * largoPulsante - bordo / 2, pulsanti, largoPulsante, alto}); });
    });
}

void FRMQZ_DATAFINELEGAME::CMD_ESEGUI_ButtonClick() {
    procedura("CMD_ESEGUI_ButtonClick", [&](auto& passo) {
        bool valida = false;
        passo([&] { valida = TXT_DATACHIUSURALEGAME->hasValidDate(); });
        if (!valida) {
            std::string scritto;
            passo([&] { scritto = TXT_DATACHIUSURALEGAME->text(); });
            // No box: the status bar says what is missing, and the field waits for it.
            if (scritto.empty() && formChiamante_.ospite != nullptr && formChiamante_.ospite->StatusBar())
                passo([&] {
                    formChiamante_.ospite->StatusBar()->setText(
                        "Manca la data: scrivere l'ultimo giorno dei legami attuali (gg/mm/aaaa).");
                });
            passo([&] { TXT_DATACHIUSURALEGAME->setFocus(); });
            return;
        }
        passo([&] { DataFineLegame = TestoDaValore(contract::Value(TXT_DATACHIUSURALEGAME->text())); });
        formChiamante_.DataFineLegame = DataFineLegame;
        passo([&] { form_->unload(); });
    });
}

void FRMQZ_DATAFINELEGAME::CMD_ANNULLA_ButtonClick() {
    procedura("CMD_ANNULLA_ButtonClick", [&](auto& passo) {
        DataFineLegame.clear();
        passo([&] { form_->unload(); });
    });
}

} // namespace qz
