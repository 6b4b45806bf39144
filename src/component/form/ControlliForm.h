#pragma once

#include "component/shared/StatoForm.h"

namespace qz {

/// The controls of the main form that belong to neither side.
struct ControlliForm {
    contract::MdiContainer* MDIActiveX1 = nullptr;
    contract::ResizeControl* KVT_RESIZEFORM = nullptr;
    contract::Splitter* SPLITTERVerticale = nullptr;
    contract::GroupBox* GRB_PULSANTI = nullptr;
    contract::Backdrop* PIC_TRANSPARENT = nullptr;
    contract::Button* CMD_VISTOPSX = nullptr;
    contract::Button* CMD_SPOSTASTRU = nullptr;
    contract::Button* CMD_SPOSTAVALID = nullptr;
    contract::Button* CMD_PARAMETRI = nullptr;
    contract::Button* CMD_VISTOPDX = nullptr;
};

/// Makes the form's controls, in tab order, with their captions and tool tips.
void creaControlli(StatoForm& stato, ControlliForm& controlli);

/// The control set-up routine of the form's load: columns of the trees, splitters.
void impostaControlli(StatoForm& stato, FormBase::Passo& passo, ControlliForm& controlli);

} // namespace qz
