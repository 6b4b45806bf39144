#include "component/plugin/ElenchiPlugin.h"

#include "component/form/FRMQZ_COPIADISTINTA.h"
#include "component/interaction/Elenchi.h"

namespace qz {

namespace {

StatoForm& statoDi(FRMQZ_COPIADISTINTA* form) {
    if (form == nullptr || !form->stato().form)
        throw contract::RuntimeError(contract::RuntimeError::objectNotSet, "Variabile oggetto non impostata.");
    return form->stato();
}

} // namespace

contract::MovePlan ElenchiPlugin::planList(const std::vector<contract::MoveLine>& lines, contract::Unnamed unnamed) {
    return anteprima(statoDi(form()), {lines, unnamed, false, {}});
}

contract::MovePlan ElenchiPlugin::moveList(const std::vector<contract::MoveLine>& lines, contract::Unnamed unnamed) {
    return esegui(statoDi(form()), {lines, unnamed, false, {}});
}

contract::MovePlan ElenchiPlugin::planSelected(const contract::MoveManner& manner) {
    return anteprima(statoDi(form()), {{}, contract::Unnamed::onScreen, true, manner});
}

contract::MovePlan ElenchiPlugin::moveSelected(const contract::MoveManner& manner) {
    return esegui(statoDi(form()), {{}, contract::Unnamed::onScreen, true, manner});
}

} // namespace qz
