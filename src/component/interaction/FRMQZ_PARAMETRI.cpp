#include "component/interaction/FRMQZ_PARAMETRI.h"

#include "component/data/Parametri.h"
#include "component/shared/MODQZ_DISTINTA.h"

#include <optional>
#include <string>

namespace qz {

namespace {

constexpr std::string_view inizioSenzaRiga = "01/01/2000";
constexpr std::string_view fineSenzaRiga = "31/12/2099";
constexpr int dateFisse = 1;

} // namespace

FRMQZ_PARAMETRI::FRMQZ_PARAMETRI(StatoForm& FormChiamante)
    : formChiamante_(FormChiamante), form_(FormChiamante.globale().controls()->newDialog("FRMQZ_PARAMETRI")) {
    connessione = FormChiamante.connessione;
    rispostaPerdita = FormChiamante.rispostaPerdita;
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
        creaClasseLog(passo, formChiamante_.ospite);
        leggiValori(passo);
        passo([&] { AttivaFrameworkParametri(); });
    });
}

void FRMQZ_PARAMETRI::AttivaFrameworkParametri() {
    procedura("AttivaFrameworkParametri", [&](auto& passo) {
        contract::Statement istruzione;
        passo([&] { istruzione = istruzioneRigaParametri(formChiamante_.ditta()); });
        riga_ = std::make_shared<contract::Recordset>();
        passo([&] { riga_->Open(istruzione, database()); });
        passo([&] {
            FME_Parametri->initialise(formChiamante_.ospite, connessione, riga_, istruzione, "QZ03_DITTA_CG18");
        });
        passo([&] { FME_Parametri->setTable("QZ03_PARAMETRI", {"QZ03_DITTA_CG18"}); });
        collegaCampi(passo);
        passo([&] { CMB_QZ03_TIPOCARICODATA->addItem("Valorizza da nodo padre"); });
        passo([&] { CMB_QZ03_TIPOCARICODATA->addItem("Valorizza da date fisse"); });
        impostaPredefiniti(passo);
        passo([&] { FME_Parametri->show(); });
        passo([&] { KVT_RESIZEFORM->setZoom(formChiamante_.ridimensionamento->zoom()); });
        passo([&] { disponi(); });
        passo([&] { KVT_RESIZEFORM->setUp(); });
        passo([&] { disponi(); });
    });
}

void FRMQZ_PARAMETRI::collegaCampi(Passo& passo) {
    auto& frame = *FME_Parametri;
    passo([&] { GRIDNAV_PARAMETRI->bind(frame); });
    passo([&] { frame.bindField(*CMB_QZ03_TIPOCARICODATA, "QZ03_TIPOCARICODATA"); });
    passo([&] { frame.bindField(*TXT_QZ03_DATAINIZIOVAL, "QZ03_DATAINIZIOVAL"); });
    passo([&] { frame.bindField(*TXT_QZ03_DATAFINEVAL, "QZ03_DATAFINEVAL"); });
    passo([&] { frame.bindField(*CHK_QZ03_FLG_CONDVEND, "QZ03_FLG_CONDVEND"); });
    passo([&] { frame.bindField(*CHK_QZ03_FLG_CLAS, "QZ03_FLG_CLAS"); });
    passo([&] { frame.bindField(*CHK_QZ03_FLG_PROV, "QZ03_FLG_PROV"); });
    passo([&] { frame.bindField(*CHK_QZ03_FLG_ANAG, "QZ03_FLG_ANAG"); });
    passo([&] { frame.bindField(static_cast<contract::TextField&>(*TXT_QZ03_ID_WF02), "QZ03_ID_WF02"); });
    passo([&] { GRIDNAV_PARAMETRI->setAllowInsert(true); });
    passo([&] { GRIDNAV_PARAMETRI->setAllowDelete(true); });
    passo([&] { GRIDNAV_PARAMETRI->setAskBeforeMove(true); });
}

/// A company without a row shows these two dates even though the combo stands on the first item: only a change of the
/// combo empties them.
void FRMQZ_PARAMETRI::impostaPredefiniti(Passo& passo) {
    const auto predefinito = [&](const char* campo, const contract::Value& valore) {
        passo([&] { FME_Parametri->setDefault(campo, valore); });
    };
    const auto data = [](const std::optional<contract::Date>& giorno) {
        return giorno ? contract::Value(*giorno) : contract::Value::null();
    };
    predefinito("QZ03_TIPOCARICODATA", std::int32_t{valori_.TipoCaricaDATA});
    predefinito("QZ03_DATAINIZIOVAL", data(valori_.DataFissaINIZIO));
    predefinito("QZ03_DATAFINEVAL", data(valori_.DataFissaFINE));
    for (const auto* campo : {"QZ03_FLG_CONDVEND", "QZ03_FLG_CLAS", "QZ03_FLG_PROV", "QZ03_FLG_ANAG"})
        predefinito(campo, true);
}

