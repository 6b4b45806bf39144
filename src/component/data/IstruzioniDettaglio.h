#pragma once

#include "component/shared/StatoForm.h"
#include "contract/Statement.h"

#include <cstdint>
#include <string_view>

namespace qz {

/// Account whose detail is read.
struct SoggettoDettaglio {
    std::int64_t ditta = 0;
    std::int64_t tipoCF = 0; ///< 0 customer, 1 supplier
    contract::Value codice;  ///< account code
};

/// Registry and commercial data of an account, one row; the optional groups of columns follow the parameters' flags.
contract::Statement istruzioneDettaglio(const LinkParameters& parametri, const SoggettoDettaglio& soggetto);

/// The same, with a division's overrides in the place of the account's own values.
contract::Statement istruzioneDettaglioDivisione(const LinkParameters& parametri, const SoggettoDettaglio& soggetto,
                                                 std::string_view divisione);

} // namespace qz
