#include "component/shared/StatoForm.h"

namespace qz {

std::int64_t StatoForm::ditta() const {
    const auto numero = dittaDiLavoro.integer();
    if (!numero)
        throw contract::RuntimeError(contract::RuntimeError::typeMismatch, "Azienda di lavoro non impostata.");
    return *numero;
}

contract::ClsGlobal& StatoForm::globale() const {
    if (ospite == nullptr)
        throw contract::RuntimeError(contract::RuntimeError::objectNotSet, "Interfaccia dell'ospite non impostata.");
    // The host interface shares the object, so it outlives the reference.
    return presente(ospite->ClsGlobal());
}

contract::WorkflowState& StatoForm::flusso() const {
    // The field shares the object, so it outlives the reference.
    return presente(campoStato->object());
}

std::string StatoForm::utente() const {
    return presente(globale().userService()).UserCode();
}

std::string StatoForm::gruppo() const {
    return presente(globale().userService()).GroupCode();
}

contract::Progress* StatoForm::avanzamento() const {
    return ospite != nullptr ? dynamic_cast<contract::Progress*>(ospite->StatusBar().get()) : nullptr;
}

void StatoForm::annullato() noexcept {
    const auto fuoco = [](const Lato& lato) -> std::optional<std::int64_t> {
        const auto nodo = lato.albero != nullptr ? lato.albero->focused() : contract::Node{};
        return nodo ? std::optional(lato.albero->key(nodo)) : std::nullopt;
    };
    try {
        esito = {contract::Cancelled().what(), fuoco(origine), fuoco(destinazione)};
        if (const auto barra = ospite != nullptr ? ospite->StatusBar() : nullptr)
            barra->setText(esito.testo);
    } catch (const std::exception&) {
        esito = {}; // who can not be told is not told
    }
}

} // namespace qz
