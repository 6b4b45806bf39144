#include "component/shared/Identificativi.h"

#include "component/shared/MODQZ_DISTINTA.h"
#include "contract/RuntimeError.h"

#include <string>

namespace qz {

std::optional<std::int64_t> numeroFacoltativo(const contract::Recordset& record, std::string_view campo) {
    const auto valore = record[campo];
    if (TestoDaValore(valore).empty())
        return std::nullopt;
    const auto numero = valore.integer();
    if (!numero)
        throw contract::RuntimeError(contract::RuntimeError::typeMismatch,
                                     "Tipo non corrispondente: \"" + valore.text() + "\" in " + std::string(campo) +
                                         " non è un numero intero.");
    return numero;
}

std::int64_t numeroObbligatorio(const contract::Recordset& record, std::string_view campo) {
    const auto numero = numeroFacoltativo(record, campo);
    if (!numero)
        throw contract::RuntimeError(contract::RuntimeError::typeMismatch,
                                     "Tipo non corrispondente: manca il valore di " + std::string(campo) + ".");
    return *numero;
}

} // namespace qz
