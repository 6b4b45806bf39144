#include "component/plugin/AnteprimaPlugin.h"

#include "component/form/FRMQZ_COPIADISTINTA.h"
#include "component/interaction/Anteprima.h"

namespace qz {

FRMQZ_COPIADISTINTA& AnteprimaPlugin::formAperta() const {
    auto* aperta = form();
    if (aperta == nullptr || !aperta->stato().form)
        throw contract::RuntimeError(contract::RuntimeError::objectNotSet, "Variabile oggetto non impostata.");
    return *aperta;
}

contract::Date AnteprimaPlugin::proposedEnd() const {
    return fineProposta(formAperta().stato());
}

contract::MovePlan AnteprimaPlugin::plan(const contract::MoveManner& manner) {
    return anteprima(formAperta().stato(), manner);
}

void AnteprimaPlugin::move(const contract::MoveManner& manner) {
    formAperta().Sposta(manner.validity, manner.end);
}

bool AnteprimaPlugin::show(std::int64_t node) {
    return mostraNodo(formAperta().stato(), node);
}

} // namespace qz
