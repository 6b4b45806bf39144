#include "interaction/FRMQZ_PARAMETRI.h"

#include "data/Parametri.h"
#include "form/shared/MODQZ_DISTINTA.h"

namespace qz {

namespace {

constexpr std::string_view inizioSenzaRiga = "01/01/2000";
constexpr std::string_view fineSenzaRiga = "31/12/2099";
constexpr int dateFisse = 1;

} // namespace

FRMQZ_PARAMETRI::FRMQZ_PARAMETRI(StatoForm& FormChiamante)
    : formChiamante_(FormChiamante), form_(FormChiamante.globale().controls()->newDialog("FRMQZ_PARAMETRI")) {
    connessione = FormChiamante.connessione;
    creaControlli();
    collegaEventi();
}

void FRMQZ_PARAMETRI::mostra() {
    form_->show(true);
}

void FRMQZ_PARAMETRI::collegaEventi() {
    form_->Load = [this] { Form_Load(); };
    form_->Unload = [this] { Form_Unload(); };
    KVT_RESIZEFORM->AfterResize = [this] { disponi(); };
    CMB_QZ03_TIPOCARICODATA->Change = [this] { CMB_QZ03_TIPOCARICODATA_Change(); };
    FME_Parametri->BeforeUpdate = [this](bool& annulla) { FME_Parametri_BeforeUpdate(annulla); };
    FME_Parametri->ChangeStatus = [this](int) { FME_parametri_ChangeStatus(); };
    TXT_QZ03_ID_WF02->Lookup = [this] { lkp_Stati(); };
    TXT_QZ03_ID_WF02->Decode = [this] { decodificaStato(); };
}

void FRMQZ_PARAMETRI::Form_Load() {
    procedura("Form_Load", [&](auto& passo) {
        passo([&] { creaClasseLog(formChiamante_.globale(), formChiamante_.ospite); });
        passo([&] { leggiValori(); });
        passo([&] { AttivaFrameworkParametri(); });
    });
}

void FRMQZ_PARAMETRI::AttivaFrameworkParametri() {
    procedura("AttivaFrameworkParametri", [&](auto& passo) {
        const auto istruzione = istruzioneRigaParametri(formChiamante_.ditta());
        passo([&] {
            riga_ = std::make_shared<contract::Recordset>();
            riga_->Open(istruzione, database());
        });
        passo([&] {
            FME_Parametri->initialise(formChiamante_.ospite, connessione, riga_, istruzione, "QZ03_DITTA_CG18");
            FME_Parametri->setTable("QZ03_PARAMETRI", {"QZ03_DITTA_CG18"});
            GRIDNAV_PARAMETRI->bind(*FME_Parametri);
            FME_Parametri->bindField(*CMB_QZ03_TIPOCARICODATA, "QZ03_TIPOCARICODATA");
            FME_Parametri->bindField(*TXT_QZ03_DATAINIZIOVAL, "QZ03_DATAINIZIOVAL");
            FME_Parametri->bindField(*TXT_QZ03_DATAFINEVAL, "QZ03_DATAFINEVAL");
            FME_Parametri->bindField(*CHK_QZ03_FLG_CONDVEND, "QZ03_FLG_CONDVEND");
            FME_Parametri->bindField(*CHK_QZ03_FLG_CLAS, "QZ03_FLG_CLAS");
            FME_Parametri->bindField(*CHK_QZ03_FLG_PROV, "QZ03_FLG_PROV");
            FME_Parametri->bindField(*CHK_QZ03_FLG_ANAG, "QZ03_FLG_ANAG");
            FME_Parametri->bindField(static_cast<contract::TextField&>(*TXT_QZ03_ID_WF02), "QZ03_ID_WF02");
            GRIDNAV_PARAMETRI->setAllowInsert(true);
            GRIDNAV_PARAMETRI->setAllowDelete(true);
            GRIDNAV_PARAMETRI->setAskBeforeMove(true);
        });
        passo([&] {
            CMB_QZ03_TIPOCARICODATA->addItem("Valorizza da nodo padre");
            CMB_QZ03_TIPOCARICODATA->addItem("Valorizza da date fisse");
        });
        passo([&] {
            // A company without a row shows these two dates even though the combo stands on the first item: only a
            // change of the combo empties them.
            FME_Parametri->setDefault("QZ03_TIPOCARICODATA", std::int32_t{valori_.TipoCaricaDATA});
            FME_Parametri->setDefault("QZ03_DATAINIZIOVAL",
                                      valori_.DataFissaINIZIO ? *valori_.DataFissaINIZIO : contract::Value::null());
            FME_Parametri->setDefault("QZ03_DATAFINEVAL",
                                      valori_.DataFissaFINE ? *valori_.DataFissaFINE : contract::Value::null());
            for (const auto* campo : {"QZ03_FLG_CONDVEND", "QZ03_FLG_CLAS", "QZ03_FLG_PROV", "QZ03_FLG_ANAG"})
                FME_Parametri->setDefault(campo, true);
            FME_Parametri->show();
        });
        passo([&] {
            KVT_RESIZEFORM->setZoom(formChiamante_.ridimensionamento->zoom());
            disponi();
            KVT_RESIZEFORM->setUp();
            disponi();
        });
    });
}

void FRMQZ_PARAMETRI::leggiValori() {
    contract::Recordset riga;
    riga.Open(istruzioneValoriParametri(formChiamante_.ditta()), database());
    if (riga.Empty()) {
        valori_.DataFissaINIZIO = contract::Date::parse(inizioSenzaRiga);
        valori_.DataFissaFINE = contract::Date::parse(fineSenzaRiga);
    } else {
        // The one column that the statement leaves null.
        valori_.StatoLegame = interoBreve(ValoreODefault(riga["StatoLegame"], std::int32_t{0}));
        valori_.TipoCaricaDATA = interoBreve(riga["TipoCaricaDATA"]);
        valori_.DataFissaINIZIO = riga["DataFissaINIZIO"].date();
        valori_.DataFissaFINE = riga["DataFissaFINE"].date();
        valori_.flg_Anagrafica = valoreFlag(riga["flg_Anagrafica"]);
        valori_.flg_CondVendita = valoreFlag(riga["flg_CondVendita"]);
        valori_.flg_Classificazioni = valoreFlag(riga["flg_Classificazioni"]);
        valori_.flg_Provvigioni = valoreFlag(riga["flg_Provvigioni"]);
    }
    riga.Close();
}

void FRMQZ_PARAMETRI::CMB_QZ03_TIPOCARICODATA_Change() {
    procedura("CMB_QZ03_TIPOCARICODATA_Change", [&](auto& passo) {
        passo([&] {
            const bool fisse = CMB_QZ03_TIPOCARICODATA->position() == dateFisse;
            for (auto* campo : {TXT_QZ03_DATAINIZIOVAL, TXT_QZ03_DATAFINEVAL}) {
                campo->setEnabled(fisse);
                if (!fisse)
                    campo->setText("");
            }
        });
    });
}

void FRMQZ_PARAMETRI::FME_Parametri_BeforeUpdate(bool& annulla) {
    procedura("FME_Parametri_BeforeUpdate", [&](auto& passo) {
        passo([&] { FME_Parametri->setRecordValue("QZ03_DITTA_CG18", formChiamante_.ditta()); });
        std::string inizio;
        std::string fine;
        passo([&] {
            inizio = TXT_QZ03_DATAINIZIOVAL->text();
            fine = TXT_QZ03_DATAFINEVAL->text();
        });
        // Compared as the date fields return them, that is as texts.
        if (inizio.empty() || fine.empty() || inizio <= fine) {
            if (!statoInesistente_)
                return;
            annulla = true;
            passo([&] { messaggio(testoStatoInesistente(), contract::message::ok); });
            passo([&] { TXT_QZ03_ID_WF02->setFocus(); });
            return;
        }
        annulla = true;
        passo([&] {
            messaggio("Attenzione data validità inizio deve essere inferiore di data validità fine",
                      contract::message::ok);
        });
        passo([&] { TXT_QZ03_DATAINIZIOVAL->setFocus(); });
    });
}

void FRMQZ_PARAMETRI::FME_parametri_ChangeStatus() {
    procedura("FME_parametri_ChangeStatus", [&](auto& passo) {
        passo([&] {
            // One company has one row, which is never deleted here.
            GRIDNAV_PARAMETRI->setAllowInsert(false);
            GRIDNAV_PARAMETRI->setAllowDelete(false);
        });
    });
}

void FRMQZ_PARAMETRI::lkp_Stati() {
    procedura("lkp_Stati", [&](auto& passo) {
        passo([&] {
            const auto scelto = formChiamante_.globale().IDLookup(
                {"lkp_Stati", "Stati", istruzioneElencoStati(), {"Codice", "Descrizione"}}, database());
            if (!scelto)
                return;
            // The field tells that its code changed, and the description follows.
            TXT_QZ03_ID_WF02->setText(std::to_string(*scelto));
        });
    });
}

std::string FRMQZ_PARAMETRI::testoStatoInesistente() const {
    return "Lo stato " + std::to_string(statoInesistente_.value_or(0)) + " non esiste.";
}

void FRMQZ_PARAMETRI::decodificaStato() {
    procedura("decodificaStato", [&](auto& passo) {
        passo([&] {
            const auto codice = contract::Value(TXT_QZ03_ID_WF02->text()).integer();
            contract::Recordset stato;
            if (codice)
                stato.Open(istruzioneDescrizioneStato(*codice), database());
            // 0 is what a row without a state holds.
            statoInesistente_ = codice && *codice != 0 && stato.Empty() ? codice : std::nullopt;
            TXT_WF02_DESCR->setText(statoInesistente_ ? testoStatoInesistente()
                                    : stato.Empty()   ? ""
                                                      : stato["WF02_DESCR"].text());
        });
    });
}

void FRMQZ_PARAMETRI::Form_Unload() {
    procedura("Form_Unload", [&](auto& passo) {
        passo([&] {
            if (riga_ && riga_->IsOpen())
                riga_->Close();
        });
        passo([&] { GRIDNAV_PARAMETRI->release(); });
    });
}

} // namespace qz
