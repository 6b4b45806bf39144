#include "component/plugin/PortaRegistro.h"

#include "component/maintenance/Annullamento.h"
#include "component/maintenance/LetturaRegistro.h"
#include "component/maintenance/ValoriRegistro.h"
#include "component/shared/FormBase.h"
#include "component/shared/MODQZ_DISTINTA.h"
#include "contract/Host.h"
#include "contract/RuntimeError.h"

namespace qz {

namespace {

contract::Connection& database(contract::Cinterface& contesto) {
    return presente(contesto.Connection());
}

std::int64_t ditta(contract::Cinterface& contesto) {
    const auto numero = presente(presente(contesto.ClsGlobal()).companyService()).Company().integer();
    if (!numero)
        throw contract::RuntimeError(contract::RuntimeError::typeMismatch, "Azienda di lavoro non impostata.");
    return *numero;
}

Annullamento annullamento(contract::Cinterface& contesto) {
    const auto utente = presente(contesto.ClsGlobal()).userService();
    return {database(contesto), ditta(contesto),
            Autore{presente(utente).UserCode(), presente(utente).GroupCode(), contract::Date::today()}, oraDiAdesso()};
}

} // namespace

std::vector<contract::Operation> PortaRegistro::Operations(const contract::OperationFilter& filter) {
    return leggiOperazioni(database(contesto()), ditta(contesto()), filter);
}

std::vector<contract::OperationRow> PortaRegistro::OperationRows(std::int64_t operation) {
    leggiOperazione(database(contesto()), ditta(contesto()), operation); // of this company
    std::vector<contract::OperationRow> righe;
    for (auto& letta : leggiRigheOperazione(database(contesto()), operation))
        righe.push_back(std::move(letta.riga));
    return righe;
}

contract::Undoing PortaRegistro::PreviewUndo(std::int64_t operation) {
    return annullamento(contesto()).prova(operation);
}

contract::Undoing PortaRegistro::Undo(std::int64_t operation) {
    return annullamento(contesto()).esegui(operation);
}

std::string PortaRegistro::ColumnCaption(std::string_view column) const {
    return std::string(didascaliaColonna(column));
}

} // namespace qz
