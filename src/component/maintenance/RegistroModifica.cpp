#include "component/maintenance/RegistroModifica.h"

namespace qz {

namespace {

contract::Value giorno(const contract::Value& valore) {
    const auto data = valore.date();
    return data ? contract::Value(*data) : contract::Value::null();
}

std::string mostrato(const contract::Value& valore) {
    const auto data = valore.date();
    return data ? data->text() : std::string("vuoto");
}

} // namespace

RegistroModifica::RegistroModifica(contract::Connection& database, std::int64_t ditta, const Autore& autore,
                                   std::optional<std::string> ora) {
    if (ora)
        registro_.emplace(database, ditta, autore, std::move(*ora));
}

void RegistroModifica::primaDiScrivere(NodoId nodo) {
    if (registro_)
        registro_->primaDiScrivere({&nodo, 1});
}

void RegistroModifica::scrivi(NodoId nodo, CodiceAccount account, const Date& prima, const Date& dopo) {
    if (!registro_)
        return;
    contract::RowValues valoriPrima{{"QZ02_DATAINIZIOVAL", giorno(prima.inizio)},
                                    {"QZ02_DATAFINEVAL", giorno(prima.fine)}};
    contract::RowValues valoriDopo{{"QZ02_DATAINIZIOVAL", giorno(dopo.inizio)},
                                   {"QZ02_DATAFINEVAL", giorno(dopo.fine)}};
    registro_->aggiungiConVariazioni(nodo, account, contract::RowOutcome::edits, std::move(valoriPrima),
                                     std::move(valoriDopo));
    registro_->scrivi(contract::OperationKind::edit, "Conto " + std::to_string(account.numero()) + ": validità dal " +
                                                         mostrato(prima.inizio) + " al " + mostrato(prima.fine) +
                                                         " cambiata, ora dal " + mostrato(dopo.inizio) + " al " +
                                                         mostrato(dopo.fine));
}

} // namespace qz
