#pragma once

#include "component/shared/StatoForm.h"

#include <functional>
#include <string_view>

namespace qz {

/// The two move commands of the form.
class Comandi {
public:
    explicit Comandi(StatoForm& stato) : stato_(stato) {}

    void CMD_SPOSTASTRU_ButtonClick();
    void CMD_SPOSTAVALID_ButtonClick();

    /// Shows the end-of-link date dialog, which leaves its date in the form's end-of-link text.
    std::function<void()> chiediDataFine;

private:
    bool confermato(bool validita);
    void rifiuta(FormBase::Passo& passo, std::string_view testo, bool validita);
    template <class Corpo> void comando(std::string_view nome, Corpo&& corpo);
    void sposta(bool validita);

    StatoForm& stato_;
    bool spostamentoFallito_ = false;
};

} // namespace qz