void FRMQZ_PARAMETRI::leggiValori(Passo& passo) {
    contract::Recordset riga;
    bool letta = false;
    passo([&] {
        riga.Open(istruzioneValoriParametri(formChiamante_.ditta()), database());
        letta = true;
    });
    if (letta && riga.Empty()) {
        valori_.DataFissaINIZIO = contract::Date::parse(inizioSenzaRiga);
        valori_.DataFissaFINE = contract::Date::parse(fineSenzaRiga);
    } else if (letta) {
        // The one column that the statement leaves null.
        passo([&] { valori_.StatoLegame = interoBreve(ValoreODefault(riga["StatoLegame"], std::int32_t{0})); });
        passo([&] { valori_.TipoCaricaDATA = interoBreve(riga["TipoCaricaDATA"]); });
        passo([&] { valori_.DataFissaINIZIO = riga["DataFissaINIZIO"].date(); });
        passo([&] { valori_.DataFissaFINE = riga["DataFissaFINE"].date(); });
        passo([&] { valori_.flg_Anagrafica = valoreFlag(riga["flg_Anagrafica"]); });
        passo([&] { valori_.flg_CondVendita = valoreFlag(riga["flg_CondVendita"]); });
        passo([&] { valori_.flg_Classificazioni = valoreFlag(riga["flg_Classificazioni"]); });
        passo([&] { valori_.flg_Provvigioni = valoreFlag(riga["flg_Provvigioni"]); });
    }
    riga.Close();
}

void FRMQZ_PARAMETRI::CMB_QZ03_TIPOCARICODATA_Change() {
    procedura("CMB_QZ03_TIPOCARICODATA_Change", [&](auto& passo) {
        const bool fisse = CMB_QZ03_TIPOCARICODATA->position() == dateFisse;
        for (auto* campo : {TXT_QZ03_DATAINIZIOVAL, TXT_QZ03_DATAFINEVAL})
            passo([&] { campo->setEnabled(fisse); });
        if (fisse)
            return;
        for (auto* campo : {TXT_QZ03_DATAINIZIOVAL, TXT_QZ03_DATAFINEVAL})
            passo([&] { campo->setText(""); });
    });
}

void FRMQZ_PARAMETRI::FME_Parametri_BeforeUpdate(bool& annulla) {
    procedura("FME_Parametri_BeforeUpdate", [&](auto& passo) {
        passo([&] { FME_Parametri->setRecordValue("QZ03_DITTA_CG18", formChiamante_.ditta()); });
        std::string inizio;
        std::string fine;
        passo([&] { inizio = TXT_QZ03_DATAINIZIOVAL->text(); });
        passo([&] { fine = TXT_QZ03_DATAFINEVAL->text(); });
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
        // One company has one row, which is never deleted here.
        passo([&] { GRIDNAV_PARAMETRI->setAllowInsert(false); });
        passo([&] { GRIDNAV_PARAMETRI->setAllowDelete(false); });
    });
}

void FRMQZ_PARAMETRI::lkp_Stati() {
    procedura("lkp_Stati", [&](auto& passo) {
        std::optional<std::int64_t> scelto;
        passo([&] {
            scelto = formChiamante_.globale().IDLookup(
                {"lkp_Stati", "Stati", istruzioneElencoStati(), {"Codice", "Descrizione"}}, database());
        });
        if (!scelto)
            return;
        // The field tells that its code changed, and the description follows.
        passo([&] { TXT_QZ03_ID_WF02->setText(std::to_string(*scelto)); });
    });
}

std::string FRMQZ_PARAMETRI::testoStatoInesistente() const {
    return "Lo stato " + std::to_string(statoInesistente_.value_or(0)) + " non esiste.";
}

void FRMQZ_PARAMETRI::decodificaStato() {
    procedura("decodificaStato", [&](auto& passo) {
        std::optional<std::int64_t> codice;
        passo([&] { codice = contract::Value(TXT_QZ03_ID_WF02->text()).integer(); });
        contract::Recordset stato;
        if (codice)
            passo([&] { stato.Open(istruzioneDescrizioneStato(*codice), database()); });
        // 0 is what a row without a state holds.
        statoInesistente_ = codice && *codice != 0 && stato.Empty() ? codice : std::nullopt;
        passo([&] {
            TXT_WF02_DESCR->setText(statoInesistente_ ? testoStatoInesistente()
                                    : stato.Empty()   ? ""
                                                      : stato["WF02_DESCR"].text());
        });
    });
}

void FRMQZ_PARAMETRI::Form_Unload() {
    // Part of the command that opened the form.
    proceduraCheSegue("Form_Unload", [&](auto& passo) {
        passo([&] {
            if (riga_ && riga_->IsOpen())
                riga_->Close();
        });
        passo([&] { GRIDNAV_PARAMETRI->release(); });
    });
}

} // namespace qz
