#pragma once

#include "contract/Recordset.h"

#include <compare>
#include <cstddef>
#include <cstdint>
#include <functional>
#include <optional>
#include <string_view>

namespace qz {

/// A number that identifies one kind of thing and can not stand for another kind.
template <class Cosa> class Identificativo {
public:
    explicit constexpr Identificativo(std::int64_t numero) : numero_(numero) {}

    constexpr std::int64_t numero() const { return numero_; }

    friend constexpr auto operator<=>(const Identificativo&, const Identificativo&) = default;

private:
    std::int64_t numero_;
};

using NodoId = Identificativo<struct Nodo>;         ///< QZ02_ID
using DistintaId = Identificativo<struct Distinta>; ///< QZ01_ID
/// An account's code within its company and kind: QZ02_CLIFOR_CG44.
using CodiceAccount = Identificativo<struct Account>;
/// A kind of account: 0 customers, any other number suppliers.
using TipoCF = Identificativo<struct Tipo>;

static_assert(sizeof(NodoId) == sizeof(std::int64_t));

/// The whole number in a field of the current record; nothing where it is missing or blank. Throws RuntimeError 13 for
/// a value that is no whole number, and what Recordset throws.
std::optional<std::int64_t> numeroFacoltativo(const contract::Recordset& record, std::string_view campo);

/// The identifier in a field of the current record. Throws RuntimeError 13 where it is missing or no whole number.
std::int64_t numeroObbligatorio(const contract::Recordset& record, std::string_view campo);

template <class Id> std::optional<Id> facoltativo(const contract::Recordset& record, std::string_view campo) {
    const auto numero = numeroFacoltativo(record, campo);
    return numero ? std::optional(Id(*numero)) : std::nullopt;
}

template <class Id> Id obbligatorio(const contract::Recordset& record, std::string_view campo) {
    return Id(numeroObbligatorio(record, campo));
}

} // namespace qz

template <class Cosa> struct std::hash<qz::Identificativo<Cosa>> {
    std::size_t operator()(qz::Identificativo<Cosa> id) const noexcept {
        return std::hash<std::int64_t>{}(id.numero());
    }
};
