#pragma once

#include "component/shared/StatoForm.h"
#include "contract/Statement.h"

#include <cstdint>
#include <memory>
#include <string>

#include <optional>

namespace qz {

/// The company's row, as the data-entry frame opens it.
contract::Statement istruzioneRigaParametri(std::int64_t ditta);
/// The company's parameters with the defaults of null columns, as this form reads them: without the invoicing kind that
/// the main form's statement selects.
contract::Statement istruzioneValoriParametri(std::int64_t ditta);
/// The states to choose from.
contract::Statement istruzioneElencoStati();
/// Description of a state.
contract::Statement istruzioneDescrizioneStato(std::int64_t stato);

/// The modal form that maintains the working company's link parameters.
class FRMQZ_PARAMETRI : public FormBase {
public:
    /// The form that opens it; it must outlive it.
    explicit FRMQZ_PARAMETRI(StatoForm& FormChiamante);

    std::string didascalia() const override { return form_ ? form_->caption() : std::string(); }

    /// Shows the form and returns when it was closed.
    void mostra();

private:
    void creaControlli();
    void collegaEventi();
    void Form_Load();
    void Form_Unload();
    void AttivaFrameworkParametri();
    void collegaCampi(Passo& passo);
    void impostaPredefiniti(Passo& passo);
    void leggiValori(Passo& passo);
    void disponi();
    void CMB_QZ03_TIPOCARICODATA_Change();
    void FME_Parametri_BeforeUpdate(bool& annulla);
    void FME_parametri_ChangeStatus();
    void lkp_Stati();
    void decodificaStato();
    /// Of the number that the field holds and the list of states does not.
    std::string testoStatoInesistente() const;

    StatoForm& formChiamante_;
    std::unique_ptr<contract::Form> form_;
    std::shared_ptr<contract::Recordset> riga_;
    LinkParameters valori_;

    contract::ResizeControl* KVT_RESIZEFORM = nullptr;
    contract::DataFrame* FME_Parametri = nullptr;
    contract::GridNavigator* GRIDNAV_PARAMETRI = nullptr;
    contract::GroupBox* Frame2 = nullptr;
    contract::CheckBox* CHK_QZ03_FLG_CONDVEND = nullptr;
    contract::CheckBox* CHK_QZ03_FLG_CLAS = nullptr;
    contract::CheckBox* CHK_QZ03_FLG_PROV = nullptr;
    contract::CheckBox* CHK_QZ03_FLG_ANAG = nullptr;
    contract::GroupBox* Frame3 = nullptr;
    contract::DateField* TXT_QZ03_DATAINIZIOVAL = nullptr;
    contract::Label* KVT_LABEL4 = nullptr;
    contract::DateField* TXT_QZ03_DATAFINEVAL = nullptr;
    contract::Label* KVT_LABEL5 = nullptr;
    contract::ComboBox* CMB_QZ03_TIPOCARICODATA = nullptr;
    contract::Label* KVT_LABEL3 = nullptr;
    contract::Label* etichettaStato_ = nullptr;
    contract::LookupField* TXT_QZ03_ID_WF02 = nullptr;
    contract::TextField* TXT_WF02_DESCR = nullptr;
    std::optional<std::int64_t> statoInesistente_;
};

} // namespace qz
