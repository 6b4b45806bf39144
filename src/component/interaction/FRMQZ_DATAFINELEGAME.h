#pragma once

#include "component/shared/StatoForm.h"

#include <memory>
#include <optional>
#include <string>

namespace qz {

/// The modal dialog that asks for the date at which old links are closed. It hands the date to the form that opened it
/// as that form's end-of-link text; the checks on the date are that form's.
class FRMQZ_DATAFINELEGAME : public FormBase {
public:
    /// The form that opens the dialog; it must outlive it.
    explicit FRMQZ_DATAFINELEGAME(StatoForm& FormChiamante);

    std::string didascalia() const override { return form_ ? form_->caption() : std::string(); }

    /// Shows the dialog and returns when it was closed.
    void mostra();

    /// The date with which the field opens; nothing: empty.
    std::optional<contract::Date> proposta;
    /// The date chosen, as text; empty when the dialog was left without one.
    std::string DataFineLegame;

private:
    void Form_Load();
    void disponi();
    void spiegaData();
    void CMD_ESEGUI_ButtonClick();
    void CMD_ANNULLA_ButtonClick();

    StatoForm& formChiamante_;
    std::unique_ptr<contract::Form> form_;
    contract::Button* CMD_ANNULLA = nullptr;
    contract::ResizeControl* KVT_RESIZEFORM = nullptr;
    contract::GroupBox* GRB_DATAFINELEGAME = nullptr;
    contract::DateField* TXT_DATACHIUSURALEGAME = nullptr;
    contract::Button* CMD_ESEGUI = nullptr;
    contract::Label* KVT_LABEL1 = nullptr;
    contract::Label* LBL_SIGNIFICATO = nullptr;
};

} // namespace qz
