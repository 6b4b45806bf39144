#pragma once

#include "contract/Audit.h"

#include <cstdint>
#include <span>

namespace qz {

/// What an audit looks for, in the order in which findings stand: the value is the place in regoleVerifica().
enum class Regola : std::uint8_t {
    padreInesistente,
    padreAltrove,
    anello,
    irraggiungibile,
    legameDoppio,
    sovrapposizione,
    periodoRovesciato,
    dataErrata,
    tipoErrato,
    guidDoppio,
    fuoriDalPadre,
    senzaAnagrafica,
    guidMancante,
    statoSconosciuto,
    intervallo,
};

/// Name, severity, title and remedy of every rule.
std::span<const contract::AuditRule> regoleVerifica();

} // namespace qz
